#include "DrawingTest.h"

#include "CCircuitEditorComponent_Plugin.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "COutputVariablesWidget.h"
#include "CircuitElementNode.h"
#include "Invariants.h"
#include "WarningGuard.h"

#include <Plexa/ComponentManager.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>

using Plexa::AbstractComponent;
using Plexa::ComponentFactory;
using Plexa::ComponentManager;

namespace {

QHash<QString, QObject*> offeredObjects;
QHash<QString, std::function<QWidget*()>> widgetMakers;

class HostComponent : public AbstractComponent {
public:
    QObject* fetchObject(const QString& name) const override {
        return offeredObjects.value(name.section(QLatin1Char('.'), -1));
    }

    QWidget* createWidget(const QString& name) const override {
        const auto make = widgetMakers.value(name.section(QLatin1Char('.'), -1));
        return make ? make() : nullptr;
    }
};

AbstractComponent* makeHost() {
    return new HostComponent;
}

}  // namespace

void turnEventLoop() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PanelStub::setObject(QObject* object, bool) {
    shown = object;
    ++calls;
}

void PanelStub::edit(const QString& name, const QVariant& value) {
    const QPointer<QObject> object = shown;
    ASSERT_FALSE(object.isNull());
    auto* properties = qobject_cast<IEditableProperties*>(object.data());
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyName(i) == name) {
            const QVariant old = properties->propertyValue(i);
            properties->setPropertyValue(i, value);
            emit propertyValueChanged(object, name, old, properties->propertyValue(i));
            return;
        }
    }
    const QVariant old = object->property(name.toUtf8());
    object->setProperty(name.toUtf8(), value);
    emit propertyValueChanged(object, name, old, object->property(name.toUtf8()));
}

FrameworkRun::FrameworkRun() {
    for (const char* name : {"Host", "CElementExplorerComponent"}) {
        ComponentFactory::instance()->registerComponentInfo(QString::fromLatin1(name), &makeHost,
                                                            &AbstractComponent::staticMetaObject);
    }
    const std::unique_ptr<IComponentPlugin> plugin(GetComponentPlugin());
    EXPECT_EQ(plugin->buildKey(), QStringLiteral("Qm7#xP2w"));
    plugin->registerComponent();
}

FrameworkRun::~FrameworkRun() {
    if (component) {
        delete component->circuitEditor();
        delete component->outputVariablesWidget();
    }
    ComponentManager::instance()->shutdown();
    ComponentManager::instance()->setMainWindow(nullptr);
    offeredObjects.clear();
    widgetMakers.clear();
    // What is left asks for the component in vain.
    ComponentFactory::instance()->registerComponentInfo(QStringLiteral("CCircuitEditorComponent"),
                                                        nullptr, nullptr);
}

void FrameworkRun::start(const QHash<QString, QObject*>& offered, QWidget* window) {
    offeredObjects = offered;
    QStringList names;
    for (const QString& name : offered.keys()) {
        names << QStringLiteral("\"%1\"").arg(name);
    }
    names.sort();
    Plexa::GuiDescription description;
    QString error;
    ASSERT_TRUE(description.parse(
        QStringLiteral("{\"components\": [{\"name\": \"Host\", \"objects\": [%1]},"
                       "{\"name\": \"CElementExplorerComponent\", \"objects\": []},"
                       "{\"name\": \"CCircuitEditorComponent\", \"objects\": "
                       "[\"circuitEditorGL\", \"manualCtorMode\"], \"properties\": "
                       "{\"TextBoxColors\": {\"Fill\": "
                       "{\"Default\": \"#ff0000\"}}}}]}")
            .arg(names.join(QLatin1Char(',')))
            .toUtf8(),
        &error));
    ComponentManager* manager = ComponentManager::instance();
    manager->setMainWindow(window);
    manager->setGuiDescription(description);
    ASSERT_TRUE(manager->createComponents(&error)) << qPrintable(error);
    component = CCircuitEditorComponent::instance();
    ASSERT_EQ(component, manager->component(QStringLiteral("CCircuitEditorComponent")));
    manager->announceComponents();
    manager->initializeComponents();
}

