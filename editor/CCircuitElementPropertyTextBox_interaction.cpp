// What the property text box does when it is moved, resized, selected or pointed at.

#include "CCircuitEditor.h"
#include "CCircuitElementPropertyTextBoxData.h"
#include "CElementPropertySelectionDialog.h"
#include "IPropertyEditor.h"

#include <QCursor>
#include <QFontMetrics>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>

#include <algorithm>

void CCircuitElementPropertyTextBox::showSelectElementDialog() {
    const QPointer<CCircuitElementPropertyTextBox> self(this);
    // Hidden, the box is no part of what the dialog shows.
    setVisible(false);
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<CElementPropertySelectionDialog> dialog(
        new CElementPropertySelectionDialog(d->circuitEditor));
    dialog->setElementProperty(d->element, d->propertyName);
    const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog;
    ICircuitElement* chosen = isAccepted ? dialog->element() : nullptr;
    const QString name = isAccepted ? dialog->propertyName() : QString();
    delete dialog;
    if (!self) {
        return;
    }
    if (isAccepted) {
        // What left the drawing while the dialog was open counts as no choice.
        const bool isDrawn = d->circuitEditor->elementItem(chosen);
        setElementProperty(isDrawn ? chosen : nullptr, isDrawn ? name : QString());
        setRect(QRectF(pos(), QFontMetrics(d->font).boundingRect(d->propertyText).size()));
    }
    setVisible(true);
    if (!d->element || !d->elementItem) {
        deleteLater();
    }
}

QVariant CCircuitElementPropertyTextBox::itemChange(GraphicsItemChange change,
                                                    const QVariant& value) {
    if (change == ItemSelectedChange && value.toBool()) {
        if (IPropertyEditor* panel = d->circuitEditor->propertyEditor()) {
            panel->setObject(nullptr, false);
        }
    } else if (change == ItemPositionChange || change == ItemPositionHasChanged) {
        d->notifyModified();
    }
    return QGraphicsItem::itemChange(change, value);
}

void CCircuitElementPropertyTextBox::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    if (!ResizeGrip::path(d->rect).contains(event->pos())) {
        QGraphicsItem::mousePressEvent(event);
        return;
    }
    d->resizing = true;
    d->lastScenePos = event->scenePos();
    setCursor2(Qt::SizeFDiagCursor);
}

void CCircuitElementPropertyTextBox::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (!d->resizing) {
        setCursor2(Qt::ClosedHandCursor);
        QGraphicsItem::mouseMoveEvent(event);
        return;
    }
    // Steps from where the pointer is, even while the size is at its least.
    const QPointF step = event->scenePos() - d->lastScenePos;
    d->lastScenePos = event->scenePos();
    prepareGeometryChange();
    d->rect.setWidth(std::max(ResizeGrip::SmallestSide, d->rect.width() + step.x()));
    d->rect.setHeight(std::max(ResizeGrip::SmallestSide, d->rect.height() + step.y()));
    d->notifyModified();
}

void CCircuitElementPropertyTextBox::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    if (d->resizing) {
        d->resizing = false;
        return;
    }
    setCursor2(Qt::OpenHandCursor);
    QGraphicsItem::mouseReleaseEvent(event);
}

void CCircuitElementPropertyTextBox::hoverEnterEvent(QGraphicsSceneHoverEvent* event) {
    d->hovering = true;
    setCursor2(ResizeGrip::path(d->rect).contains(event->pos()) ? Qt::SizeFDiagCursor
                                                                : Qt::OpenHandCursor);
    update();
}

void CCircuitElementPropertyTextBox::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
    if (d->hovering) {
        hoverEnterEvent(event);
    }
}

void CCircuitElementPropertyTextBox::hoverLeaveEvent(QGraphicsSceneHoverEvent*) {
    d->hovering = false;
    update();
}

void CCircuitElementPropertyTextBox::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {
    showSelectElementDialog();
}

void CCircuitElementPropertyTextBox::contextMenuEvent(QGraphicsSceneContextMenuEvent*) {
    const QPointer<CCircuitElementPropertyTextBox> self(this);
    QMenu menu;
    const QAction* select = menu.addAction(QStringLiteral("Set Element/Property"));
    menu.addSeparator();
    const QAction* remove = menu.addAction(QStringLiteral("Delete"));
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the box may be gone.
    if (!chosen || !self) {
        return;
    }
    if (chosen == select) {
        showSelectElementDialog();
    } else if (chosen == remove) {
        deleteLater();
    }
}

void CCircuitElementPropertyTextBox::keyPressEvent(QKeyEvent* event) {
    if (!isSelected()) {
        return;
    }
    const bool isFine = event->modifiers() & Qt::ControlModifier;
    const double step = isFine ? 1 : d->circuitEditor->gridSize();
    switch (event->key()) {
        case Qt::Key_Delete:
            deleteLater();
            break;
        case Qt::Key_Left:
            moveBy(-step, 0);
            break;
        case Qt::Key_Right:
            moveBy(step, 0);
            break;
        case Qt::Key_Up:
            moveBy(0, -step);
            break;
        case Qt::Key_Down:
            moveBy(0, step);
            break;
        default:
            QGraphicsItem::keyPressEvent(event);
            break;
    }
}
