#pragma once

#include <QTextCharFormat>
#include <QVector>

class QDomDocument;
class QDomElement;
class QTextDocument;

/// How single characters of a text box differ from its font: raised or lowered, bold, slanted,
/// underlined, coloured. Size and family are the whole box's.
struct TextRun {
    int start = 0;
    int length = 0;
    QTextCharFormat format;
};
bool operator==(const TextRun& a, const TextRun& b);

namespace TextRuns {

/// Of a document's characters, in their order.
QVector<TextRun> of(const QTextDocument& document);
/// Gives them to a document with the same characters; nothing of it can be undone.
void apply(const QVector<TextRun>& runs, QTextDocument* document);

/// One "Run" for each among the children of a box's record, which add nothing to its text.
void store(QDomDocument document, QDomElement& record, const QVector<TextRun>& runs);
QVector<TextRun> stored(const QDomElement& record);

}  // namespace TextRuns
