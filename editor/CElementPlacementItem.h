#pragma once

#include <QGraphicsObject>

#include <functional>

class ICircuitElement;

/// The picture of an element that isn't in a circuit yet, with its terminals. Only shows: nothing
/// on the canvas finds it under the pointer.
class CElementPlacementItem : public QGraphicsObject {
    Q_OBJECT

public:
    explicit CElementPlacementItem(ICircuitElement* element);

    /// The element has turned or flipped, or is another one.
    void setElement(ICircuitElement* element);
    /// Puts the element at the point so that its first terminal is where `snap` wants it.
    void hangAt(const QPointF& point, const std::function<QPointF(const QPointF&)>& snap);

    QRectF boundingRect() const override;
    QPainterPath shape() const override { return {}; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    ICircuitElement* m_element = nullptr;
};
