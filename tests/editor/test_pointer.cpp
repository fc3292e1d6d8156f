// Gestures: what presses, drags, clicks, the wheel and the hovering pointer do in each mode.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CManualConnectorLineItem.h"
#include "CSelectionRectangleItem.h"
#include "CUndoRedo.h"
#include "CircuitGeometry.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "QtSeries.h"

#include <QApplication>
#include <QCursor>
#include <QGraphicsLineItem>
#include <QGraphicsScene>
#include <QHoverEvent>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace {

class Pointer : public DrawingTest {
protected:
    template <class Item>
    QList<Item*> itemsOfClass() {
        QList<Item*> found;
        for (QGraphicsItem* item : editor->scene()->items()) {
            if (auto* match = dynamic_cast<Item*>(item)) {
                found.append(match);
            }
        }
        return found;
    }

    CSelectionRectangleItem* rectangle() {
        return itemsOfClass<CSelectionRectangleItem>().value(0);
    }

    void wheel(int delta, int sideways = 0) {
        const QPointF place(at({0, 0}));
        QCursor::setPos(editor->viewport()->mapToGlobal(place.toPoint()));
        QWheelEvent event(place, editor->viewport()->mapToGlobal(place.toPoint()), QPoint(),
                          QPoint(sideways, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(editor->viewport(), &event);
    }
};

}  // namespace

TEST_F(Pointer, DoubleClickMakesTheChosenElementOnTheGrid) {
    QPoint told;
    QObject::connect(editor, &CCircuitEditor::canvasDoubleClickEvent,
                     [&told](ICanvas*, QPoint pos) { told = pos; });
    create("Resistor.Basic", {103, -48});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(100, -50));
    EXPECT_EQ(told, QPoint(103, -48));
    EXPECT_EQ(editor->undoStack()->count(), 1);
    explorer.selected = QStringLiteral("Nothing.Known");
    doubleClick({200, 200});
    EXPECT_EQ(circuit.elementCount(), 1);
    // On an item it is the item's business.
    explorer.selected = QStringLiteral("Resistor.Basic");
    ICircuitElement* clicked = nullptr;
    QObject::connect(editor, &CCircuitEditor::elementDoubleClickEvent,
                     [&clicked](ICircuitElement* element) { clicked = element; });
    doubleClick({100, -50});
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_EQ(clicked, element("R1"));
    // A read-only canvas still creates; without a palette nothing does.
    editor->setReadOnly(true);
    doubleClick({0, 200});
    EXPECT_EQ(circuit.elementCount(), 2);
    editor->setElementExplorer(nullptr);
    doubleClick({0, -200});
    EXPECT_EQ(circuit.elementCount(), 2);
}

TEST_F(Pointer, DraggingTheCanvasPansByTheScreen) {
    QCursor::setPos(300, 300);
    const QPoint before(editor->horizontalScrollBar()->value(),
                        editor->verticalScrollBar()->value());
    int clicks = 0;
    QObject::connect(editor, &CCircuitEditor::canvasClickEvent, [&clicks] { ++clicks; });
    press({0, 0});
    EXPECT_EQ(panel.shown, &circuit);
    QCursor::setPos(320, 290);
    moveTo({0, 0});  // the event's own place doesn't matter
    EXPECT_EQ(editor->horizontalScrollBar()->value(), before.x() - 20);
    EXPECT_EQ(editor->verticalScrollBar()->value(), before.y() + 10);
    release({0, 0});
    QCursor::setPos(400, 400);
    moveTo({0, 0});
    EXPECT_EQ(editor->horizontalScrollBar()->value(), before.x() - 20);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Pointer, OtherButtonsOnlyTellOfTheirRelease) {
    create("Resistor.Basic", {0, 0});
    QList<QPair<QPoint, Qt::MouseButton>> clicks;
    QObject::connect(editor, &CCircuitEditor::canvasClickEvent,
                     [&clicks](ICanvas*, QPoint pos, Qt::MouseButton button) {
                         clicks.append({pos, button});
                     });
    itemOf("R1")->setSelected(true);
    QTest::mousePress(editor->viewport(), Qt::RightButton, Qt::NoModifier, at({60, 70}));
    EXPECT_TRUE(itemOf("R1")->isSelected());
    release({60, 70}, Qt::RightButton);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks.first(), qMakePair(QPoint(60, 70), Qt::RightButton));
}

