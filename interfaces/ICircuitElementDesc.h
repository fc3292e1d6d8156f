#pragma once

#include "IContainer.h"
#include "IInterfaceQuery.h"

#include <QString>

namespace Plexa {
class DataStore;
}

/// The type of an element, shared by all elements of that type.
class ICircuitElementDesc : public virtual IContainer, public virtual IInterfaceQuery {
public:
    /// Category of an element that is itself a circuit.
    static constexpr int SubCircuitCategory = 5;

    /// Human-readable type label, such as "Resistor".
    virtual QString label() = 0;
    /// Complete type name "Element.Library", the key of the element factory.
    virtual QString elementType() = 0;
    virtual int category() = 0;
    /// Facts on the type; "#display" lists, divided by blanks, the properties worth showing.
    virtual Plexa::DataStore info() = 0;

protected:
    ~ICircuitElementDesc() = default;
};

Q_DECLARE_INTERFACE(ICircuitElementDesc, "com.tesmira.ICircuitElementDesc/1.0")
