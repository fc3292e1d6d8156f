#pragma once

#include "IContainer.h"

#include <QString>

class ICircuit;
class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;

/// The owner of connectivity: every join and cut of terminals goes through it, and it may refuse.
/// `circuit()` is valid from the start and stays the same while an editor holds the solver.
class ICircuitSolver : public virtual IContainer {
public:
    virtual QString circuitSolverName() = 0;
    virtual ICircuit* circuit() = 0;

    /// Joins two terminals; the node that now holds both, or null on refusal.
    virtual ICircuitNode* makeConnection(ICircuitElementNode* a, ICircuitElementNode* b) = 0;
    /// Joins a terminal to a node; false on refusal.
    virtual bool makeConnection(ICircuitElementNode* elementNode, ICircuitNode* node) = 0;

    /// Dissolves the node.
    virtual bool breakConnection(ICircuitNode* node) = 0;
    /// Takes one terminal off the node.
    virtual bool breakConnection(ICircuitElementNode* elementNode, ICircuitNode* node) = 0;

    /// Cuts all connections of the element.
    virtual bool disconnectElement(ICircuitElement* element) = 0;
    /// Cuts the connections between two elements.
    virtual bool disconnectElement(ICircuitElement* a, ICircuitElement* b) = 0;

protected:
    ~ICircuitSolver() = default;
};

Q_DECLARE_INTERFACE(ICircuitSolver, "com.tesmira.ICircuitSolver/1.0")
