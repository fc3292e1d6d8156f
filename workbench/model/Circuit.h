#pragma once

#include "ICircuit.h"
#include "ICircuitGlobalVariableChangeNameSupport.h"
#include "ICircuitGlobalVariableModifiedSignalSupport.h"
#include "ICircuitOutputVariableReorderSupport.h"
#include "ICircuitReorderSupport.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ICircuitTitle.h"
#include "IEditableProperties.h"
#include "NameRegistry.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QVector>

class CircuitElement;
class CircuitElementNode;
class CircuitNode;
class OutputVariable;

/// The circuit. Owns its elements, nodes and output variables. What it drops it reports while it is
/// still whole and then destroys with `deleteLater`; until that happens, and at the latest when the
/// circuit dies, the dropped object stays a child of the circuit. Listeners may change the circuit
/// from within any signal.
class Circuit : public QObject,
                public ICircuit,
                public ICircuitTitle,
                public ICircuitStringGlobalVariableSupport,
                public ICircuitGlobalVariableChangeNameSupport,
                public ICircuitGlobalVariableModifiedSignalSupport,
                public ICircuitOutputVariableReorderSupport,
                public ICircuitReorderSupport,
                public IEditableProperties {
    Q_OBJECT
    Q_INTERFACES(
        ICircuit ICircuitTitle ICircuitStringGlobalVariableSupport
            ICircuitGlobalVariableChangeNameSupport ICircuitGlobalVariableModifiedSignalSupport
                ICircuitOutputVariableReorderSupport ICircuitReorderSupport IEditableProperties)
    Q_PROPERTY(QString Title READ title WRITE setTitle NOTIFY titleChanged)

public:
    explicit Circuit(QObject* parent = nullptr);
    /// Emits nothing.
    ~Circuit() override;

    int outputVariableCount() const { return m_outputs.size(); }
    /// Null out of range.
    ICircuitOutputVariable* outputVariable(int index) const;
    /// The element with the instance name, or null.
    CircuitElement* elementNamed(const QString& name) const;
    /// As what this circuit's elements and nodes know it: the circuit itself, or the element whose
    /// inside it is, which owns it.
    ICircuit* face() { return m_face ? m_face : this; }
    void setFace(ICircuit* face) { m_face = face; }
    /// Called by the solver that takes this circuit on.
    void setCircuitSolver(ICircuitSolver* solver);
    /// Adds a row to the table of device models; a known name gets the new file.
    Q_INVOKABLE virtual void addModel(const QString& name, const QString& file);
    virtual void setGlobalVariableValue(int index, const QVariant& value);

    // What the solver is made of. Each emits the signals of what it does, so that any pointer may
    // have died when it returns, unless it is the answer.
    /// A new node that holds both terminals, which must be unconnected. Null if a listener has
    /// dissolved it at once.
    CircuitNode* addNode(CircuitElementNode* a, CircuitElementNode* b);
    /// The terminal must be unconnected and of the node's type.
    void attach(CircuitElementNode* terminal, CircuitNode* node);
    /// Takes the terminal off its net, which dissolves if fewer than two are left.
    void detach(CircuitElementNode* terminal);
    /// Moves all terminals, one by one, and the better of the two names; leaves `from` empty but
    /// in the circuit.
    void moveTerminals(CircuitNode* from, CircuitNode* to);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuit
    ICircuitSolver* circuitSolver() override;
    /// Ignores an element that has been in a circuit before. An element whose name is empty or
    /// taken gets an automatic one.
    void addElement(ICircuitElement* element) override;
    /// The element's terminals leave their nets first, and the output variables that refer to it
    /// go.
    void removeElement(ICircuitElement* element) override;
    int elementCount() override;
    ICircuitElement* element(int index) override;
    void removeNode(ICircuitNode* node) override;
    int nodeCount() override;
    ICircuitNode* node(int index) override;
    QList<ICircuitNode*> nodes(QString name) override;
    /// Removes the global parameters and output variables, too.
    void clear() override;
    /// A name that exists gets the new value and kind.
    void addGlobalVariable(QString name, QVariant value, bool isReal) override;
    void removeGlobalVariable(QString name) override;
    int globalVariableCount() override;
    QString globalVariableName(int index) override;
    bool isRealGlobalVariable(int index) override;
    QVariant globalVariableValue(int index) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitElement* element, QString varName) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitElement* element,
                                              ICircuitElementNode* elementNode) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitNode* node) override;
    void removeOutputVariable(ICircuitOutputVariable* variable) override;
    int modelCount() override;
    QString modelName(int index) override;
    QString modelFile(int index) override;

    // ICircuitTitle
    void setTitle(QString title) override;
    QString title() override;

    // ICircuitStringGlobalVariableSupport
    void addStringGlobalVariable(QString name, QString value) override;
    bool isStringGlobalVariable(int index) override;

    // ICircuitGlobalVariableChangeNameSupport
    /// Values that refer to the parameter take the new name.
    bool changeGlobalVariableName(int index, QString name) override;

    // ICircuitOutputVariableReorderSupport
    void moveOutputVariable(int from, int to) override;

    // ICircuitReorderSupport
    void moveElement(int from, int to) override;
    void moveNode(int from, int to) override;
    void moveGlobalVariable(int from, int to) override;

    // IEditableProperties: the global parameters. A number takes engineering notation or an
    // expression, and ignores anything else.
    int propertyCount() override;
    QString propertyName(int index) override;
    QString propertyGroup(int index) override;
    QVariant propertyValue(int index) override;
    QString propertyValueString(int index) override;
    void setPropertyValue(int index, QVariant value) override;

