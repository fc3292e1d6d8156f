// The records of elements and nodes in files.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CircuitFileText.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "RecordFields.h"
#include "XmlText.h"

#include <optional>

using RecordFields::setStoredPosition;
using RecordFields::storedPath;
using RecordFields::storedPosition;

namespace {

constexpr char UniqueId[] = "_UniqueId_";

QString twoDecimals(double value) {
    return QStringLiteral("%1").arg(value, 0, 'f', 2);
}

QDomElement shapeRecord(QDomDocument document, const QPainterPath& path) {
    QDomElement shape = document.createElement(QStringLiteral("Shape"));
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        QDomElement record = document.createElement(QStringLiteral("ShapeElement"));
        record.setAttribute(QStringLiteral("Type"), static_cast<int>(element.type));
        setStoredPosition(record, element);
        shape.appendChild(record);
    }
    return shape;
}

/// Takes back an element that got no item. The circuit may already list it.
void discardElement(ICircuit* circuit, ICircuitElement* element) {
    const QPointer<QObject> object = element->containerObject();
    for (int i = circuit->elementCount() - 1; i >= 0; --i) {
        if (circuit->element(i) == element) {
            circuit->removeElement(element);
            break;
        }
    }
    delete object;
}

ICircuitElementNode* storedTerminal(const QDomElement& record,
                                    const CCircuitEditorData::ElementsById& elements) {
    ICircuitElement* element =
        elements.value(record.attribute(QStringLiteral("ElementID")).toInt());
    return element ? element->elementNode(record.attribute(QStringLiteral("Name"))) : nullptr;
}

}  // namespace

CCircuitEditorData::ElementsById CCircuitEditorData::elementsById() const {
    ICircuit* circuit = circuitEditor->circuit();
    ElementsById elements;
    for (int i = 0; circuit && i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        const int id = element ? element->containerObject()->property(UniqueId).toInt() : 0;
        if (element && !elements.contains(id)) {
            elements.insert(id, element);
        }
    }
    return elements;
}

void CCircuitEditorData::saveElement(QDomDocument document, QDomElement parent,
                                     ICircuitElement* element) {
    // One count for all editors of the process: only the equality of numbers within one file has a
    // meaning.
    static int count = 0;
    const int id = count++;
    const CCircuitEditorElementItem* item = circuitEditor->elementItem(element);
    const QPointF position = item ? item->pos() : QPointF();
    QDomElement record = document.createElement(QStringLiteral("CircuitElement"));
    parent.appendChild(record);
    record.setAttribute(QStringLiteral("ElementType"), xmlText(element->desc()->elementType()));
    record.setAttribute(QStringLiteral("ID"), QStringLiteral("%1").arg(qint64(id)));
    record.setAttribute(QStringLiteral("X"), twoDecimals(position.x()));
    record.setAttribute(QStringLiteral("Y"), twoDecimals(position.y()));
    record.setAttribute(QStringLiteral("ModelName"), xmlText(element->modelName()));
    element->containerObject()->setProperty(UniqueId, id);
    if (qobjectLoadSave) {
        qobjectLoadSave->save(element->containerObject(), document, record);
    }
}

void CCircuitEditorData::loadElement(const QDomElement& record) {
    ICircuit* circuit = circuitEditor->circuit();
    const QString type = record.attribute(QStringLiteral("ElementType"));
    if (!circuitElementFactory || !circuit || type.isEmpty()) {
        return;
    }
    ICircuitElement* element = circuitElementFactory->createElement(type);
    if (!element) {
        return;
    }
    circuit->addElement(element);
    CCircuitEditorElementItem* item = circuitEditor->elementItem(element);
    if (!item) {
        discardElement(circuit, element);
        return;
    }
    QObject* object = element->containerObject();
    object->setProperty(UniqueId, record.attribute(QStringLiteral("ID")).toInt());
    // The position in the file holds, also when it is off the grid.
    item->setPos(storedPosition(record));
    if (record.hasAttribute(QStringLiteral("ModelName"))) {
        element->setModelName(record.attribute(QStringLiteral("ModelName")));
    }
    if (qobjectLoadSave) {
        qobjectLoadSave->load(object, record.ownerDocument(), record);
    }
}

