// What the property text box does when it is moved, selected or given another property.

#include "CCircuitEditor.h"
#include "CCircuitElementPropertyTextBoxData.h"
#include "CElementPropertySelectionDialog.h"
#include "HistoryStep.h"

#include <QCursor>
#include <QMenu>
#include <QPointer>

void CCircuitElementPropertyTextBox::showSelectElementDialog() {
    const HistoryStep step(editor());
    const QPointer<CCircuitElementPropertyTextBox> self(this);
    // Hidden, the box is no part of what the dialog shows.
    setVisible(false);
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<CElementPropertySelectionDialog> dialog(
        new CElementPropertySelectionDialog(editor()));
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
        const bool isDrawn = editor()->elementItem(chosen);
        setElementProperty(isDrawn ? chosen : nullptr, isDrawn ? name : QString());
        d->isSizedByHand = false;
        if (editor()->keepsTextStyles()) {
            // As it comes back from a file.
            fitToText();
        } else {
            setRect(QRectF(pos(), textSize()));
        }
    }
    setVisible(true);
    if (!d->element || !d->elementItem) {
        dismiss();
    }
}

QVariant CCircuitElementPropertyTextBox::itemChange(GraphicsItemChange change,
                                                    const QVariant& value) {
    if (change == ItemSelectedChange && value.toBool()) {
        clearPanel();
    } else if (change == ItemPositionChange || change == ItemPositionHasChanged) {
        reportModifiedLater();
    }
    return QGraphicsItem::itemChange(change, value);
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
        dismiss();
    }
}
