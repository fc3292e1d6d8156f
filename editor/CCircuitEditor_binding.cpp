// The tie between the circuit model and the items.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitNodeDeleteCmd.h"
#include "CElementDeleteCmd.h"
#include "CElementPropertyChangeCmd.h"
#include "CSelectionRectangleItem.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "ElementCaptions.h"
#include "HistoryStep.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ui_CType23OutputVariablesDialog.h"

#include <QDialog>
#include <QPointer>

void CCircuitEditor::setCircuitSolver(ICircuitSolver* solver) {
    // The circuit may have outlived the solver that brought it.
    if (d->boundCircuit) {
        QObject::disconnect(d->boundCircuit, nullptr, this, nullptr);
    }
    if (d->circuitSolver) {
        clear();
    } else if (!d->elementItemMap.isEmpty() || !d->nodeItemMap.isEmpty()) {
        unhighlight();
        d->deleteItems();
    }
    d->circuitSolver = solver;
    ICircuit* bound = circuit();
    d->boundCircuit = bound ? bound->containerObject() : nullptr;
    if (!bound) {
        bindHistory();
        return;
    }
    const QObject* object = d->boundCircuit;
    connect(object, SIGNAL(elementAdded(ICircuitElement*)), this,
            SLOT(on_elementAdded(ICircuitElement*)));
    connect(object, SIGNAL(elementRemoved(ICircuitElement*)), this,
            SLOT(on_elementRemoved(ICircuitElement*)));
    connect(object, SIGNAL(nodeAdded(ICircuitNode*)), this, SLOT(on_nodeAdded(ICircuitNode*)));
    connect(object, SIGNAL(nodeRemoved(ICircuitNode*)), this, SLOT(on_nodeRemoved(ICircuitNode*)));
    const char* const modifying[] = {SIGNAL(elementAdded(ICircuitElement*)),
                                     SIGNAL(elementRemoved(ICircuitElement*)),
                                     SIGNAL(nodeAdded(ICircuitNode*)),
                                     SIGNAL(nodeRemoved(ICircuitNode*)),
                                     SIGNAL(globalVariableAdded(QString)),
                                     SIGNAL(globalVariableRemoved(QString)),
                                     SIGNAL(outputVariableAdded(ICircuitOutputVariable*)),
                                     SIGNAL(outputVariableRemoved(ICircuitOutputVariable*)),
                                     SIGNAL(outputVariableEdited(ICircuitOutputVariable*))};
    for (const char* signal : modifying) {
        connect(object, signal, this, SIGNAL(projectPartModified()));
    }
    for (int i = 0; i < bound->elementCount(); ++i) {
        on_elementAdded(bound->element(i));
    }
    for (int i = 0; i < bound->nodeCount(); ++i) {
        on_nodeAdded(bound->node(i));
    }
    bindHistory();
}

CCircuitEditorElementItem* CCircuitEditor::makeItem(ICircuitElement* element) {
    auto* item = new CCircuitEditorElementItem(this);
    item->setElement(element);
    item->setVisible(true);
    d->elementItemMap.insert(element, item);
    return item;
}

CCircuitEditorNodeItem* CCircuitEditor::makeItem(ICircuitNode* node) {
    auto* item = new CCircuitEditorNodeItem(this);
    item->setCircuitNode(node);
    item->setVisible(true);
    d->nodeItemMap.insert(node, item);
    return item;
}

void CCircuitEditor::on_elementAdded(ICircuitElement* element) {
    unhighlight();
    if (!d->scene || d->elementItemMap.contains(element) || !element ||
        element->circuit() != circuit()) {
        return;
    }
    snapToGrid(makeItem(element));
    connect(element->containerObject(), SIGNAL(elementChanged()), this, SLOT(on_elementChanged()));
}

void CCircuitEditor::on_elementRemoved(ICircuitElement* element) {
    unhighlight();
    if (!d->elementItemMap.contains(element)) {
        return;
    }
    delete d->elementItemMap.value(element);
    d->elementItemMap.remove(element);
    hideRemovedFromPropertyEditor(element->containerObject());
    QObject::disconnect(element->containerObject(), nullptr, this, nullptr);
}

