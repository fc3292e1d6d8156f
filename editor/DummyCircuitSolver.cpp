#include "DummyCircuitSolver.h"

DummyCircuitSolver::DummyCircuitSolver(ICircuit* circuit, QObject* parent)
    : QObject(parent), m_circuit(circuit) {}

QString DummyCircuitSolver::circuitSolverName() {
    return QStringLiteral("DummyCircuitSolver");
}

ICircuit* DummyCircuitSolver::circuit() {
    return m_circuit;
}

ICircuitNode* DummyCircuitSolver::makeConnection(ICircuitElementNode*, ICircuitElementNode*) {
    return nullptr;
}

bool DummyCircuitSolver::makeConnection(ICircuitElementNode*, ICircuitNode*) {
    return false;
}

bool DummyCircuitSolver::makeConnection(ICircuitNode*, ICircuitNode*) {
    return false;
}

bool DummyCircuitSolver::breakConnection(ICircuitNode*) {
    return false;
}

bool DummyCircuitSolver::breakConnection(ICircuitElementNode*, ICircuitNode*) {
    return false;
}

bool DummyCircuitSolver::disconnectElement(ICircuitElement*) {
    return false;
}

bool DummyCircuitSolver::disconnectElement(ICircuitElement*, ICircuitElement*) {
    return false;
}
