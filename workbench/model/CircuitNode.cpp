#include "CircuitNode.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"

#include <QPointer>
#include <QRegularExpression>

CircuitNode::CircuitNode(QString type, Circuit* circuit)
    : QObject(circuit), m_circuit(circuit), m_type(std::move(type)) {}

CircuitNode::~CircuitNode() {
    if (m_inCircuit) {
        m_circuit->forget(this);
    }
    // What a listener of the removal destroys at once still holds its terminals.
    for (CircuitElementNode* terminal : qAsConst(m_terminals)) {
        terminal->m_node = nullptr;
    }
}

CircuitNode* CircuitNode::from(ICircuitNode* node) {
    return node ? qobject_cast<CircuitNode*>(node->containerObject()) : nullptr;
}

bool CircuitNode::isAutomaticName(const QString& name) {
    static const QRegularExpression pattern(QStringLiteral("\\An[1-9][0-9]*\\z"));
    return pattern.match(name).hasMatch();
}

void CircuitNode::setWireClearance(int clearance) {
    if (clearance >= 0 && clearance != m_wireClearance) {
        m_wireClearance = clearance;
        emit nodeChanged();
    }
}

ICircuit* CircuitNode::circuit() {
    return m_circuit ? m_circuit->face() : nullptr;
}

int CircuitNode::elementNodeCount() {
    return m_terminals.size();
}

ICircuitElementNode* CircuitNode::elementNode(int index) {
    return m_terminals.value(index);
}

void CircuitNode::setName(QString name) {
    if (name.isEmpty() || name == m_name || !m_inCircuit || hasFixedName()) {
        return;
    }
    rename(name);
}

QString CircuitNode::name() {
    return m_name;
}

int CircuitNode::wireClearance() {
    return m_wireClearance;
}

QString CircuitNode::type() {
    return m_type;
}

int CircuitNode::propertyCount() {
    return 1;
}

QString CircuitNode::propertyName(int index) {
    return index == 0 ? QStringLiteral("Name") : QString();
}

QString CircuitNode::propertyGroup(int index) {
    return index == 0 ? QStringLiteral("node") : QString();
}

QVariant CircuitNode::propertyValue(int index) {
    return index == 0 ? QVariant(m_name) : QVariant();
}

void CircuitNode::setPropertyValue(int index, QVariant value) {
    if (index == 0 && value.canConvert<QString>()) {
        setName(value.toString());
    }
}

QString CircuitNode::propertyValueString(int index) {
    return propertyValue(index).toString();
}

QString CircuitNode::fixedName() const {
    for (const CircuitElementNode* terminal : m_terminals) {
        const QString name = terminal->fixedNetName();
        if (!name.isEmpty()) {
            return name;
        }
    }
    return {};
}

void CircuitNode::adopt(CircuitElementNode* terminal) {
    m_terminals.append(terminal);
    terminal->m_node = this;
}

void CircuitNode::addTerminal(CircuitElementNode* terminal) {
    adopt(terminal);
    const QPointer<CircuitNode> self(this);
    const QPointer<CircuitElementNode> joined(terminal);
    emit elementNodeAdded(terminal);
    // A listener may already have undone the join, or destroyed either side.
    if (joined && joined->m_node == self.data()) {
        announceNet(joined);
    }
    if (self && joined && joined->m_node == this && !joined->fixedNetName().isEmpty() &&
        m_inCircuit) {
        rename(fixedName());
    }
}

void CircuitNode::removeTerminal(int index, Naming naming) {
    CircuitElementNode* terminal = m_terminals.takeAt(index);
    terminal->m_node = nullptr;
    const bool fixed = !terminal->fixedNetName().isEmpty();
    const QPointer<CircuitNode> self(this);
    const QPointer<CircuitElementNode> left(terminal);
    emit elementNodeRemoved(terminal);
    if (left && !left->m_node) {
        announceNet(left);
    }
    if (self && fixed && naming == Naming::Update && m_inCircuit) {
        const QString other = fixedName();
        rename(other.isEmpty() ? m_circuit->freeNetName() : other);
    }
}

void CircuitNode::rename(const QString& name) {
    if (name == m_name) {
        return;
    }
    m_circuit->renameNet(m_name, name);
    m_name = name;
    setObjectName(name);
    const QPointer<CircuitNode> self(this);
    emit nodeChanged();
    if (self) {
        announceName();
    }
}

void CircuitNode::announceName() {
    const QPointer<CircuitNode> self(this);
    for (int i = 0; self && i < m_terminals.size(); ++i) {
        announceNet(m_terminals.at(i));
    }
}

void CircuitNode::announceNet(CircuitElementNode* terminal) {
    emit terminal->owner()->propertyChanged(terminal->name());
}