void CCircuitEditor::on_nodeAdded(ICircuitNode* node) {
    unhighlight();
    if (!d->scene || d->nodeItemMap.contains(node) || !node || node->circuit() != circuit()) {
        return;
    }
    makeItem(node);
    const QObject* object = node->containerObject();
    connect(object, SIGNAL(elementNodeAdded(ICircuitElementNode*)), this,
            SLOT(on_circuitElementNodeAdded(ICircuitElementNode*)));
    connect(object, SIGNAL(elementNodeRemoved(ICircuitElementNode*)), this,
            SLOT(on_circuitElementNodeRemoved(ICircuitElementNode*)));
    connect(object, SIGNAL(nodeChanged()), this, SLOT(on_circuitNodeChanged()));
}

void CCircuitEditor::on_nodeRemoved(ICircuitNode* node) {
    unhighlight();
    if (!d->nodeItemMap.contains(node)) {
        return;
    }
    delete d->nodeItemMap.value(node);
    d->nodeItemMap.remove(node);
    hideRemovedFromPropertyEditor(node->containerObject());
    QObject::disconnect(node->containerObject(), nullptr, this, nullptr);
}

void CCircuitEditor::hideRemovedFromPropertyEditor(QObject* object) {
    if (d->propertyEditor && d->propertyEditor->object() == object) {
        d->propertyEditor->setObject(nullptr, false);
    }
}

void CCircuitEditor::on_circuitElementChanged() {}

void CCircuitEditor::on_elementChanged() {
    auto* element = qobject_cast<ICircuitElement*>(sender());
    if (CCircuitEditorElementItem* item = elementItem(element)) {
        item->reloadElement();
    }
}

void CCircuitEditor::on_circuitNodeChanged() {
    auto* node = qobject_cast<ICircuitNode*>(sender());
    if (CCircuitEditorNodeItem* item = nodeItem(node)) {
        item->updateNode();
        item->updateToolTip();
    }
}

void CCircuitEditor::on_circuitElementNodeAdded(ICircuitElementNode* elementNode) {
    unhighlight();
    auto* node = elementNode ? qobject_cast<ICircuitNode*>(sender()) : nullptr;
    if (!node) {
        return;
    }
    CCircuitEditorNodeItem* wire = nodeItem(node);
    if (CCircuitEditorElementItem* item = elementItem(elementNode->element())) {
        item->addCircuitNodeItem(wire);
    }
    if (wire) {
        wire->updateNode();
    }
}

void CCircuitEditor::on_circuitElementNodeRemoved(ICircuitElementNode* elementNode) {
    unhighlight();
    auto* node = elementNode ? qobject_cast<ICircuitNode*>(sender()) : nullptr;
    if (!node) {
        return;
    }
    CCircuitEditorNodeItem* wire = nodeItem(node);
    CCircuitEditorElementItem* item = elementItem(elementNode->element());
    // An element with a second terminal on the net is still wired by it.
    if (item && !CCircuitEditorNodeItem::joins(node, elementNode->element(), elementNode)) {
        item->removeCircuitNodeItem(wire);
    } else if (item) {
        item->forgetNets();
    }
    if (wire) {
        wire->updateNode();
    }
}

void CCircuitEditor::on_propertyValueChanged(QObject* object, QString propertyName,
                                             QVariant oldValue, QVariant newValue) {
    if (!object || propertyName.isEmpty() || oldValue == newValue) {
        return;
    }
    const HistoryStep step(this);
    auto* ownCircuit = qobject_cast<ICircuit*>(object);
    if (!ownCircuit || ownCircuit != circuit()) {
        auto* element = qobject_cast<ICircuitElement*>(object);
        auto* node = element ? nullptr : qobject_cast<ICircuitNode*>(object);
        CCircuitEditorElementItem* item = elementItem(element);
        CCircuitEditorNodeItem* wire = nodeItem(node);
        if (!item && !wire) {
            return;
        }
        d->undoStack->push(new CElementPropertyChangeCmd(object, propertyName, oldValue, newValue));
        if (item) {
            item->updateToolTip();
            if (propertyName == QLatin1String("Rotation") ||
                propertyName == QLatin1String("Flip")) {
                ElementCaptions::keepClear({item});
            }
        } else {
            wire->updateToolTip();
        }
        touchHistory(item ? static_cast<QGraphicsItem*>(item) : wire);
    } else if (d->completeHistory) {
        d->completeHistory->touchCircuit();
    }
    emit projectPartModified();
}

