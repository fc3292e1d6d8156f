#include "CSelectionRectangleItem.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "ConnectedDrag.h"
#include "HistoryStep.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ItemTypes.h"
#include "MoveDialog.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double FillAlpha = 0.4000000059604645;  // single precision, widened
constexpr int ShiftFactor = 5;

}  // namespace

CSelectionRectangleItem::CSelectionRectangleItem(CCircuitEditor* editor) : m_editor(editor) {
    // A new item counts as visible already, and would not get the focus when it is shown first.
    setVisible(false);
    editor->scene()->addItem(this);
    QColor color = QApplication::palette().brush(QPalette::Current, QPalette::Highlight).color();
    color.setAlphaF(FillAlpha);
    setBrush(QBrush(color, Qt::SolidPattern));
    color.setAlphaF(1.0);
    setPen(QPen(QBrush(color), 2.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    setZValue(1500);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable);
}

CSelectionRectangleItem::~CSelectionRectangleItem() {
    if (m_editor) {
        m_editor->forgetItem(this);
    }
}

void CSelectionRectangleItem::setItemList(const QList<QGraphicsItem*>& items) {
    m_itemList.clear();
    m_members.clear();
    if (m_editor->movesConnectedElements()) {
        for (QGraphicsItem* item : items) {
            if (item->type() == TextBoxItemType || item->type() == ElementItemType) {
                add(item);
            }
        }
        return;
    }
    const QSet<QGraphicsItem*> given(items.begin(), items.end());
    for (auto it = items.rbegin(); it != items.rend(); ++it) {
        switch ((*it)->type()) {
            case TextBoxItemType:
                add(*it);
                break;
            case ElementItemType:
                if (static_cast<CCircuitEditorElementItem*>(*it)->circuitNodeItemCount() == 0) {
                    add(*it);
                }
                break;
            case NodeItemType:
                addNode(*it, given);
                break;
            default:
                break;
        }
    }
}

void CSelectionRectangleItem::add(QGraphicsItem* item) {
    m_itemList.append(item);
    m_members.insert(item);
}

void CSelectionRectangleItem::addNode(QGraphicsItem* item, const QSet<QGraphicsItem*>& given) {
    ICircuitNode* node = static_cast<CCircuitEditorNodeItem*>(item)->circuitNode();
    QList<QGraphicsItem*> joined;
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        QGraphicsItem* element = m_editor->elementItem(node->elementNode(i)->element());
        if (!given.contains(element)) {
            return;
        }
        if (!joined.contains(element)) {
            joined.append(element);
        }
    }
    if (!m_members.contains(item)) {
        add(item);
    }
    for (QGraphicsItem* element : qAsConst(joined)) {
        if (!m_members.contains(element)) {
            add(element);
        }
    }
}

void CSelectionRectangleItem::forgetItem(QGraphicsItem* item) {
    if (m_members.remove(item)) {
        m_itemList.removeAll(item);
    }
}

void CSelectionRectangleItem::moveGroup(const QPointF& step) {
    const int grid = m_editor->gridSize();
    if (m_itemList.isEmpty() || (std::abs(step.x()) < grid && std::abs(step.y()) < grid)) {
        return;
    }
    const QPointF snapped = m_editor->snapToGrid(step);
    if (ConnectedMove::moveBy(m_editor, m_itemList, snapped)) {
        setRect(rect().translated(snapped));
        return;
    }
    m_editor->setInternalMove(true);
    for (QGraphicsItem* item : QList<QGraphicsItem*>(m_itemList)) {
        if (!m_members.contains(item) || item->scene() != scene()) {
            continue;  // went with another one, or was taken away
        }
        item->setPos(item->pos() + snapped);
        m_editor->touchHistory(item);  // a wire doesn't tell
    }
    CCircuitEditorNodeItem::updateWiresOf(m_itemList);
    m_editor->setInternalMove(false);
    setRect(rect().translated(snapped));
}

