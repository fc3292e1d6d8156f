// Cut, copy and paste, and the selection as a whole.

#include "CCircuitEditorComponent.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorSelection.h"
#include "CPlacementTool.h"
#include "CSelectionRectangleItem.h"
#include "HistoryStep.h"
#include "PastePlacement.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

constexpr int NoEntry = -1;
constexpr int SystemClipboard = -2;

}  // namespace

void CCircuitEditor::setClipboardWidget(IClipboardWidget* widget) {
    IClipboardWidget* old = d->clipboardWidget;
    if (widget == old) {
        return;
    }
    if (old) {
        QObject::disconnect(old->containerObject(), nullptr, this, nullptr);
    }
    d->clipboardWidget = widget;
    if (widget) {
        connect(widget->containerObject(), SIGNAL(dataClicked(QString, ClipboardData, int)), this,
                SLOT(on_clipboardWidgetDataClicked(QString, ClipboardData, int)));
    }
}

IClipboardWidget* CCircuitEditor::clipboardWidget() const {
    return d->clipboardWidget;
}

void CCircuitEditor::on_clipboardWidgetDataClicked(QString context, ClipboardData, int index) {
    if (context == CircuitEditorClipboardContext) {
        d->clipboardDataIndex = index;
    }
}

bool CCircuitEditor::isGroupKept() const {
    return movesConnectedElements() && d->selectionRectItem && d->selectionRectItem->isVisible() &&
           !d->selectionRectItem->itemList().isEmpty();
}

void CCircuitEditor::captureKeptGroup() {
    if (isGroupKept() && d->selection->itemList().isEmpty()) {
        d->selection->initFromGroup(d->selectionRectItem->itemList());
    }
}

void CCircuitEditor::cut() {
    const HistoryStep step(this, QStringLiteral("Cut"));
    captureKeptGroup();
    d->selection->cut();
    if (d->selectionRectItem) {
        d->selectionRectItem->setVisible(false);
        emit selectionStateChanged();
    }
    d->clipboardDataIndex = NoEntry;
}

void CCircuitEditor::copy() {
    captureKeptGroup();
    d->selection->copy();
    d->clipboardDataIndex = NoEntry;
}

void CCircuitEditor::paste() {
    paste(mapToScene(viewport()->mapFromGlobal(QCursor::pos())));
}

void CCircuitEditor::paste(QPointF pos) {
    if (!d->scene) {
        return;
    }
    auto load = d->placePastedItems && canPlace()
                    ? PastePlacement::create(this, d->clipboardDataIndex)
                    : nullptr;
    if (load) {
        setMode(EditMode);
        d->placement->start(std::move(load));
    } else {
        pasteAt(pos, d->clipboardDataIndex);
    }
}

void CCircuitEditor::pasteAt(const QPointF& pos, int index) {
    const HistoryStep step(this, QStringLiteral("Paste"));
    showPasted(d->selection->paste(pos, index));
}

void CCircuitEditor::pasteTextAt(const QPointF& pos, const QString& text) {
    const HistoryStep step(this, QStringLiteral("Duplicate"));
    showPasted(d->selection->pasteText(pos, text));
}

void CCircuitEditor::duplicate() {
    if (!d->scene || d->readOnly) {
        return;
    }
    const HistoryStep history(this, QStringLiteral("Duplicate"));
    // Captured anew: it may have been turned or edited since it was selected.
    const bool isGroup = d->selectionRectItem && d->selectionRectItem->isVisible();
    const QList<QGraphicsItem*> items = d->selection->itemList();
    d->selection->reset();
    if (isGroup && isGroupKept()) {
        d->selection->initFromGroup(d->selectionRectItem->itemList());
    } else if (isGroup) {
        d->selection->initFromSelectionRect(d->selectionRectItem->rect());
    } else {
        for (QGraphicsItem* item : items) {
            d->selection->initFromItem(item);
        }
    }
    const QString text = d->selection->clipboardText();
    if (text.isEmpty()) {
        return;
    }
    auto load =
        d->placePastedItems && canPlace() ? PastePlacement::createCopy(this, text) : nullptr;
    if (load) {
        setMode(EditMode);
        d->placement->start(std::move(load));
        return;
    }
    // Far enough to be seen, and on the grid.
    const double step = 2.0 * d->gridSize;
    unhighlight();
    showPasted(d->selection->repeat(text, {step, step}));
}

void CCircuitEditor::showPasted(const QRectF& rectangle) {
    if (!d->selectionRectItem) {
        d->selectionRectItem = new CSelectionRectangleItem(this);
    }
    d->selectionRectItem->setRect(rectangle);
    d->selectionRectItem->setItemList(d->selection->pastedItemList());
    d->selectionRectItem->setVisible(true);
    d->isPasteSelected = d->placePastedItems;
    d->selection->reset();
    if (d->isPasteSelected) {
        d->selection->initFromGroup(d->selection->pastedItemList());
    }
    emit selectionStateChanged();
}

void CCircuitEditor::pasteFromClipboard() {
    pasteFromClipboard(mapToScene(viewport()->mapFromGlobal(QCursor::pos())));
}

void CCircuitEditor::pasteFromClipboard(QPointF pos) {
    const int chosen = d->clipboardDataIndex;
    d->clipboardDataIndex = SystemClipboard;
    paste(pos);
    d->clipboardDataIndex = chosen;
}

bool CCircuitEditor::hasSelection() const {
    return !d->selection->itemList().isEmpty() || isGroupKept();
}

bool CCircuitEditor::canErase() const {
    return (d->selectionRectItem && d->selectionRectItem->isVisible()) || hasSelection() ||
           (d->scene && !d->scene->selectedItems().isEmpty());
}

void CCircuitEditor::eraseSelection() {
    const HistoryStep step(this);
    if (d->selectionRectItem && d->selectionRectItem->isVisible()) {
        eraseGroup();
        return;
    }
    sendKey(Qt::Key_Delete);
}

void CCircuitEditor::eraseGroup() {
    const HistoryStep step(this, QStringLiteral("Delete"));
    if (d->isPasteSelected) {
        d->selection->takeItems(d->selectionRectItem->itemList());
    } else if (isGroupKept()) {
        captureKeptGroup();
    } else if (d->selection->itemList().isEmpty()) {
        d->selection->initFromSelectionRect(d->selectionRectItem->rect());
    }
    d->selection->erase();
    delete d->selectionRectItem;
}

void CCircuitEditor::selectAll() {
    if (!d->scene || d->mode != EditMode) {
        return;
    }
    unhighlight();
    delete d->selectionRectItem;
    const QRectF all = d->scene->itemsBoundingRect();
    if (!all.isNull()) {
        startSelectionRectangle(all.topLeft());
        d->selectionRectItem->setRect(all);
        closeSelectionRectangle();
    }
}
