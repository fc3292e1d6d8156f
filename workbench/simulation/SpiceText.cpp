#include "SpiceText.h"

#include "EngineeringNumber.h"

#include <QRegularExpression>

namespace SpiceText {

namespace {

/// Null if the text is no number.
QString number(const QString& text) {
    EngineeringNumber::Parts parts;
    if (!EngineeringNumber::split(text, &parts)) {
        return {};
    }
    // The netlist reads letters of either case alike: its "M" is milli.
    if (parts.suffix == QLatin1String("M")) {
        parts.suffix = QStringLiteral("Meg");
    } else if (parts.suffix == QString(QChar(0xB5))) {
        parts.suffix = QStringLiteral("u");
    }
    return parts.mantissa + parts.suffix;
}

bool isExpression(const QString& text) {
    return text.startsWith(QLatin1Char('{')) && text.endsWith(QLatin1Char('}'));
}

/// The inside of an expression with its numbers in the netlist's notation.
QString expression(const QString& inside) {
    static const QRegularExpression token(QStringLiteral(
        "[A-Za-z_][A-Za-z_0-9]*|(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][+-]?[0-9]+)?[A-Za-zµμ]*"));
    QString result;
    int end = 0;
    for (auto it = token.globalMatch(inside); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString translated = number(match.captured());
        result += inside.mid(end, match.capturedStart() - end);
        result += translated.isNull() ? match.captured() : translated;
        end = match.capturedEnd();
    }
    return result + inside.mid(end);
}

}  // namespace

bool isNumeric(const QString& text) {
    const QString trimmed = text.trimmed();
    return isExpression(trimmed) || !number(trimmed).isNull();
}

QString value(const QString& text) {
    const QString trimmed = text.trimmed();
    if (isExpression(trimmed)) {
        return QLatin1Char('{') + expression(trimmed.mid(1, trimmed.size() - 2)) + QLatin1Char('}');
    }
    const QString translated = number(trimmed);
    return translated.isNull() ? trimmed : translated;
}

QString operand(const QString& text) {
    QString inside = value(text);
    if (isExpression(inside)) {
        inside = inside.mid(1, inside.size() - 2);
    }
    return QLatin1Char('(') + inside + QLatin1Char(')');
}

QString designator(QChar kind, const QString& name) {
    const bool told = name.startsWith(kind, Qt::CaseInsensitive);
    return told ? name : kind + name;
}

}  // namespace SpiceText

QString SpiceNames::unique(const QString& wanted) {
    QString plain;
    for (const QChar c : wanted) {
        const bool fits = c.unicode() < 0x80 && (c.isLetterOrNumber() || c == QLatin1Char('_'));
        plain += fits ? c : QLatin1Char('_');
    }
    QString name = plain;
    for (int i = 2; isTaken(name) || name.isEmpty(); ++i) {
        name = QStringLiteral("%1_%2").arg(plain).arg(i);
    }
    m_taken.insert(name.toLower());
    return name;
}
