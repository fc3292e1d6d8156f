#include "SearchBox.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr QSize BoxSize(320, 300);
constexpr QSize IconSize(42, 30);

}  // namespace

SearchBox::SearchBox(const QString& prompt, Search search, QWidget* parent)
    : QDialog(parent),
      m_search(std::move(search)),
      m_field(new QLineEdit(this)),
      m_nothing(new QLabel(this)),
      m_list(new QListWidget(this)) {
    m_field->setPlaceholderText(prompt);
    m_field->setAccessibleName(prompt);
    m_list->setAccessibleName(tr("What fits"));
    m_field->installEventFilter(this);
    m_nothing->setTextFormat(Qt::PlainText);
    m_nothing->setWordWrap(true);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setWordWrap(true);
    m_list->setIconSize(IconSize);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_field);
    layout->addWidget(m_nothing);
    layout->addWidget(m_list);
    resize(BoxSize);
    connect(m_field, &QLineEdit::textChanged, this, &SearchBox::refresh);
    connect(m_list, &QListWidget::itemClicked, this, &SearchBox::choose);
    connect(m_list, &QListWidget::currentItemChanged, this,
            [this] { emit currentChanged(current()); });
}

void SearchBox::popUp(const QPoint& place) {
    m_field->clear();
    refresh();
    QRect frame(place, size());
    const QScreen* screen = QGuiApplication::screenAt(place);
    if (screen) {
        const QRect room = screen->availableGeometry();
        frame.moveLeft(qBound(room.left(), frame.left(), room.right() - frame.width()));
        frame.moveTop(qBound(room.top(), frame.top(), room.bottom() - frame.height()));
    }
    move(frame.topLeft());
    show();
    activateWindow();
    m_field->setFocus();
}

QVariant SearchBox::current() const {
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->data(Qt::UserRole) : QVariant();
}

void SearchBox::refresh() {
    const QString text = m_field->text().trimmed();
    const QVector<Hit> hits = m_search(text);
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const Hit& hit : hits) {
            auto* item = new QListWidgetItem(hit.icon, hit.text, m_list);
            item->setData(Qt::UserRole, hit.data);
        }
        m_list->setCurrentRow(0);
    }
    m_nothing->setText(tr("Nothing fits \"%1\"").arg(text));
    m_nothing->setVisible(hits.isEmpty() && !text.isEmpty());
    emit currentChanged(current());
}

void SearchBox::choose() {
    const QVariant data = current();
    if (data.isValid()) {
        emit chosen(data);
    }
}

bool SearchBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Down:
            case Qt::Key_Up:
            case Qt::Key_PageDown:
            case Qt::Key_PageUp:
                QCoreApplication::sendEvent(m_list, event);
                return true;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                choose();
                return true;
            default:
                break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
