#include "AbstractComponent.h"

#include "ComponentManager.h"
#include "ObjectIterator.h"

#include <QWidget>

namespace Plexa {

AbstractComponent::AbstractComponent(QObject* parent) : QObject(parent) {}

AbstractComponent::~AbstractComponent() {
    ComponentManager::instance()->forget(this);
}

QAction* AbstractComponent::fetchAction(const QString&) const {
    return nullptr;
}

QObject* AbstractComponent::fetchObject(const QString&) const {
    return nullptr;
}

QWidget* AbstractComponent::fetchWidget(const QString&) const {
    return nullptr;
}

void AbstractComponent::addChildWidget(QWidget* parent, QWidget* child, const QString&) {
    if (child) {
        child->setParent(parent);
    }
}

void AbstractComponent::componentDestroyed(AbstractComponent*) {}

void AbstractComponent::creationAnnounced() {}

void AbstractComponent::initializeComponent() {}

void AbstractComponent::finalizeComponent() {}

QWidget* AbstractComponent::createWidget(const QString&) const {
    return nullptr;
}

QString AbstractComponent::componentName() const {
    return ComponentManager::instance()->nameOf(this);
}

QObject* AbstractComponent::findObject(const QString& interfaceName, QString& completeName,
                                       AbstractComponent** component) const {
    const QByteArray identifier = "com.tesmira." + interfaceName.toLatin1() + "/1.0";
    const ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (object->qt_metacast(identifier.constData())) {
            completeName = iterator.currentObjectName();
            if (component) {
                *component = iterator.currentObjectComponent();
            }
            return object;
        }
    }
    return nullptr;
}

AbstractComponent* AbstractComponent::findComponent(const QString& name) const {
    return ComponentManager::instance()->component(name);
}

void AbstractComponent::addDependency(AbstractComponent* needed, AbstractComponent* dependent) {
    ComponentManager::instance()->addDependency(needed, dependent);
}

QWidget* AbstractComponent::mainWindow() const {
    return ComponentManager::instance()->mainWindow();
}

ComponentGui AbstractComponent::componentGui() const {
    return ComponentGui(
        ComponentManager::instance()->guiDescription().component(componentName()).properties);
}

void AbstractComponent::setActive(bool active) {
    m_active = active;
}

bool AbstractComponent::isActive() const {
    return m_active;
}

}  // namespace Plexa
