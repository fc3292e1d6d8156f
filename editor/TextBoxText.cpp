#include "TextBoxText.h"

#include <QBitArray>
#include <QFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>
#include <QVector>

#include <algorithm>

namespace {

const QString Opening = QStringLiteral("{|");
const QString Closing = QStringLiteral("|}");
const QString ParagraphBreak = QStringLiteral("{|?|}");
constexpr int EscapeLength = 5;
constexpr int SymbolLength = 3;
// In characters; no box shows a word of this length on one line.
constexpr int LongWord = 1000;

/// Writes a document from its beginning, as one change, so that it is laid out once.
class Writer {
public:
    Writer(QTextDocument* document, const QString& text, const QFont& font)
        : m_document(document), m_undoable(document->isUndoRedoEnabled()) {
        m_normal.setFont(font);
        m_marker = m_normal;
        m_marker.setProperty(TextBoxText::MarkerProperty, true);
        m_symbol.setFontFamily(QStringLiteral("Symbol"));
        // Without a size in points the symbol takes the document's size. Qt would do so for -1,
        // too, but complain about each one.
        if (font.pointSize() > 0) {
            m_symbol.setFontPointSize(font.pointSize());
        }
        m_document->clear();
        TextBoxText::adaptWrapping(m_document, text);
        m_document->setUndoRedoEnabled(false);
        m_cursor = QTextCursor(m_document);
        m_cursor.beginEditBlock();
    }
    ~Writer() {
        m_cursor.endEditBlock();
        m_document->setUndoRedoEnabled(m_undoable);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void writeText(const QString& text) { m_cursor.insertText(text, m_normal); }
    void writeBreak() { m_cursor.insertBlock(); }
    /// The symbol is one character, or none where the text ends too early.
    void writeSymbol(const QString& symbol) {
        m_cursor.insertText(TextBoxText::Guard, m_marker);
        m_cursor.insertText(symbol, m_symbol);
        m_cursor.insertText(TextBoxText::Guard, m_normal);
    }

private:
    QTextDocument* m_document;
    QTextCursor m_cursor;
    QTextCharFormat m_normal;
    QTextCharFormat m_marker;
    QTextCharFormat m_symbol;
    bool m_undoable;
};

/// A document laid out flat: what a text cursor would tell at each position. A cursor that walks a
/// long document takes time by the square of its length.
class FlatDocument {
public:
    explicit FlatDocument(const QTextDocument& document)
        : end(document.characterCount() - 1), m_blocks(end + 1), m_marked(end + 1) {
        text.reserve(end + 1);
        QBitArray marks(end + 1);
        int number = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next(), ++number) {
            const int first = block.position();
            std::fill_n(m_blocks.begin() + first, block.length(), number);
            text += block.text();
            text += QChar::ParagraphSeparator;
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextFragment part = it.fragment();
                if (isMarker(part.charFormat())) {
                    marks.fill(true, part.position(), part.position() + part.length());
                }
            }
            // The format at the start of a block is that of the character after it; an empty block
            // has one of its own.
            m_marked[first] = block.length() > 1 ? marks[first] : isMarker(block.charFormat());
            for (int i = first + 1; i < first + block.length(); ++i) {
                m_marked[i] = marks[i - 1];
            }
        }
    }

    int block(int position) const { return m_blocks.at(position); }
    /// Whether the format at the position is a marker: the format of the character before it.
    bool isMarked(int position) const { return m_marked.at(position); }
    int before(int position) const { return qMax(0, position - 1); }
    int after(int position) const { return qMin(end, position + 1); }

    QString text;
    int end;

private:
    static bool isMarker(const QTextFormat& format) {
        return format.hasProperty(TextBoxText::MarkerProperty);
    }

    QVector<int> m_blocks;
    QBitArray m_marked;
};

bool holdsLongWord(const QString& text) {
    int length = 0;
    for (const QChar c : text) {
        length = c.isSpace() ? 0 : length + 1;
        if (length > LongWord) {
            return true;
        }
    }
    return false;
}

}  // namespace

void TextBoxText::adaptWrapping(QTextDocument* document, const QString& text) {
    QTextOption option = document->defaultTextOption();
    const bool isAnywhere = option.wrapMode() == QTextOption::WrapAnywhere;
    if (holdsLongWord(text) != isAnywhere) {
        option.setWrapMode(isAnywhere ? QTextOption::WordWrap : QTextOption::WrapAnywhere);
        document->setDefaultTextOption(option);
    }
}

