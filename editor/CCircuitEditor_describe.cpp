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
#include "JsonWriter.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

namespace {

void describeParameters(JsonWriter& json, ICircuitElement* element) {
    auto* properties = qobject_cast<IEditableProperties*>(element->containerObject());
    QMap<QString, QString> parameters;
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyGroup(i) == QLatin1String("rparams")) {
            parameters.insert(properties->propertyName(i), properties->propertyValue(i).toString());
        }
    }
    json.beginObject();
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        json.key(it.key());
        json.value(it.value());
    }
    json.endObject();
}

void describeTerminals(JsonWriter& json, ICircuitElement* element,
                       const CCircuitEditorElementItem* item) {
    json.beginArray();
    for (const QString& name : element->elementNodeNames()) {
        ICircuitElementNode* terminal = element->elementNode(name);
        const CCircuitEditorElementNodeItem* marker = item->nodeItem(name);
        if (!terminal || !marker) {
            continue;
        }
        const QPointF point = marker->mapToScene(QPointF(0, 0));
        json.beginObject();
        json.member("name", name);
        json.member("type", terminal->type());
        json.member("x", point.x());
        json.member("y", point.y());
        json.endObject();
    }
    json.endArray();
}

void describeElement(JsonWriter& json, ICircuitElement* element,
                     const CCircuitEditorElementItem* item) {
    const QRectF outline = item->mapToScene(item->boundingRect()).boundingRect();
    json.beginObject();
    json.member("caption", element->caption());
    json.member("flip", element->flip());
    json.member("model", element->modelName());
    json.member("name", element->name());
    json.key("outline");
    json.beginArray();
    for (const double number : {outline.x(), outline.y(), outline.width(), outline.height()}) {
        json.value(number);
    }
    json.endArray();
    json.key("parameters");
    describeParameters(json, element);
    json.member("rotation", element->rotation());
    json.key("terminals");
    describeTerminals(json, element, item);
    json.member("type", element->desc()->elementType());
    json.member("x", item->pos().x());
    json.member("y", item->pos().y());
    json.endObject();
}

void describePath(JsonWriter& json, const QPainterPath& path) {
    static const char* const letters[] = {"M", "L", "C", "D"};
    json.beginArray();
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        json.beginArray();
        json.value(QString::fromLatin1(letters[element.type]));
        json.value(element.x);
        json.value(element.y);
        json.endArray();
    }
    json.endArray();
}

void describeNode(JsonWriter& json, ICircuitNode* node, const CCircuitEditorNodeItem* item) {
    json.beginObject();
    json.member("color", item->color().name());
    json.member("manual", item->isManuallyConnected());
    json.member("name", node->name());
    json.key("path");
    describePath(json, item->mapToScene(item->internalShape()));
    json.key("terminals");
    json.beginArray();
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        json.beginObject();
        json.member("element", terminal->element()->name());
        json.member("terminal", terminal->name());
        json.endObject();
    }
    json.endArray();
    json.member("type", node->type());
    json.member("wireClearance", node->wireClearance());
    json.endObject();
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
void describeTextBoxes(JsonWriter& json, const CCircuitEditor* editor) {
    json.beginArray();
    for (int i = 0; i < editor->textBoxCount(); ++i) {
        json.tree(describeTextBox(editor->textBox(i)));
    }
    for (int i = 0; i < editor->elementPropertyTextBoxCount(); ++i) {
        json.tree(describePropertyBox(editor->elementPropertyTextBox(i)));
    }
    for (int i = 0; i < editor->globalParamTextBoxCount(); ++i) {
        json.tree(describeParameterBox(editor->globalParamTextBox(i)));
    }
    json.endArray();
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
    QByteArray text;
    QBuffer buffer(&text);
    buffer.open(QIODevice::WriteOnly);
    describeTo(&buffer);
    return text;
}

bool CCircuitEditor::describeTo(QIODevice* target) const {
    ICircuit* bound = circuit();
    auto* titled = bound ? qobject_cast<ICircuitTitle*>(bound->containerObject()) : nullptr;
    JsonWriter json(target);
    json.beginObject();
    json.key("elements");
    json.beginArray();
    for (int i = 0; bound && i < bound->elementCount(); ++i) {
        if (const CCircuitEditorElementItem* item = elementItem(bound->element(i))) {
            describeElement(json, bound->element(i), item);
        }
    }
    json.endArray();
    json.key("globalParameters");
    json.tree(bound ? describeGlobalParameters(bound) : QJsonArray());
    json.key("nodes");
    json.beginArray();
    for (int i = 0; bound && i < bound->nodeCount(); ++i) {
        if (const CCircuitEditorNodeItem* item = nodeItem(bound->node(i))) {
            describeNode(json, bound->node(i), item);
        }
    }
    json.endArray();
    json.key("outputVariables");
    json.tree(describeOutputVariables(this));
    json.key("textBoxes");
    describeTextBoxes(json, this);
    json.member("title", titled ? titled->title() : QString());
    json.endObject();
    return json.finish();
}
