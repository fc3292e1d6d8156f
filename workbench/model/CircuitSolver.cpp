#include "CircuitSolver.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"

CircuitSolver::CircuitSolver(Circuit* circuit, QObject* parent)
    : QObject(parent), m_circuit(circuit) {
    if (circuit) {
        circuit->setCircuitSolver(this);
    }
}

CircuitSolver::~CircuitSolver() {
    if (m_circuit && m_circuit->circuitSolver() == this) {
        m_circuit->setCircuitSolver(nullptr);
    }
}

QString CircuitSolver::circuitSolverName() {
    return QStringLiteral("Vortel reference solver");
}

ICircuit* CircuitSolver::circuit() {
    return m_circuit;
}

CircuitElementNode* CircuitSolver::own(ICircuitElementNode* terminal) const {
    CircuitElementNode* known = CircuitElementNode::from(terminal);
    if (!known || !known->owner()->isInCircuit() || !m_circuit ||
        known->owner()->circuit() != m_circuit->face()) {
        return nullptr;
    }
    return known;
}

CircuitNode* CircuitSolver::own(ICircuitNode* node) const {
    CircuitNode* known = CircuitNode::from(node);
    if (!known || !known->takesTerminals() || !m_circuit || known->circuit() != m_circuit->face()) {
        return nullptr;
    }
    return known;
}

ICircuitNode* CircuitSolver::makeConnection(ICircuitElementNode* a, ICircuitElementNode* b) {
    CircuitElementNode* first = own(a);
    CircuitElementNode* second = own(b);
    if (!first || !second || first == second || first->type() != second->type()) {
        return nullptr;
    }
    const QPointer<CircuitNode> firstNode(first->node());
    const QPointer<CircuitNode> secondNode(second->node());
    if (!firstNode && !secondNode) {
        return m_circuit->addNode(first, second);
    }
    const QPointer<CircuitNode> result(firstNode ? firstNode : secondNode);
    const bool joined = firstNode ? makeConnection(second, static_cast<ICircuitNode*>(firstNode))
                                  : makeConnection(first, static_cast<ICircuitNode*>(secondNode));
    return joined && result && result->isInCircuit() ? result.data() : nullptr;
}

bool CircuitSolver::makeConnection(ICircuitElementNode* elementNode, ICircuitNode* node) {
    CircuitElementNode* terminal = own(elementNode);
    CircuitNode* target = own(node);
    if (!terminal || !target || terminal->node() == target || terminal->type() != target->type()) {
        return false;
    }
    if (!terminal->node()) {
        m_circuit->attach(terminal, target);
        return true;
    }
    if (!terminal->node()->takesTerminals()) {
        return false;
    }
    merge(terminal->node(), target);
    return true;
}

bool CircuitSolver::makeConnection(ICircuitNode* a, ICircuitNode* b) {
    CircuitNode* target = own(a);
    CircuitNode* source = own(b);
    if (!target || !source || target == source || target->type() != source->type()) {
        return false;
    }
    m_circuit->moveTerminals(source, target);
    return true;
}

void CircuitSolver::merge(CircuitNode* from, CircuitNode* to) {
    const QPointer<CircuitNode> emptied(from);
    m_circuit->moveTerminals(from, to);
    if (emptied && m_circuit) {
        m_circuit->removeNode(emptied);
    }
}

bool CircuitSolver::breakConnection(ICircuitNode* node) {
    CircuitNode* known = own(node);
    if (!known) {
        return false;
    }
    m_circuit->removeNode(known);
    return true;
}

bool CircuitSolver::breakConnection(ICircuitElementNode* elementNode, ICircuitNode* node) {
    CircuitElementNode* terminal = own(elementNode);
    CircuitNode* known = own(node);
    if (!terminal || !known || terminal->node() != known) {
        return false;
    }
    m_circuit->detach(terminal);
    return true;
}

bool CircuitSolver::disconnectElement(ICircuitElement* element) {
    const QPointer<CircuitElement> known = CircuitElement::from(element);
    bool cut = false;
    for (int i = 0; known && i < known->terminals().size(); ++i) {
        CircuitElementNode* terminal = own(known->terminals().at(i));
        if (terminal && terminal->node()) {
            m_circuit->detach(terminal);
            cut = true;
        }
    }
    return cut;
}

bool CircuitSolver::disconnectElement(ICircuitElement* a, ICircuitElement* b) {
    const QPointer<CircuitElement> first = CircuitElement::from(a);
    const QPointer<CircuitElement> second = CircuitElement::from(b);
    if (!first || !second || first == second) {
        return false;
    }
    // Collected before the first cut, which may already dissolve the shared net.
    QVector<QPointer<CircuitElementNode>> shared;
    for (CircuitElementNode* terminal : first->terminals()) {
        for (CircuitElementNode* other : second->terminals()) {
            if (terminal->node() && terminal->node() == other->node() && own(terminal)) {
                shared.append(terminal);
                break;
            }
        }
    }
    for (const QPointer<CircuitElementNode>& terminal : qAsConst(shared)) {
        if (terminal && m_circuit) {
            m_circuit->detach(terminal);
        }
    }
    return !shared.isEmpty();
}
