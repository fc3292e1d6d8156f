// The drawing as text that can be compared.

#include "CCircuitEditorComponent.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "COutputVariablesWidget.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "ICircuitTitle.h"
#include "IEditableProperties.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonObject describeParameters(ICircuitElement* element) {
    QJsonObject result;
    auto* properties = qobject_cast<IEditableProperties*>(element->containerObject());
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyGroup(i) == QLatin1String("rparams")) {
            result.insert(properties->propertyName(i), properties->propertyValue(i).toString());
        }
    }
    return result;
}

QJsonArray describeTerminals(ICircuitElement* element, const CCircuitEditorElementItem* item) {
    QJsonArray result;
    for (const QString& name : element->elementNodeNames()) {
        ICircuitElementNode* terminal = element->elementNode(name);
        const CCircuitEditorElementNodeItem* marker = item->nodeItem(name);
        if (!terminal || !marker) {
            continue;
        }
        const QPointF point = marker->mapToScene(QPointF(0, 0));
        result.append(QJsonObject{{QStringLiteral("name"), name},
                                  {QStringLiteral("type"), terminal->type()},
                                  {QStringLiteral("x"), point.x()},
                                  {QStringLiteral("y"), point.y()}});
    }
    return result;
}

QJsonObject describeElement(ICircuitElement* element, const CCircuitEditorElementItem* item) {
    const QRectF outline = item->mapToScene(item->boundingRect()).boundingRect();
    return {{QStringLiteral("name"), element->name()},
            {QStringLiteral("type"), element->desc()->elementType()},
            {QStringLiteral("caption"), element->caption()},
            {QStringLiteral("model"), element->modelName()},
            {QStringLiteral("x"), item->pos().x()},
            {QStringLiteral("y"), item->pos().y()},
            {QStringLiteral("rotation"), element->rotation()},
            {QStringLiteral("flip"), element->flip()},
            {QStringLiteral("outline"),
             QJsonArray{outline.x(), outline.y(), outline.width(), outline.height()}},
            {QStringLiteral("parameters"), describeParameters(element)},
            {QStringLiteral("terminals"), describeTerminals(element, item)}};
}

QJsonArray describePath(const QPainterPath& path) {
    static const char* const letters[] = {"M", "L", "C", "D"};
    QJsonArray result;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        result.append(QJsonArray{QString::fromLatin1(letters[element.type]), element.x, element.y});
    }
    return result;
}

QJsonObject describeNode(ICircuitNode* node, const CCircuitEditorNodeItem* item) {
    QJsonArray terminals;
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        terminals.append(QJsonObject{{QStringLiteral("element"), terminal->element()->name()},
                                     {QStringLiteral("terminal"), terminal->name()}});
    }
    return {{QStringLiteral("name"), node->name()},
            {QStringLiteral("type"), node->type()},
            {QStringLiteral("color"), item->color().name()},
            {QStringLiteral("wireClearance"), node->wireClearance()},
            {QStringLiteral("manual"), item->isManuallyConnected()},
            {QStringLiteral("terminals"), terminals},
            {QStringLiteral("path"), describePath(item->mapToScene(item->internalShape()))}};
}

QJsonArray describeGlobalParameters(ICircuit* circuit) {
    QJsonArray result;
    for (int i = 0; i < circuit->globalVariableCount(); ++i) {
        result.append(
            QJsonObject{{QStringLiteral("name"), circuit->globalVariableName(i)},
                        {QStringLiteral("value"), circuit->globalVariableValue(i).toString()},
                        {QStringLiteral("isReal"), circuit->isRealGlobalVariable(i)}});
    }
    return result;
}

template <class Box>
QJsonObject describeBox(const char* kind, const Box* box, const QString& text) {
    const QRectF rect = box->rect();
    return {{QStringLiteral("kind"), QLatin1String(kind)},
            {QStringLiteral("x"), rect.x()},
            {QStringLiteral("y"), rect.y()},
            {QStringLiteral("width"), rect.width()},
            {QStringLiteral("height"), rect.height()},
            {QStringLiteral("text"), text}};
}

