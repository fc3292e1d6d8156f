#pragma once

#include "ConnectedMove.h"

#include <QRectF>

#include <memory>

class CSelectionRectangleItem;
class QGraphicsSceneMouseEvent;

/// A drag of an element or of the group under the selection rectangle, with its wires: from the
/// press to the release, or to Escape. Goes in grid steps, and adds up what is less than one. Used
/// by the items as long as the editor's property MoveConnectedElements is on.
class ConnectedDrag {
public:
    explicit ConnectedDrag(CCircuitEditor* editor) : m_editor(editor) {}

    /// Null for an editor whose property is off.
    static ConnectedDrag* of(const CCircuitEditor* editor);

    void press(CCircuitEditorElementItem* item, const QGraphicsSceneMouseEvent* event);
    void press(CSelectionRectangleItem* group, const QGraphicsSceneMouseEvent* event);
    void move(const QGraphicsSceneMouseEvent* event);
    void release();
    /// Puts all back. False if nothing was being dragged.
    bool cancel();
    void forgetItem(QGraphicsItem* item) { m_items.removeAll(item); }

private:
    void start(const QList<QGraphicsItem*>& items, const QGraphicsSceneMouseEvent* event);
    QPointF offsetTo(const QPointF& scenePoint) const;
    void moveTo(const QPointF& offset);

    CCircuitEditor* m_editor;
    // From the press on; empty while nothing is held.
    QList<QGraphicsItem*> m_items;
    // From the first step on.
    std::unique_ptr<ConnectedMove> m_move;
    QPointer<CCircuitEditorElementItem> m_element;
    QRectF m_groupRect;
    QPointF m_pressed;
    // What comes to lie on the grid.
    QPointF m_anchor;
    QPointF m_start;
    bool m_comesOff = false;
};