void FrameworkRun::offerWidgets(const QString& name, const std::function<QWidget*()>& make) {
    widgetMakers.insert(name, make);
}

DrawingTest::DrawingTest() {
    announceLog(QStringLiteral("Undo: "));
    announceLog(QStringLiteral("Redo: "));
    framework.start({{QStringLiteral("solver"), &solver},
                     {QStringLiteral("factory"), &factory},
                     {QStringLiteral("xml"), &xmlUtils},
                     {QStringLiteral("loadSave"), &loadSave},
                     {QStringLiteral("explorer"), &explorer},
                     {QStringLiteral("panel"), &panel},
                     {QStringLiteral("clipboard"), &clipboard}},
                    &window);
    editor = framework.component->circuitEditor();
    editor->setViewport(nullptr);
    editor->resize(1000, 800);
    editor->show();
    editor->centerOn(0, 0);
    QApplication::processEvents();
}

DrawingTest::~DrawingTest() {
    snapshot();
}

void DrawingTest::press(QPointF point, Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(editor->viewport(), Qt::LeftButton, modifiers, at(point));
}

void DrawingTest::moveTo(QPointF point) {
    QMouseEvent event(QEvent::MouseMove, at(point), editor->viewport()->mapToGlobal(at(point)),
                      Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(editor->viewport(), &event);
    // A repaint between two steps, as on a screen: it refreshes what Qt caches of a moved item.
    QApplication::processEvents();
}

void DrawingTest::release(QPointF point, Qt::MouseButton button) {
    QTest::mouseRelease(editor->viewport(), button, Qt::NoModifier, at(point));
}

void DrawingTest::click(QPointF point, Qt::KeyboardModifiers modifiers) {
    press(point, modifiers);
    release(point);
}

void DrawingTest::drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers) {
    press(from, modifiers);
    moveTo((from + to) / 2);
    moveTo(to);
    release(to);
}

void DrawingTest::doubleClick(QPointF point) {
    click(point);
    QTest::mouseDClick(editor->viewport(), Qt::LeftButton, Qt::NoModifier, at(point));
    release(point);
}

void DrawingTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(editor, key, modifiers);
}

void DrawingTest::rightClick(QPointF point) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, at(point),
                            editor->viewport()->mapToGlobal(at(point)));
    QApplication::sendEvent(editor->viewport(), &event);
}

CircuitElement* DrawingTest::create(const char* type, QPointF point) {
    explorer.selected = QString::fromLatin1(type);
    const int before = circuit.elementCount();
    doubleClick(point);
    EXPECT_EQ(circuit.elementCount(), before + 1) << type;
    return CircuitElement::from(circuit.element(before));
}

void DrawingTest::layWire(const std::vector<QPointF>& points) {
    framework.component->setManualConnectionMode(true);
    for (const QPointF& point : points) {
        click(point);
    }
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode) << "the wire was not finished";
}

CircuitElement* DrawingTest::element(const char* name) {
    return circuit.elementNamed(QString::fromLatin1(name));
}

ICircuitElementNode* DrawingTest::terminal(const char* name) {
    const QString text = QString::fromLatin1(name);
    CircuitElement* owner = circuit.elementNamed(text.section(QLatin1Char('.'), 0, 0));
    return owner ? owner->elementNode(text.section(QLatin1Char('.'), 1)) : nullptr;
}

QPointF DrawingTest::placeOf(const char* terminalName) {
    return editor->itemFor(terminal(terminalName))->mapToScene(QPointF(0, 0));
}

CCircuitEditorElementItem* DrawingTest::itemOf(const char* elementName) {
    return editor->elementItem(element(elementName));
}

CCircuitEditorNodeItem* DrawingTest::wireAt(const char* terminalName) {
    return editor->nodeItem(CircuitElementNode::from(terminal(terminalName))->node());
}

QByteArray DrawingTest::snapshot() {
    turnEventLoop();
    const QStringList breaches = invariantBreaches(*editor);
    EXPECT_TRUE(breaches.isEmpty()) << qPrintable(breaches.join(QLatin1Char('\n')));
    return editor->describe();
}
