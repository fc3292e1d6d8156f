#include "HostFixture.h"
#include "OutputVariable.h"

#include <QPointer>

class Model : public CircuitTest {};

TEST_F(Model, InstanceNamesAreUniqueAndTakeTheLowestFreeNumber) {
    for (int i = 0; i < 3; ++i) {
        add(resistor);
    }
    add(transistor);
    EXPECT_EQ(elementNames(), QStringList({"R1", "R2", "R3", "Q1"}));

    circuit.removeElement(circuit.element(1));
    CircuitElement* r2 = add(resistor);
    CircuitElement* r4 = add(resistor);
    EXPECT_EQ(r2->name(), "R2");
    EXPECT_EQ(r4->name(), "R4");

    r2->setName("R3");
    EXPECT_EQ(r2->name(), "R2") << "taken";
    r2->setName("");
    EXPECT_EQ(r2->name(), "R2") << "empty";
    r2->setName("Load");
    EXPECT_EQ(add(resistor)->name(), "R2") << "a rename frees the number";
    EXPECT_EQ(circuit.elementNamed("Load"), r2);
    EXPECT_EQ(circuit.elementNamed("R9"), nullptr);
}

TEST_F(Model, AnElementBringsItsNameUnlessItIsTaken) {
    auto* first = new CircuitElement(&resistor);
    first->setName("R7");
    auto* second = new CircuitElement(&resistor);
    second->setName("R7");
    EXPECT_EQ(first->circuit(), nullptr);
    circuit.addElement(first);
    circuit.addElement(second);
    circuit.addElement(first);
    circuit.addElement(nullptr);
    EXPECT_EQ(elementNames(), QStringList({"R7", "R1"}));
    EXPECT_EQ(first->circuit(), &circuit);
    EXPECT_EQ(first->objectName(), "R7");
    EXPECT_EQ(circuit.element(-1), nullptr);
    EXPECT_EQ(circuit.element(2), nullptr);
}

TEST_F(Model, TheCaptionFollowsTheNameWhileTheyAreEqual) {
    CircuitElement* element = add(resistor);
    SignalLog log(circuit);
    log.watch(element);
    element->setProperty("Name", "Rx");
    EXPECT_EQ(element->caption(), "Rx");
    EXPECT_EQ(log.take(), QStringList({"propertyChanged Rx Name", "propertyChanged Rx Caption"}));
    element->setProperty("Caption", "Load");
    element->setName("Ry");
    EXPECT_EQ(element->caption(), "Load");
    EXPECT_EQ(log.take(), QStringList({"propertyChanged Rx Caption", "propertyChanged Ry Name"}));
}

TEST_F(Model, TurningAndMirroring) {
    CircuitElement* element = add(resistor);
    SignalLog log(circuit);
    log.watch(element);
    for (int refused : {-1, 4, 0}) {
        element->setProperty("Rotation", refused);
    }
    for (int refused : {-1, 3, 0}) {
        element->setProperty("Flip", refused);
    }
    EXPECT_EQ(log.take(), QStringList());
    element->setProperty("Rotation", 3);
    EXPECT_EQ(element->rotation(), 3);
    EXPECT_EQ(log.take(), QStringList({"propertyChanged R1 Rotation", "elementChanged R1"}));

    const QPointF expected[] = {{-30, 10}, {-30, -10}, {30, 10}};
    for (int flip = 0; flip < 3; ++flip) {
        element->setProperty("Flip", flip);
        EXPECT_EQ(terminal(element, "p")->position(), expected[flip]) << "flip " << flip;
    }
    element->setModelName("2N2222");
    element->setModelName("2N2222");
    EXPECT_EQ(log.take().mid(4),
              QStringList({"assignedModelChanged R1", "propertyChanged R1 ModelName"}));
}

