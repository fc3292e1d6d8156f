#include "AscValues.h"

#include <QRegularExpression>
#include <QVector>

namespace AscValues {

namespace {

const QString Micro = QString(QChar(0xB5));

/// Null for no suffix that is known.
QString ownSuffix(const QString& suffix) {
    static const QHash<QString, QString> own = {{QString(), QStringLiteral("")},
                                                {QStringLiteral("t"), QStringLiteral("T")},
                                                {QStringLiteral("g"), QStringLiteral("G")},
                                                {QStringLiteral("meg"), QStringLiteral("M")},
                                                {QStringLiteral("k"), QStringLiteral("k")},
                                                {QStringLiteral("m"), QStringLiteral("m")},
                                                {QStringLiteral("u"), QStringLiteral("u")},
                                                {QChar(0xB5), QStringLiteral("u")},
                                                {QChar(0x3BC), QStringLiteral("u")},
                                                {QStringLiteral("n"), QStringLiteral("n")},
                                                {QStringLiteral("p"), QStringLiteral("p")},
                                                {QStringLiteral("f"), QStringLiteral("f")}};
    return own.value(suffix.toLower());
}

/// Null for no number. Letters behind it are its unit, and "4k7" is "4.7k".
QString number(const QString& text) {
    static const QRegularExpression plain(
        QStringLiteral(
            "\\A([+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?)(meg|[tgkmunpf\\x{B5}\\x{3BC}])?"
            "[A-Za-z\\x{3A9}\\x{2126}\\x{B0}]*\\z"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression inner(
        QStringLiteral("\\A(\\d+)(meg|[tgkmunpfr\\x{B5}\\x{3BC}])(\\d+)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = plain.match(text);
    if (match.hasMatch()) {
        return match.captured(1) + ownSuffix(match.captured(2));
    }
    const QRegularExpressionMatch odd = inner.match(text);
    if (!odd.hasMatch()) {
        return {};
    }
    return odd.captured(1) + QLatin1Char('.') + odd.captured(3) + ownSuffix(odd.captured(2));
}

QString expression(const QString& inside, const QHash<QString, QString>& parameters) {
    static const QRegularExpression token(QStringLiteral(
        "[A-Za-z_]\\w*|(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?[A-Za-z\\x{B5}\\x{3BC}]*"));
    QString result;
    int end = 0;
    for (auto it = token.globalMatch(inside); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString word = match.captured();
        const QString translated =
            word.at(0).isLetter() || word.at(0) == QLatin1Char('_') ? QString() : number(word);
        result += inside.mid(end, match.capturedStart() - end);
        result += translated.isNull() ? parameters.value(word.toLower(), word) : translated;
        end = match.capturedEnd();
    }
    return result + inside.mid(end);
}

/// Cuts at blanks outside of parentheses and braces.
QStringList pieces(const QString& text) {
    QStringList result;
    QString piece;
    int depth = 0;
    for (const QChar c : text) {
        depth += QStringLiteral("({").contains(c) ? 1 : 0;
        depth -= QStringLiteral(")}").contains(c) ? 1 : 0;
        if ((c.isSpace() || c == QLatin1Char(',')) && depth <= 0) {
            if (!piece.isEmpty()) {
                result.append(piece);
            }
            piece.clear();
        } else {
            piece += c;
        }
    }
    return piece.isEmpty() ? result : result << piece;
}

}  // namespace

QString value(const QString& text, const QHash<QString, QString>& parameters) {
    const QString trimmed = text.trimmed();
    if (trimmed.size() > 2 && trimmed.startsWith(QLatin1Char('{')) &&
        trimmed.endsWith(QLatin1Char('}'))) {
        return QLatin1Char('{') + expression(trimmed.mid(1, trimmed.size() - 2), parameters) +
               QLatin1Char('}');
    }
    return number(trimmed);
}

QString simulatorText(const QString& text) {
    const QString plain = value(text);
    QString result = plain.isNull() ? text.simplified() : plain;
    return result.replace(QChar(0xB5), QLatin1Char('u')).replace(QChar(0x3BC), QLatin1Char('u'));
}

Waveform waveform(const QString& text) {
    static const QRegularExpression call(QStringLiteral("\\A([A-Za-z]+)\\s*\\((.*)\\)\\z"));
    static const QRegularExpression apart(QStringLiteral("\\b([A-Za-z]+)\\s+\\("));
    Waveform wave;
    const QStringList words =
        pieces(QString(text).replace(apart, QStringLiteral("\\1(")).simplified());
    for (int i = 0; i < words.size(); ++i) {
        const QString word = words.at(i).toUpper();
        const QRegularExpressionMatch match = call.match(words.at(i));
        if (word == QLatin1String("AC")) {
            wave.isAc = true;
            wave.acMagnitude = value(words.value(i + 1));
            wave.acPhase = value(words.value(i + 2));
            i += (wave.acMagnitude.isNull() ? 0 : 1) + (wave.acPhase.isNull() ? 0 : 1);
        } else if (word == QLatin1String("DC")) {
            wave.dc = words.value(++i);
        } else if (match.hasMatch() && wave.function.isEmpty()) {
            wave.function = match.captured(1).toUpper();
            wave.arguments = pieces(match.captured(2));
        } else if (wave.dc.isEmpty() && wave.function.isEmpty() && i == 0) {
            wave.dc = words.at(i);
        } else {
            wave.isUnderstood = false;
        }
    }
    return wave;
}

QVector<QPair<QString, QString>> assignments(const QString& text) {
    static const QRegularExpression pattern(
        QStringLiteral("([A-Za-z_]\\w*)\\s*=\\s*(\\{[^}]*\\}|'[^']*'|\"[^\"]*\"|[^\\s,]+)"));
    QVector<QPair<QString, QString>> result;
    for (auto it = pattern.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result.append({match.captured(1), match.captured(2)});
    }
    return result;
}

}  // namespace AscValues
