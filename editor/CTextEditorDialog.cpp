#include "CTextEditorDialog.h"

#include "TextBoxText.h"
#include "ui_CTextEditorDialog.h"

#include <QSignalBlocker>

CTextEditorDialog::CTextEditorDialog(QWidget* parent)
    : QDialog(parent), m_form(std::make_unique<Ui_CTextEditorDialog>()) {
    m_form->setupUi(this);
}

CTextEditorDialog::~CTextEditorDialog() = default;

void CTextEditorDialog::setTextDocument(QTextDocument* document) {
    QTextEdit* edit = m_form->textEdit;
    edit->setDocument(document);
    m_form->fontComboBox->setFont(edit->font());
    m_form->fontSize->setValue(edit->font().pointSize());
    edit->setFocus(Qt::OtherFocusReason);
    edit->selectAll();
}

QTextDocument* CTextEditorDialog::textDocument() const {
    return m_form->textEdit->document();
}

void CTextEditorDialog::offerCancel() {
    m_form->buttonBox->addButton(QDialogButtonBox::Cancel);
}

void CTextEditorDialog::setDefaultFont(const QFont& font) {
    m_form->fontComboBox->setCurrentFont(font);
    m_form->fontSize->setValue(font.pointSize());
}

QFont CTextEditorDialog::defaultFont() const {
    QFont font = m_form->fontComboBox->currentFont();
    font.setPointSize(m_form->fontSize->value());
    return font;
}

void CTextEditorDialog::on_fontComboBox_currentFontChanged() {
    TextBoxText::setFamily(textDocument(), m_form->fontComboBox->currentFont().family());
}

void CTextEditorDialog::on_fontSize_valueChanged() {
    QTextCharFormat format;
    format.setFontPointSize(m_form->fontSize->value());
    m_form->textEdit->selectAll();
    m_form->textEdit->textCursor().mergeCharFormat(format);
}

void CTextEditorDialog::on_symbolWidget_symbolDoubleClicked(QChar symbol) {
    QTextCursor cursor = m_form->textEdit->textCursor();
    TextBoxText::insertSymbol(cursor, symbol);
    m_form->textEdit->setFocus(Qt::OtherFocusReason);
}

void CTextEditorDialog::align(QTextCharFormat::VerticalAlignment alignment) {
    QTextCursor cursor = m_form->textEdit->textCursor();
    QTextCharFormat format;
    format.setVerticalAlignment(alignment);
    // Merged: what is selected may hold symbols, which their format makes what they are.
    cursor.mergeCharFormat(format);
    m_form->textEdit->setTextCursor(cursor);
}

void CTextEditorDialog::on_superScriptButton_toggled(bool on) {
    if (on) {
        align(QTextCharFormat::AlignSuperScript);
    }
}

void CTextEditorDialog::on_subScriptButton_toggled(bool on) {
    if (on) {
        align(QTextCharFormat::AlignSubScript);
    }
}

void CTextEditorDialog::on_normalScriptButton_toggled(bool on) {
    if (on) {
        align(QTextCharFormat::AlignNormal);
    }
}

void CTextEditorDialog::on_textEdit_currentCharFormatChanged(QTextCharFormat format) {
    const QTextCursor cursor = m_form->textEdit->textCursor();
    if (format.hasProperty(TextBoxText::MarkerProperty) && !cursor.hasSelection()) {
        // What is typed in front of a symbol is none.
        format.clearProperty(TextBoxText::MarkerProperty);
        m_form->textEdit->setCurrentCharFormat(format);
    }
    QToolButton* button = nullptr;
    switch (format.intProperty(QTextFormat::TextVerticalAlignment)) {
        case QTextCharFormat::AlignSuperScript:
            button = m_form->superScriptButton;
            break;
        case QTextCharFormat::AlignSubScript:
            button = m_form->subScriptButton;
            break;
        case QTextCharFormat::AlignNormal:
            button = m_form->normalScriptButton;
            break;
        default:
            return;
    }
    // The button follows the text here, and not the text the button.
    const QSignalBlocker blocker(button);
    button->setChecked(true);
}
