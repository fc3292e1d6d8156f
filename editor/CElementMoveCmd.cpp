#include "CElementMoveCmd.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorCmds.h"
#include "ConnectedMove.h"
#include "ICircuitElement.h"

CElementMoveCmd::CElementMoveCmd(CCircuitEditorElementItem* item, QPointF oldPos, QPointF newPos)
    : m_item(item),
      m_itemObject(item->element()->containerObject()),
      m_oldPos(oldPos),
      m_newPos(newPos) {
    setText(QStringLiteral("%1 Element movement").arg(item->element()->caption()));
    referenceObjects.append(m_itemObject);
}

bool CElementMoveCmd::mergeWith(const QUndoCommand* other) {
    const auto* move = dynamic_cast<const CElementMoveCmd*>(other);
    if (!move || move->m_item != m_item) {
        return false;
    }
    m_newPos = move->m_newPos;
    return true;
}

void CElementMoveCmd::undo() {
    moveTo(m_oldPos);
}

void CElementMoveCmd::redo() {
    moveTo(m_newPos);
}

void CElementMoveCmd::moveTo(const QPointF& position) {
    if (!m_item ||
        ConnectedMove::moveBy(m_item->circuitEditor(), {m_item.data()}, position - m_item->pos())) {
        return;
    }
    m_item->setPos(position);
    m_item->updateCircuitNodes();
}

void CElementMoveCmd::referenceObjectDestroyed(QObject* object) {
    if (object == m_itemObject) {
        m_item = nullptr;
    }
}

void CElementMoveCmd::referenceObjectChanged(QObject* old, QObject* now) {
    if (m_item || old != m_itemObject) {
        return;
    }
    if (CCircuitEditorCmds::CircuitEditor) {
        m_item =
            CCircuitEditorCmds::CircuitEditor->elementItem(qobject_cast<ICircuitElement*>(now));
    }
    m_itemObject = now;
}
