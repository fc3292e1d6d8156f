#include "CCircuitNodeDeleteCmd.h"

#include "CCircuitEditorCmds.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"

CCircuitNodeDeleteCmd::CCircuitNodeDeleteCmd(ICircuitNode* node)
    : m_nodeObject(node->containerObject()) {
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        ICircuitElement* element = terminal->element();
        m_elementNodes.append({terminal->name(), element, element->containerObject()});
        referenceObjects.append(element->containerObject());
    }
}

void CCircuitNodeDeleteCmd::undo() {
    ICircuitSolver* solver = CCircuitEditorCmds::CircuitSolver;
    if (m_node || !solver) {
        return;
    }
    ICircuitElementNode* first = nullptr;
    ICircuitNode* newNode = nullptr;
    for (const SElementNode& entry : qAsConst(m_elementNodes)) {
        ICircuitElementNode* terminal =
            entry.element ? entry.element->elementNode(entry.nodeName) : nullptr;
        if (!terminal) {
            continue;
        }
        if (!first) {
            first = terminal;
        } else if (!newNode) {
            newNode = solver->makeConnection(first, terminal);
        } else {
            solver->makeConnection(terminal, newNode);
        }
    }
    if (!newNode) {
        return;  // too few terminals are left to make a net
    }
    QObject* newObject = newNode->containerObject();
    if (stack) {
        stack->notifyObjectPointerChange(m_nodeObject, newObject);
    }
    m_node = newNode;
    m_nodeObject = newObject;
    m_nodeGuard = newObject;
}

void CCircuitNodeDeleteCmd::redo() {
    ICircuitSolver* solver = CCircuitEditorCmds::CircuitSolver;
    if (!m_node) {
        return;
    }
    if (solver && m_nodeGuard) {
        solver->breakConnection(m_node);
    }
    m_node = nullptr;
}

void CCircuitNodeDeleteCmd::referenceObjectDestroyed(QObject* object) {
    for (SElementNode& entry : m_elementNodes) {
        if (entry.elementObject == object) {
            entry.element = nullptr;
        }
    }
}

void CCircuitNodeDeleteCmd::referenceObjectChanged(QObject* old, QObject* now) {
    for (SElementNode& entry : m_elementNodes) {
        if (entry.elementObject == old) {
            entry.element = qobject_cast<ICircuitElement*>(now);
            entry.elementObject = now;
        }
    }
}
