// Moving, turning and dropping elements that are wired, while MoveConnectedElements is on.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CSelectionRectangleItem.h"
#include "CircuitElementNode.h"
#include "CircuitGeometry.h"
#include "DialogDriver.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>

namespace {

bool isOrthogonal(const QPainterPath& path) {
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF d = QPointF(path.elementAt(i)) - QPointF(path.elementAt(i - 1));
        if (path.elementAt(i).isLineTo() && std::abs(d.x()) > 0.2 && std::abs(d.y()) > 0.2) {
            return false;
        }
    }
    return true;
}

class ConnectedMoves : public DrawingTest {
protected:
    ConnectedMoves() { editor->setMoveConnectedElements(true); }

    /// Two resistors side by side, joined by a wire with a corner, which a third one hangs on.
    void drawThree() {
        create("Resistor.Basic", {-200, 0});
        create("Resistor.Basic", {0, 100});
        create("Resistor.Basic", {200, 200});
        const QPointF from = placeOf("R1.n");
        const QPointF to = placeOf("R2.p");
        const QPointF corner((from.x() + to.x()) / 2, from.y());
        layWire({from, corner, {corner.x(), to.y()}, to});
        layWire({placeOf("R3.p"), {placeOf("R3.p").x(), 50}, {corner.x(), 50}});
        ASSERT_EQ(circuit.nodeCount(), 1);
        ASSERT_EQ(circuit.node(0)->elementNodeCount(), 3);
    }

    /// Whether a branch of the terminal's wire ends on it.
    bool isReached(const char* name) {
        const CCircuitEditorNodeItem* wire = wireAt(name);
        if (!wire) {
            return false;
        }
        for (const QPainterPath& branch : CircuitGeometry::subPaths(wire->internalShape())) {
            for (const QPointF& end : {QPointF(branch.elementAt(0)), branch.currentPosition()}) {
                if (QLineF(end, placeOf(name)).length() < 0.2) {
                    return true;
                }
            }
        }
        return false;
    }

    void expectWired() {
        EXPECT_EQ(circuit.nodeCount(), 1);
        EXPECT_EQ(circuit.node(0)->elementNodeCount(), 3);
        for (const char* name : {"R1.n", "R2.p", "R3.p"}) {
            EXPECT_TRUE(isReached(name)) << name;
        }
        EXPECT_TRUE(isOrthogonal(wireAt("R1.n")->internalShape()));
    }

    QPointF middleOf(const char* name) { return itemOf(name)->pos(); }
};

}  // namespace

TEST_F(ConnectedMoves, DragsLeadWiresAlongAndShowWhatComes) {
    drawThree();
    const QPointF start = middleOf("R1");
    press(start);
    for (int i = 1; i <= 8; ++i) {
        moveTo(start + QPointF(4 * i, -4 * i));  // less than a grid step at a time
    }
    const QByteArray drawn = editor->describe();
    release(start + QPointF(32, -32));
    EXPECT_EQ(editor->describe(), drawn);
    EXPECT_EQ(middleOf("R1"), start + QPointF(30, -30));
    expectWired();
    // Back again, and the wire is as it was.
    drag(middleOf("R1"), start);
    EXPECT_EQ(middleOf("R1"), start);
    expectWired();
    // An automatic wire is routed anew.
    wireAt("R1.n")->setManuallyConnected(false);
    drag(start, start + QPointF(0, -50));
    EXPECT_FALSE(wireAt("R1.n")->isManuallyConnected());
    expectWired();
}

TEST_F(ConnectedMoves, EscapePutsAllBack) {
    drawThree();
    const QByteArray before = snapshot();
    for (const Qt::KeyboardModifiers held : {Qt::NoModifier, Qt::AltModifier}) {
        press(middleOf("R1"), held);
        moveTo({-120, -70});
        EXPECT_NE(editor->describe(), before);
        key(Qt::Key_Escape);
        moveTo({-100, -90});
        release({-100, -90});
        EXPECT_EQ(snapshot(), before);
    }
}

TEST_F(ConnectedMoves, AltTakesAnElementOffItsWires) {
    drawThree();
    press(middleOf("R3"), Qt::AltModifier);
    moveTo({300, 300});
    const QByteArray drawn =
        editor->describe().replace("\"element\":\"R3\"", "");  // the net has it until the release
    release({300, 300});
    EXPECT_EQ(middleOf("R3"), QPointF(300, 300));
    EXPECT_EQ(circuit.node(0)->elementNodeCount(), 2);
    EXPECT_EQ(wireAt("R3.p"), nullptr);
    EXPECT_TRUE(isReached("R1.n"));
    EXPECT_TRUE(isReached("R2.p"));
    // With two terminals the whole net goes.
    drag(middleOf("R1"), {-200, -100}, Qt::AltModifier);
    EXPECT_EQ(circuit.nodeCount(), 0);
}

TEST_F(ConnectedMoves, KeysMoveByTheGridAndTurningKeepsConnections) {
    drawThree();
    click(middleOf("R1"));
    const QPointF start = middleOf("R1");
    key(Qt::Key_Up);
    EXPECT_EQ(middleOf("R1"), start + QPointF(0, -10));
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(middleOf("R1"), start + QPointF(-100, -10));
    expectWired();
    for (const Qt::Key turn : {Qt::Key_R, Qt::Key_R, Qt::Key_F, Qt::Key_F, Qt::Key_R}) {
        key(turn);
        expectWired();
    }
}

