#pragma once

// The least that the editor draws. A model that can be edited emits the signals when it changes.

#include <ICircuit.h>
#include <ICircuitElement.h>
#include <ICircuitElementDesc.h>
#include <ICircuitElementNode.h>
#include <ICircuitElementVisual.h>
#include <ICircuitNode.h>
#include <ICircuitSolver.h>
#include <Plexa/AbstractComponent.h>
#include <Plexa/DataStore.h>
#include <QPixmap>

struct Terminal : QObject, ICircuitElementNode {
    Terminal(ICircuitElement* resistor, QString end, QPointF place)
        : m_element(resistor), m_name(end), m_position(place) {}
    QObject* containerObject() override { return this; }
    ICircuitElement* element() override { return m_element; }
    QString name() override { return m_name; }
    QString type() override { return "e"; }
    QPointF position() override { return m_position; }
    QColor color() override { return Qt::blue; }
    ICircuitElement* m_element;
    QString m_name;
    QPointF m_position;
};

/// Its own type and picture, too, which others of the type would share.
struct Resistor : QObject, ICircuitElement, ICircuitElementDesc, ICircuitElementVisual {
    Q_OBJECT
    Q_INTERFACES(ICircuitElement ICircuitElementDesc ICircuitElementVisual)
public:
    Resistor(ICircuit* circuit, QString name) : m_circuit(circuit), m_name(name) {
        m_picture.fill(Qt::lightGray);
    }
    QObject* containerObject() override { return this; }
    QString name() override { return m_name; }
    QString caption() override { return m_name; }
    void setCaption(QString) override {}
    ICircuit* circuit() override { return m_circuit; }
    ICircuitElementVisual* visual() override { return this; }
    ICircuitElementDesc* desc() override { return this; }
    QStringList elementNodeNames() override { return {"p", "n"}; }
    ICircuitElementNode* elementNode(const QString& name) override {
        return name == "p" ? &m_p : name == "n" ? &m_n : nullptr;
    }
    int flip() override { return 0; }
    int rotation() override { return 0; }
    void setModelName(QString) override {}
    QString modelName() override { return {}; }
    QString label() override { return "Resistor"; }
    QString elementType() override { return "Resistor.Tiny"; }
    int category() override { return 0; }
    Plexa::DataStore info() override { return {}; }
    void queryInterface(const QString&, void** result) override { *result = nullptr; }

    QPixmap pixmap() override { return m_picture; }
    QPointF pictureOffset() override { return {}; }
    QSvgRenderer* renderer() override { return nullptr; }
    ICircuit* m_circuit;
    QString m_name;
    QPixmap m_picture{60, 16};
    Terminal m_p{this, "p", {-30, 0}}, m_n{this, "n", {30, 0}};
signals:
    void elementChanged();
    void assignedModelChanged();
};

struct Net : QObject, ICircuitNode {
    Q_OBJECT
    Q_INTERFACES(ICircuitNode)
public:
    Net(ICircuit* circuit, ICircuitElementNode* a, ICircuitElementNode* b)
        : m_circuit(circuit), m_ends{a, b} {}
    QObject* containerObject() override { return this; }
    ICircuit* circuit() override { return m_circuit; }
    int elementNodeCount() override { return 2; }
    ICircuitElementNode* elementNode(int index) override { return m_ends.value(index); }
    void setName(QString) override {}
    QString name() override { return {}; }
    int wireClearance() override { return 10; }
    QString type() override { return "e"; }
    ICircuit* m_circuit;
    QList<ICircuitElementNode*> m_ends;
signals:
    void nodeChanged();
    void elementNodeAdded(ICircuitElementNode* end);
    void elementNodeRemoved(ICircuitElementNode* end);
};

/// Model, solver and component in one.
struct TinyCircuit : Plexa::AbstractComponent, ICircuit, ICircuitSolver {
    Q_OBJECT
    Q_INTERFACES(ICircuit ICircuitSolver)
public:
    QObject* containerObject() override { return this; }
    QObject* fetchObject(const QString& name) const override {
        return name == "TinyCircuit.solver" ? const_cast<TinyCircuit*>(this) : nullptr;
    }
    ICircuitSolver* circuitSolver() override { return this; }
    ICircuit* circuit() override { return this; }
    QString circuitSolverName() override { return "none"; }
    int elementCount() override { return 2; }
    ICircuitElement* element(int index) override { return index == 0 ? &m_r1 : &m_r2; }
    int nodeCount() override { return m_nets; }
    ICircuitNode* node(int) override { return &m_net; }
    QList<ICircuitNode*> nodes(QString) override { return {}; }
    // clang-format off
    void join() { m_nets = 1; emit nodeAdded(&m_net); }
    // Nothing can be changed, and there are no parameters, output variables nor device models.
    void addElement(ICircuitElement*) override {}  void removeElement(ICircuitElement*) override {}
    void removeNode(ICircuitNode*) override {}  void clear() override {}
    ICircuitNode* makeConnection(ICircuitElementNode*, ICircuitElementNode*) override { return {}; }
    bool makeConnection(ICircuitElementNode*, ICircuitNode*) override { return false; }
    bool breakConnection(ICircuitNode*) override { return false; }
    bool breakConnection(ICircuitElementNode*, ICircuitNode*) override { return false; }
    bool disconnectElement(ICircuitElement*) override { return false; }
    bool disconnectElement(ICircuitElement*, ICircuitElement*) override { return false; }
    void addGlobalVariable(QString, QVariant, bool) override {}
    void removeGlobalVariable(QString) override {}
    int globalVariableCount() override { return 0; }
    QString globalVariableName(int) override { return {}; }
    bool isRealGlobalVariable(int) override { return false; }
    QVariant globalVariableValue(int) override { return {}; }
    ICircuitOutputVariable* addOutputVariable(ICircuitElement*, QString) override { return {}; }
    ICircuitOutputVariable* addOutputVariable(ICircuitElement*, ICircuitElementNode*) override { return {}; }
    ICircuitOutputVariable* addOutputVariable(ICircuitNode*) override { return {}; }
    void removeOutputVariable(ICircuitOutputVariable*) override {}
    int modelCount() override { return 0; }
    QString modelName(int) override { return {}; }  QString modelFile(int) override { return {}; }
    Resistor m_r1{this, "R1"}, m_r2{this, "R2"};
    int m_nets = 0;
    Net m_net{this, m_r1.elementNode("n"), m_r2.elementNode("p")};
signals:
    void elementAdded(ICircuitElement* element);  void elementRemoved(ICircuitElement* element);
    void nodeAdded(ICircuitNode* node);  void nodeRemoved(ICircuitNode* node);
    void globalVariableAdded(QString name);  void globalVariableRemoved(QString name);
    void outputVariableAdded(ICircuitOutputVariable* variable);
    void outputVariableRemoved(ICircuitOutputVariable* variable);
    void outputVariableEdited(ICircuitOutputVariable* variable);
    // clang-format on
};