TEST_F(Model, EditableProperties) {
    CircuitElement* element = add(resistor);
    CircuitElement* other = add(resistor);
    join(element, "n", other, "p");
    QStringList listing;
    for (int i = -1; i <= element->propertyCount(); ++i) {
        listing << element->propertyGroup(i) + '/' + element->propertyName(i) + '=' +
                       element->propertyValue(i).toString();
    }
    EXPECT_EQ(listing, QStringList({"/=", "rparams/R=1k", "rparams/mode=on",
                                    "rparams/note=", "Nodes/p=", "Nodes/n=n1", "/="}));
    EXPECT_EQ(element->elementNodeNames(), QStringList({"p", "n"}));

    SignalLog log(circuit);
    log.watch(element);
    element->setPropertyValue(4, "mid");
    EXPECT_EQ(circuit.node(0)->name(), "mid") << "the value of a terminal's property names the net";
    EXPECT_EQ(log.take(), QStringList({"propertyChanged R1 n"}));
    element->setPropertyValue(3, "free");
    element->setPropertyValue(-1, "x");
    element->setPropertyValue(5, "x");
    element->setPropertyValue(0, QVariant());
    element->setPropertyValue(0, QVariant::fromValue<QObject*>(element));
    EXPECT_EQ(log.take(), QStringList());
}

TEST_F(Model, ParametersRefuseWhatTheyCanNotHold) {
    const struct {
        int index;
        QVariant written;
        const char* value;
        const char* display;
    } table[] = {
        {0, "4.7k", "4.7k", "4.7 kΩ"},
        {0, " 10u ", "10u", "10 µΩ"},
        {0, 2200.5, "2200.5", "2200.5 Ω"},
        {0, "1Meg", "1Meg", "1 MΩ"},
        {0, "1e-14", "1e-14", "1e-14 Ω"},
        {0, "{Rload}", "{Rload}", "{Rload}"},
        {0, "{}", "{Rload}", "{Rload}"},
        {0, "{2x}", "{Rload}", "{Rload}"},
        {0, "five", "{Rload}", "{Rload}"},
        {0, "", "{Rload}", "{Rload}"},
        {0, "1 5", "{Rload}", "{Rload}"},
        {0, "47 kOhm", "47k", "47 kΩ"},
        {0, "{2*(R+1k)}", "{2*(R+1k)}", "{2*(R+1k)}"},
        {0, "{R", "{2*(R+1k)}", "{2*(R+1k)}"},
        {1, "off", "off", "off"},
        {1, "ajar", "off", "off"},
        {2, "any <text>", "any <text>", "any <text>"},
    };
    CircuitElement* element = add(resistor);
    for (const auto& row : table) {
        element->setPropertyValue(row.index, row.written);
        EXPECT_EQ(element->propertyValue(row.index).toString(), QString::fromUtf8(row.value));
        EXPECT_EQ(element->propertyValueString(row.index), QString::fromUtf8(row.display));
    }
    EXPECT_EQ(element->parameter("mode"), "off");
    EXPECT_EQ(element->parameter("nothing"), "");
}

TEST_F(Model, RemovalIsToldInOrderAndWhileTheElementIsWhole) {
    CircuitElement* first = add(resistor);
    CircuitElement* second = add(resistor);
    CircuitElement* third = add(resistor);
    CircuitNode* net = join(first, "n", second, "p");
    join(first, "p", third, "p");
    solver.makeConnection(terminal(third, "n"), static_cast<ICircuitNode*>(net));
    circuit.addOutputVariable(first, "i");
    circuit.addOutputVariable(second, "i");
    circuit.addOutputVariable(first, first->elementNode("p"));
    circuit.addOutputVariable(CircuitNode::from(circuit.node(1)));

    SignalLog log(circuit);
    log.watch(net);
    log.watch(CircuitNode::from(circuit.node(1)));
    bool whole = false;
    QObject::connect(&circuit, &Circuit::elementRemoved, [&](ICircuitElement* e) {
        whole = e == first && e->circuit() == &circuit && e->elementNode("p") && e->desc() &&
                e->containerObject()->qt_metacast("com.tesmira.ICircuitElement/1.0");
    });
    const QPointer<CircuitElement> guard(first);
    circuit.removeElement(first);
    EXPECT_EQ(log.take(),
              QStringList({"left n2 R1.p", "outputVariableRemoved out4", "nodeRemoved n2 1",
                           "left n2 R3.p", "left n1 R1.n", "outputVariableRemoved out3",
                           "outputVariableRemoved out1", "elementRemoved R1"}));
    EXPECT_TRUE(whole);
    EXPECT_EQ(members(net), "R2.p R3.n");
    EXPECT_EQ(elementNames(), QStringList({"R2", "R3"}));
    EXPECT_EQ(circuit.outputVariableCount(), 1);

    EXPECT_TRUE(guard) << "destroyed only when control is back in the event loop";
    circuit.removeElement(first);
    EXPECT_EQ(log.take(), QStringList());
    destroyDeferred();
    EXPECT_FALSE(guard);
}

