// The least of a host: loads the plug-in, gives it a circuit of two resistors, shows the canvas.

#include "TinyCircuit.h"

#include <ICanvas.h>
#include <ICircuitEditorExt.h>
#include <Plexa/ComponentFactory.h>
#include <Plexa/ComponentManager.h>
#include <Plexa/PluginLoader.h>

#include <QApplication>
#include <QGraphicsItem>
#include <QMainWindow>

constexpr char Description[] = R"({"components": [
    {"name": "TinyCircuit", "objects": ["solver"]},
    {"name": "CCircuitEditorComponent", "objects": ["circuitEditor"],
     "settings": {"circuitEditor": {"ReadOnly": true}}}]})";

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    auto* window = new QMainWindow;
    auto* manager = Plexa::ComponentManager::instance();
    Plexa::ComponentFactory::instance()->registerComponentInfo(
        "TinyCircuit", []() -> Plexa::AbstractComponent* { return new TinyCircuit; },
        &TinyCircuit::staticMetaObject);
    Plexa::GuiDescription description;
    QString error;
    bool ok = description.parse(Description, &error);
    manager->setGuiDescription(description);
    ok = ok && !Plexa::loadPlugin(PLUGIN, &error).isEmpty() && manager->createComponents(&error) &&
         manager->configureObjects(&error);
    if (!ok) {
        qCritical("%s", qPrintable(error));
        return 1;
    }
    manager->announceComponents();
    manager->initializeComponents();

    auto* circuit = static_cast<TinyCircuit*>(manager->component("TinyCircuit"));
    QObject* editor =
        manager->object(manager->component("CCircuitEditorComponent"), "circuitEditor");
    // The model knows no places, and the editor moves no element that is wired.
    auto* items = qobject_cast<ICircuitEditorExt*>(editor);
    items->itemFor(circuit->element(0))->setPos(-100, -40);
    items->itemFor(circuit->element(1))->setPos(100, 40);
    circuit->join();
    window->setCentralWidget(qobject_cast<QWidget*>(editor));
    window->show();
    qobject_cast<ICanvas*>(editor)->zoomFit();
    const int result = QApplication::exec();
    delete window;  // the canvas goes first, then the components
    manager->shutdown();
    return result;
}
