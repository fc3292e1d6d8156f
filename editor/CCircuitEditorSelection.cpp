#include "CCircuitEditorSelection.h"

#include "CCircuitEditorElementItem.h"

class CCircuitEditorSelectionData {
public:
    CCircuitEditor* circuitEditor = nullptr;
    QList<ICircuitElement*> elementList;
    QList<QGraphicsItem*> itemList;
};

CCircuitEditorSelection::CCircuitEditorSelection(CCircuitEditor* editor)
    : d(std::make_unique<CCircuitEditorSelectionData>()) {
    d->circuitEditor = editor;
}

CCircuitEditorSelection::~CCircuitEditorSelection() = default;

void CCircuitEditorSelection::reset() {
    d->elementList.clear();
    d->itemList.clear();
}

void CCircuitEditorSelection::initFromItem(CCircuitEditorElementItem* item) {
    if (!item || !item->element()) {
        return;
    }
    d->elementList.append(item->element());
    d->itemList.append(item);
}

void CCircuitEditorSelection::forgetItem(QGraphicsItem* item) {
    const int index = d->itemList.indexOf(item);
    if (index < 0) {
        return;
    }
    d->itemList.removeAll(item);
    if (item->type() == CCircuitEditorElementItem::Type) {
        d->elementList.removeAll(static_cast<CCircuitEditorElementItem*>(item)->element());
    }
}

const QList<QGraphicsItem*>& CCircuitEditorSelection::itemList() const {
    return d->itemList;
}

const QList<ICircuitElement*>& CCircuitEditorSelection::elementList() const {
    return d->elementList;
}
