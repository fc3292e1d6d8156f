#pragma once

#include "IContainer.h"

#include <QDomDocument>

/// Description of an element that is itself a circuit, asked of a description through
/// `queryInterface("ISubCircuitElementDesc", ...)`.
class ISubCircuitElementDesc : public virtual IContainer {
public:
    /// The document that carries the stored project of the sub-circuit.
    virtual QDomDocument subCircuitInfo() = 0;

protected:
    ~ISubCircuitElementDesc() = default;
};

Q_DECLARE_INTERFACE(ISubCircuitElementDesc, "com.tesmira.ISubCircuitElementDesc/1.0")
