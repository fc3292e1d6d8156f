#pragma once

#include <QGraphicsItem>
#include <QObject>
#include <QPainterPath>
#include <QPointer>

class CCircuitEditor;

/// The rubber line of a wire that is being laid by hand: a fixed path, in scene coordinates, and a
/// loose segment that follows the pointer. The loose segment lies outside the item's bounds; a
/// timer keeps the viewport painting it.
class CManualConnectorLineItem : public QObject, public QGraphicsItem {
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    /// Adds itself to the scene, if there is one.
    explicit CManualConnectorLineItem(QGraphicsScene* scene);
    /// Takes the crosshair away.
    ~CManualConnectorLineItem() override;

    /// Set right after construction.
    void setEditor(CCircuitEditor* editor);
    /// A point that lies nearly on an axis with the last one is put on it.
    void addPoint(const QPointF& scenePoint);
    /// The first point stays.
    void removeLastPoint();
    const QPainterPath& path() const { return m_path; }

    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QPointer<CCircuitEditor> m_editor;
    QPainterPath m_path;
    QPointF m_lastPoint;
    bool m_firstPoint = true;
};
