#pragma once

#include "ICircuitOutputVariable.h"

#include <QObject>

class Circuit;
class CircuitElement;
class CircuitElementNode;
class CircuitNode;

/// A chosen output of the simulation. The circuit makes and owns it, and removes it before anything
/// that it refers to dies.
class OutputVariable : public QObject, public ICircuitOutputVariable {
    Q_OBJECT
    Q_INTERFACES(ICircuitOutputVariable)

public:
    /// A variable that is destroyed while in a circuit leaves it first, with its signal.
    ~OutputVariable() override;

    /// The model's variable behind an interface pointer; null for null and for a foreign object.
    static OutputVariable* from(ICircuitOutputVariable* variable);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitOutputVariable
    QString name() override;
    void setName(QString name) override;
    void setAC(bool ac) override;
    bool isAC() override;
    int type() override;
    ICircuitElement* element() override;
    ICircuitElementNode* elementNode() override;
    ICircuitNode* node() override;
    QString elementVarName() override;

private:
    friend class Circuit;

    OutputVariable(Type type, Circuit* circuit);

    Circuit* m_circuit = nullptr;
    bool m_inCircuit = false;
    Type m_type = NodeVariable;
    QString m_name;
    bool m_ac = false;
    CircuitElement* m_element = nullptr;
    CircuitElementNode* m_terminal = nullptr;
    CircuitNode* m_node = nullptr;
    QString m_elementVarName;
};
