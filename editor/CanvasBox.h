#pragma once

#include <QGraphicsTextItem>
#include <QPainterPath>
#include <QPointer>

class CCircuitEditor;

/// What all annotation boxes on the canvas have in common: a rectangle of at least 21 units by 21
/// that is dragged, resized by the triangle in its bottom right corner, moved by the arrow keys and
/// deleted by Delete, and that shows where the pointer is. `Base` is the graphics item it is made
/// of; all that isn't a box's own goes to it.
template <class Base>
class CanvasBox : public Base {
public:
    explicit CanvasBox(CCircuitEditor* editor);

    /// Top left in scene units.
    void setRect(const QRectF& rect);
    QRectF rect() const;
    /// The one way to change the item's cursor.
    void setCursor2(const QCursor& cursor);

    // QGraphicsItem
    QRectF boundingRect() const override { return m_rect; }
    QPainterPath shape() const override;

protected:
    CCircuitEditor* editor() const { return m_editor; }
    /// Whether the box is to be painted as pointed at: not in pictures, which have no page, if the
    /// editor keeps the looks of boxes.
    bool showsHover(const QWidget* page) const;
    /// In item coordinates, with its top left at the origin.
    QRectF localRect() const { return m_rect; }
    /// May be smaller than a box that the user or a file makes.
    void setLocalSize(const QSizeF& size);
    /// Tells the history, and the editor's listeners once the event loop runs again.
    void reportModifiedLater();
    /// What is saved of the box may have changed; for the complete history.
    void touchHistory();
    /// The user deletes the box, in the box's own code maybe.
    void dismiss();
    /// Shows nothing in the property panel.
    void clearPanel() const;
    /// Laid over a box, or in place of its fill, while the pointer is on it.
    static QColor veil() { return {255, 255, 255, 200}; }
    /// The frame in the painter's pen, and the corner by which the box is resized.
    void paintFrame(QPainter* painter, const QRect& frame, bool withCorner) const;

    virtual void removeLater() = 0;
    /// Called after each change of the size by the user or by `setRect`.
    virtual void resized() {}
    /// Called after each change of the size by the pointer.
    virtual void resizedByHand() {}

    // QGraphicsItem
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setBoundedSize(const QSizeF& size);
    void showCornerAt(const QPointF& position);
    bool isInCorner(const QPointF& position) const;

    QPointer<CCircuitEditor> m_editor;
    QRectF m_rect;
    bool m_hovering = false;
    bool m_resizing = false;
    // Of the previous step of a resize.
    QPointF m_lastScenePos;
};

extern template class CanvasBox<QGraphicsItem>;
extern template class CanvasBox<QGraphicsTextItem>;
