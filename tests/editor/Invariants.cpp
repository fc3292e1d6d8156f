#include "Invariants.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CUndoRedo.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"

#include <QGraphicsScene>

namespace {

void checkElements(const CCircuitEditor& editor, ICircuit* circuit, int itemCount,
                   QStringList& breaches) {
    int found = 0;
    for (int i = 0; i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        const CCircuitEditorElementItem* item = editor.elementItem(element);
        if (!item || item->element() != element || item->scene() != editor.scene()) {
            breaches << QStringLiteral("element %1 has no item of its own").arg(element->name());
            continue;
        }
        ++found;
        for (const QString& name : element->elementNodeNames()) {
            const CCircuitEditorElementNodeItem* marker = item->nodeItem(name);
            if (!marker || marker->parentItem() != item ||
                marker->pos() != element->elementNode(name)->position()) {
                breaches << QStringLiteral("terminal %1.%2 has no marker in its place")
                                .arg(element->name(), name);
            }
        }
        for (int k = 0; k < item->circuitNodeItemCount(); ++k) {
            ICircuitNode* node = item->circuitNodeItem(k)->circuitNode();
            if (editor.nodeItem(node) != item->circuitNodeItem(k) ||
                !CCircuitEditorNodeItem::joins(node, element, nullptr)) {
                breaches << QStringLiteral("element %1 lists a wire that doesn't touch it")
                                .arg(element->name());
            }
        }
    }
    if (found != itemCount) {
        breaches << QStringLiteral("%1 element items for %2 elements").arg(itemCount).arg(found);
    }
}

void checkWireEnds(const CCircuitEditor& editor, ICircuitNode* node,
                   const CCircuitEditorNodeItem* wire, QStringList& breaches) {
    const QPainterPath path = wire->mapToScene(wire->internalShape());
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        const CCircuitEditorElementItem* item = editor.elementItem(terminal->element());
        if (!item) {
            continue;
        }
        bool isListed = false;
        for (int k = 0; k < item->circuitNodeItemCount(); ++k) {
            isListed = isListed || item->circuitNodeItem(k) == wire;
        }
        const QPointF place = item->nodeItem(terminal)->mapToScene(QPointF(0, 0));
        bool isReached = wire->isManuallyConnected() || node->elementNodeCount() < 2;
        for (int k = 0; k < path.elementCount(); ++k) {
            isReached = isReached || QPointF(path.elementAt(k)) == place;
        }
        if (!isListed || !isReached) {
            breaches << QStringLiteral("net %1 and terminal %2.%3 don't meet")
                            .arg(node->name(), terminal->element()->name(), terminal->name());
        }
    }
}

template <class Box>
void checkListed(const CCircuitEditor& editor, const Box* box, QStringList& breaches) {
    if (box->scene() != editor.scene() || box->parent() != &editor) {
        breaches << QStringLiteral("a listed text box is not the editor's");
    }
}

void checkBoxes(const CCircuitEditor& editor, int boxCount, QStringList& breaches) {
    for (int i = 0; i < editor.textBoxCount(); ++i) {
        checkListed(editor, editor.textBox(i), breaches);
    }
    for (int i = 0; i < editor.globalParamTextBoxCount(); ++i) {
        checkListed(editor, editor.globalParamTextBox(i), breaches);
    }
    for (int i = 0; i < editor.elementPropertyTextBoxCount(); ++i) {
        CCircuitElementPropertyTextBox* box = editor.elementPropertyTextBox(i);
        checkListed(editor, box, breaches);
        const CCircuitEditorElementItem* item = editor.elementItem(box->element());
        if (box->element() && (!item || item->propertyTextBoxes().count(box) != 1)) {
            breaches << QStringLiteral("a box shows a property of an element that doesn't know it");
        }
    }
    if (boxCount != editor.textBoxCount() + editor.globalParamTextBoxCount() +
                        editor.elementPropertyTextBoxCount()) {
        breaches << QStringLiteral("%1 text boxes are not all listed").arg(boxCount);
    }
}

}  // namespace

QStringList invariantBreaches(const CCircuitEditor& editor) {
    QStringList breaches;
    int elementItems = 0;
    int wires = 0;
    int boxes = 0;
    for (const QGraphicsItem* item : editor.scene()->items()) {
        elementItems += item->type() == CCircuitEditorElementItem::Type;
        wires += item->type() == CCircuitEditorNodeItem::Type;
        boxes += item->type() == TextBoxItemType || item->type() == ElementPropertyTextBoxItemType;
    }
    checkBoxes(editor, boxes, breaches);
    if (!editor.undoStack()->watchesOwnCommandsOnly()) {
        breaches << QStringLiteral("the history watches objects for commands that it doesn't hold");
    }
    ICircuit* circuit = editor.circuit();
    if (!circuit) {
        return breaches;
    }
    checkElements(editor, circuit, elementItems, breaches);
    int found = 0;
    for (int i = 0; i < circuit->nodeCount(); ++i) {
        ICircuitNode* node = circuit->node(i);
        const CCircuitEditorNodeItem* wire = editor.nodeItem(node);
        if (!wire || wire->circuitNode() != node || wire->scene() != editor.scene()) {
            breaches << QStringLiteral("net %1 has no wire of its own").arg(node->name());
            continue;
        }
        ++found;
        checkWireEnds(editor, node, wire, breaches);
    }
    if (found != wires) {
        breaches << QStringLiteral("%1 wires for %2 nets").arg(wires).arg(found);
    }
    return breaches;
}
