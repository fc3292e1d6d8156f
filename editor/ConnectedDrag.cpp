#include "ConnectedDrag.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CElementMoveCmd.h"
#include "CSelectionRectangleItem.h"
#include "ICircuitElement.h"

#include <QGraphicsSceneMouseEvent>

#include <cmath>

ConnectedDrag* ConnectedDrag::of(const CCircuitEditor* editor) {
    return editor ? editor->d->connectedDrag.get() : nullptr;
}

void ConnectedDrag::start(const QList<QGraphicsItem*>& items,
                          const QGraphicsSceneMouseEvent* event) {
    m_items = items;
    m_move.reset();
    m_element = nullptr;
    m_pressed = event->scenePos();
    m_anchor = QPointF();
    m_comesOff = false;
}

void ConnectedDrag::press(CCircuitEditorElementItem* item, const QGraphicsSceneMouseEvent* event) {
    start({item}, event);
    m_element = item;
    m_start = item->pos();
    const QStringList names = item->element() ? item->element()->elementNodeNames() : QStringList();
    if (const auto* terminal = names.isEmpty() ? nullptr : item->nodeItem(names.first())) {
        m_anchor = terminal->mapToScene(QPointF(0, 0));
    }
    m_comesOff = event->modifiers() & Qt::AltModifier;
}

void ConnectedDrag::press(CSelectionRectangleItem* group, const QGraphicsSceneMouseEvent* event) {
    start(group->itemList(), event);
    m_groupRect = group->rect();
    m_comesOff = event->modifiers() & Qt::AltModifier;
}

QPointF ConnectedDrag::offsetTo(const QPointF& scenePoint) const {
    const QPointF way = scenePoint - m_pressed;
    const double half = m_editor->gridSize() / 2.0;
    // Not before half a step, or a click would pull what is off the grid.
    if (std::abs(way.x()) < half && std::abs(way.y()) < half) {
        return {};
    }
    return m_editor->snapToGrid(m_anchor + way) - m_anchor;
}

void ConnectedDrag::moveTo(const QPointF& offset) {
    m_move->moveTo(offset);
    if (!m_element && m_editor->d->selectionRectItem) {
        m_editor->d->selectionRectItem->setRect(m_groupRect.translated(offset));
    }
}

void ConnectedDrag::move(const QGraphicsSceneMouseEvent* event) {
    if (m_items.isEmpty()) {
        return;
    }
    const QPointF offset = offsetTo(event->scenePos());
    if (!m_move) {
        if (offset.isNull()) {
            return;
        }
        m_move = std::make_unique<ConnectedMove>(m_editor, m_items);
    }
    m_comesOff = m_comesOff || (event->modifiers() & Qt::AltModifier);
    if (m_comesOff) {
        m_move->comeOff();
    }
    moveTo(offset);
}

void ConnectedDrag::release() {
    m_items.clear();
    const std::unique_ptr<ConnectedMove> move = std::move(m_move);
    const QPointer<CCircuitEditorElementItem> element(m_element);
    const QRectF groupRect = m_groupRect;
    const QPointer<CCircuitEditor> editor(m_editor);
    if (!move) {
        return;
    }
    const QPointF start = m_start;
    const bool isSettled = move->settle();
    if (!editor) {
        return;
    }
    if (element) {
        if (isSettled && start != element->pos()) {
            editor->undoStack()->push(new CElementMoveCmd(element, start, element->pos()));
        }
        // The model's signals have dropped the selection.
        element->setSelected(true);
    } else if (!isSettled && editor->d->selectionRectItem) {
        editor->d->selectionRectItem->setRect(groupRect);
    }
}

bool ConnectedDrag::cancel() {
    const bool wasUnderWay = !m_items.isEmpty();
    m_items.clear();
    if (m_move) {
        m_move->putBack();
        m_move.reset();
        if (!m_element && m_editor->d->selectionRectItem) {
            m_editor->d->selectionRectItem->setRect(m_groupRect);
        }
    }
    return wasUnderWay;
}
