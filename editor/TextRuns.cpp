#include "TextRuns.h"

#include <QColor>
#include <QDomDocument>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

const QString RunTag = QStringLiteral("Run");
const QString Start = QStringLiteral("Start");
const QString Length = QStringLiteral("Length");
const QString Script = QStringLiteral("Script");
const QString Bold = QStringLiteral("Bold");
const QString Italic = QStringLiteral("Italic");
const QString Underline = QStringLiteral("Underline");
const QString Color = QStringLiteral("Color");
const QString Raised = QStringLiteral("super");
const QString Lowered = QStringLiteral("sub");

bool isSet(const QDomElement& record, const QString& name) {
    return record.attribute(name).toInt() != 0;
}

QTextCharFormat ownFormat(const QTextCharFormat& whole) {
    QTextCharFormat own;
    const auto script = whole.verticalAlignment();
    if (script == QTextCharFormat::AlignSuperScript || script == QTextCharFormat::AlignSubScript) {
        own.setVerticalAlignment(script);
    }
    if (whole.fontWeight() > QFont::Medium) {
        own.setFontWeight(QFont::Bold);
    }
    if (whole.fontItalic()) {
        own.setFontItalic(true);
    }
    if (whole.fontUnderline()) {
        own.setFontUnderline(true);
    }
    if (whole.foreground().style() == Qt::SolidPattern) {
        own.setForeground(whole.foreground().color());
    }
    return own;
}

}  // namespace

bool operator==(const TextRun& a, const TextRun& b) {
    return a.start == b.start && a.length == b.length && a.format == b.format;
}

QVector<TextRun> TextRuns::of(const QTextDocument& document) {
    QVector<TextRun> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment part = it.fragment();
            const TextRun run{part.position(), part.length(), ownFormat(part.charFormat())};
            TextRun* last = runs.isEmpty() ? nullptr : &runs.last();
            if (run.format.propertyCount() == 0) {
                continue;
            }
            // A symbol is made of several fragments.
            if (last && last->start + last->length == run.start && last->format == run.format) {
                last->length += run.length;
            } else {
                runs.append(run);
            }
        }
    }
    return runs;
}

void TextRuns::apply(const QVector<TextRun>& runs, QTextDocument* document) {
    if (runs.isEmpty()) {
        return;
    }
    const bool wasUndoable = document->isUndoRedoEnabled();
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    const int end = document->characterCount() - 1;
    for (const TextRun& run : runs) {
        cursor.setPosition(qBound(0, run.start, end));
        cursor.setPosition(qBound(0, run.length, end - cursor.position()) + cursor.position(),
                           QTextCursor::KeepAnchor);
        // Merged: symbols are what they are by their format.
        cursor.mergeCharFormat(run.format);
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(wasUndoable);
}

void TextRuns::store(QDomDocument document, QDomElement& record, const QVector<TextRun>& runs) {
    for (const TextRun& run : runs) {
        QDomElement child = document.createElement(RunTag);
        child.setAttribute(Start, run.start);
        child.setAttribute(Length, run.length);
        const QTextCharFormat& format = run.format;
        if (format.hasProperty(QTextFormat::TextVerticalAlignment)) {
            const bool isRaised = format.verticalAlignment() == QTextCharFormat::AlignSuperScript;
            child.setAttribute(Script, isRaised ? Raised : Lowered);
        }
        if (format.hasProperty(QTextFormat::FontWeight)) {
            child.setAttribute(Bold, 1);
        }
        if (format.fontItalic()) {
            child.setAttribute(Italic, 1);
        }
        if (format.fontUnderline()) {
            child.setAttribute(Underline, 1);
        }
        if (format.hasProperty(QTextFormat::ForegroundBrush)) {
            child.setAttribute(Color, format.foreground().color().name(QColor::HexArgb));
        }
        record.appendChild(child);
    }
}

QVector<TextRun> TextRuns::stored(const QDomElement& record) {
    QVector<TextRun> runs;
    for (QDomElement child = record.firstChildElement(RunTag); !child.isNull();
         child = child.nextSiblingElement(RunTag)) {
        TextRun run{child.attribute(Start).toInt(), child.attribute(Length).toInt(), {}};
        const QString script = child.attribute(Script);
        if (script == Raised || script == Lowered) {
            run.format.setVerticalAlignment(script == Raised ? QTextCharFormat::AlignSuperScript
                                                             : QTextCharFormat::AlignSubScript);
        }
        if (isSet(child, Bold)) {
            run.format.setFontWeight(QFont::Bold);
        }
        if (isSet(child, Italic)) {
            run.format.setFontItalic(true);
        }
        if (isSet(child, Underline)) {
            run.format.setFontUnderline(true);
        }
        const QColor color(child.attribute(Color));
        if (color.isValid()) {
            run.format.setForeground(color);
        }
        runs.append(run);
    }
    return runs;
}
