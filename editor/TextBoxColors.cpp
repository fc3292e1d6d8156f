#include "TextBoxColors.h"

#include "CCircuitEditorComponent.h"

namespace {

QVariant entry(const char* key) {
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    return component ? component->textBoxColors().value(QLatin1String(key)) : QVariant();
}

}  // namespace

QColor TextBoxColors::named(const QString& name) {
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

QVariantMap TextBoxColors::choices(const char* kind) {
    return entry(kind).toMap();
}

QColor TextBoxColors::standard(const char* kind) {
    return named(choices(kind).value(QStringLiteral("Default")).toString());
}

QColor TextBoxColors::propertyText() {
    return named(entry("PropertyTextColor").toString());
}