void TextBoxText::fill(QTextDocument* document, const QString& encoded, const QFont& font) {
    Writer writer(document, encoded, font);
    for (int i = 0; i < encoded.size();) {
        const int found = encoded.indexOf(Opening, i);
        writer.writeText(encoded.mid(i, found < 0 ? -1 : found - i));
        if (found < 0) {
            return;
        }
        const QString symbol = encoded.mid(found + Opening.size(), 1);
        if (symbol == QLatin1String("?")) {
            writer.writeBreak();
        } else {
            writer.writeSymbol(symbol);
        }
        i = found + EscapeLength;
    }
}

void TextBoxText::fillFromPlainText(QTextDocument* document, const QString& plain,
                                    const QFont& font) {
    Writer writer(document, plain, font);
    for (int i = 0; i < plain.size();) {
        const int found = plain.indexOf(Guard, i);
        writer.writeText(plain.mid(i, found < 0 ? -1 : found - i));
        if (found < 0) {
            return;
        }
        writer.writeSymbol(plain.mid(found + 1, 1));
        i = found + SymbolLength;
    }
}

QString TextBoxText::encodedText(const QTextDocument& document) {
    const FlatDocument flat(document);
    QString result;
    int block = 0;
    for (int position = 0; position < flat.end;) {
        const int start = position;
        bool blockEnded = false;
        // What stops the walk is looked for before each step, the block's end first: a file that
        // was written earlier must come out the same.
        for (;; ++position) {
            blockEnded = flat.block(position) != block;
            if (blockEnded || flat.isMarked(position)) {
                position = flat.before(position);
                break;
            }
            if (position == flat.end) {
                break;
            }
        }
        // At the start of a block the step back leads before it, and takes the separator in.
        result += flat.text.midRef(qMin(start, position), qAbs(position - start));
        if (blockEnded) {
            result += ParagraphBreak;
            do {
                position = flat.after(position);
            } while (flat.block(position) == block && position < flat.end);
            block = flat.block(position);
            continue;
        }
        position = flat.after(position);
        if (flat.isMarked(position)) {
            const int symbol = position;
            position = flat.after(position);
            result += Opening + flat.text.midRef(symbol, position - symbol) + Closing;
        }
        position = flat.after(position);
    }
    return result;
}

void TextBoxText::setFamily(QTextDocument* document, const QString& family) {
    const FlatDocument flat(*document);
    QTextCharFormat format;
    format.setFontFamily(family);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (int position = 0; position < flat.end;) {
        cursor.setPosition(position);
        while (position < flat.end && !flat.isMarked(position)) {
            ++position;
        }
        if (flat.isMarked(position)) {
            position = flat.before(position);
        }
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(format);
        position = qMin(flat.end, position + SymbolLength);
    }
    cursor.endEditBlock();
}

namespace {

/// Whether the three characters from the position on are a symbol.
bool isSymbolAt(const FlatDocument& flat, int position) {
    return position >= 0 && position + SymbolLength <= flat.end &&
           flat.text.at(position) == TextBoxText::Guard && flat.isMarked(position + 1) &&
           flat.text.at(position + 1) != TextBoxText::Guard &&
           flat.text.at(position + 2) == TextBoxText::Guard;
}

}  // namespace

bool TextBoxText::removeSymbol(QTextCursor cursor, bool isBackward) {
    if (cursor.hasSelection()) {
        return false;
    }
    const FlatDocument flat(*cursor.document());
    const int at = cursor.position();
    const int first = isBackward ? at - SymbolLength : at - SymbolLength + 1;
    const int last = isBackward ? at - 1 : at;
    for (int start = first; start <= last; ++start) {
        if (isSymbolAt(flat, start)) {
            cursor.setPosition(start);
            cursor.setPosition(start + SymbolLength, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            return true;
        }
    }
    return false;
}

void TextBoxText::repair(QTextDocument* document) {
    const FlatDocument flat(*document);
    QVector<int> strays;
    QVector<int> markers;
    for (int position = 0; position < flat.end; ++position) {
        if (isSymbolAt(flat, position)) {
            if (flat.isMarked(position + SymbolLength)) {
                markers.append(position + SymbolLength - 1);
            }
            position += SymbolLength - 1;
        } else if (flat.text.at(position) == Guard) {
            strays.append(position);
        } else if (flat.isMarked(position + 1)) {
            markers.append(position);
        }
    }
    QTextCursor cursor(document);
    for (int position : qAsConst(markers)) {
        cursor.setPosition(position);
        cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
        QTextCharFormat format = cursor.charFormat();
        format.clearProperty(MarkerProperty);
        cursor.setCharFormat(format);
    }
    // From the end, so that the places before stay what they are.
    for (int i = strays.size() - 1; i >= 0; --i) {
        cursor.setPosition(strays.at(i));
        cursor.deleteChar();
    }
}
