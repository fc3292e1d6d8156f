// Putting one side of a step back: what goes, then what comes, then what leans on both.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "COutputVariablesWidget.h"
#include "CSelectionRectangleItem.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "ICircuitReorderSupport.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ICircuitTitle.h"
#include "IEditableProperties.h"
#include "QtSeriesXml.h"

#include <QDomDocument>
#include <QMap>
#include <QScopedValueRollback>

using namespace HistoryRecords;

namespace {

int sharedStart(const QVector<TerminalState>& a, const QVector<TerminalState>& b) {
    int i = 0;
    while (i < a.size() && i < b.size() && a.at(i) == b.at(i)) {
        ++i;
    }
    return i;
}

template <class Box>
bool moveInList(QList<Box*>& list, const QGraphicsItem* box, int row) {
    for (int i = list.size() - 1; i >= 0; --i) {
        if (list.at(i) == box) {
            list.move(i, std::min<int>(row, list.size() - 1));
            return true;
        }
    }
    return false;
}

}  // namespace

void CompleteHistory::apply(const Entry& entry, bool isAfter, int stateNumber) {
    {
        const QScopedValueRollback<bool> applying(m_applying, true);
        d->circuitEditor->unhighlight();
        delete d->selectionRectItem;
        d->dropConnection();
        m_elements.reorder(entry.elements, isAfter);
        m_nets.reorder(entry.nets, isAfter);
        for (int kind = 0; kind < BoxKindCount; ++kind) {
            m_boxes[kind].reorder(entry.boxes[kind], isAfter);
        }
        cutNets(entry, isAfter);
        removeBoxes(entry, isAfter);
        restoreElements(entry, isAfter);
        joinNets(entry, isAfter);
        restoreCircuit(entry, isAfter);
        drawNets(entry, isAfter);
        restoreBoxes(entry, isAfter);
        m_outputs = entry.outputs.applied(m_outputs, isAfter);
        restoreOutputs(m_outputs);
        const auto state = [this](auto* object) { return capture(object); };
        m_elements.follow(entry.elements, state);
        m_nets.follow(entry.nets, state);
        for (int kind = 0; kind < BoxKindCount; ++kind) {
            m_boxes[kind].follow(entry.boxes[kind], state);
        }
        m_parameters = captureParameters();
        m_title = captureTitle();
        m_outputs = captureOutputs();
        m_circuitTouched = false;
        m_outputsTouched = false;
        m_state = stateNumber;
    }
    refreshPanel(entry);
    emit d->circuitEditor->projectPartModified();
    tellState();
}

void CompleteHistory::cutNets(const Entry& entry, bool isAfter) {
    for (const Change<NetState>& change : entry.nets) {
        ICircuitNode* node = m_nets.object(change.id);
        if (!node || !d->circuitSolver) {
            continue;
        }
        const std::optional<NetState>& wanted = change.state(isAfter);
        const QVector<TerminalState> now = capture(node)->terminals;
        const int kept = wanted ? sharedStart(now, wanted->terminals) : 0;
        if (kept == now.size()) {
            continue;
        }
        // A net keeps the order in which its terminals came.
        for (int i = now.size() - 1; kept >= 2 && i >= kept; --i) {
            d->circuitSolver->breakConnection(node->elementNode(i), node);
        }
        if (kept < 2) {
            d->circuitSolver->breakConnection(node);
        }
        if (kept < 2 && m_nets.object(change.id) == node && d->circuitEditor->circuit()) {
            d->circuitEditor->circuit()->removeNode(node);  // a solver may leave that to us
        }
    }
}

void CompleteHistory::removeBoxes(const Entry& entry, bool isAfter) {
    for (int kind = 0; kind < BoxKindCount; ++kind) {
        for (const Change<BoxState>& change : entry.boxes[kind]) {
            if (!change.state(isAfter)) {
                delete m_boxes[kind].object(change.id);
            }
        }
    }
}

void CompleteHistory::loadProperties(QObject* object, const QByteArray& properties) {
    QDomDocument document;
    if (d->qobjectLoadSave && QtSeries::readXml(&document, properties)) {
        d->qobjectLoadSave->load(object, document, document.documentElement());
    }
}

