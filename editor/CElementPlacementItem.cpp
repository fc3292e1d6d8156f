#include "CElementPlacementItem.h"

#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitElementVisual.h"

#include <QBitmap>
#include <QPainter>
#include <QSvgRenderer>

namespace {

constexpr double Opacity = 0.6;
constexpr double TerminalRadius = 2;
// Over whatever it is held above.
constexpr double StackingOrder = 2000;
constexpr double QuarterTurn = 90;

}  // namespace

CElementPlacementItem::CElementPlacementItem(ICircuitElement* element) {
    setZValue(StackingOrder);
    setOpacity(Opacity);
    setElement(element);
}

void CElementPlacementItem::setElement(ICircuitElement* element) {
    prepareGeometryChange();
    m_element = element;
    setRotation(element->rotation() * QuarterTurn);
    update();
}

void CElementPlacementItem::hangAt(const QPointF& point,
                                   const std::function<QPointF(const QPointF&)>& snap) {
    setPos(point);
    const QStringList names = m_element->elementNodeNames();
    if (!names.isEmpty()) {
        // As an element that lies on the canvas is snapped: by its first terminal's place, taken
        // twice.
        const QPointF anchor = mapToScene(2 * m_element->elementNode(names.first())->position());
        setPos(point + snap(anchor) - anchor);
    }
}

QRectF CElementPlacementItem::boundingRect() const {
    ICircuitElementVisual* visual = m_element->visual();
    const QSvgRenderer* renderer = visual->renderer();
    const QSizeF size = renderer ? renderer->viewBoxF().size() : QSizeF(visual->pixmap().size());
    QRectF bounds(QPointF(), size);
    bounds.moveCenter(visual->pictureOffset());
    for (const QString& name : m_element->elementNodeNames()) {
        QRectF terminal(0, 0, 2 * TerminalRadius, 2 * TerminalRadius);
        terminal.moveCenter(m_element->elementNode(name)->position());
        bounds |= terminal;
    }
    return bounds;
}

void CElementPlacementItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*,
                                  QWidget* widget) {
    if (!widget) {
        return;  // a picture, not the screen
    }
    ICircuitElementVisual* visual = m_element->visual();
    painter->save();
    painter->translate(visual->pictureOffset());
    if (QSvgRenderer* renderer = visual->renderer()) {
        painter->scale(m_element->flip() == 2 ? -1 : 1, m_element->flip() == 1 ? -1 : 1);
        QRectF frame(QPointF(), renderer->viewBoxF().size());
        frame.moveCenter(QPointF());
        renderer->render(painter, frame);
    } else {
        QPixmap picture = visual->pixmap();
        picture.setMask(picture.createMaskFromColor(Qt::white, Qt::MaskInColor));
        painter->drawPixmap(QPointF(-picture.width() * 0.5, -picture.height() * 0.5), picture);
    }
    painter->restore();
    painter->setPen(Qt::NoPen);
    for (const QString& name : m_element->elementNodeNames()) {
        ICircuitElementNode* terminal = m_element->elementNode(name);
        painter->setBrush(terminal->color());
        painter->drawEllipse(terminal->position(), TerminalRadius, TerminalRadius);
    }
}
