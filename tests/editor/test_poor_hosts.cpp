// Hosts that offer little: a model without any optional ability, collaborators that answer nothing
// or go away while the editor runs.

#include "CCircuitEditorCmds.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CUndoRedo.h"
#include "CircuitElementNode.h"
#include "DrawingTest.h"

#include <cstring>

namespace {

/// Answers no optional interface, though it still is a circuit.
class PlainCircuit : public Circuit {
public:
    void* qt_metacast(const char* name) override {
        const bool isKnown = std::strcmp(name, "com.tesmira.ICircuit/1.0") == 0 ||
                             std::strncmp(name, "com.tesmira.", 12) != 0;
        return isKnown ? Circuit::qt_metacast(name) : nullptr;
    }
};

/// Joins and cuts, but doesn't merge nets.
class PlainSolver : public CircuitSolver {
public:
    using CircuitSolver::CircuitSolver;
    void* qt_metacast(const char* name) override {
        return std::strcmp(name, "com.tesmira.ICircuitSolverEx/1.0") == 0
                   ? nullptr
                   : CircuitSolver::qt_metacast(name);
    }
};

/// Only cuts the terminals: what becomes of the node is left to the circuit.
class CuttingSolver : public CircuitSolver {
public:
    using CircuitSolver::CircuitSolver;
    bool breakConnection(ICircuitNode*) override { return true; }
};

class PoorHost : public EditorTest {};

}  // namespace

TEST_F(PoorHost, AModelWithoutOptionalAbilitiesIsDrawnAndSaved) {
    PlainCircuit plain;
    PlainSolver plainSolver(&plain);
    editor->setCircuitSolver(&plainSolver);
    for (int i = 0; i < 4; ++i) {
        plain.addElement(factory.createElement(QStringLiteral("Resistor.Basic")));
        itemOf(plain.element(i))->setPos(200 * (i % 2), 200 * (i / 2));
    }
    for (int i = 0; i < 4; i += 2) {
        plainSolver.makeConnection(plain.element(i)->elementNode(QStringLiteral("n")),
                                   plain.element(i + 1)->elementNode(QStringLiteral("p")));
    }
    plain.addGlobalVariable(QStringLiteral("k"), 1, true);
    QDomDocument document;
    QDomElement part = document.createElement(QStringLiteral("Part"));
    EXPECT_TRUE(editor->saveProjectPart(document, part));
    EXPECT_FALSE(part.hasAttribute(QStringLiteral("Title")));
    const QByteArray before = editor->describe();
    EXPECT_TRUE(editor->loadProjectPart(document, part));
    EXPECT_EQ(editor->describe(), before);
    editor->setCircuitSolver(nullptr);
}

TEST_F(PoorHost, WiresAreNotMergedWithoutTheAbility) {
    class Host : public DrawingTest {
        void TestBody() override {}

    public:
        void run() {
            PlainSolver plainSolver(&circuit);
            editor->setCircuitSolver(&plainSolver);
            create("Resistor.Basic", {-200, 0});
            create("Resistor.Basic", {0, 0});
            create("Resistor.Basic", {-200, 200});
            create("Resistor.Basic", {0, 200});
            solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
            solver.makeConnection(terminal("R3.n"), terminal("R4.p"));
            const QByteArray before = snapshot();
            drag({-150, 2}, {-150, 202});
            EXPECT_EQ(snapshot(), before);
            editor->setCircuitSolver(nullptr);
        }
    };
    Host().run();
}

TEST_F(PoorHost, ASolverThatOnlyCutsGetsTheNodeRemovedByTheCircuit) {
    CuttingSolver cutting(&circuit);
    editor->setCircuitSolver(&cutting);
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    cutting.makeConnection(terminal(QStringLiteral("R1.n")), terminal(QStringLiteral("R2.p")));
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_TRUE(QMetaObject::invokeMethod(editor.get(), "on_removeNodeRequest",
                                          Q_ARG(ICircuitNode*, circuit.node(0))));
    EXPECT_EQ(circuit.nodeCount(), 0);
    editor->setCircuitSolver(nullptr);
}
