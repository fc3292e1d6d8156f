// The six commands: do, undo and redo, compared as whole drawings.

#include "CCircuitEditorCmds.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CElementConnectionCmd.h"
#include "CElementMoveCmd.h"
#include "CElementPropertyChangeCmd.h"
#include "CUndoRedo.h"
#include "DrawingTest.h"

namespace {

class Commands : public DrawingTest {
protected:
    /// Undo gives the drawing from before, redo the one from after.
    void expectUndoAndRedo(const QByteArray& before, const QByteArray& after) {
        editor->undo();
        EXPECT_EQ(snapshot(), before);
        editor->redo();
        EXPECT_EQ(snapshot(), after);
    }

    void removeElement(const char* name) {
        itemOf(name)->setSelected(true);
        key(Qt::Key_Delete);
    }
};

}  // namespace

TEST_F(Commands, MoveIsUndoneAndMergesWithTheNext) {
    create("Resistor.Basic", {0, 0});
    const QByteArray before = snapshot();
    drag({0, 0}, {100, 50});
    drag({100, 50}, {200, -40});
    const QByteArray after = snapshot();
    EXPECT_EQ(editor->undoStack()->count(), 2);  // the creation and one move
    EXPECT_EQ(editor->undoStack()->undoText(), QStringLiteral("R1 Element movement"));
    expectUndoAndRedo(before, after);
}

TEST_F(Commands, TheMoveHoldsThePlaceFromBeforeTheSnap) {
    create("Resistor.Basic", {0, 0});
    drag({0, 0}, {103, 0});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(100, 0));
    editor->undo();
    editor->redo();
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(103, 0));
}

TEST_F(Commands, PropertyChangeIsUndoneThroughEitherWay) {
    create("Resistor.Basic", {0, 0});
    click({0, 0});
    const QByteArray first = snapshot();
    panel.edit(QStringLiteral("R"), QStringLiteral("4.7k"));
    panel.edit(QStringLiteral("R"), QStringLiteral("10k"));
    const QByteArray second = snapshot();
    panel.edit(QStringLiteral("Rotation"), 1);
    const QByteArray third = snapshot();
    EXPECT_EQ(editor->undoStack()->count(), 3);
    EXPECT_EQ(editor->undoStack()->undoText(), QStringLiteral("R1 Property Change"));
    expectUndoAndRedo(second, third);
    editor->undo();
    panel.calls = 0;
    editor->undo();
    EXPECT_EQ(snapshot(), first);
    EXPECT_EQ(panel.calls, 2);  // shown anew
    EXPECT_EQ(panel.shown, element("R1"));
}

TEST_F(Commands, ConnectionOfTwoTerminals) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    const QByteArray before = snapshot();
    layWire({{30, 0}, {170, 0}});
    EXPECT_TRUE(editor->undoStack()->undoText().isEmpty());
    editor->undo();
    EXPECT_EQ(snapshot(), before);
    editor->redo();
    snapshot();
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_FALSE(wireAt("R1.n")->isManuallyConnected());  // routed, not drawn as before
    // The net died with the first undo, and nobody told the command of the new one.
    editor->undo();
    EXPECT_EQ(circuit.nodeCount(), 1);
}

TEST_F(Commands, ConnectionOfATerminalToANet) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    create("Capacitor.Basic", {100, 150});
    layWire({{30, 0}, {170, 0}});
    wireAt("R1.n")->setManuallyConnected(false);
    const QByteArray before = snapshot();
    press({100, 2});
    moveTo({90, 100});
    release({70, 150});
    const QByteArray after = snapshot();
    ASSERT_EQ(circuit.node(0)->elementNodeCount(), 3);
    expectUndoAndRedo(before, after);
}

TEST_F(Commands, DeletionOfANetOfTwoCanBeUndoneAndOfThreeCannot) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    const QByteArray before = snapshot();
    const int count = editor->undoStack()->count();
    click({100, 2});
    key(Qt::Key_Delete);
    const QByteArray after = snapshot();
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_EQ(editor->undoStack()->count(), count + 1);
    editor->undo();
    EXPECT_EQ(snapshot(), before);
    editor->redo();
    EXPECT_EQ(snapshot(), after);

    create("Resistor.Basic", {0, 200});
    create("Resistor.Basic", {200, 200});
    create("Capacitor.Basic", {100, 300});
    ICircuitNode* node = solver.makeConnection(
        circuit.element(circuit.elementCount() - 3)->elementNode(QStringLiteral("n")),
        circuit.element(circuit.elementCount() - 2)->elementNode(QStringLiteral("p")));
    solver.makeConnection(
        circuit.element(circuit.elementCount() - 1)->elementNode(QStringLiteral("p")), node);
    const int full = editor->undoStack()->count();
    editor->nodeItem(node)->setSelected(true);
    key(Qt::Key_Delete);
    EXPECT_EQ(editor->undoStack()->count(), full);
}

TEST_F(Commands, CreationAndDeletionBringBackAnotherObject) {
    const QByteArray empty = snapshot();
    create("Resistor.Basic", {40, 50});
    expectUndoAndRedo(empty, snapshot());
    element("R1")->setProperty("Rotation", 3);
    click({40, 50});
    panel.edit(QStringLiteral("R"), QStringLiteral("22"));
    const QByteArray before = snapshot();
    const QPointer<QObject> old = element("R1");
    removeElement("R1");
    EXPECT_EQ(snapshot(), empty);
    EXPECT_TRUE(old.isNull());
    editor->undo();
    EXPECT_EQ(snapshot(), before);
    editor->redo();
    EXPECT_EQ(snapshot(), empty);
    editor->undo();
    // The edit was of an object that is dead: it stays inert.
    editor->undo();
    EXPECT_EQ(snapshot(), before);
    // And so does the creation: its element is another one now.
    editor->undo();
    EXPECT_EQ(snapshot(), before);
}
