#pragma once

#include "CCircuitElementPropertyTextBox.h"

#include <QString>

class CCircuitEditorElementItem;

/// Private data of a property text box, shared by the box's two sources.
class CCircuitElementPropertyTextBoxData {
public:
    QString circuitElementPropertyText() const;
    QString formatted(const QString& value) const;

    QFont font;
    int fontPointSize = 8;
    QColor backgroundColor;
    QColor highlight;
    // Null as soon as the element's object is destroyed.
    ICircuitElement* element = nullptr;
    QString propertyName;
    QString propertyText;
    // And so no longer as large as its text.
    bool isSizedByHand = false;
    // Lists this box as long as it is set, and deletes what it lists when it dies.
    CCircuitEditorElementItem* elementItem = nullptr;
    CCircuitElementPropertyTextBox::TextFormat textFormat =
        CCircuitElementPropertyTextBox::NameAndValue;
};
