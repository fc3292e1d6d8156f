#include "CElementExistenceCmd.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorCmds.h"
#include "CCircuitEditorElementItem.h"
#include "CircuitGeometry.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "QtSeriesXml.h"

#include <QDomDocument>

CElementExistenceCmd::CElementExistenceCmd(ICircuitElement* element, bool staysInCircuit)
    : m_element(staysInCircuit ? element : nullptr),
      m_elementObject(element->containerObject()),
      m_elementGuard(m_elementObject),
      m_elementType(element->desc()->elementType()) {
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("NodeInfo"));
    document.appendChild(root);
    if (CCircuitEditorCmds::QObjectLoadSave) {
        CCircuitEditorCmds::QObjectLoadSave->save(m_elementObject, document, root);
    }
    const CCircuitEditor* editor = CCircuitEditorCmds::CircuitEditor;
    if (const CCircuitEditorElementItem* item = editor ? editor->elementItem(element) : nullptr) {
        root.setAttribute(QStringLiteral("X"), item->pos().x());
        root.setAttribute(QStringLiteral("Y"), item->pos().y());
    }
    m_snapshot = document.toString(1);
}

void CElementExistenceCmd::recreateElement() {
    if (m_element || !CCircuitEditorCmds::CircuitElementFactory) {
        return;
    }
    m_element = CCircuitEditorCmds::CircuitElementFactory->createElement(m_elementType);
    if (!m_element) {
        return;
    }
    QObject* object = m_element->containerObject();
    m_elementGuard = object;
    QDomDocument document;
    // Of a snapshot that can't be read nothing counts: a half of it would be no state that ever
    // was.
    const bool isReadable = QtSeries::readXml(&document, m_snapshot);
    const QDomElement root = isReadable ? document.documentElement() : QDomElement();
    if (CCircuitEditorCmds::QObjectLoadSave && isReadable) {
        CCircuitEditorCmds::QObjectLoadSave->load(object, document, root);
    }
    if (CCircuitEditorCmds::Circuit) {
        CCircuitEditorCmds::Circuit->addElement(m_element);
    }
    const CCircuitEditor* editor = CCircuitEditorCmds::CircuitEditor;
    if (CCircuitEditorElementItem* item = editor ? editor->elementItem(m_element) : nullptr) {
        item->setPos(CircuitGeometry::finiteNumber(root.attribute(QStringLiteral("X"))),
                     CircuitGeometry::finiteNumber(root.attribute(QStringLiteral("Y"))));
    }
    if (stack) {
        stack->notifyObjectPointerChange(m_elementObject, object);
    }
    m_elementObject = object;
}

bool CElementExistenceCmd::isInCircuit() const {
    const bool isAlive = m_element && m_elementGuard;
    // An object that its model has dropped may live on until the event loop runs; its item is gone.
    const CCircuitEditor* editor = CCircuitEditorCmds::CircuitEditor;
    return isAlive && (!editor || editor->elementItem(m_element));
}

void CElementExistenceCmd::removeElement() {
    if (!isInCircuit() || !CCircuitEditorCmds::Circuit) {
        return;
    }
    if (CCircuitEditorCmds::CircuitSolver) {
        CCircuitEditorCmds::CircuitSolver->disconnectElement(m_element);
    }
    CCircuitEditorCmds::Circuit->removeElement(m_element);
    m_element = nullptr;
}
