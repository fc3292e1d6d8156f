#include "JSON.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace JSON {

QVariantMap parse(const QString& text) {
    return QJsonDocument::fromJson(text.toUtf8()).object().toVariantMap();
}

}  // namespace JSON
