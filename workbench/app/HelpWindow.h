#pragma once

#include <QDialog>

class QTextBrowser;

/// A window beside the work with a page to read: HTML, or a Markdown file whose links to headings
/// lead there.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    HelpWindow(const QString& title, QWidget* parent);

    void showHtml(const QString& html);
    /// False if there is no such file.
    bool showMarkdown(const QString& fileName);

private:
    void follow(const QUrl& link);

    QTextBrowser* m_browser;
};
