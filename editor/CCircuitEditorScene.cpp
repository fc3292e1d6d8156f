#include "CCircuitEditorScene.h"

#include "CCircuitEditorNodeItem.h"

#include <QGraphicsItem>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QPalette>

class CCircuitEditorSceneData {
public:
    QGraphicsItem* highlightedItem = nullptr;
};

CCircuitEditorScene::CCircuitEditorScene(QObject* parent)
    : QGraphicsScene(parent), d(std::make_unique<CCircuitEditorSceneData>()) {}

CCircuitEditorScene::~CCircuitEditorScene() {
    // While the data lives: dying items take themselves out of the highlight.
    clear();
}

void CCircuitEditorScene::setHighlightedItem(QGraphicsItem* item) {
    if (d->highlightedItem == item) {
        return;
    }
    d->highlightedItem = item;
    update(QRectF());
}

QGraphicsItem* CCircuitEditorScene::highlightedItem() const {
    return d->highlightedItem;
}

void CCircuitEditorScene::forgetDrag() {
    // The base class keeps where dragged items started until any item gets its release, and a drag
    // of another item would begin with these places.
    struct Released : QGraphicsRectItem {
        using QGraphicsRectItem::mouseReleaseEvent;
    } item;
    addItem(&item);
    QGraphicsSceneMouseEvent release(QEvent::GraphicsSceneMouseRelease);
    item.mouseReleaseEvent(&release);
}

void CCircuitEditorScene::drawForeground(QPainter* painter, const QRectF& rect) {
    QGraphicsItem* item = d->highlightedItem;
    if (!item) {
        return;
    }
    QRectF mark = item->mapToScene(item->boundingRect()).boundingRect();
    mark.setRect(mark.x() - 5, mark.y() - 5, mark.width() + 10, mark.height() + 10);
    if (!mark.intersects(rect)) {
        return;
    }
    QColor color = palette().brush(QPalette::Highlight).color();
    color.setAlphaF(0.5);
    if (item->type() == CCircuitEditorNodeItem::Type) {
        painter->fillPath(item->mapToScene(item->shape()), color);
    } else {
        painter->fillRect(mark, color);
    }
}