QJsonObject describeTextBox(const CCircuitEditorTextBox* box) {
    QJsonObject result = describeBox("text", box, box->text());
    result.insert(QStringLiteral("fontFamily"), box->defaultFont().family());
    result.insert(QStringLiteral("borderColor"), box->borderColor().name(QColor::HexArgb));
    result.insert(QStringLiteral("fillColor"), box->fillColor().name(QColor::HexArgb));
    result.insert(QStringLiteral("textColor"), box->textColor().name(QColor::HexArgb));
    return result;
}

QJsonObject describePropertyBox(const CCircuitElementPropertyTextBox* box) {
    QJsonObject result = describeBox("property", box, box->propertyText());
    ICircuitElement* element = box->element();
    result.insert(QStringLiteral("element"), element ? element->name() : QString());
    result.insert(QStringLiteral("property"), box->propertyName());
    return result;
}

QJsonObject describeParameterBox(const CCircuitEditorGlobaParamTextBox* box) {
    QJsonObject result = describeBox("globalParameter", box, box->text());
    result.insert(QStringLiteral("parameter"), box->globalParameterName());
    return result;
}

/// In the order in which a project stores them.
QJsonArray describeTextBoxes(const CCircuitEditor* editor) {
    QJsonArray result;
    for (int i = 0; i < editor->textBoxCount(); ++i) {
        result.append(describeTextBox(editor->textBox(i)));
    }
    for (int i = 0; i < editor->elementPropertyTextBoxCount(); ++i) {
        result.append(describePropertyBox(editor->elementPropertyTextBox(i)));
    }
    for (int i = 0; i < editor->globalParamTextBoxCount(); ++i) {
        result.append(describeParameterBox(editor->globalParamTextBox(i)));
    }
    return result;
}

/// In the order of the panel's rows; empty for an editor that has no panel.
QJsonArray describeOutputVariables(const CCircuitEditor* editor) {
    QJsonArray result;
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const COutputVariablesWidget* panel = component ? component->outputVariablesWidget() : nullptr;
    if (!panel || panel->circuitEditor() != editor) {
        return result;
    }
    for (ICircuitOutputVariable* variable : panel->outputVariables()) {
        result.append(QJsonObject{{QStringLiteral("type"), variable->type()},
                                  {QStringLiteral("name"), variable->name()},
                                  {QStringLiteral("text"), panel->outvarText(variable)},
                                  {QStringLiteral("ac"), variable->isAC()}});
    }
    return result;
}

}  // namespace

QByteArray CCircuitEditor::describe() const {
    QString title;
    QJsonArray elements;
    QJsonArray nodes;
    QJsonArray globalParameters;
    if (ICircuit* bound = circuit()) {
        if (auto* titled = qobject_cast<ICircuitTitle*>(bound->containerObject())) {
            title = titled->title();
        }
        for (int i = 0; i < bound->elementCount(); ++i) {
            if (const CCircuitEditorElementItem* item = elementItem(bound->element(i))) {
                elements.append(describeElement(bound->element(i), item));
            }
        }
        for (int i = 0; i < bound->nodeCount(); ++i) {
            if (const CCircuitEditorNodeItem* item = nodeItem(bound->node(i))) {
                nodes.append(describeNode(bound->node(i), item));
            }
        }
        globalParameters = describeGlobalParameters(bound);
    }
    const QJsonObject drawing{{QStringLiteral("title"), title},
                              {QStringLiteral("elements"), elements},
                              {QStringLiteral("nodes"), nodes},
                              {QStringLiteral("textBoxes"), describeTextBoxes(this)},
                              {QStringLiteral("globalParameters"), globalParameters},
                              {QStringLiteral("outputVariables"), describeOutputVariables(this)}};
    return QJsonDocument(drawing).toJson();
}
