// Taking single terminals out of a net, as the user chooses.

#include "CCircuitEditorData.h"
#include "CCircuitEditorNodeItem.h"
#include "CDeleteCircuitNodeDialog.h"
#include "ICircuitNode.h"

#include <QPointer>

void CCircuitEditor::deletePartsOfNode(QObject* node) {
    auto* net = qobject_cast<ICircuitNode*>(node);
    if (!d->circuitSolver || !nodeItem(net)) {
        return;
    }
    const QPointer<CCircuitEditor> self(this);
    const QPointer<QObject> guard(node);
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<CDeleteCircuitNodeDialog> dialog(new CDeleteCircuitNodeDialog(this));
    dialog->setCircuitEditor(this);
    dialog->setCirucitNode(net);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!self || !dialog) {
        return;
    }
    const bool wholeNode = dialog->deleteWholeNode();
    const QList<ICircuitElementNode*> terminals = dialog->selectedElementNodes();
    delete dialog;
    if (!accepted || !guard || !nodeItem(net)) {
        return;
    }
    if (wholeNode) {
        on_removeNodeRequest(net);
        return;
    }
    for (ICircuitElementNode* terminal : terminals) {
        // Listeners may have gone on from one terminal to others, or to the net.
        if (self && guard && nodeItem(net)) {
            deleteTerminalOf(net, terminal);
        }
    }
}

void CCircuitEditor::deleteTerminalOf(ICircuitNode* node, ICircuitElementNode* elementNode) {
    bool isOnNet = false;
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        isOnNet = isOnNet || node->elementNode(i) == elementNode;
    }
    if (!isOnNet) {
        return;
    }
    unhighlight();
    // An automatic wire is routed anew by what follows; of one laid by hand the terminal's branch
    // goes. Where that branch is none of its own the wire can't be kept as it was laid.
    CCircuitEditorNodeItem* wire = nodeItem(node);
    const bool wasLaid = wire->isManuallyConnected();
    const QPainterPath before = wire->internalShape();
    if (wasLaid) {
        wire->removeShapeFor(elementNode);
    }
    const bool keepsBranch = wasLaid && wire->internalShape() == before;
    const QPointer<CCircuitEditor> self(this);
    const QPointer<QObject> guard(node->containerObject());
    d->circuitSolver->breakConnection(elementNode, node);
    if (!self) {
        return;
    }
    wire = guard ? nodeItem(node) : nullptr;
    if (wire && keepsBranch) {
        wire->setManuallyConnected(false);
    }
    emit projectPartModified();
}
