#include "Circuit.h"

#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "ElementDescription.h"
#include "ICircuitSolver.h"
#include "OutputVariable.h"

namespace {

template <class List>
void moveRow(List& list, int from, int to) {
    if (from >= 0 && from < list.size() && to >= 0 && to < list.size()) {
        list.move(from, to);
    }
}

}  // namespace

Circuit::Circuit(QObject* parent) : QObject(parent) {}

Circuit::~Circuit() {
    // The children die after this, in no order that they could rely on: none may look at another.
    for (CircuitNode* node : qAsConst(m_nodes)) {
        node->m_inCircuit = false;
        node->m_terminals.clear();
    }
    for (CircuitElement* element : qAsConst(m_elements)) {
        element->m_inCircuit = false;
    }
    for (OutputVariable* variable : qAsConst(m_outputs)) {
        variable->m_inCircuit = false;
    }
}

ICircuitSolver* Circuit::circuitSolver() {
    return m_solverObject ? m_solver : nullptr;
}

void Circuit::setCircuitSolver(ICircuitSolver* solver) {
    m_solver = solver;
    m_solverObject = solver ? solver->containerObject() : nullptr;
}

void Circuit::setTitle(QString title) {
    if (title != m_title) {
        m_title = title;
        emit titleChanged(title);
    }
}

QString Circuit::title() {
    return m_title;
}

void Circuit::addElement(ICircuitElement* element) {
    CircuitElement* added = CircuitElement::from(element);
    if (!added || added->m_circuit) {
        return;
    }
    added->setParent(this);
    added->m_circuit = this;
    if (added->name().isEmpty() || m_elementNames.contains(added->name())) {
        added->changeName(m_elementNames.lowestFree(added->description()->data().namePrefix));
    }
    m_elementNames.take(added->name());
    m_elements.append(added);
    added->m_inCircuit = true;
    emit elementAdded(added);
}

void Circuit::removeElement(ICircuitElement* element) {
    const QPointer<CircuitElement> removed = CircuitElement::from(element);
    if (!removed || removed->m_circuit != this || !removed->m_inCircuit) {
        return;
    }
    forget(removed.data());
    if (removed) {
        removed->deleteLater();
    }
}

void Circuit::forget(CircuitElement* element) {
    const QPointer<CircuitElement> guard(element);
    disconnectTerminals(element);
    if (guard) {
        removeOutputVariablesOf(element);
    }
    // A listener may have removed the element meanwhile.
    if (!guard || !element->m_inCircuit) {
        return;
    }
    m_elements.removeAt(m_elements.lastIndexOf(element));
    m_elementNames.release(element->m_name);
    element->m_inCircuit = false;
    emit elementRemoved(element);
}

void Circuit::disconnectTerminals(CircuitElement* element) {
    const QPointer<CircuitElement> guard(element);
    for (int i = 0; guard && i < element->m_terminals.size(); ++i) {
        detach(element->m_terminals.at(i));
    }
}

int Circuit::elementCount() {
    return m_elements.size();
}

ICircuitElement* Circuit::element(int index) {
    return m_elements.value(index);
}

CircuitElement* Circuit::elementNamed(const QString& name) const {
    if (!m_elementNames.contains(name)) {
        return nullptr;
    }
    for (CircuitElement* element : m_elements) {
        if (element->m_name == name) {
            return element;
        }
    }
    return nullptr;
}

bool Circuit::renameElement(const QString& oldName, const QString& newName) {
    if (m_elementNames.contains(newName)) {
        return false;
    }
    m_elementNames.release(oldName);
    m_elementNames.take(newName);
    return true;
}

CircuitNode* Circuit::addNode(CircuitElementNode* a, CircuitElementNode* b) {
    const QPointer<CircuitNode> node(new CircuitNode(a->type(), this));
    node->adopt(a);
    node->adopt(b);
    const QString fixed = node->fixedName();
    node->m_name = fixed.isEmpty() ? freeNetName() : fixed;
    node->setObjectName(node->m_name);
    m_netNames.take(node->m_name);
    m_nodes.append(node);
    node->m_inCircuit = true;
    emit nodeAdded(node);
    if (node) {
        node->announceName();
    }
    return node && node->m_inCircuit ? node.data() : nullptr;
}

void Circuit::attach(CircuitElementNode* terminal, CircuitNode* node) {
    node->addTerminal(terminal);
}

