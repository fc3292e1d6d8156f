#include "CCircuitEditorNodeItem.h"

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CircuitGeometry.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "NetJunctions.h"

#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPathStroker>
#include <QPointer>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <optional>

using CircuitGeometry::PointStruct;

namespace {

constexpr double SamePoint = 1e-12;

bool coincide(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) <= SamePoint && std::abs(a.y() - b.y()) <= SamePoint;
}

/// The same path, of lines, without the room that one keeps for further points.
QPainterPath squeezed(const QPainterPath& path) {
    if (path.isEmpty()) {
        return path;
    }
    QPainterPath exact(path.elementAt(0));
    exact.reserve(path.elementCount());
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        element.isMoveTo() ? exact.moveTo(element) : exact.lineTo(element);
    }
    return exact;
}

}  // namespace

/// What a net looks like to the router.
struct NetOutline {
    QVector<PointStruct> terminals;
    // From (0, 0) outward, unless the net's first terminal is drawn.
    double minX = 0;
    double maxX = 0;
    double minY = 0;
    double maxY = 0;

    void add(const PointStruct& terminal, bool isFirstOfNet) {
        const QPointF p = terminal.point;
        if (isFirstOfNet) {
            minX = maxX = p.x();
            minY = maxY = p.y();
        }
        minX = std::min(minX, p.x());
        maxX = std::max(maxX, p.x());
        minY = std::min(minY, p.y());
        maxY = std::max(maxY, p.y());
        terminals.append(terminal);
    }
};

class CCircuitEditorNodeItemData {
public:
    QPointer<CCircuitEditor> circuitEditor;
    ICircuitNode* circuitNode = nullptr;
    QColor color;
    QPainterPath internalShape;
    bool outputVariable = false;
    int wireClearance = 30;
    bool manuallyConnected = false;
    // The element items that list this wire: leaving them needs no look at the model, which may be
    // gone when the wire goes.
    QVector<CCircuitEditorElementItem*> holders;
    QSet<ICircuitElementNode*> leftOut;
    // Those of the present path, as soon as they have been asked for.
    std::optional<QVector<QPointF>> junctions;

    void updateItemShape();
    QPainterPath itemShape() const;
    QRectF itemBounds() const;
    NetOutline outline() const;
    QPainterPath route(const NetOutline& net) const;

private:
    // The stroke takes many times the room of the path, and few wires are ever asked for it.
    double m_strokeWidth = 0;
    mutable bool m_boundsKnown = true;
    mutable QRectF m_bounds;
};

void CCircuitEditorNodeItemData::updateItemShape() {
    // That of the grid as it is now: a later change of the grid counts with the next route.
    m_strokeWidth = CircuitGeometry::gridStep(circuitEditor->gridSize()) * 0.75;
    m_boundsKnown = false;
    junctions.reset();
}

QPainterPath CCircuitEditorNodeItemData::itemShape() const {
    if (internalShape.isEmpty()) {
        return {};
    }
    QPainterPathStroker stroker;
    stroker.setWidth(m_strokeWidth);
    return stroker.createStroke(internalShape);
}

QRectF CCircuitEditorNodeItemData::itemBounds() const {
    if (!m_boundsKnown) {
        m_bounds = itemShape().boundingRect();
        m_boundsKnown = true;
    }
    return m_bounds;
}

NetOutline CCircuitEditorNodeItemData::outline() const {
    NetOutline net;
    for (int i = 0; i < circuitNode->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = circuitNode->elementNode(i);
        const CCircuitEditorElementItem* element =
            terminal ? circuitEditor->elementItem(terminal->element()) : nullptr;
        const CCircuitEditorElementNodeItem* marker =
            element ? element->nodeItem(terminal) : nullptr;
        if (!marker || leftOut.contains(terminal)) {
            continue;
        }
        const QPointF point = marker->mapToScene(QPointF(0, 0));
        const QRectF rect =
            circuitEditor->snapToGrid(element->mapToScene(element->boundingRect()).boundingRect());
        net.add({point, CircuitGeometry::exitDirection(point, rect)}, i == 0);
    }
    return net;
}

QPainterPath CCircuitEditorNodeItemData::route(const NetOutline& net) const {
    const QRectF bounds(net.minX, net.minY, net.maxX - net.minX, net.maxY - net.minY);
    const QPointF meeting = circuitEditor->snapToGrid(
        CircuitGeometry::meetingPoint(net.terminals, bounds, wireClearance));
    QPainterPath path;
    for (const PointStruct& terminal : net.terminals) {
        CircuitGeometry::routeBranch(terminal.point, meeting, terminal.direction, wireClearance,
                                     path);
    }
    return squeezed(path);
}

CCircuitEditorNodeItem::CCircuitEditorNodeItem(CCircuitEditor* editor)
    : d(std::make_unique<CCircuitEditorNodeItemData>()) {
    d->circuitEditor = editor;
    editor->scene()->addItem(this);
    setFlags(ItemIsSelectable | ItemIsFocusable);
    setZValue(1.0);
}

