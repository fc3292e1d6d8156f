#include "ElementTypeData.h"

#include "EngineeringNumber.h"
#include "ParameterExpression.h"

bool ParameterData::accepts(const QString& text) const {
    switch (kind) {
        case Number: {
            bool ok = false;
            EngineeringNumber::parse(text, &ok);
            return ok || ParameterExpression::isWellFormed(text);
        }
        case Choice:
            return choices.contains(text);
        case Text:
            break;
    }
    return true;
}

QString ParameterData::display(const QString& text) const {
    if (unit.isEmpty() || text.isEmpty() || ParameterExpression::isWellFormed(text)) {
        return text;
    }
    EngineeringNumber::Parts parts;
    if (kind == Number && EngineeringNumber::split(text, &parts)) {
        return parts.mantissa + QLatin1Char(' ') + parts.suffix + unit;
    }
    return text + QLatin1Char(' ') + unit;
}
