#pragma once

#include "ICircuitSolver.h"
#include "ICircuitSolverEx.h"

#include <QObject>
#include <QPointer>

class Circuit;
class CircuitElementNode;
class CircuitNode;

/// The owner of connectivity of one circuit, which may die first. Only terminals of one type, in
/// this circuit, go together; a net that is left with fewer than two terminals dissolves.
class CircuitSolver : public QObject, public ICircuitSolver, public ICircuitSolverEx {
    Q_OBJECT
    Q_INTERFACES(ICircuitSolver ICircuitSolverEx)

public:
    /// Makes itself the circuit's solver.
    explicit CircuitSolver(Circuit* circuit, QObject* parent = nullptr);
    ~CircuitSolver() override;

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitSolver
    QString circuitSolverName() override;
    ICircuit* circuit() override;
    /// A new node if both are free, the other's net if one is, and the first one's net, merged, if
    /// none is. Null if they are on one net already.
    ICircuitNode* makeConnection(ICircuitElementNode* a, ICircuitElementNode* b) override;
    /// Merges the terminal's own net, if it is on one, into the node.
    bool makeConnection(ICircuitElementNode* elementNode, ICircuitNode* node) override;
    bool breakConnection(ICircuitNode* node) override;
    bool breakConnection(ICircuitElementNode* elementNode, ICircuitNode* node) override;
    /// False if there was nothing to cut.
    bool disconnectElement(ICircuitElement* element) override;
    /// Takes the terminals of `a` off the nets that `b` is on, too; false if there is no such net.
    bool disconnectElement(ICircuitElement* a, ICircuitElement* b) override;

    // ICircuitSolverEx
    /// Leaves the second node in the circuit, empty.
    bool makeConnection(ICircuitNode* a, ICircuitNode* b) override;

private:
    /// Null for a terminal whose element isn't in this circuit.
    CircuitElementNode* own(ICircuitElementNode* terminal) const;
    /// Null for a node that isn't in this circuit.
    CircuitNode* own(ICircuitNode* node) const;
    /// Merges and drops the emptied node; both may have died when this returns.
    void merge(CircuitNode* from, CircuitNode* to);

    QPointer<Circuit> m_circuit;
};
