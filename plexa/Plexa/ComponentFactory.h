#pragma once

#include "PlexaExport.h"

#include <QHash>
#include <QString>

struct QMetaObject;

namespace Plexa {

class AbstractComponent;

/// Makes components by registered name.
class PLEXA_EXPORT ComponentFactory {
public:
    using Creator = AbstractComponent* (*)();

    static ComponentFactory* instance();

    /// A later registration of the same name replaces the earlier one.
    void registerComponentInfo(const QString& name, Creator creator, const QMetaObject* meta);
    bool isRegistered(const QString& name) const;

    /// The component of that name, made on first request; null for a name that isn't registered.
    /// Whatever this makes is known to the `ComponentManager`, which owns it.
    AbstractComponent* createComponent(const QString& name);

private:
    struct Info {
        Creator creator = nullptr;
        const QMetaObject* meta = nullptr;
    };
    QHash<QString, Info> m_infos;
};

}  // namespace Plexa