TEST_F(Model, ListenersMayChangeTheCircuitFromWithinItsSignals) {
    CircuitElement* first = add(resistor);
    CircuitElement* second = add(resistor);
    CircuitElement* third = add(resistor);
    CircuitNode* net = join(first, "n", second, "p");
    solver.makeConnection(terminal(third, "p"), static_cast<ICircuitNode*>(net));
    join(first, "p", third, "n");
    // The worst listeners: they destroy what they are told of, and more.
    QObject::connect(net, &CircuitNode::elementNodeRemoved, net,
                     [&] { circuit.removeElement(circuit.elementNamed("R3")); });
    QObject::connect(&circuit, &Circuit::elementRemoved, &circuit,
                     [](ICircuitElement* e) { delete e->containerObject(); });
    QObject::connect(&circuit, &Circuit::nodeRemoved, &circuit,
                     [](ICircuitNode* n) { delete n->containerObject(); });
    circuit.removeElement(first);
    destroyDeferred();
    EXPECT_EQ(elementNames(), QStringList({"R2"}));
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_EQ(terminal(second, "p")->node(), nullptr);

    CircuitElement* again = add(resistor);
    join(second, "n", again, "n");
    QObject::connect(&circuit, &Circuit::elementAdded, &circuit,
                     [&](ICircuitElement* e) { circuit.removeElement(e); });
    circuit.addElement(new CircuitElement(&resistor));
    EXPECT_EQ(elementNames(), QStringList({"R2", "R1"}));
    circuit.clear();
    EXPECT_EQ(circuit.elementCount() + circuit.nodeCount(), 0);
}

TEST_F(Model, ClearRemovesAllButWhatIsTheCircuitsOwn) {
    CircuitElement* first = add(resistor);
    CircuitElement* second = add(resistor);
    CircuitNode* net = join(first, "n", second, "p");
    join(first, "p", second, "n");
    circuit.addOutputVariable(net);
    circuit.addGlobalVariable("Rload", "1k", true);
    circuit.addModel("2N2222", "bjt.lib");
    circuit.setTitle("Amplifier");
    SignalLog log(circuit);
    const QPointer<CircuitElement> element(first);
    const QPointer<CircuitNode> node(net);
    circuit.clear();
    EXPECT_EQ(log.take(), QStringList({"outputVariableRemoved out1", "nodeRemoved n2 2",
                                       "nodeRemoved n1 2", "elementRemoved R2", "elementRemoved R1",
                                       "globalVariableRemoved Rload"}));
    EXPECT_EQ(circuit.title(), "Amplifier");
    EXPECT_EQ(circuit.modelCount(), 1);
    destroyDeferred();
    EXPECT_FALSE(element || node);
    EXPECT_EQ(add(resistor)->name(), "R1");
    EXPECT_TRUE(circuit.children().size() == 1) << "nothing is left behind";
}

