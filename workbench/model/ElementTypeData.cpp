#include "ElementTypeData.h"

#include "EngineeringNumber.h"

#include <QRegularExpression>

namespace {

bool isReference(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("\\A\\{[A-Za-z_][A-Za-z0-9_]*\\}\\z"));
    return pattern.match(text).hasMatch();
}

}  // namespace

bool ParameterData::accepts(const QString& text) const {
    switch (kind) {
        case Number: {
            bool ok = false;
            EngineeringNumber::parse(text, &ok);
            return ok || isReference(text);
        }
        case Choice:
            return choices.contains(text);
        case Text:
            break;
    }
    return true;
}

QString ParameterData::display(const QString& text) const {
    if (unit.isEmpty() || text.isEmpty() || isReference(text)) {
        return text;
    }
    EngineeringNumber::Parts parts;
    if (kind == Number && EngineeringNumber::split(text, &parts)) {
        return parts.mantissa + QLatin1Char(' ') + parts.suffix + unit;
    }
    return text + QLatin1Char(' ') + unit;
}
