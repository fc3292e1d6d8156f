#include "ElementTools.h"

#include "CircuitElement.h"
#include "ElementDescription.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "MainWindow.h"
#include "Workbench.h"

#include <QDockWidget>
#include <QGraphicsItem>
#include <QMenu>
#include <QMetaObject>

namespace {

constexpr char PanelName[] = "CPropertyEditorComponent.propertyEditor";

/// The canvas offers the help of a type by its name, which may carry a text or a drawing, behind
/// the "~", that fills the screen and has no help of its own.
void hideEntriesOfTexts(ICircuitElement* element, QMenu* menu) {
    const QString type = element->desc()->elementType();
    for (QAction* action : menu->actions()) {
        if (type.contains(QLatin1Char('~')) && action->text().contains(type)) {
            action->setVisible(false);
        }
    }
}

}  // namespace

ElementTools::ElementTools(const Workbench& workbench, MainWindow* window)
    : QObject(window), m_workbench(workbench), m_window(window) {
    QObject* editor = workbench.editorWidget();
    connect(editor,
            SIGNAL(elementContextMenuEvent(ICircuitElement*, QMenu*, Qt::KeyboardModifiers)), this,
            SLOT(addEntries(ICircuitElement*, QMenu*)));
    connect(editor,
            SIGNAL(elementDoubleClickEvent(ICircuitElement*, QPoint, Qt::MouseButton,
                                           Qt::KeyboardModifiers)),
            this, SLOT(editLater()));
    if (QObject* panel = workbench.object(QLatin1String(PanelName))) {
        connect(panel, SIGNAL(editEnded()), workbench.editorWidget(), SLOT(setFocus()));
    }
}

void ElementTools::addEntries(ICircuitElement* element, QMenu* menu) {
    // The entries work on what is selected.
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    QGraphicsItem* item = items ? items->itemFor(element) : nullptr;
    if (item && !item->isSelected()) {
        qobject_cast<ICircuitEditor*>(m_workbench.editorWidget())->unhighlight();
        item->setSelected(true);
    }
    hideEntriesOfTexts(element, menu);
    const CircuitElement* own = CircuitElement::from(element);
    const bool hasText = own && !own->description()->data().netlist.isEmpty();
    for (QAction* action : qAsConst(m_actions)) {
        if (action && !hasText && action->objectName() == QLatin1String("editNetlist")) {
            continue;
        }
        if (action) {
            menu->addAction(action);
        } else {
            menu->addSeparator();
        }
    }
}

void ElementTools::editLater() {
    // The canvas takes the focus with the click.
    QMetaObject::invokeMethod(this, &ElementTools::editProperties, Qt::QueuedConnection);
}

void ElementTools::editProperties() {
    if (auto* dock = m_window->findChild<QDockWidget*>(QStringLiteral("showProperties"))) {
        dock->show();
        dock->raise();
    }
    if (QObject* panel = m_workbench.object(QLatin1String(PanelName))) {
        QMetaObject::invokeMethod(panel, "editFirstValue");
    }
}