void CCircuitEditorData::saveNode(QDomDocument document, QDomElement parent, ICircuitNode* node) {
    const CCircuitEditorNodeItem* item = circuitEditor->nodeItem(node);
    QDomElement record = document.createElement(QStringLiteral("CircuitNode"));
    parent.appendChild(record);
    record.setAttribute(QStringLiteral("Name"), xmlText(node->name()));
    setStoredPosition(record, item ? item->pos() : QPointF());
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        QDomElement terminalRecord = document.createElement(QStringLiteral("ElementNode"));
        terminalRecord.setAttribute(QStringLiteral("Name"), xmlText(terminal->name()));
        terminalRecord.setAttribute(
            QStringLiteral("ElementID"),
            terminal->element()->containerObject()->property(UniqueId).toString());
        record.appendChild(terminalRecord);
    }
    if (item && item->isManuallyConnected()) {
        record.appendChild(shapeRecord(document, item->internalShape()));
    }
    if (qobjectLoadSave) {
        qobjectLoadSave->save(node->containerObject(), document, record);
    }
}

void CCircuitEditorData::loadNode(const QDomElement& record, const ElementsById& elements) {
    if (!xmlUtils || !circuitSolver) {
        return;
    }
    const QList<QDomElement> terminals =
        xmlUtils->findElements(record, QStringLiteral("ElementNode"));
    if (terminals.size() < 2) {
        return;
    }
    ICircuitElementNode* first = storedTerminal(terminals.at(0), elements);
    ICircuitElementNode* second = first ? storedTerminal(terminals.at(1), elements) : nullptr;
    // Routed as it is told: whoever hears of a new net may look at its wire.
    ICircuitNode* node = second ? circuitSolver->makeConnection(first, second) : nullptr;
    if (!node) {
        return;
    }
    // Each further terminal that joins would route the whole net anew.
    std::optional<RoutingHold> hold(this);
    // A solver may merge the other way, and free the node.
    const QPointer<QObject> guard(node->containerObject());
    node->setName(record.attribute(QStringLiteral("Name")));
    for (int i = 2; i < terminals.size(); ++i) {
        ICircuitElementNode* terminal = storedTerminal(terminals.at(i), elements);
        if (!terminal) {
            return;  // the node stays as far as it got, without shape, position and properties
        }
        circuitSolver->makeConnection(terminal, node);
        if (!guard) {
            return;
        }
    }
    if (CCircuitEditorNodeItem* item = circuitEditor->nodeItem(node)) {
        loadNodeShape(record, item);
        item->setPos(storedPosition(record));
        // An automatic wire is held in item coordinates, too: the move is to change nothing.
        item->updateNode();
    }
    hold.reset();
    if (qobjectLoadSave && guard) {
        qobjectLoadSave->load(node->containerObject(), record.ownerDocument(), record);
    }
}

void CCircuitEditorData::loadNodeShape(const QDomElement& record, CCircuitEditorNodeItem* item) {
    const QDomElement shape = xmlUtils->findElement(record, QStringLiteral("Shape"));
    if (shape.isNull()) {
        return;
    }
    const QPainterPath path =
        storedPath(xmlUtils->findElements(shape, QStringLiteral("ShapeElement")), storedPosition);
    item->addShape(path, true);
}

void CCircuitEditorData::loadRecords(const QDomElement& parent) {
    for (const QDomElement& record :
         xmlUtils->findElements(parent, QStringLiteral("CircuitElement"))) {
        loadElement(record);
    }
    const ElementsById elements = elementsById();
    for (const QDomElement& record :
         xmlUtils->findElements(parent, QStringLiteral("CircuitNode"))) {
        loadNode(record, elements);
    }
}

void CCircuitEditorData::loadRecords(const CircuitFileText& text) {
    std::optional<ElementsById> elements;
    text.forEachRecord([this](const QDomElement& record) { loadElement(record); },
                       [&](const QDomElement& record) {
                           if (!elements) {
                               elements = elementsById();
                           }
                           loadNode(record, *elements);
                       });
}
