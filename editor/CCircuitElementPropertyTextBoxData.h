#pragma once

#include "CCircuitElementPropertyTextBox.h"
#include "ResizeGrip.h"

#include <QPointF>
#include <QRectF>
#include <QString>

class CCircuitEditorElementItem;

/// Private data of a property text box, shared by the box's two sources.
class CCircuitElementPropertyTextBoxData {
public:
    QString circuitElementPropertyText() const;
    /// Makes the box as large as its text.
    void measure();
    QString formatted(const QString& value) const;
    /// Tells the editor's listeners from the event loop.
    void notifyModified() const;

    CCircuitEditor* circuitEditor = nullptr;
    // In item coordinates: left and top are 0.
    QRectF rect{0, 0, 40, ResizeGrip::SmallestSide};
    bool hovering = false;
    bool resizing = false;
    // Of the previous step of a resize, in scene units.
    QPointF lastScenePos;
    QFont font;
    int fontPointSize = 8;
    QColor backgroundColor;
    // Null as soon as the element's object is destroyed.
    ICircuitElement* element = nullptr;
    QString propertyName;
    QString propertyText;
    // Lists this box as long as it is set, and deletes what it lists when it dies.
    CCircuitEditorElementItem* elementItem = nullptr;
    CCircuitElementPropertyTextBox::TextFormat textFormat =
        CCircuitElementPropertyTextBox::NameAndValue;
};
