#pragma once

#include "PlexaExport.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace Plexa {

/// The application's description of itself, a JSON text: which components there are, which named
/// objects each offers, their settings, and the menus and toolbars, which the application reads.
///
///     { "components": [ { "name": "...", "objects": ["..."], "properties": {...},
///                         "settings": { "<object>": { "<property>": value } },
///                         "calls": { "<object>": [ ["method", argument...] ] } } ],
///       ... }
class PLEXA_EXPORT GuiDescription {
public:
    /// One component's section. Object names are the last piece of `component.object`.
    struct Component {
        QString name;
        QStringList objects;
        QVariantMap properties;
        QVariantMap settings;
        QVariantMap calls;
    };

    /// False, with one sentence in `*error`, for a text that isn't such a description; the earlier
    /// content then stays.
    bool parse(const QByteArray& json, QString* error);

    /// In the order of the description, which is the order of creation.
    const QList<Component>& components() const { return m_components; }
    /// An empty section for a component that the description doesn't name.
    Component component(const QString& name) const;
    /// The whole text as a map, for the sections that only the application knows.
    const QVariantMap& root() const { return m_root; }

private:
    QList<Component> m_components;
    QVariantMap m_root;
};

}  // namespace Plexa
