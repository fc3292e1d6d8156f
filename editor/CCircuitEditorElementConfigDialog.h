#pragma once

#include <QDialog>

#include <memory>

class CCircuitEditorElementConfigDialogData;
class ICircuitElement;

/// Lists the output variables that an element offers. For reading only: the choice goes nowhere.
class CCircuitEditorElementConfigDialog : public QDialog {
    Q_OBJECT

public:
    explicit CCircuitEditorElementConfigDialog(QWidget* parent);
    ~CCircuitEditorElementConfigDialog() override;

    ICircuitElement* circuitElement() const;
    /// Not owned; null empties the list.
    void setCircuitElement(ICircuitElement* element);

private:
    std::unique_ptr<CCircuitEditorElementConfigDialogData> d;
};
