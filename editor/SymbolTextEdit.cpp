#include "SymbolTextEdit.h"

#include "TextBoxText.h"

#include <QKeyEvent>
#include <QMimeData>

namespace {

/// A selected text as the document holds it, in UTF-8: with guards, which announce symbols.
const QString GuardedText = QStringLiteral("application/x-circuiteditor-text");
constexpr int SymbolLength = 3;

}  // namespace

SymbolTextEdit::SymbolTextEdit(QWidget* parent) : QTextEdit(parent) {
    setAcceptRichText(false);
    connect(this, &QTextEdit::cursorPositionChanged, this, &SymbolTextEdit::keepOutOfSymbols);
    connect(this, &QTextEdit::selectionChanged, this, &SymbolTextEdit::keepOutOfSymbols);
}

/// The position, or if it is inside of a symbol the end of that: the nearest, or the one towards
/// which a key moves.
int SymbolTextEdit::outside(int position, bool isNearest) const {
    const int start = TextBoxText::symbolAround(*document(), position);
    if (start < 0) {
        return position;
    }
    const bool isForward = isNearest || m_keyFrom < 0 ? position > start + 1 : m_keyFrom <= start;
    return isForward ? start + SymbolLength : start;
}

void SymbolTextEdit::keepOutOfSymbols() {
    QTextCursor cursor = textCursor();
    const int position = outside(cursor.position(), false);
    const int anchor = cursor.hasSelection() ? outside(cursor.anchor(), true) : position;
    if (position != cursor.position() || anchor != cursor.anchor()) {
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
}

bool SymbolTextEdit::removeSymbol(QKeyEvent* event) {
    const bool isPlain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    QTextCursor cursor = textCursor();
    QTextCursor::MoveOperation step = QTextCursor::NoMove;
    if (event->key() == Qt::Key_Backspace && isPlain) {
        step = QTextCursor::PreviousCharacter;
    } else if (event->matches(QKeySequence::Delete)) {
        step = QTextCursor::NextCharacter;
    } else if (event->matches(QKeySequence::DeleteStartOfWord)) {
        step = QTextCursor::PreviousWord;
    } else if (event->matches(QKeySequence::DeleteEndOfWord)) {
        step = QTextCursor::NextWord;
    }
    if (step == QTextCursor::NoMove || cursor.hasSelection()) {
        return false;
    }
    cursor.movePosition(step, QTextCursor::KeepAnchor);
    const int start = TextBoxText::symbolAround(*document(), cursor.position());
    if (start < 0) {
        return false;
    }
    const bool isBackward = cursor.position() < cursor.anchor();
    cursor.setPosition(isBackward ? start : start + SymbolLength, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    setTextCursor(cursor);
    return true;
}

void SymbolTextEdit::keyPressEvent(QKeyEvent* event) {
    if (removeSymbol(event)) {
        event->accept();
        return;
    }
    m_keyFrom = textCursor().position();
    QTextEdit::keyPressEvent(event);
    m_keyFrom = -1;
}

QMimeData* SymbolTextEdit::createMimeDataFromSelection() const {
    QString text = textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    auto* data = new QMimeData;
    data->setData(GuardedText, text.toUtf8());
    data->setText(text.remove(TextBoxText::Guard).replace(QChar::LineSeparator, QLatin1Char('\n')));
    return data;
}

void SymbolTextEdit::insertFromMimeData(const QMimeData* source) {
    // What is dropped comes with a cursor that nobody has looked at.
    keepOutOfSymbols();
    QTextCursor cursor = textCursor();
    const QString text = source->hasFormat(GuardedText)
                             ? QString::fromUtf8(source->data(GuardedText))
                             : source->text().remove(TextBoxText::Guard);
    TextBoxText::insertPlainText(cursor, text);
    setTextCursor(cursor);
    ensureCursorVisible();
}
