// What the user does to one element: drag, drop, keys, hover, menu, help.

#include "CCircuitEditorElementConfigDialog.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CUndoRedo.h"
#include "DialogDriver.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QMenu>
#include <QSpinBox>

namespace {

class ElementHandling : public DrawingTest {
protected:
    Qt::CursorShape cursorOf(const char* name) { return itemOf(name)->cursor().shape(); }
};

}  // namespace

TEST_F(ElementHandling, AFreeElementIsDraggedAndSettlesOnTheGrid) {
    create("Resistor.Basic", {0, 0});
    QPoint clicked;
    QObject::connect(editor, &CCircuitEditor::elementClickEvent,
                     [&clicked](ICircuitElement*, QPoint pos) { clicked = pos; });
    press({5, 12});
    EXPECT_EQ(cursorOf("R1"), Qt::ClosedHandCursor);
    EXPECT_EQ(panel.shown, element("R1"));
    moveTo({20, 20});
    moveTo({58, 34});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(53, 22));
    release({58, 34});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(50, 20));
    EXPECT_EQ(cursorOf("R1"), Qt::OpenHandCursor);
    EXPECT_EQ(clicked, QPoint(5, 12));
    EXPECT_EQ(editor->undoStack()->count(), 2);
    // A drag back to where it began is no move; neither is a click.
    press({50, 20});
    moveTo({70, 20});
    moveTo({50, 20});
    release({50, 20});
    click({50, 20});
    EXPECT_EQ(editor->undoStack()->count(), 2);
}

TEST_F(ElementHandling, AWiredElementStaysAndShowsIt) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    int clicks = 0;
    QObject::connect(editor, &CCircuitEditor::elementClickEvent, [&clicks] { ++clicks; });
    EXPECT_EQ(cursorOf("R1"), Qt::ArrowCursor);
    // Pressed while free: the wire comes during the drag.
    solver.breakConnection(circuit.node(0));
    press({0, 12});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    moveTo({40, 12});
    EXPECT_EQ(cursorOf("R1"), Qt::ForbiddenCursor);
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
    release({40, 12});
    EXPECT_NE(cursorOf("R1"), Qt::ForbiddenCursor);
    EXPECT_EQ(clicks, 0);
    const int count = editor->undoStack()->count();
    // An arrow key leaves a record of a move that was refused.
    itemOf("R1")->setSelected(true);
    key(Qt::Key_Right);
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
    EXPECT_EQ(editor->undoStack()->count(), count + 1);
    editor->undo();
    editor->redo();
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
}

TEST_F(ElementHandling, ADropOnATerminalConnectsWithoutARecord) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 100});
    drag({200, 112}, {63, 13});  // its p comes onto R1.n at (30, 0), roughly
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(placeOf("R2.p"), placeOf("R1.n"));
    EXPECT_EQ(editor->undoStack()->count(), 3);  // two creations and the move
    EXPECT_TRUE(wireAt("R1.n")->isManuallyConnected());
    EXPECT_EQ(pathPoints(wireAt("R1.n")->internalShape()),
              (std::vector<QPointF>{{30, 0}, {30.1, 0.1}}));
    snapshot();
    // The undo of the move is refused: the element is wired now.
    editor->undo();
    EXPECT_EQ(itemOf("R2")->pos(), QPointF(60, 0));
}

TEST_F(ElementHandling, ADropOnAWireJoinsItsNetAndMakesItManual) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {200, 0});
    create("Capacitor.Basic", {0, 200});
    ICircuitNode* node = solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    element("C1")->setRotation(1);
    drag({0, 200}, {50, 30});  // C1.p comes onto the wire at (50, 0)
    EXPECT_EQ(node->elementNodeCount(), 3);
    // The net took the terminal first, and was routed anew before the stub was added.
    const auto after = pathPoints(editor->nodeItem(node)->internalShape());
    EXPECT_TRUE(editor->nodeItem(node)->isManuallyConnected());
    ASSERT_GE(after.size(), 2u);
    EXPECT_EQ(after.at(after.size() - 2), QPointF(50, 0));
    // The stub turns with the element.
    EXPECT_NEAR(after.back().x(), 49.9, 1e-9);
    EXPECT_NEAR(after.back().y(), 0.1, 1e-9);
    EXPECT_EQ(editor->undoStack()->count(), 4);
    snapshot();
}

TEST_F(ElementHandling, AModelMayAnswerADropByTakingTheElementAway) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 100});
    QObject::connect(&circuit, &Circuit::nodeAdded,
                     [this] { circuit.removeElement(element("R2")); });
    drag({200, 112}, {63, 13});  // its p comes onto R1.n
    snapshot();
    EXPECT_EQ(circuit.elementCount(), 1);
}

TEST_F(ElementHandling, ADragBeginsAtItsOwnElement) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 100});
    press({200, 112});
    moveTo({220, 112});
    key(Qt::Key_Delete);
    release({220, 112});
    ASSERT_EQ(circuit.elementCount(), 1);
    drag({0, 12}, {50, 32});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(50, 20));
}

TEST_F(ElementHandling, AMoveByNothingIsAMoveAndACancelledOneIsNot) {
    create("Resistor.Basic", {0, 0});
    click({0, 12});
    create("Resistor.Basic", {60, 0});  // R2.p lies on R1.n
    for (const bool accepted : {false, true}) {
        DialogDriver driver;
        driver.chooseEntry(QStringLiteral("Move Element"));
        driver.queue([accepted](QWidget* dialog) {
            for (auto* box : dialog->findChildren<QSpinBox*>()) {
                box->setValue(0);
            }
            QMetaObject::invokeMethod(dialog, accepted ? "accept" : "reject");
        });
        rightClick({0, 12});
        click({0, 12});  // settles and connects what has been moved
        EXPECT_EQ(circuit.nodeCount(), accepted ? 1 : 0);
    }
}