CCircuitEditorNodeItem::~CCircuitEditorNodeItem() {
    for (CCircuitEditorElementItem* holder : QVector<CCircuitEditorElementItem*>(d->holders)) {
        holder->removeCircuitNodeItem(this);
    }
    if (d->circuitEditor) {
        d->circuitEditor->forgetItem(this);
    }
}

bool CCircuitEditorNodeItem::joins(ICircuitNode* node, ICircuitElement* element,
                                   ICircuitElementNode* except) {
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        if (terminal && terminal != except && terminal->element() == element) {
            return true;
        }
    }
    return false;
}

void CCircuitEditorNodeItem::updateWiresOf(const QList<QGraphicsItem*>& items) {
    QVector<CCircuitEditorNodeItem*> wires;
    QSet<CCircuitEditorNodeItem*> seen;
    const auto add = [&](CCircuitEditorNodeItem* wire) {
        if (!seen.contains(wire)) {
            seen.insert(wire);
            wires.append(wire);
        }
    };
    for (QGraphicsItem* item : items) {
        const auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
        for (int i = 0; element && i < element->circuitNodeItemCount(); ++i) {
            add(element->circuitNodeItem(i));
        }
        if (auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item)) {
            add(wire);
        }
    }
    for (CCircuitEditorNodeItem* wire : qAsConst(wires)) {
        wire->updateNode();
    }
}

ICircuitNode* CCircuitEditorNodeItem::circuitNode() const {
    return d->circuitNode;
}

bool CCircuitEditorNodeItem::isManuallyConnected() const {
    return d->manuallyConnected;
}

QColor CCircuitEditorNodeItem::color() const {
    return d->color;
}

QPainterPath CCircuitEditorNodeItem::internalShape() const {
    return d->internalShape;
}

void CCircuitEditorNodeItem::setCircuitNode(ICircuitNode* node) {
    if (node == d->circuitNode) {
        return;
    }
    d->circuitNode = node;
    d->color = Qt::blue;
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        if (!terminal) {
            continue;
        }
        if (CCircuitEditorElementItem* item = d->circuitEditor->elementItem(terminal->element())) {
            item->addCircuitNodeItem(this);
        }
        if (i == 0) {
            d->color = terminal->color();
        }
    }
    updateNode();
}

void CCircuitEditorNodeItem::setManuallyConnected(bool value) {
    d->manuallyConnected = value;
    touchHistory();
    updateNode();
    update();
}

void CCircuitEditorNodeItem::updateNode() {
    d->junctions.reset();
    if (d->manuallyConnected) {
        return;
    }
    if (d->circuitNode) {
        d->wireClearance = d->circuitNode->wireClearance();
        updateToolTip();
    }
    if (d->circuitEditor && d->circuitEditor->d->holdsRouting(this)) {
        return;
    }
    prepareGeometryChange();
    d->internalShape = QPainterPath();
    d->updateItemShape();
    update();
    if (!d->circuitNode || d->circuitNode->elementNodeCount() <= 1) {
        return;
    }
    const NetOutline net = d->outline();
    if (net.terminals.size() < 2) {
        return;  // terminals without items: there is nothing to join
    }
    prepareGeometryChange();  // the model may have looked at the empty wire meanwhile
    d->internalShape = mapFromScene(d->route(net));
    d->updateItemShape();
}

void CCircuitEditorNodeItem::updateToolTip() {
    setToolTip(d->circuitNode->name());
}

void CCircuitEditorNodeItem::addShape(QPainterPath path, bool replace) {
    prepareGeometryChange();
    if (replace) {
        d->internalShape = path;
    } else {
        d->internalShape.addPath(mapFromScene(path));
    }
    d->updateItemShape();
    d->manuallyConnected = true;
    update();
    reportModified();
}

bool CCircuitEditorNodeItem::removeShapeFor(ICircuitElementNode* elementNode) {
    if (!elementNode || !elementNode->element()) {
        return false;
    }
    const int count = d->circuitNode->elementNodeCount();
    for (int i = 0; i < std::min(2, count); ++i) {
        if (d->circuitNode->elementNode(i) == elementNode) {
            if (count != 2) {
                return false;
            }
            d->circuitEditor->on_removeNodeRequest(d->circuitNode);  // deletes this item
            return true;
        }
    }
    const auto* marker = d->circuitEditor->itemFor(elementNode);
    if (!marker) {
        return false;
    }
    // The terminal's own position, mapped by the terminal: on purpose not its centre.
    const QPointF end = marker->mapToScene(marker->pos());
    QPainterPath kept;
    for (const QPainterPath& branch : CircuitGeometry::subPaths(d->internalShape)) {
        if (branch.isEmpty() || coincide(branch.elementAt(0), end) ||
            coincide(branch.currentPosition(), end)) {
            continue;
        }
        kept = kept.isEmpty() ? branch : kept.united(branch);
    }
    prepareGeometryChange();
    d->internalShape = kept;
    d->updateItemShape();
    d->manuallyConnected = true;
    update();
    reportModified();
    return true;
}

