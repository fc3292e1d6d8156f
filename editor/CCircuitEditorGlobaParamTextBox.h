#pragma once

#include "CCircuitEditorTextBox.h"

#include <QString>

/// Shows a global parameter's name and value on the canvas and keeps up with its changes. Always
/// sized to its text on one line. Outlives its parameter: the text then stays as it was.
class CCircuitEditorGlobaParamTextBox : public CCircuitEditorTextBox {
    Q_OBJECT

public:
    /// Listens to the circuit that the editor has at this moment.
    explicit CCircuitEditorGlobaParamTextBox(CCircuitEditor* editor);
    ~CCircuitEditorGlobaParamTextBox() override;

    void setGlobalParameterName(const QString& name);
    QString globalParameterName() const;
    /// Hides that of the base class: also fits the box to the text.
    void setText(const QString& text);

public slots:
    void onGlobalParamValueChanged(QString name, QString value);
    void onGlobalParamNameChanged(QString oldName, QString newName);

protected:
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;

private:
    void fitToText(int padding);

    QString m_globalParameterName;
};