bool CSelectionRectangleItem::canTurn() const {
    return m_editor->movesConnectedElements() &&
           std::any_of(m_itemList.begin(), m_itemList.end(),
                       [](const auto* item) { return item->type() == ElementItemType; });
}

void CSelectionRectangleItem::turnGroup(bool isMirror) {
    if (!canTurn()) {
        return;
    }
    const HistoryStep step(
        m_editor, isMirror ? QStringLiteral("Mirror group") : QStringLiteral("Rotate group"));
    const QRectF old = rect();
    const QPointF center = m_editor->snapToGrid(old.center());
    const QPointer<CCircuitEditor> editor(m_editor);
    const QTransform way = ConnectedMove(m_editor, m_itemList).turn(center, isMirror);
    // The model's signals may have taken the rectangle away.
    if (editor && editor->isSelectionRectangle(this)) {
        setRect(way.mapRect(old));
    }
}

void CSelectionRectangleItem::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    if (ConnectedDrag* drag = ConnectedDrag::of(m_editor)) {
        drag->press(this, event);
        return;
    }
    if (!m_itemList.isEmpty()) {
        m_lastPos = m_editor->snapToGrid(event->scenePos());
    }
}

void CSelectionRectangleItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (ConnectedDrag* drag = ConnectedDrag::of(m_editor)) {
        drag->move(event);
        return;
    }
    if (m_itemList.isEmpty()) {
        return;
    }
    moveGroup(event->scenePos() - m_lastPos);
    m_lastPos = event->scenePos();
}

void CSelectionRectangleItem::mouseReleaseEvent(QGraphicsSceneMouseEvent*) {
    if (ConnectedDrag* drag = ConnectedDrag::of(m_editor)) {
        drag->release();
        return;
    }
    m_lastPos = QPointF(0, 0);
}

void CSelectionRectangleItem::keyPressEvent(QKeyEvent* event) {
    const bool isFast = event->modifiers() & Qt::ShiftModifier;
    const int factor = m_editor->movesConnectedElements() ? ConnectedMove::FastFactor : ShiftFactor;
    const double distance = m_editor->gridSize() * (isFast ? factor : 1);
    switch (event->key()) {
        case Qt::Key_Left:
            moveGroup({-distance, 0});
            break;
        case Qt::Key_Right:
            moveGroup({distance, 0});
            break;
        case Qt::Key_Up:
            moveGroup({0, -distance});
            break;
        case Qt::Key_Down:
            moveGroup({0, distance});
            break;
        case Qt::Key_R:
        case Qt::Key_F:
            turnGroup(event->key() == Qt::Key_F);
            break;
        default:
            break;
    }
}

void CSelectionRectangleItem::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
    event->accept();
    const QPointer<CCircuitEditor> editor = m_editor;
    const QPointer<QWidget> parent = event->widget();
    QMenu menu;
    const QAction* move = menu.addAction(QStringLiteral("Move Group"));
    // Menu and dialog run event loops of their own: the rectangle may be gone after each.
    const auto isAlive = [this, &editor] { return editor && editor->isSelectionRectangle(this); };
    if (menu.exec(QCursor::pos()) != move || !isAlive()) {
        return;
    }
    const std::optional<QPoint> distance = askForDistance(parent, QString());
    if (distance && isAlive()) {
        moveGroup(QPointF(*distance) * editor->gridSize());
    }
}

QVariant CSelectionRectangleItem::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemVisibleHasChanged) {
        if (value.toBool()) {
            setFocus(Qt::OtherFocusReason);
        } else {
            clearFocus();
        }
    }
    return value;
}

void CSelectionRectangleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*,
                                    QWidget* widget) {
    if (!widget) {
        return;  // a picture, not the screen
    }
    painter->save();
    painter->setBrush(brush());
    painter->setPen(pen());
    painter->drawRoundedRect(rect(), 5, 5, Qt::AbsoluteSize);
    painter->restore();
}
