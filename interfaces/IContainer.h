#pragma once

#include <QtPlugin>

class QObject;

/// Root of every interface that components offer one another. From an interface pointer one goes to
/// the object behind it, and from there with `qt_metacast` to any other interface it offers.
class IContainer {
public:
    virtual ~IContainer() = default;

    /// The object that implements the interface. Never owned by the caller, never null.
    virtual QObject* containerObject() = 0;
};

Q_DECLARE_INTERFACE(IContainer, "com.tesmira.IContainer/1.0")
