// The editor's share of a project document.

#include "CCircuitEditorData.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ICircuitTitle.h"
#include "XmlText.h"

#include <QMetaObject>

namespace {

const QString CircuitRoot = QStringLiteral("VortelCircuit");

void appendComment(QDomDocument document, QDomElement parent, const QString& text) {
    parent.appendChild(document.createComment(text));
}

/// Lets every element that looks for its controlling nodes and branches do so: possible only once
/// the whole circuit exists.
void resolveControls(ICircuit* circuit) {
    for (int i = 0; i < circuit->elementCount(); ++i) {
        QObject* object = circuit->element(i)->containerObject();
        if (object->metaObject()->indexOfMethod("resolveControlNodesAndBranches()") >= 0) {
            QMetaObject::invokeMethod(object, "resolveControlNodesAndBranches",
                                      Qt::DirectConnection);
        }
    }
}

}  // namespace

QString CCircuitEditor::projectPartID() {
    return CircuitRoot;
}

bool CCircuitEditor::newProjectPart() {
    d->undoStack->clear();
    clearEditor();
    restartHistory();
    return true;
}

bool CCircuitEditor::closeProjectPart() {
    return newProjectPart();
}

bool CCircuitEditor::initializeProjectPart() {
    centerOn(visibleItemsBoundingRect().center());
    return true;
}

bool CCircuitEditor::saveProjectPart(QDomDocument document, QDomElement element) {
    return saveProjectPieces(document, element, [] {});
}

bool CCircuitEditor::saveProjectPieces(QDomDocument document, QDomElement element,
                                       const std::function<void()>& written) {
    ICircuit* bound = circuit();
    if (!bound) {
        return false;
    }
    QObject* object = bound->containerObject();
    if (auto* title = qobject_cast<ICircuitTitle*>(object)) {
        element.setAttribute(QStringLiteral("Title"), xmlText(title->title()));
    }
    auto* strings = qobject_cast<ICircuitStringGlobalVariableSupport*>(object);
    appendComment(document, element, QStringLiteral("Circuit Element Information"));
    for (int i = 0; i < bound->elementCount(); ++i) {
        d->saveElement(document, element, bound->element(i));
        written();
    }
    appendComment(document, element, QStringLiteral("Circuit Node Information"));
    for (int i = 0; i < bound->nodeCount(); ++i) {
        d->saveNode(document, element, bound->node(i));
        written();
    }
    appendComment(document, element, QStringLiteral("Global Variables Information"));
    for (int i = 0; i < bound->globalVariableCount(); ++i) {
        QDomElement record = document.createElement(QStringLiteral("GlobalVar"));
        record.setAttribute(QStringLiteral("Name"), xmlText(bound->globalVariableName(i)));
        record.setAttribute(QStringLiteral("Value"),
                            xmlText(bound->globalVariableValue(i).toString()));
        record.setAttribute(QStringLiteral("IsReal"), qlonglong(bound->isRealGlobalVariable(i)));
        record.setAttribute(QStringLiteral("IsString"),
                            qlonglong(strings && strings->isStringGlobalVariable(i)));
        element.appendChild(record);
    }
    d->saveAnnotations(document, element);
    written();
    return true;
}

bool CCircuitEditor::loadProjectPart(QDomDocument, QDomElement element) {
    ICircuit* bound = circuit();
    if (!bound || !d->xmlUtils) {
        return false;
    }
    clearEditor();
    if (auto* title = qobject_cast<ICircuitTitle*>(bound->containerObject())) {
        title->setTitle(element.attribute(QStringLiteral("Title")));
    }
    d->loadRecords(element);
    for (const QDomElement& record :
         d->xmlUtils->findElements(element, QStringLiteral("GlobalVar"))) {
        bound->addGlobalVariable(record.attribute(QStringLiteral("Name")),
                                 record.attribute(QStringLiteral("Value")),
                                 record.attribute(QStringLiteral("IsReal")).toInt() != 0);
    }
    d->loadAnnotations(element);
    resolveControls(bound);
    restartHistory();
    return true;
}