signals:
    void elementAdded(ICircuitElement* element);
    void elementRemoved(ICircuitElement* element);
    void nodeAdded(ICircuitNode* node);
    void nodeRemoved(ICircuitNode* node);
    void globalVariableAdded(QString name);
    void globalVariableRemoved(QString name);
    void globalVariableNameModified(QString oldName, QString newName);
    void globalVariableValueModified(QString name, QString value);
    void outputVariableAdded(ICircuitOutputVariable* variable);
    void outputVariableEdited(ICircuitOutputVariable* variable);
    void outputVariableRemoved(ICircuitOutputVariable* variable);
    void titleChanged(QString title);

private:
    friend class CircuitElement;
    friend class CircuitNode;
    friend class OutputVariable;

    struct GlobalVariable {
        enum Kind { Integer, Real, String };
        QString name;
        QVariant value;
        Kind kind = Integer;
    };

    // Everything that leaves goes through one of these, whoever started it; they end with the
    // signal and leave the destruction to the caller.
    void forget(CircuitElement* element);
    void forget(CircuitNode* node);
    void forget(OutputVariable* variable);

    /// False if the new name is taken.
    bool renameElement(const QString& oldName, const QString& newName);
    void renameNet(const QString& oldName, const QString& newName);
    QString freeNetName() { return m_netNames.lowestFree(QStringLiteral("n")); }
    void outputVariableRenamed(OutputVariable* variable, const QString& oldName);

    void destroyDropped();
    void disconnectTerminals(CircuitElement* element);
    ICircuitOutputVariable* list(OutputVariable* variable);
    /// Those of an element, of its terminals, or of a node.
    void removeOutputVariablesOf(const QObject* source);
    void storeGlobalVariable(const GlobalVariable& variable);
    int indexOfGlobalVariable(const QString& name) const;
    void renameReferences(const QString& oldName, const QString& newName);

    ICircuit* m_face = nullptr;
    QString m_title;
    ICircuitSolver* m_solver = nullptr;
    QPointer<QObject> m_solverObject;
    QList<CircuitElement*> m_elements;
    QList<CircuitNode*> m_nodes;
    QList<OutputVariable*> m_outputs;
    NameRegistry m_elementNames;
    NameRegistry m_netNames;
    NameRegistry m_outputNames;
    QVector<GlobalVariable> m_globals;
    QVector<QPair<QString, QString>> m_models;
};
