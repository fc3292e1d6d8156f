// The study window of a sub-circuit element.

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementItemData.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "IPropertyEditor.h"
#include "StudyElementContextMenuHandler.h"

#include <Plexa/AbstractComponent.h>
#include <Plexa/ObjectIterator.h>

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

constexpr QSize WindowSize(800, 480);
constexpr Qt::WindowFlags WindowFlags =
    Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;

/// A new widget of the kind of the application's first object with the interface; null if there is
/// no such object, or its component makes no more of them.
template <class Interface>
std::unique_ptr<QWidget> newWidgetLike() {
    const Plexa::ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (qobject_cast<Interface*>(object)) {
            const Plexa::AbstractComponent* component = iterator.currentObjectComponent();
            const QString name = iterator.currentObjectName();
            return std::unique_ptr<QWidget>(
                component && !name.isEmpty() ? component->createWidget(name) : nullptr);
        }
    }
    return nullptr;
}

}  // namespace

void CCircuitEditorElementItem::studySubCircuit() {
    if (!d->element) {
        return;
    }
    std::unique_ptr<QWidget> view = newWidgetLike<ICircuitEditor>();
    std::unique_ptr<QWidget> panel = newWidgetLike<IPropertyEditor>();
    auto* editor = qobject_cast<CCircuitEditor*>(view.get());
    auto* circuit = qobject_cast<ICircuit*>(d->element->containerObject());
    auto* propertyEditor = qobject_cast<IPropertyEditor*>(panel.get());
    if (!editor || !circuit || !propertyEditor) {
        return;
    }
    // On the heap: the window that it belongs to may go while it is open, and takes it along.
    const QPointer<QDialog> dialog(new QDialog(QApplication::activeWindow(), WindowFlags));
    auto* layout = new QVBoxLayout(dialog);
    auto* splitter = new QSplitter(dialog);
    layout->addWidget(splitter);
    splitter->addWidget(view.release());
    splitter->addWidget(panel.release());
    splitter->setSizes({80, 20});
    // The shares hold at the size that the window gets, too.
    splitter->setStretchFactor(0, 80);
    splitter->setStretchFactor(1, 20);
    dialog->resize(WindowSize);
    editor->setCircuit(circuit);
    editor->setPropertyEditor(propertyEditor);
    editor->bringToCenter();
    editor->zoomFit();
    editor->setReadOnly(true);
    propertyEditor->containerObject()->setProperty("ReadOnly", true);
    editor->viewport()->installEventFilter(new StudyElementContextMenuHandler(editor));
    dialog->setWindowTitle(QStringLiteral("Studying %1 (%2) element")
                               .arg(d->element->caption(), d->element->desc()->label()));
    // What is studied may go meanwhile.
    connect(this, &QObject::destroyed, dialog.data(), &QDialog::reject);
    dialog->exec();
    delete dialog;
}
