#include "HelpWindow.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr QSize WindowSize(760, 640);
constexpr int PictureWidth = 690;

/// As links name it: "All keys and gestures" is "all-keys-and-gestures".
QString anchorOf(QString heading) {
    static const QRegularExpression noLetter(QStringLiteral("[^a-z0-9 -]"));
    return heading.toLower().remove(noLetter).replace(QLatin1Char(' '), QLatin1Char('-'));
}

/// Pictures are no wider than the page.
class Page : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override {
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource) {
            return resource;
        }
        const QImage image = resource.userType() == QMetaType::QByteArray
                                 ? QImage::fromData(resource.toByteArray())
                                 : resource.value<QImage>();
        return image.width() > PictureWidth
                   ? image.scaledToWidth(PictureWidth, Qt::SmoothTransformation)
                   : image;
    }
};

}  // namespace

HelpWindow::HelpWindow(const QString& title, QWidget* parent)
    : QDialog(parent), m_browser(new Page(this)) {
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    resize(WindowSize);
    m_browser->setOpenLinks(false);
    connect(m_browser, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
}

void HelpWindow::showHtml(const QString& html) {
    m_browser->setHtml(html);
    show();
    raise();
}

bool HelpWindow::showMarkdown(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    // Of the file itself, where that is a link: those in the page are as seen from there.
    const QString folder = QFileInfo(fileName).canonicalPath();
    m_browser->setSearchPaths({folder});
    m_browser->document()->setBaseUrl(QUrl::fromLocalFile(folder + QLatin1Char('/')));
    m_browser->setMarkdown(QString::fromUtf8(file.readAll()));
    show();
    raise();
    return true;
}

void HelpWindow::follow(const QUrl& link) {
    const QString fragment = link.fragment();
    const bool isHere = link.path().isEmpty() || link.path().endsWith(QLatin1Char('/'));
    const QUrl target = m_browser->document()->baseUrl().resolved(link);
    if (target.isLocalFile() && target.path().endsWith(QLatin1String(".md"))) {
        auto* page = new HelpWindow(windowTitle(), this);
        page->setAttribute(Qt::WA_DeleteOnClose);
        page->showMarkdown(target.toLocalFile());
        return;
    }
    if (!isHere || fragment.isEmpty()) {
        QDesktopServices::openUrl(target);
        return;
    }
    for (QTextBlock block = m_browser->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && anchorOf(block.text()) == fragment) {
            // From below, so that the heading comes to the top.
            m_browser->moveCursor(QTextCursor::End);
            m_browser->setTextCursor(QTextCursor(block));
            return;
        }
    }
}