TEST_F(Pointer, APressOnATerminalDoesNothingButClearTheSelection) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    itemOf("R2")->setSelected(true);
    drag({30, 0}, {170, 0});
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
    EXPECT_TRUE(editor->scene()->selectedItems().isEmpty());
}

TEST_F(Pointer, AWireIsDraggedToATerminalOrAWire) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {-200, 200});
    create("Resistor.Basic", {0, 200});
    create("Capacitor.Basic", {200, 100});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    solver.makeConnection(terminal("R3.n"), terminal("R4.p"));
    const int commands = editor->undoStack()->count();

    press({-100, 2});
    EXPECT_EQ(panel.shown, circuit.node(0)->containerObject());
    const auto lines = itemsOfClass<QGraphicsLineItem>();
    ASSERT_EQ(lines.size(), 1);
    moveTo({100, 60});
    EXPECT_TRUE(lines.first()->isVisible());
    EXPECT_EQ(lines.first()->line(), QLineF(-100, 2, 100, 60));
    release({170, 100});
    EXPECT_FALSE(lines.first()->isVisible());
    EXPECT_EQ(circuit.node(0)->elementNodeCount(), 3);
    EXPECT_EQ(editor->undoStack()->count(), commands + 1);
    // Gone, it doesn't count among the bounds of the drawing.
    EXPECT_TRUE(lines.first()->sceneBoundingRect().isNull());

    // Onto nothing, and onto itself: nothing.
    drag({-120, 2}, {-100, -150});
    drag({-150, 0}, {-150, 0});
    EXPECT_EQ(editor->undoStack()->count(), commands + 1);

    // Two wires become one, without a record; the drawing of the second is added.
    const QPainterPath second = wireAt("R3.n")->internalShape();
    drag({-150, 2}, {-150, 202});
    EXPECT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(circuit.node(0)->elementNodeCount(), 5);
    EXPECT_EQ(editor->undoStack()->count(), commands + 1);
    EXPECT_TRUE(wireAt("R1.n")->isManuallyConnected());
    const auto merged = pathPoints(wireAt("R1.n")->internalShape());
    const auto added = pathPoints(second);
    ASSERT_GE(merged.size(), added.size());
    EXPECT_TRUE(std::equal(added.rbegin(), added.rend(), merged.rbegin()));
}

TEST_F(Pointer, AHandLaidWireGoesThroughItsPoints) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {200, 100});
    framework.component->setManualConnectionMode(true);
    click({0, 0});  // on empty canvas, before the first end: nothing
    EXPECT_TRUE(itemsOfClass<CManualConnectorLineItem>().isEmpty());
    click({-170, 0});
    ASSERT_EQ(itemsOfClass<CManualConnectorLineItem>().size(), 1);
    click({3, 4});       // snapped to (0, 0), on the axis
    click({-200, -12});  // on an element's body: a way point, and selects it
    EXPECT_TRUE(itemOf("R1")->isSelected());
    click({2, 99});
    click({170, 100});
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    EXPECT_TRUE(itemsOfClass<CManualConnectorLineItem>().isEmpty());
    CCircuitEditorNodeItem* wire = wireAt("R1.n");
    ASSERT_NE(wire, nullptr);
    EXPECT_TRUE(wire->isManuallyConnected());
    EXPECT_EQ(pathPoints(wire->internalShape()),
              (std::vector<QPointF>{{-170, 0}, {0, 0}, {-200, 0}, {0, 100}, {170, 100}}));
}

TEST_F(Pointer, AHandLaidWireToAWireIsAddedToIt) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    create("Capacitor.Basic", {0, 150});
    ICircuitNode* node = solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    const auto before = pathPoints(editor->nodeItem(node)->internalShape());
    layWire({{-30, 150}, {-100, 150}, {-98, 3}});
    EXPECT_EQ(node->elementNodeCount(), 3);
    auto expected = before;
    expected.insert(expected.end(), {{-30, 150}, {-100, 150}, {-100, 0}});
    EXPECT_EQ(pathPoints(editor->nodeItem(node)->internalShape()), expected);
}

TEST_F(Pointer, AWireOntoItsOwnStartIsRefusedAndEndsTheMode) {
    create("Resistor.Basic", {0, 0});
    layWire({{30, 0}, {100, 0}, {30, 0}});
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_TRUE(itemsOfClass<CManualConnectorLineItem>().isEmpty());
}

