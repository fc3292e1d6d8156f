#pragma once

#include "IContainer.h"

#include <QPoint>
#include <QString>

class ICanvas;
class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;
class QMenu;

/// A schematic editor. Operations marked "signal" are declared as signals by the editor.
class ICircuitEditor : public virtual IContainer {
public:
    virtual ICanvas* canvas() = 0;

    /// Circuit files: elements and nodes only. Failures are silent; a file that isn't well-formed
    /// leaves the drawing as it was.
    virtual void save(QString fileName) = 0;
    virtual void load(QString fileName) = 0;

    virtual void highlight(ICircuitNode* node) = 0;
    virtual void highlight(ICircuitElement* element) = 0;
    virtual void highlight(ICircuitElementNode* elementNode) = 0;
    virtual void unhighlight() = 0;

    /// Signals; `pos` is in item coordinates, rounded.
    virtual void elementClickEvent(ICircuitElement* element, QPoint pos, Qt::MouseButton button,
                                   Qt::KeyboardModifiers mod) = 0;
    virtual void elementDoubleClickEvent(ICircuitElement* element, QPoint pos,
                                         Qt::MouseButton button, Qt::KeyboardModifiers mod) = 0;
    virtual void elementContextMenuEvent(ICircuitElement* element, QMenu* menu,
                                         Qt::KeyboardModifiers mod) = 0;
    virtual void nodeClickEvent(ICircuitNode* node, QPoint pos, Qt::MouseButton button,
                                Qt::KeyboardModifiers mod) = 0;
    virtual void nodeDoubleClickEvent(ICircuitNode* node, QPoint pos, Qt::MouseButton button,
                                      Qt::KeyboardModifiers mod) = 0;
    virtual void nodeContextMenuEvent(ICircuitNode* node, QMenu* menu,
                                      Qt::KeyboardModifiers mod) = 0;

    /// Signals.
    virtual void elementSelected(ICircuitElement* element) = 0;
    virtual void elementUnselected(ICircuitElement* element) = 0;
    virtual void nodeSelected(ICircuitNode* node) = 0;
    virtual void nodeUnselected(ICircuitNode* node) = 0;

protected:
    ~ICircuitEditor() = default;
};

Q_DECLARE_INTERFACE(ICircuitEditor, "com.tesmira.ICircuitEditor/1.0")
