#include "EngineeringNumber.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace EngineeringNumber {

namespace {

struct Suffix {
    const char* spelling;
    const char* canonical;
    int exponent;
};

constexpr Suffix Suffixes[] = {
    {"f", "f", -15},
    {"p", "p", -12},
    {"n", "n", -9},
    {"u", "\xC2\xB5", -6},
    {"\xC2\xB5", "\xC2\xB5", -6},  // the micro sign
    {"\xCE\xBC", "\xC2\xB5", -6},  // the Greek letter, which looks the same
    {"m", "m", -3},
    {"k", "k", 3},
    {"K", "k", 3},
    {"M", "M", 6},
    {"meg", "M", 6},
    {"Meg", "M", 6},
    {"MEG", "M", 6},
    {"G", "G", 9},
    {"T", "T", 12},
};

const Suffix* findSuffix(const QString& spelling) {
    for (const Suffix& suffix : Suffixes) {
        if (spelling == QString::fromUtf8(suffix.spelling)) {
            return &suffix;
        }
    }
    return nullptr;
}

struct Match {
    QString number;
    QString exponent;
    const Suffix* suffix = nullptr;
};

/// "4k7": the suffix stands where the point would.
bool matchPointBySuffix(const QString& text, Match* result) {
    static const QRegularExpression pattern(
        QStringLiteral("\\A([+-]?[0-9]+)([^0-9eE.+\\-\\s]+)([0-9]+)\\z"));
    const QRegularExpressionMatch found = pattern.match(text.trimmed());
    const QString spelling = found.captured(2);
    // As on parts of a few ohms: "4R7".
    const bool isPlain = spelling == QLatin1String("R") || spelling == QLatin1String("r");
    const Suffix* suffix = findSuffix(spelling);
    if (!found.hasMatch() || (!suffix && !isPlain)) {
        return false;
    }
    *result = {found.captured(1) + QLatin1Char('.') + found.captured(3), {}, suffix};
    return true;
}

bool match(const QString& text, Match* result) {
    static const QRegularExpression pattern(
        QStringLiteral("\\A([+-]?(?:[0-9]+\\.?[0-9]*|\\.[0-9]+))(?:[eE]([+-]?[0-9]+))?"
                       "([^0-9.+\\-\\s]*)\\z"));
    const QRegularExpressionMatch found = pattern.match(text.trimmed());
    if (!found.hasMatch()) {
        return matchPointBySuffix(text, result);
    }
    const QString spelling = found.captured(3);
    const Suffix* suffix = findSuffix(spelling);
    if (!spelling.isEmpty() && !suffix) {
        return false;
    }
    *result = {found.captured(1), found.captured(2), suffix};
    return true;
}

}  // namespace

bool split(const QString& text, Parts* parts) {
    Match found;
    if (!match(text, &found)) {
        return false;
    }
    const QString exponent =
        found.exponent.isEmpty() ? QString() : QLatin1Char('e') + found.exponent;
    *parts = {found.number + exponent,
              found.suffix ? QString::fromUtf8(found.suffix->canonical) : QString()};
    return true;
}

double parse(const QString& text, bool* ok) {
    *ok = false;
    Match found;
    if (!match(text, &found)) {
        return 0;
    }
    // The suffix goes into the exponent, and the whole is read at once: a product would be rounded
    // twice, and 4.7n would not be the double 4.7e-9.
    bool exponentOk = true;
    const int written = found.exponent.isEmpty() ? 0 : found.exponent.toInt(&exponentOk);
    if (!exponentOk || std::abs(written) > 100000) {
        return 0;
    }
    const int exponent = written + (found.suffix ? found.suffix->exponent : 0);
    bool numberOk = false;
    const double value =
        (found.number.toLatin1() + 'e' + QByteArray::number(exponent)).toDouble(&numberOk);
    *ok = numberOk && std::isfinite(value);
    return *ok ? value : 0;
}

QString format(double value) {
    if (!std::isfinite(value)) {
        return {};
    }
    if (value == 0) {
        return QStringLiteral("0");
    }
    // "-d.ddde+xx" with the fewest digits that tell this double from its neighbours.
    const QString shortest =
        QLocale::c().toString(std::fabs(value), 'e', QLocale::FloatingPointShortest);
    const int mark = shortest.indexOf(QLatin1Char('e'));
    const int exponent = shortest.mid(mark + 1).toInt();
    QString digits = shortest.left(mark).remove(QLatin1Char('.'));
    const QString sign = value < 0 ? QStringLiteral("-") : QString();

    const int shift = ((exponent % 3) + 3) % 3;
    const int power = exponent - shift;
    QString tail;
    if (power != 0) {
        tail = QLatin1Char('e') + QString::number(power);
        for (const Suffix& suffix : Suffixes) {
            if (suffix.exponent == power) {
                tail = QString::fromUtf8(suffix.spelling);
                break;
            }
        }
    }
    digits = digits.leftJustified(shift + 1, QLatin1Char('0'));
    if (digits.size() > shift + 1) {
        digits.insert(shift + 1, QLatin1Char('.'));
    }
    return sign + digits + tail;
}

}  // namespace EngineeringNumber