TEST_F(Pointer, GesturesEndWhenTheirEndDies) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    press({-100, 2});
    moveTo({-100, 60});
    circuit.removeNode(circuit.node(0));
    moveTo({-100, 70});
    release({30, 0});
    EXPECT_EQ(circuit.nodeCount(), 0);

    framework.component->setManualConnectionMode(true);
    click({-170, 0});
    click({-100, 0});
    circuit.removeElement(element("R1"));
    EXPECT_TRUE(itemsOfClass<CManualConnectorLineItem>().isEmpty());
    click({-30, 0});  // the first click of another one
    EXPECT_EQ(itemsOfClass<CManualConnectorLineItem>().size(), 1);
    editor->setMode(CCircuitEditor::EditMode);
    EXPECT_TRUE(itemsOfClass<CManualConnectorLineItem>().isEmpty());
    framework.component->setManualConnectionMode(true);
    click({-30, 0});
    framework.component->newCircuit();
    editor->setMode(CCircuitEditor::EditMode);
}

TEST_F(Pointer, VariablesArePickedWhereTheUserPoints) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    ICircuitNode* node = solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    QStringList picked;
    const auto text = [](ICircuitElement* e) { return e->name(); };
    QObject::connect(editor,
                     QOverload<ICircuitElement*, QString>::of(&CCircuitEditor::outvarSelected),
                     [&](ICircuitElement* e, const QString& v) { picked << text(e) + ':' + v; });
    QObject::connect(
        editor,
        QOverload<ICircuitElement*, ICircuitElementNode*>::of(&CCircuitEditor::outvarSelected),
        [&](ICircuitElement* e, ICircuitElementNode* t) { picked << text(e) + '.' + t->name(); });
    QObject::connect(editor, QOverload<ICircuitNode*>::of(&CCircuitEditor::outvarSelected),
                     [&](ICircuitNode* n) { picked << n->name(); });
    // The panel ends the mode with each variable that it gets.
    const auto pick = [this](QPointF point) {
        editor->setMode(CCircuitEditor::OutVarSelectionMode);
        click(point);
    };
    pick({-230, 0});
    pick({-100, 2});
    {
        DialogDriver driver;
        driver.chooseEntry(QStringLiteral("v"));
        driver.closeMenu();
        // The panel takes the key to end the mode, whichever window has it.
        driver.queue([](QWidget* menu) {
            QTest::keyClick(menu, Qt::Key_Escape);
            EXPECT_FALSE(menu->isVisible());
        });
        driver.queue([this](QWidget* window) {
            auto* menu = static_cast<QMenu*>(window);
            QObject::connect(menu, &QMenu::triggered,
                             [this] { editor->setMode(CCircuitEditor::EditMode); });
            menu->setActiveAction(menu->actions().last());
            QTest::keyClick(menu, Qt::Key_Return);
        });
        for (int i = 0; i < 4; ++i) {
            pick({0, -12});
        }
        EXPECT_TRUE(driver.texts.first().contains(QStringLiteral("|i|")))
            << qPrintable(driver.texts.first());
    }
    pick({0, 300});
    EXPECT_EQ(picked, (QStringList{"R1.p", node->name(), "R2:v"}));
    editor->setMode(CCircuitEditor::EditMode);
}

TEST_F(Pointer, TheRectangleTakesAGroupAndMovesIt) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {-200, 200});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    solver.makeConnection(terminal("R2.n"), terminal("R4.p"));
    drag({-250, -50}, {50, 250}, Qt::ControlModifier);
    CSelectionRectangleItem* group = rectangle();
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->rect(), QRectF(-250, -50, 300, 300));
    EXPECT_EQ(panel.shown, &circuit);
    // R1, R2 and their wire are inside; R2 is held by a wire to R4, but moves with the first one.
    EXPECT_EQ(group->itemList().size(), 4);
    const QByteArray before = snapshot();
    key(Qt::Key_Right);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(-190, 50));
    EXPECT_EQ(itemOf("R3")->pos(), QPointF(-190, 250));
    EXPECT_EQ(itemOf("R4")->pos(), QPointF(200, 0));
    EXPECT_EQ(group->rect(), QRectF(-240, 0, 300, 300));
    key(Qt::Key_Left);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(editor->undoStack()->count(), 4);  // groups move without a record

    // By pointer: a step of 13 is one grid step, and the rest is lost.
    press({-100, 100});
    moveTo({-87, 100});
    EXPECT_EQ(itemOf("R3")->pos(), QPointF(-190, 200));
    for (int x = -86; x < -70; x += 4) {
        moveTo({double(x), 100});  // slow: moves nothing
    }
    release({-70, 100});
    EXPECT_EQ(itemOf("R3")->pos(), QPointF(-190, 200));

    // Through the dialog, in grid points.
    DialogDriver driver;
    driver.chooseEntry(QStringLiteral("Move Group"));
    driver.accept();
    rightClick({-100, 100});
    EXPECT_EQ(itemOf("R3")->pos(), QPointF(-180, 210));
    // The next press elsewhere takes the rectangle away.
    click({300, 300});
    EXPECT_EQ(rectangle(), nullptr);
}

