#include "TextBoxText.h"

#include "QtSeries.h"
#include "QtSeriesText.h"

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
/// What the walk over a document writes for a symbol that opens a block.
const QString LostSymbol = QChar(QChar::ParagraphSeparator) + QStringLiteral("{|\ufffc|}\ufffc");
constexpr int SymbolLength = 3;
const QString SymbolFamily = QStringLiteral("Symbol");
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
        QtSeries::setFontFamily(&m_symbol, SymbolFamily);
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

    /// Of all that is written from here on.
    void spaceLines(const QFont& font) {
        m_cursor.mergeBlockFormat(QtSeries::paragraphFormat(font));
    }
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
        : end(document.characterCount() - 1),
          m_blocks(end + 2, -1),
          m_marks(end + 1),
          m_symbolFont(end + 1) {
        text.reserve(end + 1);
        int number = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next(), ++number) {
            std::fill_n(m_blocks.begin() + block.position(), block.length(), number);
            text += block.text();
            text += QChar::ParagraphSeparator;
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextFragment part = it.fragment();
                const int past = part.position() + part.length();
                const QTextCharFormat format = part.charFormat();
                m_marks.fill(isMarker(format), part.position(), past);
                m_symbolFont.fill(QtSeries::fontFamily(format) == SymbolFamily, part.position(),
                                  past);
            }
            // An empty block has a format of its own.
            if (block.length() == 1) {
                m_marks.setBit(block.position(), isMarker(block.charFormat()));
            }
        }
    }

    int block(int position) const { return m_blocks.at(position); }
    bool isBlockStart(int position) const {
        return position == 0 || block(position) != block(position - 1);
    }
    /// Whether the format at the position is a marker: the format of the character before it, at
    /// the start of a block that of the one after it.
    bool isMarked(int position) const {
        return hasMarker(isBlockStart(position) ? position : position - 1);
    }
    int before(int position) const { return qMax(0, position - 1); }
    int after(int position) const { return qMin(end, position + 1); }

    // Of the character behind the position.
    bool hasMarker(int position) const { return m_marks.at(position); }
    bool isGuard(int position) const {
        return position <= end && text.at(position) == TextBoxText::Guard;
    }
    bool isClosing(int position) const { return isGuard(position) && !hasMarker(position); }
    bool isInSymbolFont(int position) const { return position <= end && m_symbolFont.at(position); }
    /// Whether the three characters from there on are a symbol.
    bool isSymbol(int position) const {
        return position >= 0 && isGuard(position) && hasMarker(position) &&
               letterAfter(position) == position + 1 && isClosing(position + 2);
    }
    /// The place of the character that an opening guard announces, -1 if there is none: the first
    /// that looks like a symbol, else the first, of those up to the next guard.
    int letterAfter(int guard) const {
        const int first = guard + 1;
        for (int i = first; isTextOf(block(guard), i); ++i) {
            if (isInSymbolFont(i)) {
                return i;
            }
        }
        return isTextOf(block(guard), first) ? first : -1;
    }
    /// Whether the character is one of the block's, neither a guard nor what ends the block.
    bool isTextOf(int number, int position) const {
        return !isGuard(position) && block(position) == number && block(position + 1) == number;
    }

    QString text;
    int end;

private:
    static bool isMarker(const QTextFormat& format) {
        return format.hasProperty(TextBoxText::MarkerProperty);
    }

    QVector<int> m_blocks;
    QBitArray m_marks;
    QBitArray m_symbolFont;
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
    writer.spaceLines(font);
    for (int i = 0; i < encoded.size();) {
        const int found = encoded.indexOf(Opening, i);
        if (found > i && QStringView(encoded).mid(found - 1).startsWith(LostSymbol)) {
            writer.writeText(encoded.mid(i, found - 1 - i));
            i = found - 1 + LostSymbol.size();
            // What follows would open the block now, and be lost in its turn.
            if (QStringView(encoded).mid(i).startsWith(Opening)) {
                writer.writeText(TextBoxText::Shield);
            }
            continue;
        }
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
        const bool isShielded = found > i && plain.at(found - 1) == Shield;
        writer.writeText(plain.mid(i, found < 0 ? -1 : found - i - (isShielded ? 1 : 0)));
        if (found < 0) {
            return;
        }
        writer.writeSymbol(plain.mid(found + 1, 1));
        i = found + SymbolLength;
    }
}

QString TextBoxText::withoutBreakingSymbols(QString encoded) {
    // What a text cursor takes for the end of a block.
    const QString breaks = QStringLiteral("\n\r\u2029\ufdd0\ufdd1");
    for (int found = encoded.indexOf(Opening); found >= 0;
         found = encoded.indexOf(Opening, found + EscapeLength)) {
        const int symbol = found + Opening.size();
        if (symbol < encoded.size() && breaks.contains(encoded.at(symbol))) {
            encoded.replace(found, EscapeLength, ParagraphBreak);
        }
    }
    return encoded;
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
        result += flat.text.mid(qMin(start, position), qAbs(position - start));
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
            result += Opening + flat.text.mid(symbol, position - symbol) + Closing;
        }
        position = flat.after(position);
    }
    return result;
}

