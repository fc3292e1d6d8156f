#include "CanvasSelection.h"

#include "ICircuitEditorExt.h"

#include <QGraphicsScene>
#include <QMetaObject>

#include <algorithm>

namespace {

bool hasMethod(const QObject* object, const char* signature) {
    return object->metaObject()->indexOfMethod(signature) >= 0;
}

}  // namespace

CanvasSelection::CanvasSelection(QGraphicsScene* scene, QObject* canvas, QObject* parent)
    : QObject(parent), m_scene(scene), m_canvas(canvas) {
    connect(scene, &QGraphicsScene::selectionChanged, this, &CanvasSelection::scheduleRefresh);
    if (hasMethod(canvas, "selectionStateChanged()")) {
        connect(canvas, SIGNAL(selectionStateChanged()), this, SLOT(scheduleRefresh()));
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
    bool hasGroup = false;
    if (hasMethod(m_canvas, "hasSelection()")) {
        QMetaObject::invokeMethod(m_canvas, "hasSelection", Qt::DirectConnection,
                                  Q_RETURN_ARG(bool, hasGroup));
    }
    const QList<QGraphicsItem*> items = m_scene->selectedItems();
    const auto* kinds = qobject_cast<ICircuitEditorExt*>(m_canvas);
    const auto isCopyable = [kinds](QGraphicsItem* item) {
        const int kind = kinds ? kinds->typeOfItem(item) : 0;
        return kind != 2 && kind != 3;  // terminal, wire
    };
    emit selectedChanged(hasGroup || !items.isEmpty());
    emit copyableChanged(hasGroup || std::any_of(items.begin(), items.end(), isCopyable));
}
