#include "GuiDescription.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Plexa {

bool GuiDescription::parse(const QByteArray& json, QString* error) {
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (!document.isObject()) {
        *error = parseError.error == QJsonParseError::NoError
                     ? QStringLiteral("the GUI description is no JSON object")
                     : QStringLiteral("the GUI description is no JSON: %1 at byte %2")
                           .arg(parseError.errorString())
                           .arg(parseError.offset);
        return false;
    }
    m_root = document.object().toVariantMap();
    m_components.clear();
    for (const QVariant& entry : m_root.value(QStringLiteral("components")).toList()) {
        const QVariantMap map = entry.toMap();
        m_components.append({map.value(QStringLiteral("name")).toString(),
                             map.value(QStringLiteral("objects")).toStringList(),
                             map.value(QStringLiteral("properties")).toMap(),
                             map.value(QStringLiteral("settings")).toMap(),
                             map.value(QStringLiteral("calls")).toMap()});
    }
    return true;
}

GuiDescription::Component GuiDescription::component(const QString& name) const {
    for (const Component& component : m_components) {
        if (component.name == name) {
            return component;
        }
    }
    return {};
}

}  // namespace Plexa