void TextBoxText::setFamily(QTextDocument* document, const QString& family) {
    const FlatDocument flat(*document);
    QTextCharFormat format;
    QtSeries::setFontFamily(&format, family);
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

void TextBoxText::insertSymbol(QTextCursor& cursor, QChar symbol) {
    QTextCharFormat format = cursor.charFormat();
    // At the start of a block this is the format of what follows, which may be a symbol.
    format.clearProperty(MarkerProperty);
    QTextCharFormat marker = format;
    marker.setProperty(MarkerProperty, true);
    QTextCharFormat symbolFormat;
    symbolFormat.setFont(QFont(SymbolFamily, format.font().pointSize(), -1, false));
    cursor.beginEditBlock();
    cursor.insertText(Guard, marker);
    cursor.insertText(symbol, symbolFormat);
    cursor.insertText(Guard, format);
    cursor.endEditBlock();
}

void TextBoxText::insertPlainText(QTextCursor& cursor, const QString& plain) {
    QTextCharFormat format = cursor.charFormat();
    format.clearProperty(MarkerProperty);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    for (int i = 0; i < plain.size();) {
        const int found = plain.indexOf(Guard, i);
        cursor.insertText(plain.mid(i, found < 0 ? -1 : found - i), format);
        if (found < 0) {
            break;
        }
        if (found + 1 < plain.size()) {
            insertSymbol(cursor, plain.at(found + 1));
        }
        i = found + SymbolLength;
    }
    cursor.endEditBlock();
}

int TextBoxText::symbolAround(const QTextDocument& document, int position) {
    if (document.characterAt(position - 1) != Guard && document.characterAt(position) != Guard) {
        return -1;
    }
    const FlatDocument flat(document);
    for (int start = position - SymbolLength + 1; start < position; ++start) {
        if (flat.isSymbol(start)) {
            return start;
        }
    }
    return -1;
}

namespace {

/// What makes the symbols of a document whole, at one position.
struct Mend {
    /// `Text` gives a character that stood within a symbol the format of text.
    enum Kind { Remove, Unmark, Text, Open, Close, Shield };

    int position;
    Kind kind;
};

/// Where a symbol begins at an opening guard: puts its guards next to its letter. Gives the last
/// position that it looked at.
int mendSymbol(const FlatDocument& flat, int guard, QVector<Mend>* mends) {
    const int letter = flat.letterAfter(guard);
    if (letter != guard + 1) {
        mends->append({guard, Mend::Remove});
    }
    if (letter < 0) {
        return guard;
    }
    for (int i = guard + 1; i < letter; ++i) {
        mends->append({i, Mend::Text});
    }
    if (letter != guard + 1) {
        mends->append({letter, Mend::Open});
    }
    mends->append({letter, Mend::Unmark});
    const int next = letter + 1;
    if (flat.isClosing(next)) {
        return next;
    }
    // A marked guard is that of the next symbol, if there is one.
    if (flat.isGuard(next) && !flat.isInSymbolFont(next + 1)) {
        mends->append({next, Mend::Unmark});
        return next;
    }
    mends->append({next, Mend::Close});
    int past = next;
    for (; flat.isTextOf(flat.block(guard), past); ++past) {
        mends->append({past, Mend::Text});
    }
    if (flat.isClosing(past)) {
        mends->append({past, Mend::Remove});
        return past;
    }
    return past - 1;
}

/// By position, and for one position in the opposite of the order in which they are to be made.
QVector<Mend> mendsOf(const FlatDocument& flat) {
    QVector<Mend> mends;
    for (int i = 0; i <= flat.end; ++i) {
        if (flat.isSymbol(i)) {
            i += SymbolLength - 1;
        } else if (flat.isGuard(i) && flat.hasMarker(i)) {
            i = mendSymbol(flat, i, &mends);
        } else if (flat.isGuard(i)) {
            mends.append({i, Mend::Remove});
        } else {
            if (flat.isInSymbolFont(i) && flat.isClosing(i + 1)) {
                mends.append({i, Mend::Open});
            }
            if (flat.hasMarker(i)) {
                mends.append({i, Mend::Unmark});
            }
            if (flat.isInSymbolFont(i) && flat.isClosing(i + 1)) {
                ++i;
            }
        }
    }
    return mends;
}

QVector<Mend> shieldsOf(const FlatDocument& flat) {
    QVector<Mend> shields;
    for (int i = 1; i < flat.end; ++i) {
        if (flat.isBlockStart(i) && flat.isSymbol(i)) {
            shields.append({i, Mend::Shield});
        }
    }
    return shields;
}

void unmark(QTextCursor& cursor) {
    const bool isEmptyBlock = cursor.block().length() == 1;
    if (!isEmptyBlock) {
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    }
    QTextCharFormat format = isEmptyBlock ? cursor.blockCharFormat() : cursor.charFormat();
    format.clearProperty(TextBoxText::MarkerProperty);
    isEmptyBlock ? cursor.setBlockCharFormat(format) : cursor.setCharFormat(format);
}

/// From the end, so that the places before stay what they are.
void apply(QVector<Mend> mends, QTextDocument* document, const QFont& font) {
    QTextCharFormat normal;
    normal.setFont(font);
    QTextCharFormat marker = normal;
    marker.setProperty(TextBoxText::MarkerProperty, true);
    QTextCursor cursor(document);
    for (auto mend = mends.crbegin(); mend != mends.crend(); ++mend) {
        cursor.setPosition(mend->position);
        switch (mend->kind) {
            case Mend::Remove:
                cursor.deleteChar();
                break;
            case Mend::Unmark:
                unmark(cursor);
                break;
            case Mend::Text:
                cursor.setPosition(mend->position + 1, QTextCursor::KeepAnchor);
                cursor.setCharFormat(normal);
                break;
            case Mend::Open:
                cursor.insertText(TextBoxText::Guard, marker);
                break;
            case Mend::Close:
                cursor.insertText(TextBoxText::Guard, normal);
                break;
            case Mend::Shield:
                cursor.insertText(TextBoxText::Shield, normal);
                break;
        }
    }
}

}  // namespace

void TextBoxText::repair(QTextDocument* document, const QFont& font) {
    apply(mendsOf(FlatDocument(*document)), document, font);
    apply(shieldsOf(FlatDocument(*document)), document, font);
}
