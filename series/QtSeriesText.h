#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTextFormat>
#include <QtMath>

#include <algorithm>

namespace QtSeries {

/// Ascent and descent, each in whole pixels. The newer series keeps fractions.
inline int fontHeight(const QFont& font) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QFontMetrics(font).height();
#else
    const QFontMetricsF metrics(font);
    return qCeil(metrics.ascent()) + qCeil(metrics.descent());
#endif
}

/// What the text takes in one line, its letters at whole pixels: drawings have the same sizes with
/// every series, and in files.
inline QSize textSize(const QFont& font, const QString& text) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QFontMetrics(font).boundingRect(text).size();
#else
    const QFontMetrics metrics(font);
    const QFontMetricsF exact(font);
    // Letters of one script make a run, each of which is as wide as its ink.
    QChar::Script script = QChar::Script_Common;
    QRect ink;
    int width = 0;
    int start = 0;
    int at = 0;
    for (const QChar letter : text) {
        if (letter.script() > QChar::Script_Common && letter.script() != script) {
            if (script != QChar::Script_Common) {
                ink = QRect();
                start = at;
            }
            script = letter.script();
        }
        ink |= metrics.boundingRect(letter).translated(at - start, 0);
        width = std::max(width, start + ink.width());
        at += qRound(exact.horizontalAdvance(letter));
    }
    return text.isEmpty() ? QSize(0, 0) : QSize(width, fontHeight(font));
#endif
}

/// For paragraphs whose lines are as far apart with every series: the newer one rounds the
/// fractions of each line up.
inline QTextBlockFormat paragraphFormat(const QFont& font) {
    QTextBlockFormat format;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QFontMetricsF metrics(font);
    const qreal lineSpacing = metrics.lineSpacing();
    format.setLineHeight(qRound(lineSpacing) - qCeil(lineSpacing),
                         QTextBlockFormat::LineDistanceHeight);
    format.setBottomMargin(std::max(0, fontHeight(font) - qRound(lineSpacing)));
#else
    Q_UNUSED(font)
#endif
    return format;
}

}  // namespace QtSeries
