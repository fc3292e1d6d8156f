#include "ComponentFactory.h"

#include "ComponentManager.h"

namespace Plexa {

ComponentFactory* ComponentFactory::instance() {
    static ComponentFactory factory;
    return &factory;
}

void ComponentFactory::registerComponentInfo(const QString& name, Creator creator,
                                             const QMetaObject* meta) {
    m_infos.insert(name, {creator, meta});
}

bool ComponentFactory::isRegistered(const QString& name) const {
    return m_infos.contains(name);
}

AbstractComponent* ComponentFactory::createComponent(const QString& name) {
    ComponentManager* manager = ComponentManager::instance();
    if (AbstractComponent* known = manager->component(name)) {
        return known;
    }
    const Info info = m_infos.value(name);
    if (!info.creator) {
        return nullptr;
    }
    AbstractComponent* component = info.creator();
    if (component) {
        manager->adopt(name, component);
    }
    return component;
}

}  // namespace Plexa
