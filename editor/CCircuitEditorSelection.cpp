#include "CCircuitEditorSelection.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ItemTypes.h"

#include <QGraphicsScene>

class CCircuitEditorSelectionData {
public:
    bool holdsAllElementsOf(ICircuitNode* node) const;

    CCircuitEditor* circuitEditor = nullptr;
    QList<ICircuitElement*> elementList;
    QList<QGraphicsItem*> itemList;
};

bool CCircuitEditorSelectionData::holdsAllElementsOf(ICircuitNode* node) const {
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        if (!elementList.contains(node->elementNode(i)->element())) {
            return false;
        }
    }
    return true;
}

CCircuitEditorSelection::CCircuitEditorSelection(CCircuitEditor* editor)
    : d(std::make_unique<CCircuitEditorSelectionData>()) {
    d->circuitEditor = editor;
}

CCircuitEditorSelection::~CCircuitEditorSelection() = default;

CCircuitEditor* CCircuitEditorSelection::circuitEditor() const {
    return d->circuitEditor;
}

void CCircuitEditorSelection::reset() {
    d->elementList.clear();
    d->itemList.clear();
}

void CCircuitEditorSelection::initFromItem(QGraphicsItem* item) {
    const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
    if (!elementItem) {
        reset();
        return;
    }
    d->elementList.append(elementItem->element());
    d->itemList.append(item);
}

void CCircuitEditorSelection::initFromSelectionRect(const QRectF& rect) {
    reset();
    const QList<QGraphicsItem*> items =
        d->circuitEditor->scene()->items(rect, Qt::IntersectsItemShape);
    for (QGraphicsItem* item : items) {
        const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
        if (elementItem && !d->elementList.contains(elementItem->element())) {
            d->elementList.append(elementItem->element());
            d->itemList.append(item);
        }
    }
    for (QGraphicsItem* item : items) {
        const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
        if (wire && d->holdsAllElementsOf(wire->circuitNode())) {
            d->itemList.append(item);
        }
    }
}

void CCircuitEditorSelection::forgetItem(QGraphicsItem* item) {
    if (d->itemList.removeAll(item) == 0) {
        return;
    }
    if (const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
        d->elementList.removeAll(elementItem->element());
    }
}

QList<QGraphicsItem*> CCircuitEditorSelection::itemList() const {
    return d->itemList;
}

QList<ICircuitElement*> CCircuitEditorSelection::elementList() const {
    return d->elementList;
}