void CompleteHistory::restoreElements(const Entry& entry, bool isAfter) {
    ICircuit* circuit = d->circuitEditor->circuit();
    if (!circuit || !d->circuitElementFactory) {
        return;
    }
    bool isAnyOther = false;
    for (const Change<ElementState>& change : entry.elements) {
        ICircuitElement* element = m_elements.object(change.id);
        if (element && !change.state(isAfter)) {
            circuit->removeElement(element);
            isAnyOther = true;
        }
    }
    auto* order = qobject_cast<ICircuitReorderSupport*>(m_boundCircuit.data());
    for (const auto* change : m_elements.cameBack(entry.elements, isAfter)) {
        ICircuitElement* element =
            d->circuitElementFactory->createElement(change->state(isAfter)->type);
        if (!element) {
            continue;
        }
        const QScopedValueRollback<Id> reborn(m_reborn, change->id);
        circuit->addElement(element);
        if (order) {
            order->moveElement(circuit->elementCount() - 1, change->row(isAfter));
        }
        // At once: the next one may be given the name that this one has got for now.
        restoreElement(change->id, *change->state(isAfter));
        isAnyOther = true;
    }
    // Twice, for a name that one gives up for another.
    for (int round = 0; round < 2; ++round) {
        for (const Change<ElementState>& change : entry.elements) {
            if (change.state(isAfter)) {
                restoreElement(change.id, *change.state(isAfter));
            }
        }
    }
    for (const Id id : qAsConst(m_resolving)) {
        ICircuitElement* element = isAnyOther ? m_elements.object(id) : nullptr;
        if (element) {
            QMetaObject::invokeMethod(element->containerObject(), "resolveControlNodesAndBranches",
                                      Qt::DirectConnection);
        }
    }
}

void CompleteHistory::restoreElement(Id id, const ElementState& state) {
    ICircuitElement* element = m_elements.object(id);
    if (!element || capture(element) == std::make_optional(state)) {
        return;
    }
    if (element->modelName() != state.model) {
        element->setModelName(state.model);
    }
    if (properties(element->containerObject()) != state.properties) {
        loadProperties(element->containerObject(), state.properties);
    }
    if (CCircuitEditorElementItem* item = d->circuitEditor->elementItem(element)) {
        item->putBack(state.position);
        item->updateToolTip();
    }
}

void CompleteHistory::joinNets(const Entry& entry, bool isAfter) {
    QVector<Id> made;
    for (const Change<NetState>& change : entry.nets) {
        if (change.state(isAfter)) {
            const bool isAlive = m_nets.object(change.id);
            joinNet(change.id, *change.state(isAfter));
            if (!isAlive && m_nets.object(change.id)) {
                made.append(change.id);
            }
        }
    }
    // The circuit has them at its end, in any order.
    auto* order = qobject_cast<ICircuitReorderSupport*>(m_boundCircuit.data());
    ICircuit* circuit = d->circuitEditor->circuit();
    QMap<int, ICircuitNode*> rows;
    for (const Id id : qAsConst(made)) {
        rows.insert(m_nets.rowOf(id), m_nets.object(id));
    }
    for (auto it = rows.begin(); order && it != rows.end(); ++it) {
        int from = circuit->nodeCount() - 1;
        while (from >= 0 && circuit->node(from) != it.value()) {
            --from;
        }
        order->moveNode(from, it.key());
    }
}

void CompleteHistory::joinNet(Id id, const NetState& state) {
    const auto terminal = [this, &state](int index) -> ICircuitElementNode* {
        const TerminalState& place = state.terminals.at(index);
        ICircuitElement* element = m_elements.object(place.element);
        return element ? element->elementNode(place.name) : nullptr;
    };
    ICircuitNode* node = m_nets.object(id);
    int joined = node ? node->elementNodeCount() : 0;
    if (!node && state.terminals.size() >= 2 && d->circuitSolver && terminal(0) && terminal(1)) {
        const QScopedValueRollback<Id> reborn(m_reborn, id);
        node = d->circuitSolver->makeConnection(terminal(0), terminal(1));
        joined = 2;
    }
    for (; node && joined < state.terminals.size(); ++joined) {
        if (ICircuitElementNode* next = terminal(joined)) {
            d->circuitSolver->makeConnection(next, node);
            // Another solver may have let another net take over.
            if (m_nets.object(id) != node) {
                return;
            }
        }
    }
    if (!node) {
        return;
    }
    if (node->name() != state.name) {
        node->setName(state.name);
    }
    if (properties(node->containerObject()) != state.properties) {
        loadProperties(node->containerObject(), state.properties);
    }
}

