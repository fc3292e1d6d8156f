#include "CCircuitView.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CCircuitEditorElementItem.h"
#include "CElementPropertySelectionDialog.h"
#include "ICircuitElement.h"
#include "IEditableProperties.h"
#include "QtSeries.h"

#include <QCursor>
#include <QMenu>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cstdlib>

namespace {

constexpr double ScaleIn = 1.1;
constexpr double ScaleOut = 0.9;
constexpr double MarkAlpha = 0.5;

/// First what the user edits, then, below a line, the properties of the element's object.
void addProperties(QMenu& menu, QObject* object) {
    auto* properties = qobject_cast<IEditableProperties*>(object);
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        menu.addAction(properties->propertyName(i));
    }
    menu.addSeparator();
    const QMetaObject* meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        menu.addAction(QString::fromLatin1(meta->property(i).name()));
    }
}

}  // namespace

CCircuitView::CCircuitView(CElementPropertySelectionDialog* dialog)
    : QGraphicsView(dialog), m_dialog(dialog) {
    // A double click, a key or a context menu is for the drawing itself, not for its picture here.
    setInteractive(false);
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                   QPainter::SmoothPixmapTransform);
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    m_editor = component ? component->circuitEditor() : nullptr;
    if (m_editor && m_editor->scene()) {
        setScene(m_editor->scene());
        m_fitRect = m_editor->visibleItemsBoundingRect();
    }
}

void CCircuitView::resizeEvent(QResizeEvent*) {
    fitInView(m_fitRect, Qt::KeepAspectRatio);
}

void CCircuitView::wheelEvent(QWheelEvent* event) {
    // The longer way of a wheel that turns in two directions.
    const QPoint angle = event->angleDelta();
    const int delta = std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
    const double factor = delta >= 1 ? ScaleIn : ScaleOut;
    scale(factor, factor);
}

void CCircuitView::drawForeground(QPainter* painter, const QRectF& rect) {
    const CCircuitEditorElementItem* item =
        m_editor ? m_editor->elementItem(m_dialog->element()) : nullptr;
    if (!item) {
        return;
    }
    const QRectF mark = item->mapToScene(item->boundingRect()).boundingRect();
    if (!rect.contains(mark) && !rect.intersects(mark)) {
        return;
    }
    QColor color = palette().brush(QPalette::Highlight).color();
    color.setAlphaF(MarkAlpha);
    painter->fillRect(mark, color);
    painter->setPen(QtSeries::hairline());
    painter->drawRects(&mark, 1);
}

void CCircuitView::mousePressEvent(QMouseEvent* event) {
    const auto* item = qgraphicsitem_cast<CCircuitEditorElementItem*>(itemAt(event->pos()));
    ICircuitElement* element = item ? item->element() : nullptr;
    if (!element) {
        return;
    }
    const QPointer<CCircuitView> self(this);
    const QPointer<QObject> object(element->containerObject());
    m_dialog->setElementProperty(element, QString());
    QMenu menu;
    addProperties(menu, object);
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the dialog may be gone, and the element.
    if (!self) {
        return;
    }
    if (chosen && object) {
        m_dialog->setElementProperty(element, chosen->text());
    } else {
        m_dialog->setElementProperty(nullptr, QString());
    }
}
