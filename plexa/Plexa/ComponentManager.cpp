#include "ComponentManager.h"

#include "AbstractComponent.h"
#include "ComponentFactory.h"
#include "MethodCall.h"

#include <QAction>
#include <QWidget>

#include <algorithm>

namespace Plexa {

ComponentManager* ComponentManager::instance() {
    static ComponentManager manager;
    return &manager;
}

void ComponentManager::setGuiDescription(const GuiDescription& description) {
    m_description = description;
}

void ComponentManager::setMainWindow(QWidget* window) {
    m_mainWindow = window;
}

QWidget* ComponentManager::mainWindow() const {
    return m_mainWindow;
}

bool ComponentManager::createComponents(QString* error) {
    for (const GuiDescription::Component& section : m_description.components()) {
        if (!ComponentFactory::instance()->createComponent(section.name)) {
            *error = QStringLiteral("there is no component \"%1\"").arg(section.name);
            return false;
        }
    }
    return true;
}

bool ComponentManager::configureObjects(QString* error) {
    for (const GuiDescription::Component& section : m_description.components()) {
        AbstractComponent* owner = component(section.name);
        for (auto it = section.settings.begin(); it != section.settings.end(); ++it) {
            QObject* target = object(owner, it.key());
            const QVariantMap values = it.value().toMap();
            for (auto value = values.begin(); value != values.end(); ++value) {
                if (!target || !target->setProperty(value.key().toUtf8(), value.value())) {
                    *error = QStringLiteral("%1.%2 has no property \"%3\"")
                                 .arg(section.name, it.key(), value.key());
                    return false;
                }
            }
        }
        for (auto it = section.calls.begin(); it != section.calls.end(); ++it) {
            QObject* target = object(owner, it.key());
            for (const QVariant& call : it.value().toList()) {
                if (!target || !callMethod(target, call.toList())) {
                    *error = QStringLiteral("%1.%2 has no method \"%3\"")
                                 .arg(section.name, it.key(), call.toList().value(0).toString());
                    return false;
                }
            }
        }
    }
    return true;
}

void ComponentManager::announceComponents() {
    for (AbstractComponent* component : components()) {
        component->creationAnnounced();
    }
}

void ComponentManager::initializeComponents() {
    for (AbstractComponent* component : components()) {
        component->initializeComponent();
    }
}

void ComponentManager::shutdown() {
    for (AbstractComponent* component : components()) {
        component->finalizeComponent();
    }
    while (AbstractComponent* dying = nextToDestroy()) {
        for (const Entry& entry : qAsConst(m_entries)) {
            if (entry.component != dying) {
                entry.component->componentDestroyed(dying);
            }
        }
        delete dying;  // takes itself out through forget()
    }
    m_objects.clear();
}

AbstractComponent* ComponentManager::nextToDestroy() const {
    const auto isNeeded = [this](AbstractComponent* component) {
        return std::any_of(m_dependencies.begin(), m_dependencies.end(),
                           [component](const auto& pair) { return pair.first == component; });
    };
    for (auto it = m_entries.rbegin(); it != m_entries.rend(); ++it) {
        if (!isNeeded(it->component)) {
            return it->component;
        }
    }
    // Components that need one another in a ring: nothing better than the youngest.
    return m_entries.isEmpty() ? nullptr : m_entries.last().component;
}

QList<AbstractComponent*> ComponentManager::components() const {
    QList<AbstractComponent*> result;
    for (const Entry& entry : m_entries) {
        result.append(entry.component);
    }
    return result;
}

AbstractComponent* ComponentManager::component(const QString& name) const {
    for (const Entry& entry : m_entries) {
        if (entry.name == name) {
            return entry.component;
        }
    }
    return nullptr;
}

QString ComponentManager::nameOf(const AbstractComponent* component) const {
    for (const Entry& entry : m_entries) {
        if (entry.component == component) {
            return entry.name;
        }
    }
    return {};
}

QObject* ComponentManager::object(AbstractComponent* component, const QString& name) {
    if (!component) {
        return nullptr;
    }
    const QString completeName = nameOf(component) + QLatin1Char('.') + name;
    if (const QPointer<QObject> known = m_objects.value(completeName)) {
        return known;
    }
    QObject* found = component->fetchObject(completeName);
    if (!found) {
        found = component->fetchWidget(completeName);
    }
    if (!found) {
        found = component->fetchAction(completeName);
    }
    if (found) {
        m_objects.insert(completeName, found);
    }
    return found;
}

void ComponentManager::adopt(const QString& name, AbstractComponent* component) {
    m_entries.append({name, component});
}

void ComponentManager::forget(const AbstractComponent* component) {
    m_entries.erase(
        std::remove_if(m_entries.begin(), m_entries.end(),
                       [component](const Entry& e) { return e.component == component; }),
        m_entries.end());
    m_dependencies.erase(std::remove_if(m_dependencies.begin(), m_dependencies.end(),
                                        [component](const auto& pair) {
                                            return pair.first == component ||
                                                   pair.second == component;
                                        }),
                         m_dependencies.end());
}

void ComponentManager::addDependency(AbstractComponent* needed, AbstractComponent* dependent) {
    if (needed && dependent && needed != dependent) {
        m_dependencies.append(qMakePair(needed, dependent));
    }
}

}  // namespace Plexa
