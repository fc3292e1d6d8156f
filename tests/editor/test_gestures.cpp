// Placing and the gestures beyond the stated, by real events.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CPlacementTool.h"
#include "CUndoRedo.h"
#include "CircuitElementNode.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

class Gestures : public DrawingTest {
protected:
    Gestures() { editor->setExtendedGestures(true); }

    bool startPlacing(const char* type) { return editor->startPlacing(QString::fromLatin1(type)); }
    ICircuitNode* netOf(const char* name) {
        return CircuitElementNode::from(terminal(name))->node();
    }
};

TEST_F(Gestures, PlaceTurnedElementsUntilEscape) {
    EXPECT_FALSE(startPlacing("Nothing.Basic"));
    ASSERT_TRUE(startPlacing("Resistor.Basic"));
    key(Qt::Key_R);
    key(Qt::Key_F);
    moveTo({3, 4});
    EXPECT_EQ(circuit.elementCount(), 0) << "hanging is not being there";
    EXPECT_TRUE(editor->toolHint().startsWith("Resistor: click")) << qPrintable(editor->toolHint());
    doubleClick({3, 4});
    click({200, 0});
    ASSERT_EQ(circuit.elementCount(), 2) << "a double click places one";
    EXPECT_EQ(element("R1")->rotation(), 1);
    EXPECT_EQ(element("R2")->flip(), 1);
    EXPECT_EQ(itemOf("R2")->pos(), QPointF(200, 0));
    // By keys alone: two steps to the right, and put down.
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Right);
    key(Qt::Key_Return);
    EXPECT_EQ(itemOf("R3")->pos(), QPointF(310, 0));
    key(Qt::Key_Escape);
    EXPECT_FALSE(editor->isPlacing());
    click({0, 200});
    EXPECT_EQ(circuit.elementCount(), 3);
    for (int i = 0; i < 3; ++i) {
        editor->undo();
    }
    EXPECT_EQ(circuit.elementCount(), 0);
}

TEST_F(Gestures, PlacedElementsJoinWhatTheyLieOnAndNothingElseIsTouched) {
    create("Resistor.Basic", {0, 0});
    ASSERT_TRUE(startPlacing("Resistor.Basic"));
    click({60, 0});
    EXPECT_NE(netOf("R1.n"), nullptr);
    EXPECT_EQ(netOf("R1.n"), netOf("R2.p"));
    // Other tools, another document and reading only end it.
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    EXPECT_FALSE(editor->isPlacing());
    EXPECT_EQ(editor->viewport()->cursor().shape(), Qt::CrossCursor);
    EXPECT_FALSE(startPlacing("Resistor.Basic"));
    editor->setMode(CCircuitEditor::EditMode);
    ASSERT_TRUE(startPlacing("Resistor.Basic"));
    moveTo({100, 100});
    editor->clear();
    EXPECT_FALSE(editor->isPlacing());
    EXPECT_TRUE(editor->placeElement("Ground.Basic", {0, 0}));
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_FALSE(editor->isPlacing());
}

TEST_F(Gestures, WiresGoOnUntilEscapeAndKeepWhatIsDrawn) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    create("Resistor.Basic", {200, 100});
    framework.component->setManualConnectionMode(true);
    EXPECT_EQ(editor->viewport()->cursor().shape(), Qt::CrossCursor);
    click(placeOf("R1.n"));
    click(placeOf("R2.p"));
    EXPECT_EQ(editor->mode(), CCircuitEditor::ManualConnectionMode);
    const QPainterPath first = wireAt("R1.n")->internalShape();
    // A corner too many is taken back.
    click(placeOf("R3.p"));
    click({100, 100});
    click({100, 300});
    key(Qt::Key_Backspace);
    click({100, 50});
    click(placeOf("R2.p"));
    EXPECT_EQ(netOf("R3.p"), netOf("R2.p"));
    const QPainterPath both = wireAt("R1.n")->internalShape();
    EXPECT_GT(both.elementCount(), first.elementCount()) << "the first wire is still drawn";
    EXPECT_EQ(both.boundingRect().bottom(), 100) << "the corner at 300 is gone";
    // Escape: the wire under way, the tool, the selection.
    click(placeOf("R3.n"));
    key(Qt::Key_Escape);
    EXPECT_EQ(editor->mode(), CCircuitEditor::ManualConnectionMode);
    key(Qt::Key_Escape);
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    EXPECT_EQ(editor->viewport()->cursor().shape(), Qt::ArrowCursor);
    itemOf("R3")->setSelected(true);
    key(Qt::Key_Escape);
    EXPECT_TRUE(editor->scene()->selectedItems().isEmpty());
    editor->selectAll();
    key(Qt::Key_Escape);
    EXPECT_FALSE(editor->canErase());
}

