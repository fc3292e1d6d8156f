// The output variables in a project document.

#include "COutputVariablesWidget.h"
#include "COutputVariablesWidgetData.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "XmlText.h"

namespace {

const QString RecordTag = QStringLiteral("OutputVar");

}  // namespace

QString COutputVariablesWidget::projectPartID() {
    return QStringLiteral("OutputVariables");
}

bool COutputVariablesWidget::newProjectPart() {
    return true;
}

bool COutputVariablesWidget::initializeProjectPart() {
    return true;
}

bool COutputVariablesWidget::closeProjectPart() {
    return true;
}

bool COutputVariablesWidget::saveProjectPart(QDomDocument document, QDomElement parent) {
    for (ICircuitOutputVariable* variable : outputVariables()) {
        QDomElement record = document.createElement(RecordTag);
        const auto write = [&record](const char* name, const QString& value) {
            record.setAttribute(QLatin1String(name), xmlText(value));
        };
        write("Type", QString::number(variable->type()));
        write("Name", variable->name());
        write("ACType", variable->isAC() ? QStringLiteral("true") : QStringLiteral("false"));
        if (ICircuitElement* element = variable->element()) {
            write("Element", element->name());
        }
        if (ICircuitElementNode* terminal = variable->elementNode()) {
            write("ElementNode", terminal->name());
        }
        if (ICircuitNode* node = variable->node()) {
            write("Node", node->name());
        }
        if (!variable->elementVarName().isEmpty()) {
            write("ElementVarName", variable->elementVarName());
        }
        parent.appendChild(record);
    }
    return true;
}

bool COutputVariablesWidget::loadProjectPart(QDomDocument, QDomElement parent) {
    if (!d->xmlUtils || !d->circuit) {
        return false;
    }
    for (const QDomElement& record : d->xmlUtils->findElements(parent, RecordTag)) {
        if (ICircuitOutputVariable* variable = addRecorded(record)) {
            variable->setName(record.attribute(QStringLiteral("Name")));
            variable->setAC(record.attribute(QStringLiteral("ACType")) == QLatin1String("true"));
        }
    }
    d->outVarsList->viewport()->update();
    if (CompleteHistory* history = CompleteHistory::of(d->circuitEditor)) {
        history->absorb();
    }
    return true;
}

ICircuitOutputVariable* COutputVariablesWidget::addRecorded(const QDomElement& record) {
    ICircuitElement* element = d->findCircuitElement(record.attribute(QStringLiteral("Element")));
    switch (record.attribute(QStringLiteral("Type")).toInt()) {
        case ICircuitOutputVariable::NodeVariable: {
            ICircuitNode* node = d->findCircuitNode(record.attribute(QStringLiteral("Node")));
            return d->circuit->addOutputVariable(node);
        }
        case ICircuitOutputVariable::TerminalVariable: {
            ICircuitElementNode* terminal =
                d->findCircuitElementNode(element, record.attribute(QStringLiteral("ElementNode")));
            return d->circuit->addOutputVariable(element, terminal);
        }
        case ICircuitOutputVariable::ElementVariable:
            return d->circuit->addOutputVariable(
                element, record.attribute(QStringLiteral("ElementVarName")));
        default:
            return nullptr;
    }
}
