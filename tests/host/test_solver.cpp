#include "HostFixture.h"

#include <QPointer>

class Solver : public CircuitTest {
protected:
    CircuitElement* r1 = add(resistor);
    CircuitElement* r2 = add(resistor);
    CircuitElement* r3 = add(resistor);
    CircuitElement* r4 = add(resistor);
};

TEST_F(Solver, TwoFreeTerminalsMakeANodeThatIsCompleteWhenItIsTold) {
    SignalLog log(circuit);
    log.watch(r1);
    CircuitNode* net = join(r1, "n", r2, "p");
    ASSERT_TRUE(net);
    EXPECT_EQ(log.take(), QStringList({"nodeAdded n1 2", "propertyChanged R1 n"}));
    EXPECT_EQ(members(net), "R1.n R2.p");
    EXPECT_EQ(net->type(), "e");
    EXPECT_EQ(net->circuit(), &circuit);
    EXPECT_EQ(net->wireClearance(), 20);
    EXPECT_EQ(net->elementNode(2), nullptr);
    EXPECT_EQ(net->elementNode(-1), nullptr);
}

TEST_F(Solver, RefusesWhatDoesNotGoTogether) {
    Circuit elsewhere;
    auto* foreign = new CircuitElement(&resistor);
    elsewhere.addElement(foreign);
    CircuitElement loose(&resistor);
    CircuitElement* digital = add(gate);
    CircuitNode* net = join(r1, "n", r2, "p");
    CircuitNode* digitalNet = join(digital, "a", digital, "y");
    ASSERT_TRUE(digitalNet) << "an element may be joined to itself";
    SignalLog log(circuit);
    ICircuitElementNode* free = terminal(r1, "p");
    const std::pair<ICircuitElementNode*, ICircuitElementNode*> pairs[] = {
        {nullptr, free},
        {free, nullptr},
        {free, free},
        {free, terminal(digital, "a")},
        {free, terminal(foreign, "p")},
        {free, terminal(&loose, "p")},
        {terminal(r1, "n"), terminal(r2, "p")},
    };
    for (const auto& pair : pairs) {
        EXPECT_EQ(solver.makeConnection(pair.first, pair.second), nullptr);
    }
    const std::pair<ICircuitElementNode*, ICircuitNode*> joins[] = {
        {nullptr, net}, {free, nullptr}, {free, digitalNet}, {terminal(r1, "n"), net}};
    for (const auto& pair : joins) {
        EXPECT_FALSE(solver.makeConnection(pair.first, pair.second));
    }
    const std::pair<ICircuitNode*, ICircuitNode*> merges[] = {
        {nullptr, net}, {net, nullptr}, {net, net}, {net, digitalNet}};
    for (const auto& pair : merges) {
        EXPECT_FALSE(solver.makeConnection(pair.first, pair.second));
    }
    EXPECT_FALSE(solver.breakConnection(static_cast<ICircuitNode*>(nullptr)));
    EXPECT_FALSE(solver.breakConnection(free, net));
    EXPECT_FALSE(solver.disconnectElement(static_cast<ICircuitElement*>(r3)));
    EXPECT_FALSE(solver.disconnectElement(r1, r3));
    EXPECT_FALSE(solver.disconnectElement(r1, r1));
    EXPECT_EQ(log.take(), QStringList());

    circuit.removeNode(net);
    EXPECT_FALSE(solver.makeConnection(free, static_cast<ICircuitNode*>(net))) << "dropped";
    EXPECT_FALSE(solver.breakConnection(net));
    circuit.removeElement(r3);
    EXPECT_EQ(join(r1, "p", r3, "p"), nullptr) << "of a dropped element";
}

TEST_F(Solver, JoinsAndMerges) {
    CircuitNode* net = join(r1, "n", r2, "p");
    SignalLog log(circuit);
    log.watch(net);
    EXPECT_EQ(join(r3, "p", r1, "n"), net) << "either side's net takes the free terminal";
    EXPECT_EQ(log.take(), QStringList({"joined n1 R3.p"}));

    CircuitNode* other = join(r3, "n", r4, "p");
    const QPointer<CircuitNode> guard(other);
    log.take();
    EXPECT_EQ(join(r2, "p", r4, "p"), net);
    EXPECT_EQ(log.take(), QStringList({"left n2 R3.n", "joined n1 R3.n", "left n2 R4.p",
                                       "joined n1 R4.p", "nodeRemoved n2 0"}));
    EXPECT_EQ(members(net), "R1.n R2.p R3.p R3.n R4.p");
    destroyDeferred();
    EXPECT_FALSE(guard);

    CircuitNode* third = join(r1, "p", r4, "n");
    EXPECT_TRUE(solver.makeConnection(terminal(r2, "p"), static_cast<ICircuitNode*>(third)))
        << "a terminal brings its whole net";
    EXPECT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(third->elementNodeCount(), 7);
}

TEST_F(Solver, MergingTwoNodesLeavesTheSecondForTheCallerToDissolve) {
    CircuitNode* net = join(r1, "n", r2, "p");
    CircuitNode* other = join(r3, "n", r4, "p");
    ICircuitSolverEx* extended = qobject_cast<ICircuitSolverEx*>(&solver);
    ASSERT_TRUE(extended);
    EXPECT_TRUE(extended->makeConnection(net, other));
    EXPECT_EQ(members(net), "R1.n R2.p R3.n R4.p");
    EXPECT_EQ(other->elementNodeCount(), 0);
    EXPECT_EQ(other->type(), "e");
    EXPECT_EQ(circuit.nodeCount(), 2);
    SignalLog log(circuit);
    EXPECT_TRUE(solver.breakConnection(other));
    EXPECT_EQ(log.take(), QStringList({"nodeRemoved n2 0"}));
}

