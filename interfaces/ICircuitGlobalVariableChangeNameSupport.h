#pragma once

#include "IContainer.h"

#include <QString>

/// Optional ability of a circuit: global parameters can be renamed in place.
class ICircuitGlobalVariableChangeNameSupport : public virtual IContainer {
public:
    /// Renames the parameter at row `index`; true if anything changed.
    virtual bool changeGlobalVariableName(int index, QString name) = 0;

protected:
    ~ICircuitGlobalVariableChangeNameSupport() = default;
};

Q_DECLARE_INTERFACE(ICircuitGlobalVariableChangeNameSupport,
                    "com.tesmira.ICircuitGlobalVariableChangeNameSupport/1.0")
