// The circuit's global parameters and output variables.

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "OutputVariable.h"
#include "ParameterExpression.h"

int Circuit::indexOfGlobalVariable(const QString& name) const {
    for (int i = 0; i < m_globals.size(); ++i) {
        if (m_globals.at(i).name == name) {
            return i;
        }
    }
    return -1;
}

void Circuit::storeGlobalVariable(const GlobalVariable& variable) {
    // Adding never changes what is there: its value would be lost.
    if (!variable.name.isEmpty() && indexOfGlobalVariable(variable.name) < 0) {
        m_globals.append(variable);
        emit globalVariableAdded(variable.name);
    }
}

void Circuit::addGlobalVariable(QString name, QVariant value, bool isReal) {
    storeGlobalVariable({name, value, isReal ? GlobalVariable::Real : GlobalVariable::Integer});
}

void Circuit::addStringGlobalVariable(QString name, QString value) {
    storeGlobalVariable({name, value, GlobalVariable::String});
}

void Circuit::removeGlobalVariable(QString name) {
    const int index = indexOfGlobalVariable(name);
    if (index >= 0) {
        m_globals.removeAt(index);
        emit globalVariableRemoved(name);
    }
}

int Circuit::globalVariableCount() {
    return m_globals.size();
}

QString Circuit::globalVariableName(int index) {
    return m_globals.value(index).name;
}

bool Circuit::isRealGlobalVariable(int index) {
    return m_globals.value(index).kind == GlobalVariable::Real;
}

bool Circuit::isStringGlobalVariable(int index) {
    return m_globals.value(index).kind == GlobalVariable::String;
}

QVariant Circuit::globalVariableValue(int index) {
    return m_globals.value(index).value;
}

void Circuit::setGlobalVariableValue(int index, const QVariant& value) {
    if (index < 0 || index >= m_globals.size() || m_globals.at(index).value == value) {
        return;
    }
    m_globals[index].value = value;
    emit globalVariableValueModified(m_globals.at(index).name, value.toString());
}

bool Circuit::changeGlobalVariableName(int index, QString name) {
    if (index < 0 || index >= m_globals.size() || name.isEmpty() ||
        indexOfGlobalVariable(name) >= 0) {
        return false;
    }
    const QString oldName = m_globals.at(index).name;
    m_globals[index].name = name;
    const QPointer<Circuit> self(this);
    emit globalVariableNameModified(oldName, name);
    if (self) {
        renameReferences(oldName, name);
    }
    return true;
}

void Circuit::renameReferences(const QString& oldName, const QString& newName) {
    const QPointer<Circuit> self(this);
    for (int i = 0; self && i < m_globals.size(); ++i) {
        const QString text = m_globals.at(i).value.toString();
        const QString renamed = ParameterExpression::renamed(text, oldName, newName);
        if (renamed != text) {
            setGlobalVariableValue(i, renamed);
        }
    }
    if (!self) {
        return;
    }
    // A listener may remove elements meanwhile.
    QVector<QPointer<CircuitElement>> elements;
    for (CircuitElement* element : qAsConst(m_elements)) {
        elements.append(element);
    }
    for (const QPointer<CircuitElement>& element : qAsConst(elements)) {
        if (element) {
            element->renameReferences(oldName, newName);
        }
    }
}

ICircuitOutputVariable* Circuit::outputVariable(int index) const {
    return m_outputs.value(index);
}

ICircuitOutputVariable* Circuit::addOutputVariable(ICircuitElement* element, QString varName) {
    CircuitElement* source = CircuitElement::from(element);
    if (!source || source->m_circuit != this || !source->m_inCircuit) {
        return nullptr;
    }
    auto* variable = new OutputVariable(ICircuitOutputVariable::ElementVariable, this);
    variable->m_element = source;
    variable->m_elementVarName = varName;
    return list(variable);
}

ICircuitOutputVariable* Circuit::addOutputVariable(ICircuitElement* element,
                                                   ICircuitElementNode* elementNode) {
    CircuitElement* source = CircuitElement::from(element);
    CircuitElementNode* terminal = CircuitElementNode::from(elementNode);
    if (!source || source->m_circuit != this || !source->m_inCircuit || !terminal ||
        terminal->owner() != source) {
        return nullptr;
    }
    auto* variable = new OutputVariable(ICircuitOutputVariable::TerminalVariable, this);
    variable->m_element = source;
    variable->m_terminal = terminal;
    return list(variable);
}

ICircuitOutputVariable* Circuit::addOutputVariable(ICircuitNode* node) {
    CircuitNode* source = CircuitNode::from(node);
    if (!source || source->m_circuit != this || !source->takesTerminals()) {
        return nullptr;
    }
    auto* variable = new OutputVariable(ICircuitOutputVariable::NodeVariable, this);
    variable->m_node = source;
    return list(variable);
}

ICircuitOutputVariable* Circuit::list(OutputVariable* variable) {
    variable->m_name = m_outputNames.lowestFree(QStringLiteral("out"));
    variable->setObjectName(variable->m_name);
    variable->m_inCircuit = true;
    m_outputNames.take(variable->m_name);
    m_outputs.append(variable);
    const QPointer<OutputVariable> guard(variable);
    emit outputVariableAdded(variable);
    return guard && guard->m_inCircuit ? guard.data() : nullptr;
}

void Circuit::outputVariableRenamed(OutputVariable* variable, const QString& oldName) {
    m_outputNames.release(oldName);
    m_outputNames.take(variable->m_name);
    emit outputVariableEdited(variable);
}

void Circuit::removeOutputVariable(ICircuitOutputVariable* variable) {
    const QPointer<OutputVariable> removed = OutputVariable::from(variable);
    if (!removed || removed->m_circuit != this || !removed->m_inCircuit) {
        return;
    }
    forget(removed.data());
    if (removed) {
        removed->deleteLater();
    }
}

void Circuit::forget(OutputVariable* variable) {
    m_outputs.removeAt(m_outputs.lastIndexOf(variable));
    m_outputNames.release(variable->m_name);
    variable->m_inCircuit = false;
    emit outputVariableRemoved(variable);
}

void Circuit::moveOutputVariable(int from, int to) {
    if (from >= 0 && from < m_outputs.size() && to >= 0 && to < m_outputs.size()) {
        m_outputs.move(from, to);
    }
}

void Circuit::removeOutputVariablesOf(const QObject* source) {
    // A listener may remove others meanwhile.
    for (int i = m_outputs.size() - 1; i >= 0; --i) {
        OutputVariable* variable = m_outputs.value(i);
        if (variable && (variable->m_element == source || variable->m_node == source)) {
            removeOutputVariable(variable);
        }
    }
}
