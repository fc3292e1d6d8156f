#pragma once

#include "IContainer.h"

class ICircuitElement;
class QString;

/// Makes elements by type name.
class ICircuitElementFactory : public virtual IContainer {
public:
    /// A new element of the complete type name, or null. The caller owns it until it is added to a
    /// circuit.
    virtual ICircuitElement* createElement(const QString& elementType) = 0;

protected:
    ~ICircuitElementFactory() = default;
};

Q_DECLARE_INTERFACE(ICircuitElementFactory, "com.tesmira.ICircuitElementFactory/1.0")