TEST_F(ConnectedMoves, GroupsMoveWholeWithTheirInnerWires) {
    drawThree();
    const QPainterPath before = wireAt("R1.n")->internalShape();
    // R1 and R2, but not R3.
    press({-260, -60}, Qt::ControlModifier);
    moveTo({60, 140});
    release({60, 140});
    drag({-150, 60}, {-130, 40});
    EXPECT_EQ(middleOf("R1"), QPointF(-180, -20));
    EXPECT_EQ(middleOf("R2"), QPointF(20, 80));
    EXPECT_EQ(middleOf("R3"), QPointF(200, 200));
    expectWired();
    EXPECT_EQ(pathPoints(wireAt("R1.n")->internalShape()).at(1),
              pathPoints(before).at(1) + QPointF(20, -20));
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(middleOf("R2"), QPointF(20, 180));
    expectWired();
}

TEST_F(ConnectedMoves, GroupsTurnAsOne) {
    drawThree();
    QMetaObject::invokeMethod(itemOf("R1"), "createElementPropertyTextBoxesForDisplayProperties");
    const QByteArray before = snapshot();
    editor->selectAll();
    for (const Qt::Key turn : {Qt::Key_R, Qt::Key_R, Qt::Key_R, Qt::Key_R, Qt::Key_F, Qt::Key_F}) {
        key(turn);
        EXPECT_NE(snapshot() == before,
                  circuit.element(0)->rotation() || circuit.element(0)->flip());
        EXPECT_TRUE(isReached("R1.n") && isReached("R2.p") && isReached("R3.p"));
        EXPECT_TRUE(isOrthogonal(wireAt("R1.n")->internalShape()));
    }
    EXPECT_EQ(before, snapshot());
    // Off the grid by a unit, and back on it; then all of it to the middle.
    click({0, -300});
    itemOf("R1")->setSelected(true);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_NE(before, snapshot());
    editor->snapToGrid();
    EXPECT_EQ(before, snapshot());
    editor->bringToCenter();
    EXPECT_LT(QLineF({}, editor->scene()->itemsBoundingRect().center()).length(), 20);
    EXPECT_TRUE(isReached("R1.n") && isReached("R2.p") && isReached("R3.p"));
}

TEST_F(ConnectedMoves, DropsJoinAndAskBeforeNamedNetsMeet) {
    create("Resistor.Basic", {-200, 0});
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {-200, 200});
    create("Resistor.Basic", {0, 200});
    layWire({placeOf("R1.n"), placeOf("R2.p")});
    layWire({placeOf("R3.n"), placeOf("R4.p")});
    click(middleOf("R3"));
    key(Qt::Key_R);  // so that it will not lie upon the other
    // Unnamed nets just join, and both stay as they are drawn.
    const auto rise = [this] {
        const QPointF step = placeOf("R1.n") - placeOf("R3.n");
        const QPointF start = middleOf("R3");
        drag(start, start + step + QPointF(-10, 0));
        drag(middleOf("R3"), middleOf("R3") + QPointF(10, 0));
    };
    circuit.node(0)->setName(QStringLiteral("in"));
    circuit.node(1)->setName(QStringLiteral("out"));
    const QPointF kept = middleOf("R3") + placeOf("R1.n") - placeOf("R3.n") + QPointF(-10, 0);
    {
        DialogDriver driver;
        driver.reject();
        rise();
        ASSERT_EQ(driver.texts.size(), 1);
        EXPECT_TRUE(driver.texts.first().contains(QStringLiteral("\"in\" and \"out\"")));
    }
    EXPECT_EQ(circuit.nodeCount(), 2);
    EXPECT_EQ(middleOf("R3"), kept);
    circuit.node(1)->setName(QStringLiteral("n7"));
    drag(middleOf("R3"), middleOf("R3") + QPointF(10, 0));
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(circuit.node(0)->name(), QStringLiteral("in"));
    EXPECT_TRUE(isReached("R4.p"));
    EXPECT_TRUE(isReached("R2.p"));
}

TEST_F(ConnectedMoves, JunctionsAreInPicturesAndOpenEndsAreNot) {
    drawThree();
    const auto picture = [this](bool isScreen) {
        QImage image(600, 500, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        if (isScreen) {
            editor->viewport()->render(&painter);
        } else {
            editor->scene()->render(&painter, QRectF(0, 0, 600, 500), {-300, -150, 600, 500});
        }
        painter.end();
        return image;
    };
    editor->unhighlight();
    const QImage without = picture(false);
    editor->setShowJunctions(true);
    const QImage with = picture(false);
    QRegion changed;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) != without.pixel(x, y)) {
                changed += QRect(x, y, 1, 1);
            }
        }
    }
    // One dot, where the third resistor's wire meets the other.
    const QPointF joint((placeOf("R1.n").x() + placeOf("R2.p").x()) / 2, 50);
    const QRect dot = changed.boundingRect().translated(-300, -150);
    EXPECT_TRUE(dot.contains(joint.toPoint())) << joint.x();
    EXPECT_LE(dot.width(), 8);
    const QImage screen = picture(true);
    editor->setShowJunctions(false);
    EXPECT_NE(picture(true), screen);
}
