#include "HostFixture.h"

#include "ICircuitOutputVariable.h"

namespace {

ElementTypeData type(const char* name, const char* prefix, QVector<TerminalData> terminals,
                     QVector<ParameterData> parameters = {}) {
    ElementTypeData data;
    data.type = QLatin1String(name) + QLatin1String(".Test");
    data.label = QLatin1String(name);
    data.namePrefix = QLatin1String(prefix);
    data.terminals = std::move(terminals);
    data.parameters = std::move(parameters);
    return data;
}

TerminalData pin(const char* name, const char* kind, QPointF position, const char* netName = "") {
    return {QLatin1String(name), QLatin1String(kind), position, QLatin1String(netName)};
}

ParameterData parameter(const char* name, const char* value, const char* unit,
                        ParameterData::Kind kind, const QStringList& choices = {}) {
    return {QLatin1String(name), QLatin1String(value), QString::fromUtf8(unit), {}, kind, choices};
}

}  // namespace

SignalLog::SignalLog(Circuit& circuit) {
    connect(&circuit, &Circuit::elementAdded, this,
            [this](ICircuitElement* e) { m_lines << "elementAdded " + e->name(); });
    connect(&circuit, &Circuit::elementRemoved, this,
            [this](ICircuitElement* e) { m_lines << "elementRemoved " + e->name(); });
    connect(&circuit, &Circuit::nodeAdded, this, [this](ICircuitNode* n) {
        m_lines << QStringLiteral("nodeAdded %1 %2").arg(n->name()).arg(n->elementNodeCount());
        watch(CircuitNode::from(n));
    });
    connect(&circuit, &Circuit::nodeRemoved, this, [this](ICircuitNode* n) {
        m_lines << QStringLiteral("nodeRemoved %1 %2").arg(n->name()).arg(n->elementNodeCount());
    });
    connect(&circuit, &Circuit::outputVariableAdded, this,
            [this](ICircuitOutputVariable* v) { m_lines << "outputVariableAdded " + v->name(); });
    connect(&circuit, &Circuit::outputVariableEdited, this,
            [this](ICircuitOutputVariable* v) { m_lines << "outputVariableEdited " + v->name(); });
    connect(&circuit, &Circuit::outputVariableRemoved, this,
            [this](ICircuitOutputVariable* v) { m_lines << "outputVariableRemoved " + v->name(); });
    connect(&circuit, &Circuit::globalVariableAdded, this,
            [this](const QString& name) { m_lines << "globalVariableAdded " + name; });
    connect(&circuit, &Circuit::globalVariableRemoved, this,
            [this](const QString& name) { m_lines << "globalVariableRemoved " + name; });
    connect(&circuit, &Circuit::globalVariableNameModified, this,
            [this](const QString& from, const QString& to) {
                m_lines << "globalVariableNameModified " + from + ' ' + to;
            });
    connect(&circuit, &Circuit::globalVariableValueModified, this,
            [this](const QString& name, const QString& value) {
                m_lines << "globalVariableValueModified " + name + ' ' + value;
            });
}

void SignalLog::watch(CircuitElement* element) {
    connect(element, &CircuitElement::elementChanged, this,
            [this, element] { m_lines << "elementChanged " + element->name(); });
    connect(element, &CircuitElement::assignedModelChanged, this,
            [this, element] { m_lines << "assignedModelChanged " + element->name(); });
    connect(element, &CircuitElement::propertyChanged, this,
            [this, element](const QString& property) {
                m_lines << "propertyChanged " + element->name() + ' ' + property;
            });
}

void SignalLog::watch(CircuitNode* node) {
    connect(node, &CircuitNode::nodeChanged, this,
            [this, node] { m_lines << "nodeChanged " + node->name(); });
    connect(node, &CircuitNode::elementNodeAdded, this, [this, node](ICircuitElementNode* t) {
        m_lines << "joined " + node->name() + ' ' + t->element()->name() + '.' + t->name();
    });
    connect(node, &CircuitNode::elementNodeRemoved, this, [this, node](ICircuitElementNode* t) {
        m_lines << "left " + node->name() + ' ' + t->element()->name() + '.' + t->name();
    });
}

QStringList SignalLog::take() {
    QStringList lines;
    lines.swap(m_lines);
    return lines;
}

CircuitTest::CircuitTest()
    : resistor(type("Resistor", "R", {pin("p", "e", {-30, 10}), pin("n", "e", {30, 0})},
                    {parameter("R", "1k", "Ω", ParameterData::Number),
                     parameter("mode", "on", "", ParameterData::Choice,
                               {QStringLiteral("on"), QStringLiteral("off")}),
                     parameter("note", "", "", ParameterData::Text)})),
      transistor(
          type("Transistor", "Q",
               {pin("C", "e", {20, -30}), pin("B", "e", {-30, 0}), pin("E", "e", {20, 30})})),
      ground(type("Ground", "GND", {pin("gnd", "e", {0, -20}, "gnd")})),
      supply(type("Supply", "VCC", {pin("vcc", "e", {0, 20}, "vcc")})),
      gate(type("Gate", "U", {pin("a", "d", {-40, 0}), pin("y", "d", {40, 0})})),
      sensor(type("Sensor", "F", {pin("p", "e", {-40, 0}), pin("n", "e", {40, 0})},
                  {parameter("control", "", "", ParameterData::Text)})) {}

CircuitElement* CircuitTest::add(ElementDescription& type) {
    auto* element = new CircuitElement(&type);
    circuit.addElement(element);
    return element;
}

CircuitElementNode* CircuitTest::terminal(CircuitElement* element, const char* name) {
    return CircuitElementNode::from(element->elementNode(QLatin1String(name)));
}

CircuitNode* CircuitTest::join(CircuitElement* a, const char* aName, CircuitElement* b,
                               const char* bName) {
    ICircuitSolver* interface = &solver;
    return CircuitNode::from(interface->makeConnection(a->elementNode(QLatin1String(aName)),
                                                       b->elementNode(QLatin1String(bName))));
}

QStringList CircuitTest::elementNames() {
    QStringList names;
    for (int i = 0; i < circuit.elementCount(); ++i) {
        names << circuit.element(i)->name();
    }
    return names;
}

QStringList CircuitTest::nodeNames() {
    QStringList names;
    for (int i = 0; i < circuit.nodeCount(); ++i) {
        names << circuit.node(i)->name();
    }
    return names;
}

QString CircuitTest::members(CircuitNode* node) {
    QStringList names;
    for (CircuitElementNode* t : node->terminals()) {
        names << t->element()->name() + QLatin1Char('.') + t->name();
    }
    return names.join(QLatin1Char(' '));
}
