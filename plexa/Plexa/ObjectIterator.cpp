#include "ObjectIterator.h"

#include "AbstractComponent.h"
#include "ComponentManager.h"

namespace Plexa {

ObjectIterator::ObjectIterator() {
    for (AbstractComponent* component : ComponentManager::instance()->components()) {
        collect(component);
    }
}

ObjectIterator::ObjectIterator(const QString& componentName) {
    collect(ComponentManager::instance()->component(componentName));
}

void ObjectIterator::collect(AbstractComponent* component) {
    if (!component) {
        return;
    }
    const GuiDescription& description = ComponentManager::instance()->guiDescription();
    for (const QString& name : description.component(component->componentName()).objects) {
        m_names.append({component, name});
    }
}

QObject* ObjectIterator::firstObject() const {
    m_index = -1;
    return nextObject();
}

QObject* ObjectIterator::nextObject() const {
    while (m_index + 1 < m_names.size()) {
        ++m_index;
        const auto& [component, name] = m_names.at(m_index);
        if (QObject* object = ComponentManager::instance()->object(component, name)) {
            return object;
        }
    }
    m_index = m_names.size();
    return nullptr;
}

QString ObjectIterator::currentObjectName() const {
    if (m_index < 0 || m_index >= m_names.size()) {
        return {};
    }
    const auto& [component, name] = m_names.at(m_index);
    return component->componentName() + QLatin1Char('.') + name;
}

AbstractComponent* ObjectIterator::currentObjectComponent() const {
    return m_index < 0 || m_index >= m_names.size() ? nullptr : m_names.at(m_index).first;
}

}  // namespace Plexa