TEST_F(Model, GlobalVariables) {
    SignalLog log(circuit);
    circuit.addGlobalVariable("a", "1.5", true);
    circuit.addGlobalVariable("b", 2, false);
    circuit.addStringGlobalVariable("c", "text");
    circuit.addGlobalVariable("", 1, false);
    EXPECT_EQ(circuit.globalVariableCount(), 3);
    const bool isReal[] = {true, false, false, false};
    const bool isString[] = {false, false, true, false};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(circuit.isRealGlobalVariable(i), isReal[i]) << i;
        EXPECT_EQ(circuit.isStringGlobalVariable(i), isString[i]) << i;
    }
    log.take();
    circuit.addGlobalVariable("a", 7, false);
    circuit.setGlobalVariableValue(1, 3);
    circuit.setGlobalVariableValue(1, 3);
    circuit.setGlobalVariableValue(9, 3);
    EXPECT_EQ(log.take(), QStringList({"globalVariableValueModified b 3"}));
    EXPECT_EQ(circuit.globalVariableValue(0), QVariant("1.5"));  // added twice, it stays
    // As the user edits them: numbers are checked.
    const char* const edits[][3] = {{"4.7k", "4.7k", "4.7k"},
                                    {"{b*2}", "{b*2}", "{b*2}"},
                                    {"1.25", "1.25", "{b*2}"},
                                    {"x", "1.25", "{b*2}"}};
    for (const auto& [typed, real, integer] : edits) {
        circuit.setPropertyValue(0, typed);
        circuit.setPropertyValue(1, typed);
        EXPECT_EQ(circuit.propertyValueString(0), real) << typed;
        EXPECT_EQ(circuit.propertyValueString(1), integer) << typed;
    }
    circuit.setPropertyValue(1, 3);
    log.take();

    for (const auto& refused : {std::make_pair(0, "a"), std::make_pair(0, "b"),
                                std::make_pair(0, ""), std::make_pair(3, "z")}) {
        EXPECT_FALSE(circuit.changeGlobalVariableName(refused.first, refused.second));
    }
    EXPECT_TRUE(circuit.changeGlobalVariableName(0, "gain"));
    circuit.removeGlobalVariable("a");
    circuit.removeGlobalVariable("gain");
    EXPECT_EQ(log.take(),
              QStringList({"globalVariableNameModified a gain", "globalVariableRemoved gain"}));
    EXPECT_EQ(circuit.globalVariableName(0), "b");
    EXPECT_EQ(circuit.globalVariableValue(0), QVariant(3));
}

TEST_F(Model, OutputVariables) {
    CircuitElement* first = add(resistor);
    CircuitElement* second = add(resistor);
    CircuitNode* net = join(first, "n", second, "p");
    auto* node = circuit.addOutputVariable(net);
    auto* pin = circuit.addOutputVariable(first, first->elementNode("n"));
    auto* value = circuit.addOutputVariable(second, "i");
    EXPECT_EQ(circuit.addOutputVariable(first, second->elementNode("n")), nullptr);
    EXPECT_EQ(circuit.addOutputVariable(static_cast<ICircuitNode*>(nullptr)), nullptr);
    EXPECT_EQ(node->type(), 0);
    EXPECT_EQ(node->node(), net);
    EXPECT_EQ(pin->type(), 1);
    EXPECT_EQ(pin->elementNode(), first->elementNode("n"));
    EXPECT_EQ(value->type(), 2);
    EXPECT_EQ(value->elementVarName(), "i");
    EXPECT_EQ(value->element(), second);

    SignalLog log(circuit);
    value->setName("out9");
    value->setName("out9");
    value->setAC(true);
    value->setAC(true);
    EXPECT_EQ(log.take(), QStringList({"outputVariableEdited out9", "outputVariableEdited out9"}));
    EXPECT_EQ(circuit.addOutputVariable(first, "i")->name(), "out3") << "the name it gave up";

    circuit.moveOutputVariable(0, 2);
    circuit.moveOutputVariable(0, 4);
    circuit.moveOutputVariable(-1, 0);
    EXPECT_EQ(circuit.outputVariable(0), pin);
    EXPECT_EQ(circuit.outputVariable(2), node);
    circuit.removeOutputVariable(pin);
    circuit.removeOutputVariable(pin);
    circuit.removeOutputVariable(nullptr);
    EXPECT_EQ(circuit.outputVariableCount(), 3);
    log.take();
    solver.breakConnection(net);
    EXPECT_EQ(log.take(), QStringList({"outputVariableRemoved out1", "nodeRemoved n1 2"}));
}
