#include "StudyElementContextMenuHandler.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "ICircuit.h"
#include "ICircuitElement.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

StudyElementContextMenuHandler::StudyElementContextMenuHandler(CCircuitEditor* view)
    : QObject(view), m_view(view) {}

bool StudyElementContextMenuHandler::eventFilter(QObject* object, QEvent* event) {
    // The type first: the last events come while the view is being destroyed.
    if (event->type() != QEvent::ContextMenu || object != m_view->viewport()) {
        return false;
    }
    const auto* menuEvent = static_cast<QContextMenuEvent*>(event);
    const QPointer<CCircuitEditorElementItem> item(
        qgraphicsitem_cast<CCircuitEditorElementItem*>(m_view->itemAt(menuEvent->pos())));
    if (!item || !item->element() || !qobject_cast<ICircuit*>(item->element()->containerObject())) {
        return false;
    }
    const QPointer<QObject> viewport(object);
    QMenu menu;
    menu.addAction(QStringLiteral("Study Element"));
    if (menu.exec(menuEvent->globalPos()) && item) {
        QMetaObject::invokeMethod(item, "studySubCircuit", Qt::QueuedConnection);
    }
    // The menu ran its own event loop: an event for a widget that is gone goes no further.
    return !viewport;
}
