#pragma once

#include <QGraphicsRectItem>
#include <QList>
#include <QPointer>
#include <QSet>

class CCircuitEditor;

/// The translucent rectangle over a group of items, which move with it in whole grid steps by
/// pointer, arrow keys or dialog, and turn with R and F if the editor moves what is wired. Held in
/// the item's rect() in scene coordinates, while the item stays at the origin. Moves of a group
/// can't be undone.
class CSelectionRectangleItem : public QGraphicsRectItem {
public:
    /// Adds itself, hidden, to the editor's scene.
    explicit CSelectionRectangleItem(CCircuitEditor* editor);
    ~CSelectionRectangleItem() override;

    /// Keeps what may move of the items, which are not owned: text boxes, unwired elements, and
    /// nets all of whose elements are among the items, with these elements.
    void setItemList(const QList<QGraphicsItem*>& items);
    const QList<QGraphicsItem*>& itemList() const { return m_itemList; }
    /// Whether R and F turn the group.
    bool canTurn() const;
    /// An item is dying.
    void forgetItem(QGraphicsItem* item);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    void add(QGraphicsItem* item);
    void addNode(QGraphicsItem* item, const QSet<QGraphicsItem*>& given);
    void moveGroup(const QPointF& step);
    void turnGroup(bool isMirror);

    QList<QGraphicsItem*> m_itemList;
    // The same items, for looking up.
    QSet<QGraphicsItem*> m_members;
    // Scene position of the last pointer step; the origin at rest.
    QPointF m_lastPos;
    QPointer<CCircuitEditor> m_editor;
};
