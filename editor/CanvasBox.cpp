#include "CanvasBox.h"

#include "CCircuitEditor.h"
#include "CompleteHistory.h"
#include "IPropertyEditor.h"

#include <QCursor>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QPainter>

namespace {

// All in scene units.
constexpr double SmallestSide = 21;
constexpr double CornerSide = 16;
constexpr double Layer = 2000;

/// The triangle in the rectangle's bottom right corner.
QPainterPath cornerOf(const QRectF& rect) {
    const double right = rect.x() + rect.width();
    const double bottom = rect.y() + rect.height();
    QPainterPath corner(QPointF(right, bottom));
    corner.lineTo(right, bottom - CornerSide);
    corner.lineTo(right - CornerSide, bottom);
    corner.closeSubpath();
    return corner;
}

}  // namespace

template <class Base>
CanvasBox<Base>::CanvasBox(CCircuitEditor* editor) : m_editor(editor) {
    this->setFlags(QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable |
                   QGraphicsItem::ItemIsFocusable | QGraphicsItem::ItemSendsGeometryChanges);
    this->setZValue(Layer);
    this->setAcceptHoverEvents(true);
    setCursor2(Qt::OpenHandCursor);
}

template <class Base>
void CanvasBox<Base>::setRect(const QRectF& rect) {
    this->setPos(rect.topLeft());
    setBoundedSize(rect.size());
}

template <class Base>
QRectF CanvasBox<Base>::rect() const {
    return {this->pos(), m_rect.size()};
}

template <class Base>
void CanvasBox<Base>::setCursor2(const QCursor& cursor) {
    if (this->hasCursor()) {
        this->unsetCursor();
    }
    this->setCursor(cursor);
}

template <class Base>
QPainterPath CanvasBox<Base>::shape() const {
    QPainterPath path;
    path.addRect(m_rect);
    return path;
}

template <class Base>
void CanvasBox<Base>::setLocalSize(const QSizeF& size) {
    this->prepareGeometryChange();
    m_rect = QRectF(QPointF(), size);
    touchHistory();
}

template <class Base>
void CanvasBox<Base>::setBoundedSize(const QSizeF& size) {
    setLocalSize(size.expandedTo(QSizeF(SmallestSide, SmallestSide)));
    resized();
}

template <class Base>
void CanvasBox<Base>::touchHistory() {
    if (m_editor) {
        m_editor->touchHistory(this);
    }
}

template <class Base>
void CanvasBox<Base>::dismiss() {
    if (CompleteHistory* history = CompleteHistory::of(m_editor)) {
        history->dismiss(this);
    }
    removeLater();
}

template <class Base>
void CanvasBox<Base>::reportModifiedLater() {
    touchHistory();
    if (m_editor) {
        QMetaObject::invokeMethod(m_editor, "projectPartModified", Qt::QueuedConnection);
    }
}

template <class Base>
void CanvasBox<Base>::clearPanel() const {
    if (IPropertyEditor* panel = m_editor ? m_editor->propertyEditor() : nullptr) {
        panel->setObject(nullptr, false);
    }
}

template <class Base>
bool CanvasBox<Base>::showsHover(const QWidget* page) const {
    const bool isPicture = !page && m_editor && m_editor->keepsTextStyles();
    return m_hovering && !isPicture;
}

template <class Base>
void CanvasBox<Base>::paintFrame(QPainter* painter, const QRect& frame, bool withCorner) const {
    painter->drawRects(&frame, 1);
    if (withCorner) {
        painter->fillPath(cornerOf(frame), QColor(192, 192, 192, 128));
    }
}

template <class Base>
bool CanvasBox<Base>::isInCorner(const QPointF& position) const {
    return cornerOf(m_rect).contains(position);
}

template <class Base>
void CanvasBox<Base>::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    if (!isInCorner(event->pos())) {
        Base::mousePressEvent(event);
        return;
    }
    m_resizing = true;
    m_lastScenePos = event->scenePos();
    setCursor2(Qt::SizeFDiagCursor);
}

template <class Base>
void CanvasBox<Base>::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (!m_resizing) {
        setCursor2(Qt::ClosedHandCursor);
        Base::mouseMoveEvent(event);
        return;
    }
    // Steps from the true position even at the least size: on the way back the corner runs ahead of
    // the pointer.
    const QPointF step = event->scenePos() - m_lastScenePos;
    m_lastScenePos = event->scenePos();
    setBoundedSize(m_rect.size() + QSizeF(step.x(), step.y()));
    resizedByHand();
    reportModifiedLater();
}

template <class Base>
void CanvasBox<Base>::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    if (m_resizing) {
        m_resizing = false;
        return;
    }
    setCursor2(Qt::OpenHandCursor);
    Base::mouseReleaseEvent(event);
}

template <class Base>
void CanvasBox<Base>::showCornerAt(const QPointF& position) {
    setCursor2(isInCorner(position) ? Qt::SizeFDiagCursor : Qt::OpenHandCursor);
    this->update();
}

template <class Base>
void CanvasBox<Base>::hoverEnterEvent(QGraphicsSceneHoverEvent* event) {
    m_hovering = true;
    showCornerAt(event->pos());
}

template <class Base>
void CanvasBox<Base>::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
    if (m_hovering) {
        showCornerAt(event->pos());
    }
}

template <class Base>
void CanvasBox<Base>::hoverLeaveEvent(QGraphicsSceneHoverEvent*) {
    m_hovering = false;
    this->update();
}

template <class Base>
void CanvasBox<Base>::keyPressEvent(QKeyEvent* event) {
    if (!this->isSelected()) {
        return;
    }
    const bool isFine = event->modifiers() & Qt::ControlModifier;
    const double step = isFine || !m_editor ? 1 : m_editor->gridSize();
    switch (event->key()) {
        case Qt::Key_Delete:
            dismiss();
            break;
        case Qt::Key_Left:
            this->moveBy(-step, 0);
            break;
        case Qt::Key_Right:
            this->moveBy(step, 0);
            break;
        case Qt::Key_Up:
            this->moveBy(0, -step);
            break;
        case Qt::Key_Down:
            this->moveBy(0, step);
            break;
        default:
            this->QGraphicsItem::keyPressEvent(event);
            break;
    }
}

template class CanvasBox<QGraphicsItem>;
template class CanvasBox<QGraphicsTextItem>;
