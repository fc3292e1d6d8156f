#pragma once

#include <QTextFormat>

class QFont;
class QString;
class QTextCursor;
class QTextDocument;

/// The text of a text box between its two forms: a string with escapes of five characters, "{|?|}"
/// for a paragraph break and "{|c|}" for the character c in the "Symbol" font, and a document in
/// which a symbol is three characters: a guard that carries the marker, the character, a guard.
/// The guards are U+FFFC and draw nothing. The time taken grows with the length, not its square.
namespace TextBoxText {

/// Set to true in the format of a symbol's first guard.
constexpr int MarkerProperty = QTextFormat::UserProperty + 1;
constexpr QChar Guard(QChar::ObjectReplacementCharacter);
/// Has no width. Stands before a symbol that would open a block, where `encodedText` loses it.
constexpr QChar Shield(0x200b);

/// Replaces the document's content; nothing of it can be undone. The font is that of normal text.
/// Of what `encodedText` writes for a symbol that it loses nothing comes back, so that reading and
/// writing settle.
void fill(QTextDocument* document, const QString& encoded, const QFont& font);
/// The text with a paragraph break for each symbol whose character would break its own block, and
/// so would never settle.
QString withoutBreakingSymbols(QString encoded);
/// The inverse of `fill` as long as no block but the first begins with a symbol. In one that does
/// the symbol is lost: a line separator and a guard come out in its place.
QString encodedText(const QTextDocument& document);
/// As `fill`, from a document's plain text, in which a guard announces a symbol. Shields are left
/// to `repair`.
void fillFromPlainText(QTextDocument* document, const QString& plain, const QFont& font);
/// Lets the document break a line anywhere if the text, its own, holds a word so long that looking
/// for better places would take time by the square of its length.
void adaptWrapping(QTextDocument* document, const QString& text);
/// Put in place of the selection, as one step of the history and in the cursor's format.
void insertSymbol(QTextCursor& cursor, QChar symbol);
/// The same for a text in which a guard announces a symbol.
void insertPlainText(QTextCursor& cursor, const QString& plain);
/// Where the symbol begins that the position lies inside of, -1 if there is none.
int symbolAround(const QTextDocument& document, int position);
/// Makes all symbols whole again, of the three characters that they are, however the document was
/// edited, and shields those that open a block. What stood between their guards is text, before or
/// behind them. Guards that belong to no symbol go.
void repair(QTextDocument* document, const QFont& font);
/// Sets the family of everything but the symbols.
void setFamily(QTextDocument* document, const QString& family);

}  // namespace TextBoxText
