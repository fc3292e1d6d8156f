// What the host asks of the tools on the canvas.

#include "CCanvasGestures.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CElementPlacement.h"
#include "CSelectionRectangleItem.h"
#include "ICircuitElement.h"
#include "ItemTypes.h"

#include <QKeyEvent>

bool CCircuitEditor::isExtendedGestures() const {
    return d->gestures->isOn();
}

void CCircuitEditor::setExtendedGestures(bool on) {
    d->gestures->setOn(on);
}

CPlacementTool* CCircuitEditor::placementTool() const {
    return d->placement.get();
}

bool CCircuitEditor::canPlace() const {
    // A wire under way is not given up for a stray key.
    return d->scene && circuit() && !d->readOnly && !isStudy() && d->mode != OutVarSelectionMode &&
           !d->connectionStartItem && !d->scene->mouseGrabberItem();
}

bool CCircuitEditor::startPlacing(const QString& type) {
    std::unique_ptr<CElementPlacement> load;
    if (canPlace()) {
        load = CElementPlacement::create(this, type);
    }
    if (!load) {
        return false;
    }
    setMode(EditMode);
    d->placement->start(std::move(load));
    return true;
}

void CCircuitEditor::stopPlacing() {
    d->placement->stop();
}

bool CCircuitEditor::isPlacing() const {
    return d->placement->isActive();
}

bool CCircuitEditor::placeElement(const QString& type, const QPointF& point) {
    const auto load = canPlace() ? CElementPlacement::create(this, type) : nullptr;
    if (load) {
        load->putDown(point);
    }
    return load != nullptr;
}

bool CCircuitEditor::canTurn() const {
    const CSelectionRectangleItem* group = d->selectionRectItem;
    if (isPlacing() || (group && group->isVisible() && !d->readOnly && group->canTurn())) {
        return true;
    }
    const QList<QGraphicsItem*> selected =
        d->scene && !d->readOnly ? d->scene->selectedItems() : QList<QGraphicsItem*>();
    for (const QGraphicsItem* item : selected) {
        if (item->type() == ElementItemType) {
            return true;
        }
    }
    return false;
}

void CCircuitEditor::turnSelection() {
    sendKey(Qt::Key_R);
}

void CCircuitEditor::flipSelection() {
    sendKey(Qt::Key_F);
}

void CCircuitEditor::sendKey(int key) {
    setFocus();
    if (!isPlacing()) {
        // The item that has the focus does it in its own way; the scene has none while the canvas
        // hasn't.
        const QList<QGraphicsItem*> selected =
            d->scene ? d->scene->selectedItems() : QList<QGraphicsItem*>();
        if (d->selectionRectItem && d->selectionRectItem->isVisible()) {
            d->selectionRectItem->setFocus();
        } else if (!selected.isEmpty() && !d->scene->focusItem()) {
            selected.first()->setFocus();
        }
    }
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    keyPressEvent(&press);
}

QString CCircuitEditor::toolHint() const {
    return d->gestures->hint();
}
