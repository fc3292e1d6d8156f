#include "WireMenu.h"

#include "ICircuitNode.h"

#include <QMenu>
#include <QMetaObject>
#include <QPointer>

WireMenu::WireMenu(QObject* editor, QObject* parent) : QObject(parent), m_editor(editor) {
    connect(editor, SIGNAL(nodeContextMenuEvent(ICircuitNode*, QMenu*, Qt::KeyboardModifiers)),
            this, SLOT(addEntries(ICircuitNode*, QMenu*)));
}

void WireMenu::addEntries(ICircuitNode* node, QMenu* menu) {
    const QAction* parts = menu->addAction(tr("Delete Parts of Node..."));
    // Later: the menu is the wire's own, and is still open when an entry is chosen. The net may be
    // gone by then.
    connect(
        parts, &QAction::triggered, m_editor,
        [editor = m_editor, object = QPointer<QObject>(node->containerObject())] {
            if (object) {
                QMetaObject::invokeMethod(editor, "deletePartsOfNode",
                                          Q_ARG(QObject*, object.data()));
            }
        },
        Qt::QueuedConnection);
}
