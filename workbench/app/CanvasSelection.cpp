#include "CanvasSelection.h"

#include <QGraphicsScene>
#include <QMetaObject>

namespace {

bool hasMethod(const QObject* object, const char* signature) {
    return object->metaObject()->indexOfMethod(signature) >= 0;
}

/// Calls a method without arguments; leaves the answer as it was if there is none.
void callIfThere(QObject* object, const char* name, bool* answer) {
    if (hasMethod(object, QByteArray(name) + "()")) {
        QMetaObject::invokeMethod(object, name, Qt::DirectConnection, Q_RETURN_ARG(bool, *answer));
    }
}

}  // namespace

CanvasSelection::CanvasSelection(QGraphicsScene* scene, QObject* canvas, QObject* parent)
    : QObject(parent), m_scene(scene), m_canvas(canvas) {
    connect(scene, &QGraphicsScene::selectionChanged, this, &CanvasSelection::scheduleRefresh);
    if (hasMethod(canvas, "selectionStateChanged()")) {
        connect(canvas, SIGNAL(selectionStateChanged()), this, SLOT(scheduleRefresh()));
    }
    if (hasMethod(canvas, "toolChanged()")) {
        connect(canvas, SIGNAL(toolChanged()), this, SLOT(scheduleRefresh()));
    }
    scheduleRefresh();
}

void CanvasSelection::scheduleRefresh() {
    if (!m_scheduled) {
        m_scheduled = true;
        QMetaObject::invokeMethod(this, "refresh", Qt::QueuedConnection);
    }
}

void CanvasSelection::refresh() {
    m_scheduled = false;
    if (!m_scene || !m_canvas) {
        return;
    }
    const bool isSelected = !m_scene->selectedItems().isEmpty();
    bool canErase = isSelected;
    bool canCopy = isSelected;
    callIfThere(m_canvas, "canErase", &canErase);
    callIfThere(m_canvas, "hasSelection", &canCopy);
    bool canTurn = isSelected;
    callIfThere(m_canvas, "canTurn", &canTurn);
    emit turnableChanged(canTurn);
    emit selectedChanged(canErase);
    emit copyableChanged(canCopy);
}
