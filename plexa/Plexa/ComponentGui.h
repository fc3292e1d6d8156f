#pragma once

#include "PlexaExport.h"

#include <QVariantMap>

namespace Plexa {

/// A component's share of the GUI description: its named properties, by value.
class PLEXA_EXPORT ComponentGui {
public:
    ComponentGui() = default;
    explicit ComponentGui(QVariantMap properties) : m_properties(std::move(properties)) {}

    /// The named property; an invalid variant if the description has none. A property that the
    /// description holds as a JSON object or array comes as its JSON text.
    QVariant operator[](const QString& name) const;

private:
    QVariantMap m_properties;
};

}  // namespace Plexa