TEST_F(Solver, ANetOfOneTerminalDissolves) {
    CircuitNode* net = join(r1, "n", r2, "p");
    solver.makeConnection(terminal(r3, "p"), static_cast<ICircuitNode*>(net));
    SignalLog log(circuit);
    log.watch(net);
    EXPECT_TRUE(solver.breakConnection(terminal(r1, "n"), net));
    EXPECT_EQ(log.take(), QStringList({"left n1 R1.n"}));
    EXPECT_TRUE(solver.breakConnection(terminal(r2, "p"), net));
    EXPECT_EQ(log.take(), QStringList({"left n1 R2.p", "nodeRemoved n1 1", "left n1 R3.p"}));
    EXPECT_EQ(terminal(r3, "p")->node(), nullptr);
}

TEST_F(Solver, DisconnectingElements) {
    CircuitNode* shared = join(r1, "n", r2, "p");
    solver.makeConnection(terminal(r3, "p"), static_cast<ICircuitNode*>(shared));
    CircuitNode* second = join(r1, "p", r3, "n");
    EXPECT_TRUE(solver.disconnectElement(r1, r2));
    EXPECT_EQ(members(shared), "R2.p R3.p");
    EXPECT_EQ(members(second), "R1.p R3.n") << "not shared with the second element";
    EXPECT_TRUE(solver.disconnectElement(static_cast<ICircuitElement*>(r3)));
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_EQ(circuit.elementCount(), 4);
}

TEST_F(Solver, NetNames) {
    CircuitNode* first = join(r1, "n", r2, "p");
    CircuitNode* second = join(r3, "n", r4, "p");
    EXPECT_EQ(nodeNames(), QStringList({"n1", "n2"}));
    SignalLog log(circuit);
    log.watch(first);
    log.watch(r1);
    first->setName("");
    first->setName("n1");
    EXPECT_EQ(log.take(), QStringList());
    first->setProperty("Name", "in");
    EXPECT_EQ(log.take(), QStringList({"nodeChanged in", "propertyChanged R1 n"}));
    EXPECT_EQ(join(r1, "p", r2, "n")->name(), "n1") << "the freed number";
    log.take();
    second->setName("in");
    EXPECT_EQ(circuit.nodes("in"), QList<ICircuitNode*>({first, second}));
    EXPECT_EQ(circuit.nodes("out"), QList<ICircuitNode*>());

    first->setProperty("WireClearance", -1);
    first->setProperty("WireClearance", 20);
    EXPECT_EQ(log.take(), QStringList());
    first->setProperty("WireClearance", 0);
    EXPECT_EQ(log.take(), QStringList({"nodeChanged in"}));
    EXPECT_EQ(first->propertyCount(), 1);
    first->setPropertyValue(0, "input");
    EXPECT_EQ(first->propertyGroup(0) + first->propertyValueString(0), "nodeinput");
    EXPECT_EQ(first->propertyName(1) + first->propertyGroup(1) + first->propertyValueString(1), "");
}

TEST_F(Solver, TheBetterNameSurvivesAMerge) {
    const struct {
        const char* first;
        const char* second;
        const char* merged;
    } table[] = {
        {"", "", "n1"},    {"", "out", "out"},    {"in", "", "in"},      {"in", "out", "in"},
        {"", "n17", "n1"}, {"n17", "out", "out"}, {"n17", "n18", "n17"},
    };
    for (const auto& row : table) {
        circuit.clear();
        CircuitElement* a = add(resistor);
        CircuitElement* b = add(resistor);
        CircuitElement* c = add(resistor);
        CircuitNode* first = join(a, "n", b, "p");
        CircuitNode* second = join(b, "n", c, "p");
        first->setName(row.first);
        second->setName(row.second);
        EXPECT_EQ(join(a, "n", c, "p"), first);
        EXPECT_EQ(first->name(), row.merged) << row.first << " with " << row.second;
    }
}

TEST_F(Solver, AFixedNameRulesItsNet) {
    CircuitElement* g1 = add(ground);
    CircuitElement* g2 = add(ground);
    CircuitElement* vcc = add(supply);
    CircuitNode* net = join(r1, "n", g1, "gnd");
    EXPECT_EQ(net->name(), "gnd");
    CircuitNode* other = join(r2, "n", g2, "gnd");
    EXPECT_EQ(circuit.nodes("gnd"), QList<ICircuitNode*>({net, other})) << "one net by name";
    EXPECT_EQ(join(r3, "n", r4, "n")->name(), "n1") << "no number was spent on the fixed ones";
    net->setName("x");
    EXPECT_EQ(net->name(), "gnd");

    CircuitNode* signal = CircuitNode::from(circuit.node(2));
    signal->setName("signal");
    EXPECT_EQ(join(r3, "n", g2, "gnd"), signal);
    EXPECT_EQ(signal->name(), "gnd") << "over the user's name";
    join(r3, "n", vcc, "vcc");
    EXPECT_EQ(signal->name(), "gnd") << "the first fixed name stays";
    solver.disconnectElement(static_cast<ICircuitElement*>(g2));
    EXPECT_EQ(signal->name(), "vcc");
    circuit.removeElement(vcc);
    EXPECT_EQ(signal->name(), "n1") << "automatic again";
    EXPECT_EQ(members(signal), "R3.n R4.n R2.n");
}
