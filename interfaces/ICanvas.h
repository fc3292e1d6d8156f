#pragma once

#include "IContainer.h"

#include <QPoint>
#include <QPointF>

class QGraphicsScene;
class QGraphicsView;
class QMenu;

/// A zoomable drawing canvas. Operations marked "signal" are declared as signals by the canvas.
class ICanvas : public virtual IContainer {
public:
    virtual QGraphicsView* graphicsView() = 0;
    virtual QGraphicsScene* graphicsScene() = 0;

    /// Does nothing on this canvas, whose zoom has no levels.
    virtual void setZoomLevel(int zoomLevel) = 0;
    virtual void zoomIn() = 0;
    virtual void zoomOut() = 0;
    /// Does nothing on this canvas.
    virtual void zoomFull() = 0;
    virtual void zoomOne() = 0;
    /// Fits the drawing into the view, and keeps it fitted when the view is resized.
    virtual void zoomFit() = 0;

    virtual void bringToCenter() = 0;

    virtual void cut() = 0;
    virtual void copy() = 0;
    /// Pastes at the pointer.
    virtual void paste() = 0;
    /// Pastes at a position in scene units.
    virtual void paste(QPointF pos) = 0;
    virtual void clear() = 0;
    virtual void snapToGrid() = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;

    /// Signals; these two are never emitted by this canvas.
    virtual void zoomLevelChanged(int zl) = 0;
    virtual void zoomScaleChanged(double zs) = 0;
    /// Signals; `pos` is in scene units, rounded.
    virtual void canvasClickEvent(ICanvas* canvas, QPoint pos, Qt::MouseButton button,
                                  Qt::KeyboardModifiers mod) = 0;
    virtual void canvasDoubleClickEvent(ICanvas* canvas, QPoint pos, Qt::MouseButton button,
                                        Qt::KeyboardModifiers mod) = 0;
    /// Signal; listeners may add to the menu, which is about to be shown.
    virtual void canvasContextMenuEvent(ICanvas* canvas, QMenu* menu,
                                        Qt::KeyboardModifiers mod) = 0;
    /// Signals, relayed from the undo stack.
    virtual void canUndoChanged(bool val) = 0;
    virtual void canRedoChanged(bool val) = 0;

protected:
    ~ICanvas() = default;
};

Q_DECLARE_INTERFACE(ICanvas, "com.tesmira.ICanvas/1.0")
