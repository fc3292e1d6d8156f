#pragma once

#include "Circuit.h"
#include "CircuitElement.h"

#include <QPointer>
#include <QVector>

#include <memory>

class SubCircuitDescription;

/// An element that is itself a circuit: the project that its type has inside, built when it is
/// first looked at. Elements and nodes come by record of that project, so that the record of the
/// same index tells where each is drawn; a record that nothing could be made of holds its place
/// with null. The inside stays as it is stored: what would change it does nothing, and no solver
/// works on it.
class SubCircuitElement : public CircuitElement, public ICircuit {
    Q_OBJECT
    Q_INTERFACES(ICircuit)

public:
    explicit SubCircuitElement(SubCircuitDescription* description, QObject* parent = nullptr);
    ~SubCircuitElement() override;

    /// The inside's net that the terminal is tied to; null for an unknown terminal, and for a net
    /// that has lost its elements.
    ICircuitNode* innerNode(const QString& terminalName);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuit
    ICircuitSolver* circuitSolver() override { return nullptr; }
    /// The element stays the caller's.
    void addElement(ICircuitElement*) override {}
    void removeElement(ICircuitElement*) override {}
    int elementCount() override;
    ICircuitElement* element(int index) override;
    void removeNode(ICircuitNode*) override {}
    int nodeCount() override;
    ICircuitNode* node(int index) override;
    QList<ICircuitNode*> nodes(QString name) override;
    void clear() override {}
    void addGlobalVariable(QString, QVariant, bool) override {}
    void removeGlobalVariable(QString) override {}
    int globalVariableCount() override;
    QString globalVariableName(int index) override;
    bool isRealGlobalVariable(int index) override;
    QVariant globalVariableValue(int index) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitElement*, QString) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitElement*, ICircuitElementNode*) override;
    ICircuitOutputVariable* addOutputVariable(ICircuitNode*) override;
    void removeOutputVariable(ICircuitOutputVariable*) override {}
    int modelCount() override { return 0; }
    using CircuitElement::modelName;
    QString modelName(int) override { return {}; }
    QString modelFile(int) override { return {}; }

private:
    Circuit& inside();
    void build();
    void buildElements();
    void buildNodes();

    SubCircuitDescription* m_type;
    std::unique_ptr<Circuit> m_inside;
    QVector<QPointer<CircuitElement>> m_elements;
    QVector<QPointer<CircuitNode>> m_nodes;
};