TEST_F(Pointer, AWireThatLeadsOutKeepsItsElementsInPlace) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    drag({-250, -50}, {-100, 50}, Qt::ControlModifier);
    ASSERT_NE(rectangle(), nullptr);
    EXPECT_TRUE(rectangle()->itemList().isEmpty());
    key(Qt::Key_Right);
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(-200, 0));
}

TEST_F(Pointer, ReadOnlyStillPansAndSelects) {
    create("Resistor.Basic", {0, 0});
    editor->setReadOnly(true);
    drag({0, 0}, {100, 0});
    EXPECT_TRUE(itemOf("R1")->isSelected());
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
    // A double click grabs, and is only let go of again.
    itemOf("R1")->setPos(3, 0);
    doubleClick({0, 12});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(3, 0));
    EXPECT_EQ(editor->scene()->mouseGrabberItem(), nullptr);
    QCursor::setPos(300, 300);
    const int before = editor->horizontalScrollBar()->value();
    press({0, 200});
    QCursor::setPos(310, 300);
    moveTo({0, 200});
    release({0, 200});
    EXPECT_EQ(editor->horizontalScrollBar()->value(), before - 10);
    // A rectangle is shown at no size, and stays open until the next press.
    drag({-100, -100}, {100, 100}, Qt::ControlModifier);
    ASSERT_NE(rectangle(), nullptr);
    EXPECT_TRUE(rectangle()->rect().isEmpty());
    editor->setReadOnly(false);
    moveTo({50, 50});
    EXPECT_FALSE(rectangle()->rect().isEmpty());
    click({300, 300});
}

TEST_F(Pointer, AWireThatIsNoLongerSelectedHasNoKeys) {
    create("Resistor.Basic", {-100, 0});
    create("Resistor.Basic", {100, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    wireAt("R1.n")->setSelected(true);
    editor->unhighlight();
    key(Qt::Key_Delete);
    EXPECT_EQ(circuit.nodeCount(), 1);
    wireAt("R1.n")->setSelected(true);
    key(Qt::Key_Delete);
    EXPECT_EQ(circuit.nodeCount(), 0);
}

TEST_F(Pointer, TheWheelZoomsAndNeverScrolls) {
    const int before = editor->verticalScrollBar()->value();
    wheel(120);
    EXPECT_DOUBLE_EQ(editor->transform().m11(), 1.1);
    wheel(-120);
    wheel(0);
    wheel(0, 120);
    EXPECT_DOUBLE_EQ(editor->transform().m11(), 1.1 * 0.9 * 0.9 * 1.1);
    editor->zoomOne();
    EXPECT_NEAR(editor->verticalScrollBar()->value(), before, 60);
}

TEST_F(Pointer, TheStatusLabelShowsGridCoordinatesUpward) {
    QLabel* label = editor->statusLabel();
    const auto hover = [this](QEvent::Type type, QPointF point) {
        QApplication::sendEvent(editor, QtSeries::hoverEvent(type, at(point)).get());
    };
    hover(QEvent::HoverMove, {57, -38});
    EXPECT_EQ(label->text(), QStringLiteral("5, 3"));
    hover(QEvent::HoverEnter, {-9, 29});
    EXPECT_EQ(label->text(), QStringLiteral("0, -2"));
    hover(QEvent::HoverLeave, {0, 0});
    EXPECT_TRUE(label->text().isEmpty());
}
