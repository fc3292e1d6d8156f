// What the element item does when it is moved, selected or pointed at.

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementItemData.h"
#include "CCircuitEditorNodeItem.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"

#include <QGraphicsScene>

bool CCircuitEditorElementItem::isLocked() const {
    // The main editor's flag counts for items of every editor.
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const CCircuitEditor* mainEditor = component ? component->circuitEditor() : nullptr;
    if (!mainEditor) {
        mainEditor = d->circuitEditor;
    }
    return !d->internalMoveMode && !mainEditor->isInternalMove() && !d->circuitNodeItems.isEmpty();
}

QVariant CCircuitEditorElementItem::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemPositionChange) {
        if (isLocked()) {
            return pos();
        }
        d->moved = true;
        updateCircuitNodes();
        emit d->circuitEditor->projectPartModified();
        emit moved(value.toPointF() - pos());
    } else if (change == ItemSelectedChange && d->circuitEditor) {
        if (value.toBool()) {
            d->circuitEditor->on_elementSelected(d->element);
            emit d->circuitEditor->elementSelected(d->element);
            scene()->setFocusItem(this, Qt::OtherFocusReason);
        } else {
            emit d->circuitEditor->elementUnselected(d->element);
            clearFocus();
        }
    }
    return QGraphicsRectItem::itemChange(change, value);
}

void CCircuitEditorElementItem::updateToolTip() {
    if (!d->element) {
        return;
    }
    QString text = QStringLiteral(
                       "<font size=\"+1\"><b><font color=\"red\">%1</font></b> (<b><i><font "
                       "color=\"blue\">%2</font></i></b>)</font><br>")
                       .arg(d->element->name(), d->element->desc()->label());
    const QString model = d->element->modelName();
    if (!model.isEmpty()) {
        text += QStringLiteral("<b>Model: </b> %1<br>").arg(model);
        QString file;
        ICircuit* circuit = d->element->circuit();
        const int count = circuit ? circuit->modelCount() : 0;
        for (int i = 0; i < count; ++i) {
            if (circuit->modelName(i) == model) {
                file = circuit->modelFile(i);
                break;
            }
        }
        text += QStringLiteral("<b>Model File: </b> %1<br>").arg(file);
    }
    setToolTip(text);
    for (CCircuitEditorNodeItem* wire : qAsConst(d->circuitNodeItems)) {
        wire->updateToolTip();
    }
}
