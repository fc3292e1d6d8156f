// What the complete history takes down of the objects of a drawing.

#include "CCircuitEditorComponent.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "COutputVariablesWidget.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ICircuitTitle.h"

#include <QDomDocument>

using namespace HistoryRecords;

QByteArray CompleteHistory::properties(QObject* object) const {
    if (!d->qobjectLoadSave) {
        return {};
    }
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("O"));
    document.appendChild(root);
    d->qobjectLoadSave->save(object, document, root);
    QByteArray bytes = document.toByteArray(-1);
    bytes.squeeze();
    return bytes;
}

std::optional<ElementState> CompleteHistory::capture(ICircuitElement* element) const {
    const CCircuitEditorElementItem* item = d->circuitEditor->elementItem(element);
    return ElementState{element->desc()->elementType(), element->name(), element->modelName(),
                        item ? item->pos() : QPointF(), properties(element->containerObject())};
}

std::optional<NetState> CompleteHistory::capture(ICircuitNode* node) const {
    NetState state;
    state.terminals.reserve(node->elementNodeCount());
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        state.terminals.append({m_elements.idOf(terminal->element()), terminal->name()});
    }
    state.name = node->name();
    const CCircuitEditorNodeItem* item = d->circuitEditor->nodeItem(node);
    state.isManual = item && item->isManuallyConnected();
    state.position = item ? item->pos() : QPointF();
    if (state.isManual) {
        state.path = item->internalShape();
    }
    state.properties = properties(node->containerObject());
    return state;
}

BoxKind CompleteHistory::kindOf(const QGraphicsItem* box) const {
    if (box->type() == CCircuitElementPropertyTextBox::Type) {
        return PropertyBoxes;
    }
    return dynamic_cast<const CCircuitEditorGlobaParamTextBox*>(box) ? ParameterBoxes : TextBoxes;
}

std::optional<BoxState> CompleteHistory::capture(QGraphicsItem* item) const {
    BoxState state;
    if (const auto* property = qgraphicsitem_cast<CCircuitElementPropertyTextBox*>(item)) {
        const CCircuitElementPropertyTextBox::Look look = property->look();
        state.rect = look.rect;
        state.font = look.font;
        state.fontPointSize = look.fontPointSize;
        state.backdrop = look.background;
        state.isSizedByHand = look.isSizedByHand;
        state.text = property->propertyName();
        state.element = m_elements.idOf(property->element());
        return state;
    }
    const auto* box = static_cast<const CCircuitEditorTextBox*>(item);
    state.rect = box->rect();
    state.font = box->defaultFont();
    state.text = box->text();
    state.runs = box->runs();
    state.border = box->borderColor();
    state.fill = box->fillColor();
    state.textColor = box->textColor();
    if (const auto* parameter = dynamic_cast<const CCircuitEditorGlobaParamTextBox*>(box)) {
        state.parameter = parameter->globalParameterName();
    }
    return state;
}

QVector<ParameterState> CompleteHistory::captureParameters() const {
    QVector<ParameterState> result;
    ICircuit* circuit = d->circuitEditor->circuit();
    const int count = circuit ? circuit->globalVariableCount() : 0;
    auto* strings = qobject_cast<ICircuitStringGlobalVariableSupport*>(m_boundCircuit.data());
    for (int i = 0; i < count; ++i) {
        const ParameterState::Kind number =
            circuit->isRealGlobalVariable(i) ? ParameterState::Real : ParameterState::Integer;
        result.append(
            {circuit->globalVariableName(i), circuit->globalVariableValue(i),
             strings && strings->isStringGlobalVariable(i) ? ParameterState::String : number});
    }
    return result;
}

QString CompleteHistory::captureTitle() const {
    auto* titled = qobject_cast<ICircuitTitle*>(m_boundCircuit.data());
    return titled ? titled->title() : QString();
}

COutputVariablesWidget* CompleteHistory::panel() const {
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    COutputVariablesWidget* panel = component ? component->outputVariablesWidget() : nullptr;
    return panel && panel->circuitEditor() == d->circuitEditor ? panel : nullptr;
}

OutputState CompleteHistory::capture(ICircuitOutputVariable* variable) const {
    OutputState state;
    state.type = variable->type();
    state.name = variable->name();
    state.isAC = variable->isAC();
    state.element = m_elements.idOf(variable->element());
    if (ICircuitElementNode* terminal = variable->elementNode()) {
        state.terminal = terminal->name();
    }
    state.net = m_nets.idOf(variable->node());
    state.variable = variable->elementVarName();
    return state;
}

QVector<OutputState> CompleteHistory::captureOutputs() const {
    QVector<OutputState> result;
    const COutputVariablesWidget* rows = panel();
    const QList<ICircuitOutputVariable*> variables =
        rows ? rows->outputVariables() : QList<ICircuitOutputVariable*>();
    for (ICircuitOutputVariable* variable : variables) {
        result.append(capture(variable));
    }
    return result;
}
