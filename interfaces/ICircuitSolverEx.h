#pragma once

#include "IContainer.h"

class ICircuitNode;

/// Optional ability of a solver: merging nets.
class ICircuitSolverEx : public virtual IContainer {
public:
    /// Merges both nodes into the first. The caller then dissolves the second with
    /// `ICircuitSolver::breakConnection`. False on refusal, with both nodes unchanged.
    virtual bool makeConnection(ICircuitNode* a, ICircuitNode* b) = 0;

protected:
    ~ICircuitSolverEx() = default;
};

Q_DECLARE_INTERFACE(ICircuitSolverEx, "com.tesmira.ICircuitSolverEx/1.0")
