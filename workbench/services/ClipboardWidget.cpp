#include "ClipboardWidget.h"

#include "Clipboard.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr QSize IconSize(48, 36);

/// The picture on a ground whose size is the same for all rows, whether the row is chosen or not: a
/// tinted drawing is hard to read. `ratio` is device pixels per pixel.
QIcon rowIcon(const QIcon& icon, double ratio) {
    QPixmap ground(IconSize * ratio);
    ground.fill(Qt::white);
    QPainter painter(&ground);
    icon.paint(&painter, ground.rect());
    painter.end();
    ground.setDevicePixelRatio(ratio);
    QIcon result(ground);
    result.addPixmap(ground, QIcon::Selected);
    return result;
}

}  // namespace

ClipboardWidget::ClipboardWidget(QWidget* parent)
    : QWidget(parent),
      m_hint(new QLabel(this)),
      m_list(new QListWidget(this)),
      m_clear(new QAction(tr("Clear History"), this)) {
    m_list->setAccessibleName(tr("Clipboard"));
    setWindowTitle(tr("Clipboard"));
    m_hint->setWordWrap(true);
    m_list->setIconSize(IconSize);
    m_list->setUniformItemSizes(true);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The selection is the choice, which neither arrow keys nor a drag may move.
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_list->addAction(m_clear);
    m_list->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_hint);
    layout->addWidget(m_list);
    setFocusProxy(m_list);

    connect(m_list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { choose(m_list->row(item)); });
    connect(m_clear, &QAction::triggered, this, [this] {
        if (m_clipboard) {
            m_clipboard->clear();
        }
    });
    rebuild();
}

void ClipboardWidget::setClipboard(Clipboard* clipboard) {
    if (m_clipboard) {
        disconnect(m_clipboard, nullptr, this, nullptr);
    }
    m_clipboard = clipboard;
    m_chosen.clear();
    if (clipboard) {
        connect(clipboard, &Clipboard::activeContextChanged, this, &ClipboardWidget::rebuild);
        connect(clipboard, &Clipboard::entriesChanged, this, &ClipboardWidget::dropChoice);
        connect(clipboard, &QObject::destroyed, this, &ClipboardWidget::rebuild);
    }
    rebuild();
}

int ClipboardWidget::chosenIndex() const {
    return m_clipboard ? m_chosen.value(m_clipboard->activeContext(), -1) : -1;
}

bool ClipboardWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            choose(m_list->currentRow());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ClipboardWidget::choose(int index) {
    if (!m_clipboard || index < 0 || index >= m_clipboard->dataCount()) {
        return;
    }
    m_chosen.insert(m_clipboard->activeContext(), index);
    showChoice();
    emit dataClicked(m_clipboard->activeContext(), m_clipboard->data(index), index);
}

void ClipboardWidget::dropChoice(const QString& context) {
    const bool wasChosen = m_chosen.remove(context) > 0;
    rebuild();
    if (wasChosen) {
        emit dataClicked(context, ClipboardData(), -1);
    }
}

void ClipboardWidget::rebuild() {
    m_list->clear();
    const int count = m_clipboard ? m_clipboard->dataCount() : 0;
    for (int i = 0; i < count; ++i) {
        const ClipboardData entry = m_clipboard->data(i);
        const QString description = entry.description.simplified();
        auto* item = new QListWidgetItem(
            rowIcon(entry.icon, devicePixelRatioF()),
            description.isEmpty() ? tr("(no description)") : description, m_list);
        // A tip is taken for rich text if it looks like it, and a description is only text.
        item->setToolTip(QStringLiteral("<qt>%1</qt>").arg(item->text().toHtmlEscaped()));
    }
    m_list->setCurrentRow(count > 0 ? 0 : -1);
    m_clear->setEnabled(count > 0);
    showChoice();
}

void ClipboardWidget::showChoice() {
    const int chosen = chosenIndex();
    QItemSelectionModel* selection = m_list->selectionModel();
    selection->clearSelection();
    if (chosen >= 0) {
        selection->select(m_list->model()->index(chosen, 0), QItemSelectionModel::ClearAndSelect);
        m_hint->setText(tr("Paste takes the chosen entry until the next copy."));
    } else if (m_list->count() > 0) {
        m_hint->setText(tr("Paste takes the newest entry. Click another to take that one."));
    } else {
        m_hint->setText(tr("Nothing has been copied yet."));
    }
}
