// The passive canvas: grid, crosshair, zoom, snapping, highlight, stacking and look-ups.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorScene.h"
#include "EditorTest.h"

#include <QApplication>
#include <QGraphicsRectItem>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

class Canvas : public EditorTest {
protected:
    Canvas() {
        editor->setViewport(nullptr);
        editor->resize(200, 200);
        editor->setFrameStyle(QFrame::NoFrame);
        editor->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        editor->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    /// Aligned so that the scene point (0, 0) is pixel (100, 100).
    QImage shown() {
        editor->grab();  // lays the viewport out
        editor->centerOn(0, 0);
        return editor->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
};

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

}  // namespace

TEST_F(Canvas, DrawsLinesEveryFifthDarker) {
    editor->setGridColorRGB(0, 200, 0);
    editor->setDarkGridColorPercent(400);
    editor->setRenderHint(QPainter::Antialiasing, false);
    const QImage image = shown();
    // Lines are counted from the edge of the drawing area at -4000: the origin is number 400.
    EXPECT_EQ(image.pixelColor(100, 104), QColor(0, 50, 0));
    EXPECT_EQ(image.pixelColor(110, 104), QColor(0, 200, 0));
    EXPECT_EQ(image.pixelColor(150, 104), QColor(0, 50, 0));
    EXPECT_EQ(image.pixelColor(105, 104), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(104, 110), QColor(0, 200, 0));
    editor->setGridType(QStringLiteral("dotted"));
    const QImage dots = shown();
    EXPECT_EQ(dots.pixelColor(110, 110), QColor(0, 200, 0));
    EXPECT_EQ(dots.pixelColor(110, 104), QColor(Qt::white));
}

TEST_F(Canvas, NoGridWhenSmallOrDisabled) {
    editor->setBackgroundColorRGB(250, 240, 230);
    editor->setGridColorRGB(0, 0, 0);
    const auto isPlain = [](const QImage& image) {
        QImage plain(image.size(), image.format());
        plain.fill(QColor(250, 240, 230));
        return image == plain;
    };
    EXPECT_FALSE(isPlain(shown()));
    editor->scale(0.49, 0.49);
    EXPECT_TRUE(isPlain(shown()));
    editor->zoomOne();
    editor->setEnabled(false);
    EXPECT_TRUE(isPlain(shown()));
}

TEST_F(Canvas, OutlinesTheDrawingAreaByAHairline) {
    editor->setEditorSize(101);  // -50 to 51
    EXPECT_EQ(editor->sceneRect(), QRectF(-50, -50, 101, 101));
    EXPECT_EQ(editor->scene()->sceneRect(), QRectF(-50, -50, 101, 101));
    editor->setRenderHint(QPainter::Antialiasing, false);
    editor->setSceneRect(-50, -50, 100, 100);
    editor->setGridColor(Qt::white);
    const QImage image = shown();
    EXPECT_EQ(image.pixelColor(50, 75), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(48, 75), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(52, 75), QColor(Qt::white));
}

TEST_F(Canvas, KeepsTheViewSymmetricAroundTheOrigin) {
    editor->scene()->setSceneRect(-100, -400, 300, 500);
    emit editor->scene()->changed({});
    EXPECT_EQ(editor->sceneRect(), QRectF(-200, -400, 400, 800));
    EXPECT_EQ(editor->scene()->sceneRect(), QRectF(-100, -400, 300, 500));
}

TEST_F(Canvas, RepaintsForWhatShowsAndOnlyThen) {
    editor->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editor.get()));
    QApplication::processEvents();
    PaintCounter paints(editor->viewport());
    const auto paintsAfter = [&paints](auto change) {
        paints.count = 0;
        change();
        QApplication::processEvents();
        return paints.count > 0;
    };
    EXPECT_TRUE(paintsAfter([this] { editor->setDarkGridColorPercent(120); }));
    EXPECT_FALSE(paintsAfter([this] { editor->setDarkGridColorPercent(120); }));
    EXPECT_FALSE(paintsAfter([this] { editor->setGridSize(20); }));
    EXPECT_TRUE(paintsAfter([this] { editor->setCrosshairColorRGB(1, 2, 3); }));
    EXPECT_FALSE(paintsAfter([this] { editor->setCrosshairColor(QColor(1, 2, 3)); }));
    EXPECT_TRUE(paintsAfter([this] { editor->highlightGridPoint({12, 12}, true); }));
    EXPECT_FALSE(paintsAfter([this] { editor->highlightGridPoint({14, 12}, true); }));
    EXPECT_FALSE(paintsAfter([this] { editor->highlightGridPoint({}, false); }));
}

