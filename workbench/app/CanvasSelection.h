#pragma once

#include <QObject>
#include <QPointer>

class QGraphicsScene;

/// Whether there is anything on a canvas to delete or to copy, for the actions that need it. Looks
/// only at what is selected, never at a clipboard: what another program has put there may be huge.
/// Looks once after a swarm of changes, from the event loop, where no change is half done.
class CanvasSelection : public QObject {
    Q_OBJECT

public:
    /// `canvas`, which shows the scene, may have `bool hasSelection()`, for what can be copied,
    /// `bool canErase()`, `bool canTurn()`, and the signals `selectionStateChanged()` and
    /// `toolChanged()`; else the scene's selection counts.
    CanvasSelection(QGraphicsScene* scene, QObject* canvas, QObject* parent);

signals:
    /// Anything is selected.
    void selectedChanged(bool selected);
    /// More than wires and terminals, which can't be copied, is selected.
    void copyableChanged(bool copyable);
    /// Something can be turned.
    void turnableChanged(bool turnable);

private slots:
    void scheduleRefresh();
    void refresh();

private:
    QPointer<QGraphicsScene> m_scene;
    QPointer<QObject> m_canvas;
    bool m_scheduled = false;
};
