#include "CElementConnectionCmd.h"

#include "CCircuitEditorCmds.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"

CElementConnectionCmd::CElementConnectionCmd(ICircuitElementNode* a, ICircuitElementNode* b,
                                             ICircuitNode* node)
    : m_connectionType(TwoTerminals) {
    bindNode(node);
    m_end1.bind(a);
    m_end2.bind(b);
    referenceObjects << m_end1.elementObject << m_end2.elementObject << m_nodeObject;
}

CElementConnectionCmd::CElementConnectionCmd(ICircuitElementNode* a, ICircuitNode* node)
    : m_connectionType(TerminalToNode) {
    bindNode(node);
    m_end3.bind(a);
    referenceObjects << m_nodeObject << m_end3.elementObject;
}

void CElementConnectionCmd::End::bind(ICircuitElementNode* terminal) {
    elementNode = terminal;
    element = terminal->element();
    elementObject = element->containerObject();
    elementNodeName = terminal->name();
}

void CElementConnectionCmd::bindNode(ICircuitNode* node) {
    m_node = node;
    m_nodeObject = node ? node->containerObject() : nullptr;
    m_nodeGuard = m_nodeObject;
}

ICircuitNode* CElementConnectionCmd::livingNode() const {
    return m_nodeGuard ? m_node : nullptr;
}

void CElementConnectionCmd::undo() {
    ICircuitSolver* solver = CCircuitEditorCmds::CircuitSolver;
    if (!solver || !livingNode()) {
        return;
    }
    if (m_connectionType == TwoTerminals && m_end1.elementNode && m_end2.elementNode) {
        solver->breakConnection(m_end1.elementNode, m_node);
        // The solver may have dissolved the net with its last but one terminal.
        if (livingNode()) {
            solver->breakConnection(m_end2.elementNode, m_node);
        }
    } else if (m_connectionType == TerminalToNode && m_end3.elementNode) {
        solver->breakConnection(m_end3.elementNode, m_node);
    }
}

void CElementConnectionCmd::redo() {
    ICircuitSolver* solver = CCircuitEditorCmds::CircuitSolver;
    if (!solver) {
        return;
    }
    if (m_connectionType == TwoTerminals && m_end1.elementNode && m_end2.elementNode) {
        ICircuitNode* node = solver->makeConnection(m_end1.elementNode, m_end2.elementNode);
        if (node && stack) {
            // Comes back through referenceObjectChanged(), if the old net is still watched.
            stack->notifyObjectPointerChange(m_nodeObject, node->containerObject());
        }
    } else if (m_connectionType == TerminalToNode && m_end3.elementNode && livingNode()) {
        solver->makeConnection(m_end3.elementNode, m_node);
    }
}

void CElementConnectionCmd::referenceObjectDestroyed(QObject* object) {
    if (!object) {
        return;
    }
    if (object == m_nodeObject) {
        m_node = nullptr;
        return;
    }
    for (End* end : {&m_end1, &m_end2, &m_end3}) {
        if (object == end->elementObject) {
            end->element = nullptr;
            end->elementNode = nullptr;
            return;
        }
    }
}

void CElementConnectionCmd::referenceObjectChanged(QObject* old, QObject* now) {
    if (!old || !now) {
        return;
    }
    if (old == m_nodeObject) {
        m_nodeObject = now;
        m_nodeGuard = now;
        m_node = qobject_cast<ICircuitNode*>(now);
        return;
    }
    for (End* end : {&m_end1, &m_end2, &m_end3}) {
        if (old == end->elementObject) {
            end->elementObject = now;
            end->element = qobject_cast<ICircuitElement*>(now);
            end->elementNode =
                end->element ? end->element->elementNode(end->elementNodeName) : nullptr;
            return;
        }
    }
}
