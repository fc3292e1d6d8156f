#include "ElementTypeData.h"

#include "EngineeringNumber.h"
#include "ParameterExpression.h"

#include <QRegularExpression>

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

QString ParameterData::withoutUnit(const QString& text) const {
    if (kind != Number || accepts(text)) {
        return text;
    }
    static const QString Omega = QString::fromUtf8("\xCE\xA9");
    QStringList spellings{unit};
    if (unit == Omega) {
        // The sign for the unit, which looks the same as the letter.
        spellings << QString::fromUtf8("\xE2\x84\xA6") << QStringLiteral("Ohms")
                  << QStringLiteral("ohms") << QStringLiteral("Ohm") << QStringLiteral("ohm");
    }
    QString number = text;
    for (const QString& spelling : qAsConst(spellings)) {
        if (!spelling.isEmpty() && number.endsWith(spelling)) {
            number.chop(spelling.size());
            break;
        }
    }
    static const QRegularExpression blankBeforeSuffix(QStringLiteral("\\s+(?=\\D*\\z)"));
    number.remove(blankBeforeSuffix);
    return accepts(number) ? number : text;
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
