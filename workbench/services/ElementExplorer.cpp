#include "ElementExplorer.h"

#include <QCoreApplication>
#include <QHash>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

/// What the filter is matched against: label, type name and library.
constexpr int SearchTextRole = Qt::UserRole + 1;
constexpr int TypeRole = Qt::UserRole;
constexpr QSize IconSize(42, 30);

}  // namespace

ElementExplorer::ElementExplorer(QWidget* parent)
    : QWidget(parent), m_filter(new QLineEdit(this)), m_tree(new QTreeWidget(this)) {
    setWindowTitle(tr("Elements"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    m_tree->setHeaderHidden(true);
    m_tree->setIconSize(IconSize);
    m_tree->setIndentation(12);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_tree);
    setFocusProxy(m_filter);

    connect(m_filter, &QLineEdit::textChanged, this, &ElementExplorer::applyFilter);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &ElementExplorer::showMenu);
}

void ElementExplorer::setEntries(const QVector<Entry>& entries) {
    m_tree->clear();
    QHash<QString, QTreeWidgetItem*> groups;
    for (const Entry& entry : entries) {
        QTreeWidgetItem*& group = groups[entry.library];
        if (!group) {
            group = new QTreeWidgetItem(m_tree, {entry.library});
            group->setFlags(Qt::ItemIsEnabled);
            group->setExpanded(true);
        }
        auto* item = new QTreeWidgetItem(group, {entry.label});
        item->setIcon(0, entry.icon);
        item->setToolTip(0, QStringLiteral("%1\n%2").arg(entry.type, entry.description));
        item->setData(0, TypeRole, entry.type);
        item->setData(0, SearchTextRole, QString(entry.label + QLatin1Char(' ') + entry.type));
    }
    applyFilter(m_filter->text());
}

QString ElementExplorer::selectedElementName() {
    const QList<QTreeWidgetItem*> chosen = m_tree->selectedItems();
    return chosen.isEmpty() ? QString() : chosen.first()->data(0, TypeRole).toString();
}

void ElementExplorer::applyFilter(const QString& text) {
    QTreeWidgetItem* firstMatch = nullptr;
    for (int g = 0; g < m_tree->topLevelItemCount(); ++g) {
        QTreeWidgetItem* group = m_tree->topLevelItem(g);
        bool anyShown = false;
        for (int i = 0; i < group->childCount(); ++i) {
            QTreeWidgetItem* item = group->child(i);
            const bool shown = item->data(0, SearchTextRole)
                                   .toString()
                                   .contains(text.trimmed(), Qt::CaseInsensitive);
            item->setHidden(!shown);
            anyShown = anyShown || shown;
            if (shown && !firstMatch) {
                firstMatch = item;
            }
        }
        group->setHidden(!anyShown);
    }
    // A type that can't be seen must not be what a double click on the canvas creates.
    const QList<QTreeWidgetItem*> chosen = m_tree->selectedItems();
    if (text.trimmed().isEmpty() || (!chosen.isEmpty() && !chosen.first()->isHidden())) {
        return;
    }
    m_tree->clearSelection();
    m_tree->setCurrentItem(firstMatch);
}

bool ElementExplorer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Down:
            case Qt::Key_Up:
                m_tree->setFocus();
                return QCoreApplication::sendEvent(m_tree, event);
            case Qt::Key_Escape:
                m_filter->clear();
                return true;
            default:
                break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ElementExplorer::showMenu(const QPoint& position) {
    QTreeWidgetItem* item = m_tree->itemAt(position);
    const QString type = item ? item->data(0, TypeRole).toString() : QString();
    if (type.isEmpty()) {
        return;
    }
    QMenu menu(this);
    emit elementRightClicked(type, &menu);
    if (!menu.isEmpty()) {
        menu.exec(m_tree->viewport()->mapToGlobal(position));
    }
}