void Circuit::detach(CircuitElementNode* terminal) {
    const QPointer<CircuitNode> node(terminal->node());
    if (!node) {
        return;
    }
    const bool dissolves = node->m_terminals.size() <= 2;
    node->removeTerminal(node->m_terminals.lastIndexOf(terminal),
                         dissolves ? CircuitNode::Naming::Keep : CircuitNode::Naming::Update);
    if (node && node->m_terminals.size() < 2) {
        removeNode(node);
    }
}

void Circuit::moveTerminals(CircuitNode* from, CircuitNode* to) {
    const QPointer<CircuitNode> source(from);
    const QPointer<CircuitNode> target(to);
    const QString name = from->m_name;
    // A fixed name comes along with its terminal.
    const bool nameMoves = CircuitNode::isAutomaticName(to->m_name) &&
                           !CircuitNode::isAutomaticName(name) && !from->hasFixedName();
    while (source && target && target->takesTerminals() && !source->m_terminals.isEmpty()) {
        const QPointer<CircuitElementNode> terminal(source->m_terminals.first());
        source->removeTerminal(0, CircuitNode::Naming::Keep);
        if (terminal && !terminal->node() && target && target->takesTerminals()) {
            target->addTerminal(terminal);
        }
    }
    if (target && nameMoves) {
        target->setName(name);
    }
}

void Circuit::removeNode(ICircuitNode* node) {
    const QPointer<CircuitNode> removed = CircuitNode::from(node);
    if (!removed || removed->m_circuit != this || !removed->m_inCircuit) {
        return;
    }
    forget(removed.data());
    if (removed) {
        removed->deleteLater();
    }
}

void Circuit::forget(CircuitNode* node) {
    const QPointer<CircuitNode> guard(node);
    node->m_dissolving = true;
    removeOutputVariablesOf(node);
    // A listener may have removed the node meanwhile.
    if (!guard || !node->m_inCircuit) {
        return;
    }
    m_nodes.removeAt(m_nodes.lastIndexOf(node));
    m_netNames.release(node->m_name);
    node->m_inCircuit = false;
    // While the net is whole: whoever draws it takes the drawing away once, and doesn't draw it
    // anew for each terminal that leaves.
    emit nodeRemoved(node);
    while (guard && !node->m_terminals.isEmpty()) {
        node->removeTerminal(node->m_terminals.size() - 1, CircuitNode::Naming::Keep);
    }
}

int Circuit::nodeCount() {
    return m_nodes.size();
}

ICircuitNode* Circuit::node(int index) {
    return m_nodes.value(index);
}

QList<ICircuitNode*> Circuit::nodes(QString name) {
    QList<ICircuitNode*> result;
    for (CircuitNode* node : qAsConst(m_nodes)) {
        if (node->m_name == name) {
            result.append(node);
        }
    }
    return result;
}

void Circuit::renameNet(const QString& oldName, const QString& newName) {
    m_netNames.release(oldName);
    m_netNames.take(newName);
}

void Circuit::clear() {
    // From the end of each list, and what refers to others before what is referred to: nothing is
    // searched for, and the time grows with the size of the circuit and no faster.
    while (!m_outputs.isEmpty()) {
        removeOutputVariable(m_outputs.last());
    }
    while (!m_nodes.isEmpty()) {
        forget(m_nodes.last());
    }
    while (!m_elements.isEmpty()) {
        forget(m_elements.last());
    }
    while (!m_globals.isEmpty()) {
        removeGlobalVariable(m_globals.last().name);
    }
    destroyDropped();
}

void Circuit::destroyDropped() {
    // In the order of the children: each then finds itself first among them when it goes.
    for (QObject* child : children()) {
        const auto* element = qobject_cast<CircuitElement*>(child);
        const auto* node = qobject_cast<CircuitNode*>(child);
        if ((element && element->m_circuit == this && !element->m_inCircuit) ||
            (node && !node->m_inCircuit)) {
            child->deleteLater();
        }
    }
}

void Circuit::addModel(const QString& name, const QString& file) {
    for (auto& model : m_models) {
        if (model.first == name) {
            model.second = file;
            return;
        }
    }
    m_models.append({name, file});
}

int Circuit::modelCount() {
    return m_models.size();
}

QString Circuit::modelName(int index) {
    return m_models.value(index).first;
}

QString Circuit::modelFile(int index) {
    return m_models.value(index).second;
}

void Circuit::moveElement(int from, int to) {
    moveRow(m_elements, from, to);
}

void Circuit::moveNode(int from, int to) {
    moveRow(m_nodes, from, to);
}

void Circuit::moveGlobalVariable(int from, int to) {
    moveRow(m_globals, from, to);
}
