#include "ComponentGui.h"

#include <QJsonDocument>

namespace Plexa {

QVariant ComponentGui::operator[](const QString& name) const {
    const QVariant value = m_properties.value(name);
    if (value.userType() != QMetaType::QVariantMap && value.userType() != QMetaType::QVariantList) {
        return value;
    }
    return QString::fromUtf8(QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact));
}

}  // namespace Plexa