void CompleteHistory::drawNets(const Entry& entry, bool isAfter) {
    for (const Change<ElementState>& change : entry.elements) {
        if (auto* item = d->circuitEditor->elementItem(m_elements.object(change.id))) {
            item->updateCircuitNodes();
        }
    }
    for (const Change<NetState>& change : entry.nets) {
        CCircuitEditorNodeItem* wire = d->circuitEditor->nodeItem(m_nets.object(change.id));
        if (!wire || !change.state(isAfter)) {
            continue;
        }
        wire->setPos(change.state(isAfter)->position);
        if (change.state(isAfter)->isManual) {
            wire->addShape(change.state(isAfter)->path, true);
        } else {
            wire->setManuallyConnected(false);
        }
    }
}

void CompleteHistory::restoreCircuit(const Entry& entry, bool isAfter) {
    if (!entry.parameters.isEmpty()) {
        restoreParameters(entry.parameters.applied(m_parameters, isAfter));
    }
    auto* titled = qobject_cast<ICircuitTitle*>(m_boundCircuit.data());
    if (titled && entry.titleBefore != entry.titleAfter) {
        titled->setTitle(isAfter ? entry.titleAfter : entry.titleBefore);
    }
}

void CompleteHistory::restoreParameters(const QVector<ParameterState>& wanted) {
    ICircuit* circuit = d->circuitEditor->circuit();
    if (!circuit) {
        return;
    }
    auto* strings = qobject_cast<ICircuitStringGlobalVariableSupport*>(m_boundCircuit.data());
    auto* values = qobject_cast<IEditableProperties*>(m_boundCircuit.data());
    auto* order = qobject_cast<ICircuitReorderSupport*>(m_boundCircuit.data());
    // Not by renaming: that would also rename what refers to them.
    const auto removeOthers = [this, circuit, &wanted] {
        for (const ParameterState& known : captureParameters()) {
            if (!wanted.contains(known)) {
                circuit->removeGlobalVariable(known.name);
            }
        }
    };
    const QVector<ParameterState> known = captureParameters();
    for (int i = 0; values && i < known.size(); ++i) {
        for (const ParameterState& parameter : wanted) {
            if (parameter.name == known.at(i).name && parameter.kind == known.at(i).kind &&
                !(parameter == known.at(i)) && values->propertyName(i) == parameter.name) {
                values->setPropertyValue(i, parameter.value);
            }
        }
    }
    removeOthers();
    for (int row = 0; row < wanted.size(); ++row) {
        const ParameterState& parameter = wanted.at(row);
        int from = captureParameters().indexOf(parameter);
        if (from < 0) {
            from = circuit->globalVariableCount();
            if (parameter.kind == ParameterState::String && strings) {
                strings->addStringGlobalVariable(parameter.name, parameter.value.toString());
            } else {
                circuit->addGlobalVariable(parameter.name, parameter.value,
                                           parameter.kind == ParameterState::Real);
            }
        }
        if (order && from != row) {
            order->moveGlobalVariable(from, row);
        }
    }
}

void CompleteHistory::restoreBoxes(const Entry& entry, bool isAfter) {
    QSet<CCircuitEditorElementItem*> captioned;
    const auto itemOf = [this](const std::optional<BoxState>& state) {
        return d->circuitEditor->elementItem(state ? m_elements.object(state->element) : nullptr);
    };
    for (int kind = 0; kind < BoxKindCount; ++kind) {
        for (const auto* change : m_boxes[kind].cameBack(entry.boxes[kind], isAfter)) {
            makeBox(BoxKind(kind), change->id, change->row(isAfter));
        }
        for (const Change<BoxState>& change : entry.boxes[kind]) {
            QGraphicsItem* box = m_boxes[kind].object(change.id);
            if (box && change.state(isAfter)) {
                restoreBox(box, *change.state(isAfter));
            }
            captioned << itemOf(change.before) << itemOf(change.after);
        }
    }
    // The formats follow from how many boxes an element has, and the sizes from the formats; then
    // come the sizes that the user has given.
    for (CCircuitEditorElementItem* item : qAsConst(captioned)) {
        if (item) {
            item->settlePropertyTextBoxes();
        }
    }
    for (const Change<BoxState>& change : entry.boxes[PropertyBoxes]) {
        QGraphicsItem* box = m_boxes[PropertyBoxes].object(change.id);
        if (box && change.state(isAfter)) {
            const BoxState& state = *change.state(isAfter);
            static_cast<CCircuitElementPropertyTextBox*>(box)->setLook(
                {state.rect, state.font, state.fontPointSize, state.backdrop, state.isSizedByHand});
        }
    }
}

