// Element items, terminal markers and wires on the reference model.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "EditorTest.h"
#include "ICircuitElementVisual.h"
#include "Invariants.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QPainter>
#include <QSignalSpy>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>

using Points = std::vector<QPointF>;

class Items : public EditorTest {};

namespace {

/// The item painted on white, its origin in the middle of a square picture.
QImage painted(QGraphicsItem* item, int side = 100) {
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(side / 2, side / 2);
    const QStyleOptionGraphicsItem option;
    item->paint(&painter, &option, nullptr);
    return image;
}

QByteArray svg(const char* viewBox) {
    return QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"") + viewBox +
           "\"><rect x=\"0\" y=\"0\" width=\"10\" height=\"10\" fill=\"black\"/></svg>";
}

/// A resistor whose picture and flip the test chooses.
class PicturedElement : public CircuitElement, public ICircuitElementVisual {
public:
    PicturedElement()
        : CircuitElement(shippedLibrary().description(QStringLiteral("Resistor.Basic"))) {}

    QObject* containerObject() override { return CircuitElement::containerObject(); }
    ICircuitElementVisual* visual() override { return this; }
    int flip() override { return flipValue; }
    QPixmap pixmap() override { return bitmap; }
    QPointF pictureOffset() override { return offset; }
    QSvgRenderer* renderer() override { return vector.isValid() || forced ? &vector : nullptr; }

    int flipValue = 0;
    bool forced = false;
    QPixmap bitmap;
    QPointF offset;
    QSvgRenderer vector;
};

}  // namespace

TEST_F(Items, OutlineIsThePictureAroundTheOriginWithoutPenWidth) {
    auto* item = itemOf(add("Resistor.Basic", {100, 50}));
    EXPECT_EQ(item->boundingRect(), QRectF(-30, -20, 60, 40));
    EXPECT_EQ(item->zValue(), 1000);
    EXPECT_EQ(placeOf("R1.p"), QPointF(70, 50));
    element(QStringLiteral("R1"))->setRotation(1);
    EXPECT_EQ(placeOf("R1.p"), QPointF(100, 20));
    EXPECT_EQ(item->mapToScene(item->boundingRect()).boundingRect(), QRectF(80, 20, 40, 60));
}

TEST_F(Items, FlipMirrorsVectorPicturesOnly) {
    PicturedElement element;
    element.vector.load(svg("-20 -20 40 40"));
    auto* item = new CCircuitEditorElementItem(editor.get());
    item->setElement(&element);
    const struct {
        int flip;
        QPoint inside;
    } rows[] = {{0, {55, 55}}, {1, {55, 45}}, {2, {45, 55}}, {7, {55, 55}}};
    for (const auto& row : rows) {
        element.flipValue = row.flip;
        const QImage image = painted(item);
        for (const QPoint& point : {QPoint(55, 55), QPoint(55, 45), QPoint(45, 55)}) {
            EXPECT_EQ(qGray(image.pixel(point)) < 128, point == row.inside)
                << row.flip << " at " << point.x() << ", " << point.y();
        }
    }
    // A bitmap stays as it is, with its white made transparent.
    element.vector.load(QByteArray());
    element.bitmap = QPixmap(40, 40);
    element.bitmap.fill(Qt::white);
    QPainter(&element.bitmap).fillRect(20, 20, 10, 10, Qt::black);
    element.flipValue = 2;
    item->reloadElement();
    QImage image = painted(item);
    EXPECT_EQ(qGray(image.pixel(55, 55)), 0);
    EXPECT_EQ(qGray(image.pixel(45, 55)), 255);
    item->setElement(nullptr);
    EXPECT_EQ(item->rect(), QRectF(-10, -10, 20, 20));
    EXPECT_EQ(item->nodeItem(QStringLiteral("p")), nullptr);
    delete item;
}

TEST_F(Items, AViewBoxOffTheCentreIsDrawnDisplaced) {
    PicturedElement element;
    element.vector.load(svg("0 0 40 40"));
    element.offset = QPointF(3, 4);
    CCircuitEditorElementItem item(editor.get());
    item.setElement(&element);
    EXPECT_EQ(item.rect(), QRectF(-17, -16, 40, 40));
    // Moved by the box's centre a second time: 50 - 17 + 20.
    const QImage image = painted(&item);
    EXPECT_EQ(qGray(image.pixel(50 - 17 + 25, 50 - 16 + 25)), 0);
    EXPECT_EQ(qGray(image.pixel(50 - 17 + 5, 50 - 16 + 5)), 255);
    item.setElement(nullptr);
}

