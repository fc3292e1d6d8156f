#pragma once

#include "ICircuit.h"
#include "ICircuitSolver.h"
#include "ICircuitSolverEx.h"
#include "InterfacePointer.h"

#include <QObject>

/// The solver of a view that is only to be looked at: it knows the circuit and refuses every change
/// of connections.
class DummyCircuitSolver : public QObject,
                           public virtual ICircuitSolver,
                           public virtual ICircuitSolverEx {
    Q_OBJECT
    Q_INTERFACES(ICircuitSolver ICircuitSolverEx)

public:
    DummyCircuitSolver(ICircuit* circuit, QObject* parent);

    QObject* containerObject() override { return this; }

    QString circuitSolverName() override;
    ICircuit* circuit() override;

    ICircuitNode* makeConnection(ICircuitElementNode* a, ICircuitElementNode* b) override;
    bool makeConnection(ICircuitElementNode* elementNode, ICircuitNode* node) override;
    bool makeConnection(ICircuitNode* a, ICircuitNode* b) override;
    bool breakConnection(ICircuitNode* node) override;
    bool breakConnection(ICircuitElementNode* elementNode, ICircuitNode* node) override;
    bool disconnectElement(ICircuitElement* element) override;
    bool disconnectElement(ICircuitElement* a, ICircuitElement* b) override;

private:
    InterfacePointer<ICircuit> m_circuit;
};
