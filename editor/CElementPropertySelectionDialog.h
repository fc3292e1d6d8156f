#pragma once

#include <QDialog>

#include <memory>

class CElementPropertySelectionDialogData;
class ICircuitElement;

/// Lets the user pick an element and one of its properties in a miniature of the main editor's
/// drawing.
class CElementPropertySelectionDialog : public QDialog {
    Q_OBJECT

public:
    explicit CElementPropertySelectionDialog(QWidget* parent);
    ~CElementPropertySelectionDialog() override;

    /// Null for no element.
    void setElementProperty(ICircuitElement* element, const QString& propertyName);
    /// Null also once the element has died.
    ICircuitElement* element() const;
    QString propertyName() const;
    void updateElementPropertyDisplay();

private:
    std::unique_ptr<CElementPropertySelectionDialogData> d;
};
