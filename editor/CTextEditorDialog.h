#pragma once

#include <QDialog>
#include <QTextCharFormat>

#include <memory>

class QTextDocument;
class Ui_CTextEditorDialog;

/// Edits a text box's document in place, so that there is nothing to take back: however it is left,
/// the document keeps what it holds. Offers font, size, super- and subscript and a palette of
/// symbols.
class CTextEditorDialog : public QDialog {
    Q_OBJECT

public:
    explicit CTextEditorDialog(QWidget* parent);
    ~CTextEditorDialog() override;

    /// Not owned. It must be taken away, by null, before it dies. All of it is selected.
    void setTextDocument(QTextDocument* document);
    QTextDocument* textDocument() const;
    /// Lets the user close the dialog without accepting.
    void offerCancel();
    /// A font without a size in points shows as the smallest size.
    void setDefaultFont(const QFont& font);
    /// As chosen, with its size in points.
    QFont defaultFont() const;

private slots:
    // Connected by name.
    void on_fontComboBox_currentFontChanged();
    void on_fontSize_valueChanged();
    void on_symbolWidget_symbolDoubleClicked(QChar symbol);
    void on_superScriptButton_toggled(bool on);
    void on_subScriptButton_toggled(bool on);
    void on_normalScriptButton_toggled(bool on);
    void on_textEdit_currentCharFormatChanged(QTextCharFormat format);

private:
    void align(QTextCharFormat::VerticalAlignment alignment);

    std::unique_ptr<Ui_CTextEditorDialog> m_form;
};
