// Taking single terminals out of a net, as the user chooses.

#include "CCircuitEditorData.h"
#include "CCircuitEditorNodeItem.h"
#include "CDeleteCircuitNodeDialog.h"
#include "CircuitGeometry.h"
#include "HistoryStep.h"
#include "ICircuitNode.h"

#include <QPointer>

namespace {

bool isOn(ICircuitNode* node, const ICircuitElementNode* terminal) {
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        if (node->elementNode(i) == terminal) {
            return true;
        }
    }
    return false;
}

/// The wire without the branches that begin or end at the point. Empty if there is no such branch,
/// or no other.
QPainterPath withoutBranchesTo(const QPointF& end, const QPainterPath& wire) {
    QPainterPath kept;
    bool dropped = false;
    for (const QPainterPath& branch : CircuitGeometry::subPaths(wire)) {
        if (QPointF(branch.elementAt(0)) == end || branch.currentPosition() == end) {
            dropped = true;
        } else {
            kept.addPath(branch);
        }
    }
    return dropped ? kept : QPainterPath();
}

}  // namespace

void CCircuitEditor::deletePartsOfNode(QObject* node) {
    auto* net = qobject_cast<ICircuitNode*>(node);
    if (!d->circuitSolver || !nodeItem(net)) {
        return;
    }
    const HistoryStep step(this);
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
    const QPointer<CCircuitEditor> self(this);
    const QPointer<QObject> guard(node->containerObject());
    unhighlight();
    // Whoever heard of that may have cut the net or the terminal off.
    if (!self || !guard || !d->circuitSolver || !nodeItem(node) || !isOn(node, elementNode)) {
        return;
    }
    if (node->elementNodeCount() == 2) {
        on_removeNodeRequest(node);
        return;
    }
    // An automatic wire is routed anew by what follows.
    const bool wasLaid = nodeItem(node)->isManuallyConnected();
    const QPainterPath rest = wasLaid ? wireWithout(elementNode, node) : QPainterPath();
    if (!d->circuitSolver->breakConnection(elementNode, node) || !self) {
        return;
    }
    CCircuitEditorNodeItem* wire = guard ? nodeItem(node) : nullptr;
    if (wire && !rest.isEmpty()) {
        wire->addShape(rest, true);
    } else if (wire && wasLaid) {
        wire->setManuallyConnected(false);
    }
    if (self) {
        emit projectPartModified();
    }
}

QPainterPath CCircuitEditor::wireWithout(ICircuitElementNode* elementNode, ICircuitNode* node) {
    const QGraphicsItem* marker = itemFor(elementNode);
    const CCircuitEditorNodeItem* wire = nodeItem(node);
    return marker
               ? withoutBranchesTo(wire->mapFromItem(marker, QPointF(0, 0)), wire->internalShape())
               : QPainterPath();
}
