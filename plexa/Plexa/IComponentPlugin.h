#pragma once

#include "AbstractComponent.h"
#include "ComponentFactory.h"

#include <QString>

/// The object that a plug-in's entry function `GetComponentPlugin` returns; the caller owns it.
class IComponentPlugin {
public:
    virtual QString componentName() const = 0;
    /// Registers the component's creator with the factory.
    virtual void registerComponent() = 0;
    virtual const QMetaObject* componentMeta() const = 0;
    /// Must equal the host's own build key, or the plug-in is refused.
    virtual QString buildKey() const = 0;
    // Last: hosts count on the entries of the table from the first on.
    virtual ~IComponentPlugin() = default;

protected:
    void registerComponentInfo(const QString& name, Plexa::AbstractComponent* (*creator)(),
                               const QMetaObject* meta) {
        Plexa::ComponentFactory::instance()->registerComponentInfo(name, creator, meta);
    }
};
