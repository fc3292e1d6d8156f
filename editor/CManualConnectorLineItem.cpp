#include "CManualConnectorLineItem.h"

#include "CCircuitEditor.h"
#include "CircuitGeometry.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QPainter>

namespace {

constexpr int RepaintInterval = 50;  // milliseconds

}  // namespace

CManualConnectorLineItem::CManualConnectorLineItem(QGraphicsScene* scene) {
    if (scene) {
        scene->addItem(this);
        setVisible(true);
    }
}

CManualConnectorLineItem::~CManualConnectorLineItem() {
    if (m_editor) {
        m_editor->highlightGridPoint(QPointF(), false);
        m_editor->forgetItem(this);
    }
}

void CManualConnectorLineItem::setEditor(CCircuitEditor* editor) {
    m_editor = editor;
}

void CManualConnectorLineItem::addPoint(const QPointF& scenePoint) {
    prepareGeometryChange();
    if (m_firstPoint) {
        m_lastPoint = scenePoint;
        m_path.moveTo(m_lastPoint);
        m_firstPoint = false;
        startTimer(RepaintInterval);
    } else {
        m_lastPoint = CircuitGeometry::straightened(scenePoint, m_lastPoint);
        m_path.lineTo(m_lastPoint);
    }
    m_editor->viewport()->update();
}

void CManualConnectorLineItem::removeLastPoint() {
    const int count = m_path.elementCount() - 1;
    if (count < 1) {
        return;
    }
    prepareGeometryChange();
    QPainterPath shorter(m_path.elementAt(0));
    for (int i = 1; i < count; ++i) {
        shorter.lineTo(m_path.elementAt(i));
    }
    m_path = shorter;
    m_lastPoint = m_path.elementAt(count - 1);
    m_editor->viewport()->update();
}

void CManualConnectorLineItem::timerEvent(QTimerEvent*) {
    if (m_editor) {
        m_editor->viewport()->update();
    }
}

QRectF CManualConnectorLineItem::boundingRect() const {
    return m_path.boundingRect();
}

QPainterPath CManualConnectorLineItem::shape() const {
    return m_path;
}

void CManualConnectorLineItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (!m_editor) {
        return;
    }
    // Mapped by the editor and not by its viewport.
    const QPointF pointer = m_editor->mapToScene(m_editor->mapFromGlobal(QCursor::pos()));
    const QPointF end = CircuitGeometry::straightened(pointer, m_lastPoint);
    const QPen pen = painter->pen();
    painter->setPen(QPen(QColor(120, 120, 120), 2.0, Qt::DashLine, Qt::SquareCap, Qt::BevelJoin));
    painter->drawPath(m_path);
    painter->drawLine(m_lastPoint, end);
    painter->setPen(pen);
    m_editor->highlightGridPoint(end, true);
}
