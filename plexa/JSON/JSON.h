#pragma once

#include <QString>
#include <QVariantMap>

namespace JSON {

/// Parses a JSON object. Text that is no JSON object gives an empty map.
Q_DECL_EXPORT QVariantMap parse(const QString& text);

}  // namespace JSON
