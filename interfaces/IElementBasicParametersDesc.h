#pragma once

#include "IContainer.h"

namespace Plexa {
class DataStore;
}

/// What an element type lets the user plot, asked of a description through
/// `queryInterface("IElementBasicParametersDesc", ...)`. The keys of each store are the names.
class IElementBasicParametersDesc : public virtual IContainer {
public:
    virtual Plexa::DataStore realParameters() = 0;
    virtual Plexa::DataStore outputVariables() = 0;
    virtual Plexa::DataStore outputACVariables() = 0;

protected:
    ~IElementBasicParametersDesc() = default;
};

Q_DECLARE_INTERFACE(IElementBasicParametersDesc, "com.tesmira.IElementBasicParametersDesc/1.0")
