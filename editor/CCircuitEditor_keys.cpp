// The keys that the canvas itself answers, and its menu where no item has one.

#include "CCanvasGestures.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CManualConnectorLineItem.h"
#include "CSelectionRectangleItem.h"
#include "CompleteHistory.h"
#include "ConnectedDrag.h"
#include "HistoryStep.h"
#include "ItemTypes.h"

#include <Plexa/ObjectIterator.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

namespace {

const QString ManualConnectionAction = QStringLiteral("CCircuitEditorComponent.manualCtorMode");
constexpr int TextBoxPointSize = 8;

bool canBeSelected(const QGraphicsItem* item) {
    return item->isVisible() && item->isEnabled() &&
           (item->flags() & QGraphicsItem::ItemIsSelectable);
}

void toggleManualConnections() {
    const Plexa::ObjectIterator iterator(ManualConnectionAction.section(QLatin1Char('.'), 0, 0));
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (iterator.currentObjectName() == ManualConnectionAction) {
            if (auto* action = qobject_cast<QAction*>(object)) {
                action->setChecked(!action->isChecked());
            }
            return;
        }
    }
}

bool isArrow(int key) {
    return key >= Qt::Key_Left && key <= Qt::Key_Down;
}

bool isElementOrWire(const QGraphicsItem* item) {
    return item->type() == ElementItemType || item->type() == NodeItemType;
}

}  // namespace

void CCircuitEditor::keyPressEvent(QKeyEvent* event) {
    if (d->readOnly || d->mode == OutVarSelectionMode || !d->scene ||
        d->gestures->keyPress(event)) {
        return;
    }
    const HistoryStep step(this);
    if (isArrow(event->key()) && d->completeHistory) {
        d->completeHistory->joinRun(event->isAutoRepeat());
    }
    switch (event->key()) {
        case Qt::Key_Escape:
            if (!d->connectedDrag || !d->connectedDrag->cancel()) {
                leaveManualConnectionMode();
            }
            break;
        case Qt::Key_Tab:
            selectNextItem();
            break;
        case Qt::Key_Delete:
            if (d->selectionRectItem && d->selectionRectItem->isVisible()) {
                eraseGroup();
            } else {
                QGraphicsView::keyPressEvent(event);
            }
            break;
        case Qt::Key_W:
            toggleManualConnections();
            break;
        default:
            QGraphicsView::keyPressEvent(event);
            break;
    }
}

void CCircuitEditor::leaveManualConnectionMode() {
    if (d->mode != ManualConnectionMode) {
        return;
    }
    delete d->manualConnectorItem;
    d->manualConnectorItem = nullptr;
    d->connectionStartItem = nullptr;
    d->connectionEndItem = nullptr;
    d->mode = EditMode;
    emit editorModeChanged(EditMode);
}

void CCircuitEditor::selectNextItem() {
    const QList<QGraphicsItem*> selected = d->scene->selectedItems();
    if (selected.isEmpty()) {
        return;
    }
    const QList<QGraphicsItem*> items = d->itemsInTurn();
    const int found = items.indexOf(selected.first());
    int next = found < 0 ? 0 : (found + 1) % items.size();
    // What can't be selected would leave nothing for the next key to go on from.
    for (int i = 0; i < items.size() && !canBeSelected(items.at(next)); ++i) {
        next = (next + 1) % items.size();
    }
    d->scene->clearSelection();
    items.at(next)->setSelected(true);
}

void CCircuitEditor::contextMenuEvent(QContextMenuEvent* event) {
    if (d->readOnly || d->mode != EditMode || !d->scene) {
        return;
    }
    const HistoryStep step(this);
    if (d->circuitSolver && offerDisconnection()) {
        return;
    }
    if (d->itemAt(event->pos())) {
        d->connectionStartItem = nullptr;
        d->connectionEndItem = nullptr;
        QGraphicsView::contextMenuEvent(event);
        return;
    }
    showCanvasMenu(mapToScene(event->pos()), event->modifiers());
}

bool CCircuitEditor::offerDisconnection() {
    QList<QGraphicsItem*> selected = d->scene->selectedItems();
    while (selected.size() > 2) {
        selected.takeFirst()->setSelected(false);
    }
    if (selected.isEmpty()) {
        return false;
    }
    QGraphicsItem* first = selected.first();
    QGraphicsItem* second = selected.size() == 2 ? selected.last() : nullptr;
    for (QGraphicsItem** item : {&first, &second}) {
        if (*item && (*item)->type() == ElementNodeItemType) {
            (*item)->setSelected(false);
            *item = nullptr;
        }
    }
    if (!first || !second || !isElementOrWire(first) || !isElementOrWire(second)) {
        return false;
    }
    if (first->type() == NodeItemType && second->type() == NodeItemType) {
        first->setSelected(false);
        second->setSelected(false);
        return false;
    }
    first->setSelected(true);
    second->setSelected(true);
    ICircuitElement* a = elementFromItem(first);
    ICircuitElement* b = elementFromItem(second);
    const QPointer<CCircuitEditor> self(this);
    QMenu menu;
    menu.addAction(QStringLiteral("Disconnect"));
    // It is the dismissal of the menu that disconnects; the entry leaves things as they are.
    const QAction* chosen = menu.exec(QCursor::pos());
    if (self && !chosen && a && b && elementItem(a) == first && elementItem(b) == second &&
        d->circuitSolver) {
        d->circuitSolver->disconnectElement(a, b);
    }
    return true;
}

void CCircuitEditor::showCanvasMenu(const QPointF& point, Qt::KeyboardModifiers modifiers) {
    const QPointer<CCircuitEditor> self(this);
    QMenu menu;
    const QAction* addParameter = menu.addAction(QStringLiteral("Add Global Parameters"));
    const QAction* editParameters = menu.addAction(QStringLiteral("Edit/Remove Global Parameters"));
    const QAction* insertBoxes =
        menu.addAction(QStringLiteral("Insert Global Parameter Text Boxes"));
    menu.addSeparator();
    const QAction* addText = menu.addAction(QStringLiteral("Add Text Box"));
    const QAction* addProperty = menu.addAction(QStringLiteral("Add Element-Property Text Box"));
    menu.addSeparator();
    const QAction* pasteHere = menu.addAction(QStringLiteral("Paste"));
    const QAction* pasteSystem = menu.addAction(QStringLiteral("Paste From System Clipboard"));
    emit canvasContextMenuEvent(canvas(), &menu, modifiers);
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop.
    if (!self || !chosen) {
        return;
    }
    if (chosen == addParameter) {
        on_addGlobalVariable();
    } else if (chosen == editParameters) {
        on_removeGlobalVariable();
    } else if (chosen == insertBoxes) {
        on_insertGlobalVarTextBox(point);
    } else if (chosen == addText) {
        CCircuitEditorTextBox* box = addTextBox(point);
        QFont font = box->defaultFont();
        font.setPointSize(TextBoxPointSize);
        box->setDefaultFont(font);
        box->editText();
    } else if (chosen == addProperty) {
        CCircuitElementPropertyTextBox* box = addElementPropertyTextBox(point);
        QFont font = box->font();
        font.setPointSize(TextBoxPointSize);
        box->setFont(font);
        box->showSelectElementDialog();
    } else if (chosen == pasteHere) {
        paste(point);
    } else if (chosen == pasteSystem) {
        pasteFromClipboard(point);
    }
}
