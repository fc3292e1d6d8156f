// The passive canvas: grid, crosshair, zoom, snapping, centring, stacking and highlight.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CircuitGeometry.h"
#include "ConnectedMove.h"
#include "HistoryStep.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "QtSeries.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double SmallestGridScale = 0.5;
constexpr double StackingStep = 0.10000000149011612;
const QString Dotted = QStringLiteral("dotted");

/// Columns and rows of the grid that a rectangle needs, counted from the drawing area's edge.
struct GridRange {
    GridRange(const QRectF& area, const QRectF& rect, int gridSize)
        : step(CircuitGeometry::gridStep(gridSize)),
          columnCount(CircuitGeometry::truncatedInt(area.width() / step + 1)),
          rowCount(CircuitGeometry::truncatedInt(area.height() / step + 1)),
          firstColumn(std::max(0, CircuitGeometry::truncatedInt((rect.x() - area.x()) / step))),
          firstRow(std::max(0, CircuitGeometry::truncatedInt((rect.y() - area.y()) / step))) {}

    double step;
    int columnCount;
    int rowCount;
    int firstColumn;
    int firstRow;
};

}  // namespace

void CCircuitEditor::updateViewport() {
    // The view itself paints nothing: its viewport does.
    viewport()->update();
}

void CCircuitEditor::on_scene_changed() {
    const QRectF area = d->scene->sceneRect();
    const double x = std::max(std::abs(area.left()), std::abs(area.right()));
    const double y = std::max(std::abs(area.top()), std::abs(area.bottom()));
    setSceneRect(QRectF(QPointF(-x, -y), QPointF(x, y)));
    updateViewport();
}

void CCircuitEditor::drawBackground(QPainter* painter, const QRectF& rect) {
    painter->fillRect(rect, d->backgroundColor);
    const QTransform toDevice = painter->worldTransform();
    if (!isEnabled() || !d->gridVisible || toDevice.m11() < SmallestGridScale) {
        return;
    }
    painter->save();
    painter->resetTransform();
    if (d->gridType == Dotted) {
        drawGridDots(painter, rect, toDevice);
    } else {
        drawGridLines(painter, rect, toDevice);
    }
    painter->restore();
    const QPen pen = painter->pen();
    QPen outline = pen;
    outline.setWidth(0);
    painter->setPen(outline);
    const QRectF area = sceneRect();
    painter->drawRects(&area, 1);
    painter->setPen(pen);
}

void CCircuitEditor::drawGridDots(QPainter* painter, const QRectF& rect,
                                  const QTransform& toDevice) const {
    const QRectF area = sceneRect();
    const GridRange range(area, rect, d->gridSize);
    painter->setPen(QtSeries::hairline(d->gridColor));
    for (int column = range.firstColumn; column < range.columnCount; ++column) {
        const double x = column * range.step + area.x();
        for (int row = range.firstRow; row < range.rowCount; ++row) {
            const double y = row * range.step + area.y();
            painter->drawPoint(toDevice.map(QPointF(x, y)));
            if (y > rect.y() + rect.height()) {
                break;
            }
        }
        if (x > rect.x() + rect.width()) {
            break;
        }
    }
}

void CCircuitEditor::drawGridLines(QPainter* painter, const QRectF& rect,
                                   const QTransform& toDevice) const {
    const QRectF area = sceneRect();
    const GridRange range(area, rect, d->gridSize);
    const Qt::PenStyle style = d->gridLineType == Dotted ? Qt::DotLine : Qt::SolidLine;
    const QColor dark = d->gridColor.darker(d->darkGridColorPercent);
    const auto setPen = [&](int number) {
        const QColor color = number % 5 == 0 ? dark : d->gridColor;
        painter->setPen(QPen(color, 1.0, style, Qt::SquareCap, Qt::BevelJoin));
    };
    for (int column = range.firstColumn; column < range.columnCount; ++column) {
        const double x = column * range.step + area.x();
        setPen(column);
        painter->drawLine(toDevice.map(QLineF(x, area.top(), x, area.bottom())));
        if (x > rect.x() + rect.width()) {
            break;
        }
    }
    for (int row = range.firstRow; row < range.rowCount; ++row) {
        const double y = row * range.step + area.y();
        setPen(row);
        painter->drawLine(toDevice.map(QLineF(area.left(), y, area.right(), y)));
        if (y > rect.y() + rect.height()) {
            break;
        }
    }
}

void CCircuitEditor::drawForeground(QPainter* painter, const QRectF& rect) {
    QGraphicsView::drawForeground(painter, rect);
    if (!d->crosshairVisible) {
        return;
    }
    using CircuitGeometry::truncatedInt;
    painter->setPen(QPen(d->crosshairColor, 1, Qt::SolidLine));
    const int x = truncatedInt(d->crosshairPoint.x());
    const int y = truncatedInt(d->crosshairPoint.y());
    painter->drawLine(truncatedInt(rect.x()), y, truncatedInt(rect.x() + rect.width()), y);
    painter->drawLine(x, truncatedInt(rect.y()), x, truncatedInt(rect.y() + rect.height()));
}

