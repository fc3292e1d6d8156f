#include "CircuitElement.h"

#include "Circuit.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "ElementDescription.h"
#include "ParameterExpression.h"

#include <QPointer>

CircuitElement::CircuitElement(ElementDescription* description, QObject* parent)
    : QObject(parent), m_description(description) {
    for (const TerminalData& terminal : description->data().terminals) {
        m_terminals.append(new CircuitElementNode(terminal, this));
    }
    for (const ParameterData& parameter : description->data().parameters) {
        m_values.append(parameter.value);
    }
}

CircuitElement::~CircuitElement() {
    if (m_inCircuit) {
        m_circuit->forget(this);
    }
}

CircuitElement* CircuitElement::from(ICircuitElement* element) {
    return element ? qobject_cast<CircuitElement*>(element->containerObject()) : nullptr;
}

QString CircuitElement::parameter(const QString& name) const {
    const QVector<ParameterData>& parameters = m_description->data().parameters;
    for (int i = 0; i < parameters.size(); ++i) {
        if (parameters.at(i).name == name) {
            return m_values.at(i);
        }
    }
    return {};
}

void CircuitElement::setName(const QString& name) {
    if (name.isEmpty() || name == m_name) {
        return;
    }
    if (m_inCircuit && !m_circuit->renameElement(m_name, name)) {
        return;
    }
    changeName(name);
}

void CircuitElement::changeName(const QString& name) {
    const bool captionFollows = m_caption == m_name;
    m_name = name;
    setObjectName(name);
    if (captionFollows) {
        m_caption = name;
    }
    const QPointer<CircuitElement> self(this);
    emit propertyChanged(QStringLiteral("Name"));
    if (self && captionFollows) {
        emit propertyChanged(QStringLiteral("Caption"));
    }
}

void CircuitElement::setRotation(int rotation) {
    if (rotation < 0 || rotation > 3 || rotation == m_rotation) {
        return;
    }
    m_rotation = rotation;
    const QPointer<CircuitElement> self(this);
    emit propertyChanged(QStringLiteral("Rotation"));
    if (self) {
        emit elementChanged();
    }
}

void CircuitElement::setFlip(int flip) {
    if (flip < 0 || flip > 2 || flip == m_flip) {
        return;
    }
    m_flip = flip;
    const QPointer<CircuitElement> self(this);
    emit propertyChanged(QStringLiteral("Flip"));
    if (self) {
        emit elementChanged();
    }
}

QString CircuitElement::name() {
    return m_name;
}

QString CircuitElement::caption() {
    return m_caption;
}

void CircuitElement::setCaption(QString caption) {
    if (caption != m_caption) {
        m_caption = caption;
        emit propertyChanged(QStringLiteral("Caption"));
    }
}

ICircuit* CircuitElement::circuit() {
    return m_circuit ? m_circuit->face() : nullptr;
}

ICircuitElementVisual* CircuitElement::visual() {
    return m_description->visual();
}

ICircuitElementDesc* CircuitElement::desc() {
    return m_description;
}

QStringList CircuitElement::elementNodeNames() {
    QStringList names;
    for (CircuitElementNode* terminal : qAsConst(m_terminals)) {
        names.append(terminal->name());
    }
    return names;
}

ICircuitElementNode* CircuitElement::elementNode(const QString& name) {
    for (CircuitElementNode* terminal : qAsConst(m_terminals)) {
        if (terminal->name() == name) {
            return terminal;
        }
    }
    return nullptr;
}

int CircuitElement::flip() {
    return m_flip;
}

int CircuitElement::rotation() {
    return m_rotation;
}

void CircuitElement::setModelName(QString name) {
    if (name == m_modelName) {
        return;
    }
    m_modelName = name;
    const QPointer<CircuitElement> self(this);
    emit assignedModelChanged();
    if (self) {
        emit propertyChanged(QStringLiteral("ModelName"));
    }
}

QString CircuitElement::modelName() {
    return m_modelName;
}

void CircuitElement::renameReferences(const QString& oldName, const QString& newName) {
    const QPointer<CircuitElement> self(this);
    for (int i = 0; self && i < m_values.size(); ++i) {
        if (m_description->data().parameters.at(i).kind == ParameterData::Number) {
            setPropertyValue(i, ParameterExpression::renamed(m_values.at(i), oldName, newName));
        }
    }
}

int CircuitElement::propertyCount() {
    return m_values.size() + m_terminals.size();
}

CircuitElementNode* CircuitElement::terminalAt(int index) const {
    return m_terminals.value(index - m_values.size());
}

QString CircuitElement::propertyName(int index) {
    if (isParameter(index)) {
        return m_description->data().parameters.at(index).name;
    }
    CircuitElementNode* terminal = terminalAt(index);
    return terminal ? terminal->name() : QString();
}

QString CircuitElement::propertyGroup(int index) {
    if (isParameter(index)) {
        return QStringLiteral("rparams");
    }
    return terminalAt(index) ? QStringLiteral("Nodes") : QString();
}

QVariant CircuitElement::propertyValue(int index) {
    if (isParameter(index)) {
        return m_values.at(index);
    }
    CircuitElementNode* terminal = terminalAt(index);
    if (!terminal) {
        return {};
    }
    return terminal->node() ? terminal->node()->name() : QString();
}

void CircuitElement::setPropertyValue(int index, QVariant value) {
    if (!value.canConvert<QString>()) {
        return;
    }
    if (isParameter(index)) {
        const ParameterData& parameter = m_description->data().parameters.at(index);
        const QString text = parameter.withoutUnit(value.toString().trimmed());
        if (parameter.accepts(text) && text != m_values.at(index)) {
            m_values[index] = text;
            emit propertyChanged(parameter.name);
        }
        return;
    }
    CircuitElementNode* terminal = terminalAt(index);
    if (terminal && terminal->node()) {
        terminal->node()->setName(value.toString());
    }
}

QString CircuitElement::propertyValueString(int index) {
    if (isParameter(index)) {
        return m_description->data().parameters.at(index).display(m_values.at(index));
    }
    return propertyValue(index).toString();
}
