// Joining terminals and wires: the model's business, which the editor asks for and records.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CElementConnectionCmd.h"
#include "CManualConnectorLineItem.h"
#include "ICircuitNode.h"
#include "ICircuitSolverEx.h"

#include <QGraphicsLineItem>
#include <QPointer>

ICircuitNode* CCircuitEditorData::makeConnection(QGraphicsItem* a, QGraphicsItem* b) {
    if (!a || !b || !circuitSolver) {
        return nullptr;
    }
    const auto* terminalA = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(a);
    const auto* terminalB = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(b);
    auto* wireA = qgraphicsitem_cast<CCircuitEditorNodeItem*>(a);
    auto* wireB = qgraphicsitem_cast<CCircuitEditorNodeItem*>(b);
    if (terminalA && terminalB) {
        return joinTerminals(terminalA->elementNode(), terminalB->elementNode());
    }
    if (terminalA && wireB) {
        return joinTerminalToNode(terminalA->elementNode(), wireB->circuitNode());
    }
    if (wireA && terminalB) {
        return joinTerminalToNode(terminalB->elementNode(), wireA->circuitNode());
    }
    return wireA && wireB ? mergeNodes(wireA, wireB) : nullptr;
}

ICircuitNode* CCircuitEditorData::joinTerminals(ICircuitElementNode* a, ICircuitElementNode* b) {
    ICircuitNode* node = circuitSolver->makeConnection(a, b);
    if (node) {
        undoStack->push(new CElementConnectionCmd(a, b, node));
    }
    return node;
}

ICircuitNode* CCircuitEditorData::joinTerminalToNode(ICircuitElementNode* terminal,
                                                     ICircuitNode* node) {
    if (!circuitSolver->makeConnection(terminal, node)) {
        return nullptr;
    }
    undoStack->push(new CElementConnectionCmd(terminal, node));
    return node;
}

ICircuitNode* CCircuitEditorData::mergeNodes(CCircuitEditorNodeItem* a, CCircuitEditorNodeItem* b) {
    auto* extended = qobject_cast<ICircuitSolverEx*>(circuitSolver->containerObject());
    if (a == b || !extended) {
        return nullptr;
    }
    ICircuitNode* kept = a->circuitNode();
    ICircuitNode* dissolved = b->circuitNode();
    // The drawing of the second net, before its item goes.
    const QPainterPath shape = b->mapToScene(b->internalShape());
    // A solver may dissolve the emptied net by itself.
    const QPointer<QObject> rest(dissolved->containerObject());
    if (!extended->makeConnection(kept, dissolved)) {
        return nullptr;
    }
    if (rest && circuitSolver) {
        circuitSolver->breakConnection(dissolved);
    }
    if (circuitEditor->nodeItem(kept) != a) {
        return nullptr;
    }
    a->addShape(shape, false);
    return kept;
}

void CCircuitEditorData::hideConnectionLine() {
    if (connectorLineItem) {
        connectorLineItem->setVisible(false);
        // A hidden line would still count among the bounds of the drawing.
        connectorLineItem->setLine(QLineF());
    }
}

void CCircuitEditorData::dropConnection() {
    connectionStartItem = nullptr;
    connectionEndItem = nullptr;
    delete manualConnectorItem;  // takes itself out through forgetItem()
}
