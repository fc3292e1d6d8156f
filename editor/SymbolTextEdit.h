#pragma once

#include <QTextEdit>

/// Edits a text with symbols, each of which is one character to the user, though three in the
/// document: the cursor can't stand inside of one, keys delete it whole, and it is copied as a
/// symbol to other texts of this kind. What comes from elsewhere comes without its formats, which
/// no text box keeps.
class SymbolTextEdit : public QTextEdit {
    Q_OBJECT

public:
    explicit SymbolTextEdit(QWidget* parent = nullptr);

protected:
    // QTextEdit
    void keyPressEvent(QKeyEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void keepOutOfSymbols();
    int outside(int position, bool isNearest) const;
    bool removeSymbol(QKeyEvent* event);

    // Where the cursor is as a key is pressed, -1 while none is.
    int m_keyFrom = -1;
};
