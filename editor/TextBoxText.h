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

/// Replaces the document's content; nothing of it can be undone. The font is that of normal text.
void fill(QTextDocument* document, const QString& encoded, const QFont& font);
/// The inverse of `fill` as long as no block but the first begins with a symbol. In one that does
/// the symbol is lost: a line separator and a guard come out in its place.
QString encodedText(const QTextDocument& document);
/// As `fill`, from a document's plain text, in which a guard announces a symbol.
void fillFromPlainText(QTextDocument* document, const QString& plain, const QFont& font);
/// Lets the document break a line anywhere if the text, its own, holds a word so long that looking
/// for better places would take time by the square of its length.
void adaptWrapping(QTextDocument* document, const QString& text);
/// Takes out the whole symbol before the cursor, or behind it, or around it; false if there is
/// none. Its guards can't be seen, and what is left of a symbol would swallow its neighbours.
bool removeSymbol(QTextCursor cursor, bool isBackward);
/// Takes out guards that belong to no symbol, and the marker where it marks none.
void repair(QTextDocument* document);
/// Sets the family of everything but the symbols.
void setFamily(QTextDocument* document, const QString& family);

}  // namespace TextBoxText
