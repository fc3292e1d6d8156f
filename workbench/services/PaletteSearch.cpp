#include "PaletteSearch.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

enum Rank { None = -1, LabelBegins = 0, KeywordIs, WordBegins, KeywordBegins, Contained };

bool anyBegins(const QStringList& texts, const QString& start) {
    return std::any_of(texts.begin(), texts.end(), [&start](const QString& text) {
        return text.startsWith(start, Qt::CaseInsensitive);
    });
}

int rankOf(const PaletteEntry& entry, const QString& text) {
    static const QRegularExpression divider(QStringLiteral("[\\s-]+"));
    if (entry.label.startsWith(text, Qt::CaseInsensitive)) {
        return LabelBegins;
    }
    if (entry.keywords.contains(text, Qt::CaseInsensitive)) {
        return KeywordIs;
    }
    if (anyBegins(entry.label.split(divider), text)) {
        return WordBegins;
    }
    if (anyBegins(entry.keywords, text) || entry.type.startsWith(text, Qt::CaseInsensitive)) {
        return KeywordBegins;
    }
    const QString all =
        QStringList({entry.label, entry.type, entry.keywords.join(QLatin1Char(' '))})
            .join(QLatin1Char(' '));
    return all.contains(text, Qt::CaseInsensitive) ? Contained : None;
}

}  // namespace

int paletteRank(const PaletteEntry& entry, const QString& text) {
    const QString whole = text.simplified();
    const int rank = rankOf(entry, whole);
    if (rank != None) {
        return rank;
    }
    int worst = None;
    for (const QString& word : whole.split(QLatin1Char(' '))) {
        const int one = rankOf(entry, word);
        if (one == None) {
            return None;
        }
        worst = std::max(worst, one);
    }
    return worst;
}

QVector<PaletteEntry> bestEntries(const QVector<PaletteEntry>& entries, const QString& text) {
    QVector<PaletteEntry> fitting;
    for (const PaletteEntry& entry : entries) {
        if (paletteRank(entry, text) != None) {
            fitting.append(entry);
        }
    }
    std::stable_sort(fitting.begin(), fitting.end(), [&text](const auto& a, const auto& b) {
        return paletteRank(a, text) < paletteRank(b, text);
    });
    return fitting;
}
