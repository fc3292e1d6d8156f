#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

/// A text netlist to write, paste or load; tells while it is edited which terminals it makes.
class NetlistDialog : public QDialog {
    Q_OBJECT

public:
    explicit NetlistDialog(const QString& text, QWidget* parent = nullptr);

    QString text() const;

private:
    void check();
    void loadFile();

    QPlainTextEdit* m_text;
    QLabel* m_verdict;
    QPushButton* m_ok;
};
