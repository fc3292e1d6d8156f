#include "OutputVariable.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"

OutputVariable::OutputVariable(Type type, Circuit* circuit)
    : QObject(circuit), m_circuit(circuit), m_type(type) {}

OutputVariable::~OutputVariable() {
    if (m_inCircuit) {
        m_circuit->forget(this);
    }
}

OutputVariable* OutputVariable::from(ICircuitOutputVariable* variable) {
    return variable ? qobject_cast<OutputVariable*>(variable->containerObject()) : nullptr;
}

QString OutputVariable::name() {
    return m_name;
}

void OutputVariable::setName(QString name) {
    if (name == m_name) {
        return;
    }
    const QString oldName = m_name;
    m_name = name;
    setObjectName(name);
    if (m_inCircuit) {
        m_circuit->outputVariableRenamed(this, oldName);
    }
}

void OutputVariable::setAC(bool ac) {
    if (ac != m_ac) {
        m_ac = ac;
        if (m_inCircuit) {
            emit m_circuit->outputVariableEdited(this);
        }
    }
}

bool OutputVariable::isAC() {
    return m_ac;
}

int OutputVariable::type() {
    return m_type;
}

ICircuitElement* OutputVariable::element() {
    return m_element;
}

ICircuitElementNode* OutputVariable::elementNode() {
    return m_terminal;
}

ICircuitNode* OutputVariable::node() {
    return m_node;
}

QString OutputVariable::elementVarName() {
    return m_elementVarName;
}
