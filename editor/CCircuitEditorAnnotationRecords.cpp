// The records of annotations in projects.

#include "CCircuitEditorData.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "ICircuitElement.h"
#include "RecordFields.h"
#include "TextStyles.h"
#include "XmlText.h"

using namespace RecordFields;

namespace {

// Whatever size was saved: all boxes of a project come back in this one.
constexpr int LoadedPointSize = 8;

QFont storedFont(const QDomElement& record) {
    QFont font(record.attribute(QStringLiteral("FontFamily")));
    font.setPointSize(LoadedPointSize);
    return font;
}

QDomElement appendRecord(QDomDocument document, QDomElement parent, const char* tag) {
    QDomElement record = document.createElement(QLatin1String(tag));
    parent.appendChild(record);
    return record;
}

void setStoredFont(QDomElement& record, const QFont& font, int size) {
    record.setAttribute(QStringLiteral("FontFamily"), xmlText(font.family()));
    record.setAttribute(QStringLiteral("FontSize"), qlonglong(size));
}

void saveTextBox(QDomDocument document, QDomElement parent, const CCircuitEditorTextBox& box) {
    QDomElement record = appendRecord(document, parent, "TextBox");
    setStoredFont(record, box.defaultFont(), box.defaultFont().pointSize());
    setStoredRect(record, box.rect());
    setStoredColors(record, box);
    if (box.circuitEditor()->keepsTextStyles()) {
        TextStyles::store(record, box.defaultFont());
        TextRuns::store(document, record, box.runs());
    }
    appendCData(document, record, box.text());
}

void saveGlobalParamTextBox(QDomDocument document, QDomElement parent,
                            const CCircuitEditorGlobaParamTextBox& box) {
    QDomElement record = appendRecord(document, parent, "GlobalParamTextBox");
    record.setAttribute(QStringLiteral("GlobalParamName"), xmlText(box.globalParameterName()));
    setStoredFont(record, box.defaultFont(), box.defaultFont().pointSize());
    setStoredRect(record, box.rect());
    if (box.circuitEditor()->keepsTextStyles()) {
        TextStyles::store(record, box.defaultFont());
        TextRuns::store(document, record, box.runs());
    }
    appendCData(document, record, box.text());
}

void appendComment(QDomDocument document, QDomElement parent, const char* text) {
    parent.appendChild(document.createComment(QLatin1String(text)));
}

}  // namespace

void CCircuitEditorData::saveAnnotations(QDomDocument document, QDomElement parent) {
    appendComment(document, parent, "Text boxes");
    for (const CCircuitEditorTextBox* box : qAsConst(textBoxes)) {
        saveTextBox(document, parent, *box);
    }
    appendComment(document, parent, "Element Property Text Boxes");
    QHash<ICircuitElement*, int> indices;
    ICircuit* owner = circuitEditor->circuit();
    for (int i = 0; owner && i < owner->elementCount(); ++i) {
        indices.insert(owner->element(i), i);
    }
    for (const CCircuitElementPropertyTextBox* box : qAsConst(elementPropertyTextBoxes)) {
        QDomElement record = appendRecord(document, parent, "EPTextBox");
        setStoredFont(record, box->font(), box->fontPointSize());
        setStoredRect(record, box->rect());
        record.setAttribute(QStringLiteral("ElementIndex"),
                            qlonglong(indices.value(box->element(), -1)));
        record.setAttribute(QStringLiteral("Property"), xmlText(box->propertyName()));
        if (keepTextStyles) {
            TextStyles::store(record, *box);
        }
    }
    appendComment(document, parent, "Global Param Text boxes");
    for (const CCircuitEditorGlobaParamTextBox* box : qAsConst(globalParamTextBoxes)) {
        saveGlobalParamTextBox(document, parent, *box);
    }
}

QFont CCircuitEditorData::styledFont(const QDomElement& record) const {
    const QFont font = storedFont(record);
    return keepTextStyles ? TextStyles::stored(record, font) : font;
}

CCircuitEditorTextBox* CCircuitEditorData::loadTextBox(const QDomElement& record) {
    CCircuitEditorTextBox* box = circuitEditor->addTextBox(storedRect(record));
    box->setDefaultFont(styledFont(record));
    box->setText(record.text());
    if (keepTextStyles) {
        box->setRuns(TextRuns::stored(record));
    }
    return box;
}

void CCircuitEditorData::loadElementPropertyTextBox(const QDomElement& record, ICircuit* owner) {
    const int index = record.attribute(QStringLiteral("ElementIndex")).toInt();
    const bool isInRange = index >= 0 && index < owner->elementCount();
    ICircuitElement* element = isInRange ? owner->element(index) : nullptr;
    if (!element) {
        return;
    }
    CCircuitElementPropertyTextBox* box =
        circuitEditor->addElementPropertyTextBox(storedRect(record));
    box->setFont(storedFont(record));
    if (keepTextStyles) {
        TextStyles::apply(record, box);
    }
    box->setElementProperty(element, record.attribute(QStringLiteral("Property")));
}

void CCircuitEditorData::loadAnnotations(const QDomElement& parent) {
    for (const QDomElement& record : xmlUtils->findElements(parent, QStringLiteral("TextBox"))) {
        applyStoredColors(record, loadTextBox(record));
    }
    for (const QDomElement& record : xmlUtils->findElements(parent, QStringLiteral("EPTextBox"))) {
        loadElementPropertyTextBox(record, circuitEditor->circuit());
    }
    for (const QDomElement& record :
         xmlUtils->findElements(parent, QStringLiteral("GlobalParamTextBox"))) {
        CCircuitEditorGlobaParamTextBox* box =
            circuitEditor->addGlobalParamTextBox(storedRect(record));
        box->setDefaultFont(styledFont(record));
        box->setGlobalParameterName(record.attribute(QStringLiteral("GlobalParamName")));
        box->setText(record.text());
        if (keepTextStyles) {
            box->setRuns(TextRuns::stored(record));
            box->setRect(storedRect(record));
        }
    }
}
