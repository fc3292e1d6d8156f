#pragma once

#include "IContainer.h"

/// Optional ability of a circuit: its output variables keep an order that the user chooses.
class ICircuitOutputVariableReorderSupport : public virtual IContainer {
public:
    /// Moves the variable at row `from` to row `to`; rows out of range change nothing.
    virtual void moveOutputVariable(int from, int to) = 0;

protected:
    ~ICircuitOutputVariableReorderSupport() = default;
};

Q_DECLARE_INTERFACE(ICircuitOutputVariableReorderSupport,
                    "com.tesmira.ICircuitOutputVariableReorderSupport/1.0")
