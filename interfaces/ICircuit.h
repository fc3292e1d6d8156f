#pragma once

#include "IContainer.h"

#include <QList>
#include <QString>
#include <QVariant>

class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;
class ICircuitOutputVariable;
class ICircuitSolver;

/// The circuit model. It owns its elements, nodes and output variables and reports every change
/// synchronously, on the calling thread, through the signals of its object:
/// `elementAdded(ICircuitElement*)`, `elementRemoved(ICircuitElement*)`,
/// `nodeAdded(ICircuitNode*)`, `nodeRemoved(ICircuitNode*)`, `globalVariableAdded(QString)`,
/// `globalVariableRemoved(QString)`, `outputVariableAdded(ICircuitOutputVariable*)`,
/// `outputVariableEdited(ICircuitOutputVariable*)` and
/// `outputVariableRemoved(ICircuitOutputVariable*)`. Index arguments run from 0; an index out of
/// range yields null or an empty value.
class ICircuit : public virtual IContainer {
public:
    /// The solver that works on this circuit; all connections go through it.
    virtual ICircuitSolver* circuitSolver() = 0;

    /// Takes ownership. `elementAdded` has been emitted when this returns.
    virtual void addElement(ICircuitElement* element) = 0;
    /// Emits `elementRemoved` while the element is still whole, then destroys it.
    virtual void removeElement(ICircuitElement* element) = 0;
    virtual int elementCount() = 0;
    /// Elements in creation order.
    virtual ICircuitElement* element(int index) = 0;

    /// Drops the node from the circuit with `nodeRemoved`; a node that is not listed is ignored.
    virtual void removeNode(ICircuitNode* node) = 0;
    virtual int nodeCount() = 0;
    virtual ICircuitNode* node(int index) = 0;
    /// All nodes that bear the name: several node objects may be one net by name.
    virtual QList<ICircuitNode*> nodes(QString name) = 0;

    /// Removes all elements and nodes, each with its signal.
    virtual void clear() = 0;

    /// `isReal` false means an integer parameter.
    virtual void addGlobalVariable(QString name, QVariant value, bool isReal) = 0;
    virtual void removeGlobalVariable(QString name) = 0;
    virtual int globalVariableCount() = 0;
    virtual QString globalVariableName(int index) = 0;
    virtual bool isRealGlobalVariable(int index) = 0;
    virtual QVariant globalVariableValue(int index) = 0;

    /// Output variable of kind 2: a named variable of an element.
    virtual ICircuitOutputVariable* addOutputVariable(ICircuitElement* element,
                                                      QString varName) = 0;
    /// Output variable of kind 1: a terminal.
    virtual ICircuitOutputVariable* addOutputVariable(ICircuitElement* element,
                                                      ICircuitElementNode* elementNode) = 0;
    /// Output variable of kind 0: a node.
    virtual ICircuitOutputVariable* addOutputVariable(ICircuitNode* node) = 0;
    virtual void removeOutputVariable(ICircuitOutputVariable* variable) = 0;

    /// The circuit's table of device models.
    virtual int modelCount() = 0;
    virtual QString modelName(int index) = 0;
    virtual QString modelFile(int index) = 0;

protected:
    ~ICircuit() = default;
};

Q_DECLARE_INTERFACE(ICircuit, "com.tesmira.ICircuit/1.0")