void CCircuitEditorNodeItem::moveNodeBy(double dx, double dy) {
    prepareGeometryChange();
    d->internalShape = QTransform::fromTranslate(dx, dy).map(d->internalShape);
    d->updateItemShape();
    reportModified();
    update();
}

void CCircuitEditorNodeItem::setLeftOut(const QSet<ICircuitElementNode*>& terminals) {
    d->leftOut = terminals;
}

void CCircuitEditorNodeItem::setHeldBy(CCircuitEditorElementItem* item, bool isHeld) {
    if (isHeld) {
        d->holders.append(item);
    } else {
        d->holders.removeOne(item);
    }
}

void CCircuitEditorNodeItem::touchHistory() {
    if (d->circuitEditor) {
        d->circuitEditor->touchHistory(this);
    }
}

void CCircuitEditorNodeItem::reportModified() {
    touchHistory();
    if (d->circuitEditor) {
        emit d->circuitEditor->projectPartModified();
    }
}

QRectF CCircuitEditorNodeItem::boundingRect() const {
    return d->itemBounds();
}

QPainterPath CCircuitEditorNodeItem::shape() const {
    return d->itemShape();
}

bool CCircuitEditorNodeItem::contains(const QPointF& point) const {
    return CircuitGeometry::pathHit(d->internalShape, point);
}

void CCircuitEditorNodeItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (d->circuitEditor && !d->circuitEditor->hasTurnInPicture()) {
        return;
    }
    const QPen oldPen = painter->pen();
    const QBrush oldBrush = painter->brush();
    const QColor color = isSelected() ? d->color.darker(120) : d->color;
    const QPen pen(QBrush(color, Qt::SolidPattern), isSelected() ? 4.0 : 2.0, Qt::SolidLine,
                   Qt::SquareCap, Qt::BevelJoin);
    painter->setPen(pen);
    painter->setBrush(QBrush());
    painter->drawPath(d->internalShape);
    if (d->circuitEditor && d->circuitEditor->showsJunctions()) {
        paintJunctions(painter, pen);
    }
    painter->setPen(oldPen);
    painter->setBrush(oldBrush);
}

void CCircuitEditorNodeItem::paintJunctions(QPainter* painter, const QPen& pen) {
    if (!d->junctions) {
        QVector<QPointF> terminals;
        for (const PointStruct& terminal : d->outline().terminals) {
            terminals.append(mapFromScene(terminal.point));
        }
        d->junctions = NetJunctions::junctions(d->internalShape, terminals);
    }
    NetJunctions::paint(painter, pen, *d->junctions);
}

QVariant CCircuitEditorNodeItem::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemSelectedChange && d->circuitEditor) {
        if (value.toBool()) {
            d->circuitEditor->on_circuitNodeSelected(d->circuitNode);
            emit d->circuitEditor->nodeSelected(d->circuitNode);
            scene()->setFocusItem(this, Qt::OtherFocusReason);
        } else {
            emit d->circuitEditor->nodeUnselected(d->circuitNode);
            // A key would still reach it, and remove what no longer looks selected.
            clearFocus();
        }
    } else if (change == ItemPositionChange) {
        const QPointF delta = value.toPointF() - pos();
        moveNodeBy(delta.x(), delta.y());
        return pos();
    }
    return QGraphicsItem::itemChange(change, value);
}

void CCircuitEditorNodeItem::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsItem::mouseReleaseEvent(event);
    if (d->circuitEditor) {
        emit d->circuitEditor->nodeClickEvent(d->circuitNode,
                                              CircuitGeometry::roundedPoint(event->pos()),
                                              event->button(), event->modifiers());
    }
}

void CCircuitEditorNodeItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsItem::mouseDoubleClickEvent(event);
    if (d->circuitEditor) {
        emit d->circuitEditor->nodeDoubleClickEvent(d->circuitNode,
                                                    CircuitGeometry::roundedPoint(event->pos()),
                                                    event->button(), event->modifiers());
    }
}

void CCircuitEditorNodeItem::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Delete) {
        QGraphicsItem::keyPressEvent(event);
        return;
    }
    // Deletes this item: nothing may follow.
    d->circuitEditor->on_removeNodeRequest(d->circuitNode);
}

void CCircuitEditorNodeItem::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
    const QPointer<CCircuitEditor> editor = d->circuitEditor;
    ICircuitNode* node = d->circuitNode;
    QMenu menu;
    QAction* deleteNode = menu.addAction(QStringLiteral("Delete Node"));
    QAction* outputVariable = menu.addAction(QStringLiteral("Output Variable"));
    outputVariable->setCheckable(true);
    outputVariable->setChecked(d->outputVariable);
    outputVariable->setVisible(false);
    if (editor) {
        emit editor->nodeContextMenuEvent(node, &menu, event->modifiers());
    }
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the wire may be gone.
    if (!editor || editor->nodeItem(node) != this) {
        return;
    }
    if (chosen == outputVariable) {
        d->outputVariable = !d->outputVariable;
    } else if (chosen == deleteNode) {
        editor->on_removeNodeRequest(node);
    }
}