void CCircuitEditor::highlightGridPoint(const QPointF& point, bool on) {
    const bool wasVisible = d->crosshairVisible;
    d->crosshairVisible = on;
    if (!on) {
        return;
    }
    // Called from within a repaint, so a repaint without a change would never end.
    const QPointF snapped = snapToGrid(point);
    if (!wasVisible || snapped != d->crosshairPoint) {
        d->crosshairPoint = snapped;
        updateViewport();
    }
}

void CCircuitEditor::setZoomLevel(int) {}

void CCircuitEditor::zoomFull() {}

void CCircuitEditor::zoomIn() {
    scale(1.1, 1.1);
    d->fitToView = false;
}

void CCircuitEditor::zoomOut() {
    scale(0.9, 0.9);
    d->fitToView = false;
}

void CCircuitEditor::zoomOne() {
    setTransform(QTransform());
    d->fitToView = false;
}

void CCircuitEditor::zoomFit() {
    if (!d->scene) {
        return;
    }
    fitInView(d->scene->itemsBoundingRect(), Qt::KeepAspectRatio);
    d->fitToView = true;
}

void CCircuitEditor::resizeEvent(QResizeEvent* event) {
    QGraphicsView::resizeEvent(event);
    if (d->fitToView) {
        zoomFit();
    }
}

QPointF CCircuitEditor::snapToGrid(const QPointF& point) const {
    return d->gridPoint(point);
}

QRectF CCircuitEditor::snapToGrid(const QRectF& rect) const {
    return CircuitGeometry::snapped(rect, d->gridSize);
}

void CCircuitEditor::snapToGrid(CCircuitEditorElementItem* item) {
    if (!item || !item->element()) {
        return;
    }
    const QStringList names = item->element()->elementNodeNames();
    const CCircuitEditorElementNodeItem* terminal =
        names.isEmpty() ? nullptr : item->nodeItem(names.first());
    if (!terminal) {
        return;
    }
    // The terminal's own position, mapped by the terminal: on purpose not its scene position.
    const QPointF anchor = terminal->mapToScene(terminal->pos());
    const QPointF step = snapToGrid(anchor) - anchor;
    if (item->circuitNodeItemCount() > 0 && movesConnectedElements()) {
        if (!step.isNull()) {
            ConnectedMove::moveBy(this, {item}, step);
        }
        return;
    }
    item->setPos(item->pos() + step);
    item->updateCircuitNodes();
}

void CCircuitEditor::snapToGrid() {
    if (!d->scene) {
        return;
    }
    const HistoryStep step(this, QStringLiteral("Snap to Grid"));
    for (QGraphicsItem* item : d->itemsInTurn()) {
        snapToGrid(qgraphicsitem_cast<CCircuitEditorElementItem*>(item));
    }
}

void CCircuitEditor::bringToCenter() {
    if (!d->scene) {
        return;
    }
    const HistoryStep step(this, QStringLiteral("Bring to Centre"));
    const QPointF center = d->scene->itemsBoundingRect().center();
    if (movesConnectedElements()) {
        // As a whole, texts included.
        ConnectedMove::moveBy(this, d->scene->items(), snapToGrid(-center));
        snapToGrid();
        return;
    }
    for (QGraphicsItem* item : d->itemsInTurn()) {
        if (auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
            element->setPos(element->pos() - center);
            element->updateCircuitNodes();
        }
    }
    snapToGrid();
}

QRectF CCircuitEditor::visibleItemsBoundingRect() const {
    return d->visibleItemsBoundingRect();
}

void CCircuitEditor::bringToFront(QGraphicsItem* item) {
    d->maxZ += StackingStep;
    item->setZValue(d->maxZ);
}

void CCircuitEditor::sendToBack(QGraphicsItem* item) {
    d->minZ -= StackingStep;
    item->setZValue(d->minZ);
}

void CCircuitEditor::highlight(ICircuitNode* node) {
    highlightItem(itemFor(node));
}

void CCircuitEditor::highlight(ICircuitElement* element) {
    highlightItem(itemFor(element));
}

void CCircuitEditor::highlight(ICircuitElementNode* elementNode) {
    highlightItem(itemFor(elementNode));
}

void CCircuitEditor::highlightItem(QGraphicsItem* item) {
    if (item) {
        d->scene->setHighlightedItem(item);
        updateViewport();
    }
}

void CCircuitEditor::unhighlight() {
    if (!d->scene) {
        return;
    }
    d->scene->setHighlightedItem(nullptr);
    d->scene->clearSelection();
    updateViewport();
    d->selection->reset();
}