void CompleteHistory::makeBox(BoxKind kind, Id id, int row) {
    const QScopedValueRollback<Id> reborn(m_reborn, id);
    CCircuitEditor* editor = d->circuitEditor;
    switch (kind) {
        case TextBoxes:
            moveInList(d->textBoxes, editor->addTextBox(QRectF()), row);
            break;
        case PropertyBoxes:
            moveInList(d->elementPropertyTextBoxes, editor->addElementPropertyTextBox(QRectF()),
                       row);
            break;
        default:
            moveInList(d->globalParamTextBoxes, editor->addGlobalParamTextBox(QRectF()), row);
            break;
    }
}

void CompleteHistory::restoreBox(QGraphicsItem* item, const BoxState& state) {
    if (auto* property = qgraphicsitem_cast<CCircuitElementPropertyTextBox*>(item)) {
        property->setElementProperty(m_elements.object(state.element), state.text);
        return;
    }
    auto* box = static_cast<CCircuitEditorTextBox*>(item);
    if (auto* parameter = dynamic_cast<CCircuitEditorGlobaParamTextBox*>(box)) {
        parameter->setGlobalParameterName(state.parameter);
    }
    box->putBackFont(state.font);
    if (!state.text.isEmpty()) {
        box->CCircuitEditorTextBox::setText(state.text);
        box->setRuns(state.runs);
    }
    box->setBorderColor(state.border);
    box->setFillColor(state.fill);
    if (box->textColor() != state.textColor) {
        box->setTextColor(state.textColor);
    }
    box->setRect(state.rect);
}

void CompleteHistory::restoreOutputs(const QVector<OutputState>& wanted) {
    COutputVariablesWidget* rows = panel();
    ICircuit* circuit = d->circuitEditor->circuit();
    if (!rows || !circuit || captureOutputs() == wanted) {
        return;
    }
    // Those that are there already stay, by their names if two show the same.
    QList<ICircuitOutputVariable*> spare = rows->outputVariables();
    QVector<ICircuitOutputVariable*> order(wanted.size(), nullptr);
    for (const bool isByName : {true, false}) {
        for (int i = 0; i < wanted.size(); ++i) {
            for (int j = 0; !order.at(i) && j < spare.size(); ++j) {
                const OutputState known = capture(spare.at(j));
                if (known.hasSameSource(wanted.at(i)) &&
                    (!isByName || known.name == wanted.at(i).name)) {
                    order[i] = spare.takeAt(j);
                }
            }
        }
    }
    for (ICircuitOutputVariable* variable : qAsConst(spare)) {
        circuit->removeOutputVariable(variable);
    }
    for (int i = 0; i < wanted.size(); ++i) {
        ICircuitOutputVariable* variable = order.at(i) ? order.at(i) : addOutput(wanted.at(i));
        if (variable) {
            order[i] = variable;
            variable->setName(wanted.at(i).name);
            variable->setAC(wanted.at(i).isAC);
        }
    }
    order.removeAll(nullptr);
    rows->arrange(order.toList());
}

ICircuitOutputVariable* CompleteHistory::addOutput(const OutputState& state) {
    ICircuit* circuit = d->circuitEditor->circuit();
    ICircuitElement* element = m_elements.object(state.element);
    if (state.type == ICircuitOutputVariable::NodeVariable) {
        ICircuitNode* node = m_nets.object(state.net);
        return node ? circuit->addOutputVariable(node) : nullptr;
    }
    if (!element) {
        return nullptr;
    }
    if (state.type == ICircuitOutputVariable::ElementVariable) {
        return circuit->addOutputVariable(element, state.variable);
    }
    ICircuitElementNode* terminal = element->elementNode(state.terminal);
    return terminal ? circuit->addOutputVariable(element, terminal) : nullptr;
}

void CompleteHistory::refreshPanel(const Entry& entry) {
    IPropertyEditor* panel = d->propertyEditor;
    QObject* shown = panel ? panel->object() : nullptr;
    bool isChanged = shown && shown == m_boundCircuit;
    for (const Change<ElementState>& change : entry.elements) {
        ICircuitElement* element = m_elements.object(change.id);
        isChanged = isChanged || (element && shown && element->containerObject() == shown);
    }
    for (const Change<NetState>& change : entry.nets) {
        ICircuitNode* node = m_nets.object(change.id);
        isChanged = isChanged || (node && shown && node->containerObject() == shown);
    }
    if (isChanged) {
        panel->setObject(nullptr, false);
        panel->setObject(shown, false);
    }
}