TEST_F(Canvas, CrosshairRunsThroughTheSnappedPoint) {
    editor->setGridColor(Qt::white);
    editor->setCrosshairColorRGB(255, 0, 0);
    editor->setRenderHint(QPainter::Antialiasing, false);
    editor->highlightGridPoint({18, -22}, true);
    const QImage image = shown();
    EXPECT_EQ(image.pixelColor(120, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(5, 80), QColor(Qt::red));
    editor->highlightGridPoint({}, false);
    EXPECT_EQ(shown().pixelColor(120, 5), QColor(Qt::white));
}

TEST_F(Canvas, ZoomsByFixedFactorsAndKeepsAFit) {
    QSignalSpy level(editor.get(), &CCircuitEditor::zoomLevelChanged);
    QSignalSpy scale(editor.get(), &CCircuitEditor::zoomScaleChanged);
    editor->zoomIn();
    EXPECT_DOUBLE_EQ(editor->transform().m11(), 1.1);
    editor->zoomOut();
    EXPECT_DOUBLE_EQ(editor->transform().m11(), 1.1 * 0.9);
    editor->zoomOne();
    editor->setZoomLevel(5);
    editor->zoomFull();
    EXPECT_TRUE(editor->transform().isIdentity());
    EXPECT_TRUE(level.isEmpty() && scale.isEmpty());

    add("Resistor.Basic", {0, 0});
    editor->show();
    editor->zoomFit();
    const double fitted = editor->transform().m11();
    editor->resize(400, 400);
    EXPECT_GT(editor->transform().m11(), fitted);
    const double refitted = editor->transform().m11();
    editor->zoomOne();
    editor->resize(200, 200);
    EXPECT_TRUE(editor->transform().isIdentity());
    EXPECT_GT(refitted, 1.0);
}

TEST_F(Canvas, SnapsElementsByTheirFirstTerminal) {
    auto* item = itemOf(add("Resistor.Basic", {0, 0}));
    item->setPos(13.4, -7.2);
    editor->snapToGrid(item);
    EXPECT_EQ(item->pos(), QPointF(10, -10));
    // The anchor is the terminal's place mapped by itself, twice as far out: at grid 40 that is
    // -60 of the origin, not -30.
    editor->setGridSize(40);
    item->setPos(0, 0);
    editor->snapToGrid(item);
    EXPECT_EQ(item->pos(), QPointF(-20, 0));
    editor->snapToGrid(static_cast<CCircuitEditorElementItem*>(nullptr));
}

TEST_F(Canvas, CentresFreeElementsAndLeavesWiredOnesAndOthers) {
    auto* first = itemOf(add("Resistor.Basic", {500, 300}));
    auto* second = itemOf(add("Resistor.Basic", {700, 300}));
    auto* other = editor->scene()->addRect(QRectF(600, 300, 1, 1));
    editor->bringToCenter();
    EXPECT_EQ(first->pos(), QPointF(-100, 0));
    EXPECT_EQ(second->pos(), QPointF(100, 0));
    EXPECT_EQ(other->pos(), QPointF(0, 0));
    delete other;
    join("R1.n", "R2.p");
    editor->bringToCenter();
    EXPECT_EQ(first->pos(), QPointF(-100, 0));
}

TEST_F(Canvas, HighlightsWhatHasAnItem) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    ICircuitNode* node = join("R1.n", "R2.p");
    auto* scene = static_cast<CCircuitEditorScene*>(editor->scene());
    editor->highlight(element(QStringLiteral("R1")));
    EXPECT_EQ(scene->highlightedItem(), itemOf(element(QStringLiteral("R1"))));
    editor->highlight(static_cast<ICircuitElement*>(nullptr));
    EXPECT_NE(scene->highlightedItem(), nullptr);
    editor->highlight(terminal(QStringLiteral("R2.p")));
    EXPECT_EQ(scene->highlightedItem(), itemOf(terminal(QStringLiteral("R2.p"))));
    editor->highlight(node);
    EXPECT_EQ(scene->highlightedItem(), itemOf(node));
    itemOf(node)->setSelected(true);
    editor->unhighlight();
    EXPECT_EQ(scene->highlightedItem(), nullptr);
    EXPECT_TRUE(scene->selectedItems().isEmpty());
    // A highlighted item may die by other ways than its removal from the circuit.
    editor->highlight(terminal(QStringLiteral("R2.p")));
    itemOf(element(QStringLiteral("R2")))->setElement(nullptr);
    EXPECT_EQ(scene->highlightedItem(), nullptr);
    editor.reset();
}

TEST_F(Canvas, MarksTheHighlightFiveUnitsAround) {
    editor->setGridColor(Qt::white);
    add("Resistor.Basic", {0, 0});
    editor->highlight(element(QStringLiteral("R1")));
    const QImage image = shown();
    EXPECT_NE(image.pixelColor(100 + 34, 100 + 24), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(100 + 36, 100 + 24), QColor(Qt::white));
}

TEST_F(Canvas, OutlivesItsSceneAndItsSceneOutlivesIt) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    join("R1.n", "R2.p");
    {
        // The scene is the parent's child and goes before the editor.
        QWidget parent;
        auto* child = new CCircuitEditor(&parent);
        child->setCircuitSolver(&solver);
        EXPECT_NE(child->elementItem(element(QStringLiteral("R1"))), nullptr);
    }
    std::unique_ptr<CCircuitEditor> child;
    {
        // After a change of parent the scene stays with the first one.
        QWidget parent;
        child = std::make_unique<CCircuitEditor>(&parent);
        child->setCircuitSolver(&solver);
        child->setParent(nullptr);
    }
    // Without a scene the editor stays silent.
    circuit.addElement(factory.createElement(QStringLiteral("Resistor.Basic")));
    child->zoomFit();
    child->unhighlight();
    child->bringToCenter();
    QTest::mousePress(child->viewport(), Qt::LeftButton, Qt::ControlModifier);
    QTest::mouseRelease(child->viewport(), Qt::LeftButton);
    child.reset();
    auto stray = std::make_unique<CCircuitEditor>(nullptr);
    const QPointer<QGraphicsScene> scene = stray->scene();
    const QPointer<QLabel> label = stray->statusLabel();
    EXPECT_EQ(label->minimumWidth(), 80);
    stray.reset();
    EXPECT_TRUE(scene.isNull());
    EXPECT_TRUE(label.isNull());
    EXPECT_EQ(circuit.elementCount(), 3);
}
