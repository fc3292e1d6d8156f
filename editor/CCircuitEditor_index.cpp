// How the scene finds its items.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "ICircuit.h"

#include <QSet>

bool CCircuitEditor::hasSpatialIndex() const {
    return d->scene && d->scene->itemIndexMethod() == QGraphicsScene::BspTreeIndex;
}

void CCircuitEditor::setSpatialIndex(bool on) {
    if (!d->scene || on == hasSpatialIndex()) {
        return;
    }
    d->scene->setItemIndexMethod(on ? QGraphicsScene::BspTreeIndex : QGraphicsScene::NoIndex);
    // A new index learns of the drawing area only when that changes, and without it keeps all items
    // in one heap.
    const QRectF area = d->scene->sceneRect();
    d->scene->setSceneRect(area.adjusted(0, 0, 1, 1));
    d->scene->setSceneRect(area);
}

QList<QGraphicsItem*> CCircuitEditorData::itemsInTurn() const {
    const QList<QGraphicsItem*> all = scene->items();
    ICircuit* owner = circuitEditor->circuit();
    if (!circuitEditor->hasSpatialIndex() || !owner) {
        return all;  // as they were made, as long as none has gone
    }
    // An index sorts them from the front to the back, which no user could foresee: in the circuit's
    // order instead.
    QList<QGraphicsItem*> ordered;
    const auto add = [&ordered](QGraphicsItem* item) {
        if (item) {
            ordered.append(item);
            ordered.append(item->childItems());
        }
    };
    for (int i = 0; i < owner->elementCount(); ++i) {
        add(circuitEditor->elementItem(owner->element(i)));
    }
    for (int i = 0; i < owner->nodeCount(); ++i) {
        add(circuitEditor->nodeItem(owner->node(i)));
    }
    const auto addBoxes = [&add](const auto& boxes) {
        for (auto* box : boxes) {
            add(box);
        }
    };
    addBoxes(textBoxes);
    addBoxes(globalParamTextBoxes);
    addBoxes(elementPropertyTextBoxes);
    const QSet<QGraphicsItem*> known(ordered.cbegin(), ordered.cend());
    for (QGraphicsItem* item : all) {
        if (!known.contains(item)) {
            ordered.append(item);
        }
    }
    return ordered;
}
