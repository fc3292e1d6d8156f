#pragma once

#include <QtPlugin>

class QObject;

/// Root of every interface that components offer one another. From an interface pointer one goes to
/// the object behind it, and from there with `qt_metacast` to any other interface it offers.
/// Interfaces cross from library to library: `containerObject()` is the first entry of every table,
/// and an interface's own operations follow in the order in which it declares them. A virtual
/// destructor would come in between, so nothing is deleted through an interface, but as the object
/// that it is.
class IContainer {
public:
    /// The object that implements the interface. Never owned by the caller, never null.
    virtual QObject* containerObject() = 0;

protected:
    ~IContainer() = default;
};

Q_DECLARE_INTERFACE(IContainer, "com.tesmira.IContainer/1.0")
