#include "COutputVariablesWidgetData.h"

#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "PropertyLookup.h"

namespace {

/// What the variable of a net of that type is called.
QString variableWord(const QString& nodeType, bool isAC) {
    static const struct {
        const char* type;
        const char* word;
        const char* acWord;
    } words[] = {{"e", "nodev", "nodev_ac"}, {"d", "dvar", "dvar"},  {"t", "tmpr", "tmpr"},
                 {"p", "pwr", "pwr"},        {"g", "var", "var_ac"}, {"x", "xvar", "xvar_ac"}};
    for (const auto& entry : words) {
        if (nodeType == QLatin1String(entry.type)) {
            return QLatin1String(isAC ? entry.acWord : entry.word);
        }
    }
    return {};
}

}  // namespace

QString COutputVariablesWidgetData::nodeType(ICircuitOutputVariable* variable) {
    if (ICircuitNode* node = variable->node()) {
        return node->type();
    }
    ICircuitElementNode* terminal = variable->elementNode();
    return terminal ? terminal->type() : QString();
}

QString COutputVariablesWidgetData::outvarText(ICircuitOutputVariable* variable) const {
    if (!variable) {
        return {};
    }
    const QString word = variableWord(nodeType(variable), variable->isAC());
    ICircuitElement* element = variable->element();
    ICircuitNode* node = variable->node();
    const auto text = [variable](const QString& quantity, const QString& source) {
        return QString(variable->name() + QLatin1Char('=') + quantity + QLatin1String("_of_") +
                       source);
    };
    switch (variable->type()) {
        case ICircuitOutputVariable::NodeVariable:
            return text(word, node ? node->name() : QString());
        case ICircuitOutputVariable::TerminalVariable:
            return text(word, externalNodeName(element, variable->elementNode()));
        case ICircuitOutputVariable::ElementVariable:
            return text(variable->elementVarName(), element ? element->name() : QString());
        default:
            return {};
    }
}

QString COutputVariablesWidgetData::externalNodeName(ICircuitElement* element,
                                                     ICircuitElementNode* elementNode) const {
    auto* properties = element && elementNode
                           ? qobject_cast<IEditableProperties*>(element->containerObject())
                           : nullptr;
    const int index = properties ? indexOfProperty(properties, elementNode->name()) : -1;
    return index >= 0 ? properties->propertyValue(index).toString() : QString();
}

ICircuitElement* COutputVariablesWidgetData::findCircuitElement(QString name) const {
    for (int i = 0; circuit && i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        if (element->name() == name) {
            return element;
        }
    }
    return nullptr;
}

ICircuitElementNode* COutputVariablesWidgetData::findCircuitElementNode(ICircuitElement* element,
                                                                        QString name) const {
    return circuit && element ? element->elementNode(name) : nullptr;
}

ICircuitNode* COutputVariablesWidgetData::findCircuitNode(QString name) const {
    for (int i = 0; circuit && i < circuit->nodeCount(); ++i) {
        ICircuitNode* node = circuit->node(i);
        if (node->name() == name) {
            return node;
        }
    }
    return nullptr;
}