TEST_F(Gestures, DragFromATerminalLaysAWire) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 60});
    create("Resistor.Basic", {200, 160});
    drag(placeOf("R1.n"), placeOf("R2.p"));
    ASSERT_NE(netOf("R1.n"), nullptr);
    EXPECT_EQ(netOf("R1.n"), netOf("R2.p"));
    EXPECT_FALSE(wireAt("R1.n")->isManuallyConnected()) << "routed by itself";
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    // To a wire that was laid: the branch is drawn.
    wireAt("R1.n")->setManuallyConnected(true);
    drag(placeOf("R3.p"), placeOf("R2.p"));
    EXPECT_EQ(netOf("R3.p"), netOf("R2.p"));
    EXPECT_EQ(wireAt("R3.p")->internalShape().currentPosition(), placeOf("R2.p"));
    // Let go on the canvas: on by clicks, and the tool ends with the wire.
    drag(placeOf("R2.n"), {300, 100});
    EXPECT_EQ(editor->mode(), CCircuitEditor::ManualConnectionMode);
    click(placeOf("R3.n"));
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    EXPECT_EQ(netOf("R2.n"), netOf("R3.n"));
}

TEST_F(Gestures, MiddleButtonPansAndBackspaceDeletes) {
    create("Resistor.Basic", {0, 0});
    ASSERT_TRUE(startPlacing("Capacitor.Basic"));
    const QPointF before = editor->mapToScene(QPoint(0, 0));
    const auto middle = [this](QEvent::Type type, QPoint place, Qt::MouseButtons buttons) {
        QMouseEvent event(type, place, editor->viewport()->mapToGlobal(place), Qt::MiddleButton,
                          buttons, Qt::NoModifier);
        QApplication::sendEvent(editor->viewport(), &event);
    };
    middle(QEvent::MouseButtonPress, {100, 100}, Qt::MiddleButton);
    middle(QEvent::MouseMove, {140, 130}, Qt::MiddleButton);
    middle(QEvent::MouseButtonRelease, {140, 130}, Qt::NoButton);
    EXPECT_EQ(before - editor->mapToScene(QPoint(0, 0)), QPointF(40, 30));
    EXPECT_TRUE(editor->isPlacing()) << "panning goes on beside any tool";
    key(Qt::Key_Escape);
    itemOf("R1")->setSelected(true);
    key(Qt::Key_Backspace);
    EXPECT_EQ(circuit.elementCount(), 0);
}

TEST_F(Gestures, TellWhatTheToolExpectsNext) {
    const QSignalSpy hints(editor, &CCircuitEditor::toolHintChanged);
    const auto last = [&hints] {
        turnEventLoop();
        return hints.isEmpty() ? QString() : hints.last().first().toString();
    };
    create("Resistor.Basic", {0, 0});
    framework.component->setManualConnectionMode(true);
    EXPECT_TRUE(last().contains("begins")) << qPrintable(last());
    click(placeOf("R1.n"));
    EXPECT_TRUE(last().contains("corner")) << qPrintable(last());
    key(Qt::Key_Escape);
    key(Qt::Key_Escape);
    EXPECT_TRUE(last().contains("pans")) << qPrintable(last());
    click({0, 0});
    EXPECT_TRUE(last().contains("R turns")) << qPrintable(last());
    EXPECT_TRUE(editor->canTurn());
    editor->turnSelection();
    EXPECT_EQ(element("R1")->rotation(), 1);
}
