#include "CCircuitEditorGlobaParamTextBox.h"

#include "CCircuitEditor.h"
#include "ICircuit.h"
#include "ICircuitGlobalVariableModifiedSignalSupport.h"
#include "QtSeriesText.h"

namespace {

// In scene units. The two differ: the box shrinks a little each time the pointer leaves it.
constexpr int PaddingOfText = 15;
constexpr int PaddingAfterHover = 10;

QString assignment(const QString& name, const QString& value) {
    return name + QStringLiteral(" = ") + value;
}

}  // namespace

CCircuitEditorGlobaParamTextBox::CCircuitEditorGlobaParamTextBox(CCircuitEditor* editor)
    : CCircuitEditorTextBox(editor) {
    ICircuit* circuit = editor ? editor->circuit() : nullptr;
    QObject* object = circuit ? circuit->containerObject() : nullptr;
    if (!qobject_cast<ICircuitGlobalVariableModifiedSignalSupport*>(object)) {
        return;
    }
    connect(object, SIGNAL(globalVariableValueModified(QString, QString)), this,
            SLOT(onGlobalParamValueChanged(QString, QString)));
    connect(object, SIGNAL(globalVariableNameModified(QString, QString)), this,
            SLOT(onGlobalParamNameChanged(QString, QString)));
}

CCircuitEditorGlobaParamTextBox::~CCircuitEditorGlobaParamTextBox() {
    if (auto* editor = qobject_cast<CCircuitEditor*>(parent())) {
        editor->removeGlobalParamTextBox(this);
    }
}

void CCircuitEditorGlobaParamTextBox::setGlobalParameterName(const QString& name) {
    m_globalParameterName = name;
    touchHistory();
}

QString CCircuitEditorGlobaParamTextBox::globalParameterName() const {
    return m_globalParameterName;
}

void CCircuitEditorGlobaParamTextBox::setText(const QString& text) {
    CCircuitEditorTextBox::setText(text);
    fitToText(PaddingOfText);
}

void CCircuitEditorGlobaParamTextBox::fitToText(int padding) {
    const QSizeF size = QtSeries::textSize(QGraphicsTextItem::font(), text());
    setRect(QRectF(pos(), QSizeF(size.width() + padding, size.height())));
}

void CCircuitEditorGlobaParamTextBox::hoverLeaveEvent(QGraphicsSceneHoverEvent* event) {
    // Where each change is a step of the user, pointing at a box is none.
    if (!circuitEditor() || !circuitEditor()->isCompleteHistory()) {
        fitToText(PaddingAfterHover);
    }
    CCircuitEditorTextBox::hoverLeaveEvent(event);
}

void CCircuitEditorGlobaParamTextBox::onGlobalParamValueChanged(QString name, QString value) {
    if (name == m_globalParameterName) {
        setText(assignment(name, value));
    }
}

void CCircuitEditorGlobaParamTextBox::onGlobalParamNameChanged(QString oldName, QString newName) {
    if (oldName != m_globalParameterName) {
        return;
    }
    setGlobalParameterName(newName);
    if (oldName.isEmpty()) {
        return;  // is found between all characters
    }
    // Wherever it occurs, even in the value.
    setText(text().replace(oldName, newName));
}