void CCircuitEditor::on_removeElementRequest(ICircuitElement* element) {
    const HistoryStep step(this);
    unhighlight();
    if (!d->circuitSolver || !element) {
        return;
    }
    // Recorded while it is still whole.
    d->undoStack->push(new CElementDeleteCmd(element));
    d->circuitSolver->disconnectElement(element);
    if (ICircuit* owner = circuit()) {
        owner->removeElement(element);
    }
}

void CCircuitEditor::on_editOutputVariables() {
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<CCircuitEditor> self(this);
    const QPointer<QDialog> dialog(new QDialog(this));
    Ui_CType23OutputVariablesDialog form;
    form.setupUi(dialog);
    dialog->exec();
    delete dialog;
    if (self) {
        emit projectPartModified();
    }
}

void CCircuitEditor::on_removeNodeRequest(ICircuitNode* node) {
    const HistoryStep step(this);
    unhighlight();
    if (!d->circuitSolver || !node) {
        return;
    }
    // Only a net of two terminals can come back.
    if (node->elementNodeCount() == 2) {
        d->undoStack->push(new CCircuitNodeDeleteCmd(node));
    }
    ICircuit* owner = circuit();
    d->circuitSolver->breakConnection(node);
    // A solver may have dissolved the node already, so it is only compared with what is left.
    for (int i = 0; owner && i < owner->nodeCount(); ++i) {
        if (owner->node(i) == node) {
            owner->removeNode(node);
            return;
        }
    }
}

void CCircuitEditor::on_elementSelected(ICircuitElement* element) {
    if (!element || !d->propertyEditor) {
        return;
    }
    QObject* object = element->containerObject();
    d->propertyEditor->setObject(object, false);
    d->lastPropertyObject = object;
    if (CCircuitEditorElementItem* item = elementItem(element)) {
        d->selection->initFromItem(item);
    }
}

void CCircuitEditor::on_circuitNodeSelected(ICircuitNode* node) {
    if (d->selectingNode || !node || !d->propertyEditor) {
        return;
    }
    // Selecting the fellows of the name brings each of them back here.
    d->selectingNode = true;
    d->propertyEditor->setObject(node->containerObject(), false);
    if (ICircuit* bound = circuit()) {
        QList<ICircuitNode*> fellows = bound->nodes(node->name());
        fellows.removeAll(node);
        for (ICircuitNode* fellow : qAsConst(fellows)) {
            if (CCircuitEditorNodeItem* item = nodeItem(fellow)) {
                item->setSelected(true);
            }
        }
    }
    d->selectingNode = false;
}

void CCircuitEditor::clear() {
    clearEditor();
}

void CCircuitEditor::clearEditor() {
    if (!d->circuitSolver) {
        return;
    }
    ICircuit* bound = circuit();
    QObject* shown = d->propertyEditor ? d->propertyEditor->object() : nullptr;
    if (shown) {
        if (bound && qobject_cast<ICircuit*>(shown) == bound) {
            d->propertyEditor->setObject(nullptr, false);
        }
        auto* element = qobject_cast<ICircuitElement*>(shown);
        auto* node = element ? nullptr : qobject_cast<ICircuitNode*>(shown);
        // What has an item stays shown until its own removal takes it away.
        if (!d->elementItemMap.contains(element) && !d->nodeItemMap.contains(node)) {
            d->propertyEditor->setObject(nullptr, false);
        }
    }
    // While the model is whole: listeners are told what is no longer selected.
    unhighlight();
    delete d->selectionRectItem;
    if (bound) {
        bound->clear();
    }
    d->deleteItems();
}