TEST_F(Items, WiresLockTheElementAndShowInItsCursor) {
    auto* first = itemOf(add("Resistor.Basic", {0, 0}));
    add("Resistor.Basic", {200, 0});
    EXPECT_EQ(first->cursor().shape(), Qt::OpenHandCursor);
    CCircuitEditorNodeItem* wire = itemOf(join("R1.n", "R2.p"));
    EXPECT_EQ(first->cursor().shape(), Qt::ArrowCursor);
    first->addCircuitNodeItem(wire);
    first->addCircuitNodeItem(nullptr);
    EXPECT_EQ(first->circuitNodeItemCount(), 1);
    EXPECT_EQ(first->circuitNodeItem(-1), nullptr);
    EXPECT_EQ(first->circuitNodeItem(1), nullptr);

    first->setPos(10, 10);
    EXPECT_EQ(first->pos(), QPointF(0, 0));
    first->setInternalMoveMode(true);
    QSignalSpy moved(first, &CCircuitEditorElementItem::moved);
    QSignalSpy modified(editor.get(), &CCircuitEditor::projectPartModified);
    first->setPos(10, 20);
    EXPECT_EQ(first->pos(), QPointF(10, 20));
    ASSERT_EQ(moved.size(), 1);
    EXPECT_EQ(moved.at(0).at(0).toPointF(), QPointF(10, 20));
    EXPECT_EQ(modified.size(), 1);
    first->updateCircuitNodes();
    first->setInternalMoveMode(false);

    solver.disconnectElement(first->element());
    EXPECT_EQ(first->cursor().shape(), Qt::OpenHandCursor);
    EXPECT_EQ(first->circuitNodeItemCount(), 0);
}

TEST_F(Items, FacingTerminalsAreJoinedByAStraightWire) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {204, 0});
    CCircuitEditorNodeItem* wire = itemOf(join("R1.n", "R2.p"));
    // Half-way between 30 and 174 is 102, which snaps to 100.
    EXPECT_EQ(pathPoints(wire->internalShape()), (Points{{30, 0}, {100, 0}, {174, 0}, {100, 0}}));
    EXPECT_EQ(wire->zValue(), 1.0);
    EXPECT_EQ(wire->color(), terminal(QStringLiteral("R1.n"))->color());
    // The stroke is three quarters of the grid wide, its square caps included.
    EXPECT_EQ(wire->boundingRect(), QRectF(26.25, -3.75, 151.5, 7.5));
    EXPECT_TRUE(wire->contains({60, 9}));
    EXPECT_FALSE(wire->contains({60, 11}));
}

TEST_F(Items, AManualWireIsLeftAloneUntilItIsMadeAutomatic) {
    auto* first = itemOf(add("Resistor.Basic", {0, 0}));
    add("Resistor.Basic", {200, 0});
    CCircuitEditorNodeItem* wire = itemOf(join("R1.n", "R2.p"));
    const QPainterPath automatic = wire->internalShape();
    QPainterPath path(QPointF(30, 0));
    path.lineTo(170, 50);
    QSignalSpy modified(editor.get(), &CCircuitEditor::projectPartModified);
    wire->addShape(path, true);
    EXPECT_EQ(modified.size(), 1);
    EXPECT_TRUE(wire->isManuallyConnected());
    first->updateCircuitNodes();
    EXPECT_EQ(wire->internalShape(), path);

    QPainterPath more(QPointF(0, 0));
    more.lineTo(0, 40);
    wire->addShape(more, false);
    EXPECT_EQ(pathPoints(wire->internalShape()), (Points{{30, 0}, {170, 50}, {0, 0}, {0, 40}}));
    wire->moveNodeBy(5, -5);
    EXPECT_EQ(pathPoints(wire->internalShape()), (Points{{35, -5}, {175, 45}, {5, -5}, {5, 35}}));
    EXPECT_TRUE(wire->isManuallyConnected());

    wire->setManuallyConnected(false);
    EXPECT_EQ(wire->internalShape(), automatic);
}

TEST_F(Items, AnAutomaticWireIsDrawnInSceneCoordinatesWhereverItsItemStands) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    CCircuitEditorNodeItem* wire = itemOf(join("R1.n", "R2.p"));
    const QPainterPath before = wire->mapToScene(wire->internalShape());
    wire->setPos(40, -30);
    wire->updateNode();
    EXPECT_EQ(wire->mapToScene(wire->internalShape()), before);
}

TEST_F(Items, TakesOneBranchOutOfADrawing) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    add("Ground.Basic", {0, 200});
    ICircuitNode* node = join("R1.n", "R2.p");
    ICircuitElementNode* ground = terminal(QStringLiteral("GND1.gnd"));
    solver.makeConnection(ground, node);
    CCircuitEditorNodeItem* wire = itemOf(node);
    EXPECT_FALSE(wire->removeShapeFor(nullptr));
    EXPECT_FALSE(wire->removeShapeFor(terminal(QStringLiteral("R1.n"))));  // one of the first two
    EXPECT_FALSE(wire->isManuallyConnected());

    // Branches are found by the terminal's own position mapped by itself: twice (0, -20).
    QPainterPath path(QPointF(30, 0));
    path.lineTo(170, 0);
    path.moveTo(100, 0);
    path.lineTo(0, 160);
    wire->addShape(path, true);
    EXPECT_TRUE(wire->removeShapeFor(ground));
    EXPECT_EQ(pathPoints(wire->internalShape()), (Points{{30, 0}, {170, 0}}));

    solver.breakConnection(ground, node);
    EXPECT_TRUE(wire->removeShapeFor(terminal(QStringLiteral("R1.n"))));
    EXPECT_EQ(circuit.nodeCount(), 0);
}

TEST_F(Items, DeletingAMovedElementGivesItsWiresBackToTheRouter) {
    auto* first = itemOf(add("Resistor.Basic", {40, 0}));
    add("Resistor.Basic", {200, 0});
    CCircuitEditorNodeItem* wire = itemOf(join("R1.n", "R2.p"));
    wire->addShape(QPainterPath(QPointF(1, 1)), true);
    delete first;  // was placed, and so has moved
    EXPECT_FALSE(wire->isManuallyConnected());
    editor.reset();
}