TEST_F(ElementHandling, KeysTurnMirrorAndMoveASelectedElement) {
    create("Resistor.Basic", {0, 0});
    key(Qt::Key_R);  // not selected
    EXPECT_EQ(element("R1")->rotation(), 0);
    click({0, 12});
    for (const int expected : {1, 2, 3, 0}) {
        key(Qt::Key_R, Qt::ShiftModifier);
        EXPECT_EQ(element("R1")->rotation(), expected);
    }
    for (const int expected : {1, 2, 0}) {
        key(Qt::Key_F);
        EXPECT_EQ(element("R1")->flip(), expected);
    }
    EXPECT_EQ(editor->undoStack()->count(), 1);
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QPointF position;
    } rows[] = {{Qt::Key_Right, Qt::NoModifier, {10, 0}},
                {Qt::Key_Down, Qt::NoModifier, {10, 10}},
                {Qt::Key_Left, Qt::ControlModifier, {9, 10}},
                {Qt::Key_Up, Qt::ControlModifier, {9, 9}}};
    for (const auto& row : rows) {
        key(row.key, row.modifiers);
        EXPECT_EQ(itemOf("R1")->pos(), row.position);
    }
    EXPECT_EQ(editor->undoStack()->count(), 2);  // merged
    // The keys have set the mark of a move: the next click settles the element.
    click({9, 21});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(10, 10));
    editor->undo();
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
}

TEST_F(ElementHandling, TheMenuOffersAndDoes) {
    create("Resistor.Basic", {0, 0});
    QObject::connect(editor, &CCircuitEditor::elementContextMenuEvent,
                     [](ICircuitElement*, QMenu* menu) { menu->addAction("More"); });
    {
        DialogDriver driver;
        driver.closeMenu();
        rightClick({0, 12});
        EXPECT_EQ(driver.texts,
                  QStringList{"Output Variables|Delete Element|Resistor.Basic Help|Move "
                              "Element|Study Element|Add default property text boxes|Add "
                              "Caption|-|More"});
    }
    {
        DialogDriver driver;
        driver.chooseEntry(QStringLiteral("Move Element"));
        driver.queue([](QWidget* dialog) {
            auto* x = dialog->findChild<QSpinBox*>(QStringLiteral("txtXDistance"));
            auto* y = dialog->findChild<QSpinBox*>(QStringLiteral("txtYDistance"));
            EXPECT_EQ(x->text(), QStringLiteral("1 Grid Point(s)"));
            x->setValue(101);
            y->setValue(-400);
            EXPECT_EQ(x->value(), 100);
            EXPECT_EQ(y->value(), -400);
            x->setValue(5);
            y->setValue(-2);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        rightClick({0, 12});
        EXPECT_EQ(driver.titles.last(), QStringLiteral("Move R1"));
        EXPECT_EQ(itemOf("R1")->pos(), QPointF(50, -20));
        EXPECT_EQ(editor->undoStack()->count(), 2);
        driver.chooseEntry(QStringLiteral("Move Element"));
        driver.reject();
        rightClick({50, -8});
        EXPECT_EQ(itemOf("R1")->pos(), QPointF(50, -20));
    }
    {
        DialogDriver driver;
        driver.chooseEntry(QStringLiteral("Resistor.Basic Help"));
        driver.accept();
        rightClick({50, -8});
        EXPECT_EQ(driver.titles.last(), QStringLiteral("No help found"));
        EXPECT_EQ(driver.texts.last(),
                  QStringLiteral("No help was found for element Resistor.Basic"));
        driver.accept();
        itemOf("R1")->setSelected(true);
        key(Qt::Key_F1);
    }
    DialogDriver driver;
    driver.chooseEntry(QStringLiteral("Delete Element"));
    rightClick({50, -8});
    EXPECT_EQ(circuit.elementCount(), 0);
    editor->undo();
    EXPECT_EQ(circuit.elementCount(), 1);
}

TEST_F(ElementHandling, MenusAndDialogsSurviveTheDeathOfTheirElement) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    {
        // A wired element can't be moved by the dialog, and may go while its menu is open.
        DialogDriver driver;
        driver.queue([this](QWidget* menu) {
            EXPECT_FALSE(static_cast<QMenu*>(menu)->actions().at(3)->isEnabled());
            circuit.removeElement(element("R1"));
            turnEventLoop();
        });
        rightClick({0, 12});
    }
    {
        DialogDriver driver;
        driver.chooseEntry(QStringLiteral("Move Element"));
        driver.queue([this](QWidget* dialog) {
            circuit.removeElement(element("R2"));
            turnEventLoop();
            QMetaObject::invokeMethod(dialog, "accept");
        });
        rightClick({200, 12});
    }
    EXPECT_EQ(circuit.elementCount(), 0);
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(circuit.element(0)->elementNode(QStringLiteral("n")),
                          circuit.element(1)->elementNode(QStringLiteral("p")));
    DialogDriver driver;
    driver.queue([this](QWidget*) {
        circuit.removeNode(circuit.node(0));
        turnEventLoop();
    });
    rightClick({100, 2});
    EXPECT_EQ(driver.texts, QStringList{"Delete Node|Output Variable"});
}
