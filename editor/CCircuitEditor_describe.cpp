// The drawing as text that can be compared.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
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
                              {QStringLiteral("textBoxes"), QJsonArray()},
                              {QStringLiteral("globalParameters"), globalParameters},
                              {QStringLiteral("outputVariables"), QJsonArray()}};
    return QJsonDocument(drawing).toJson();
}
