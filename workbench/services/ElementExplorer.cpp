#include "ElementExplorer.h"

#include "QtSeries.h"

#include <QCoreApplication>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int TypeRole = Qt::UserRole;
constexpr QSize IconSize(42, 30);
constexpr int RowMargin = 4;

QString typeOf(const QTreeWidgetItem* item) {
    return item ? item->data(0, TypeRole).toString() : QString();
}

/// Its entries are dragged by the name of their type.
class PaletteTree : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;

protected:
    QStringList mimeTypes() const override {
        return {QLatin1String(ElementExplorer::TypeMimeType)};
    }
    QMimeData* mimeData(QtSeries::TreeItems items) const override {
        auto* data = new QMimeData;
        data->setData(QLatin1String(ElementExplorer::TypeMimeType),
                      typeOf(items.value(0)).toUtf8());
        return data;
    }
};

/// A row is as tall as its name needs, wrapped into the width that there is.
class NameDelegate : public QStyledItemDelegate {
public:
    explicit NameDelegate(QTreeWidget* tree) : QStyledItemDelegate(tree), m_tree(tree) {
        connect(tree->header(), &QHeaderView::sectionResized, this,
                [this] { emit sizeHintChanged(QModelIndex()); });
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize natural = QStyledItemDelegate::sizeHint(option, index);
        if (!index.parent().isValid()) {
            return natural;
        }
        // Both levels of the tree are indented.
        const int left = 2 * m_tree->indentation() + IconSize.width() + 4 * RowMargin;
        const int width = std::max(m_tree->columnWidth(0) - left, IconSize.width());
        const QRect text = option.fontMetrics.boundingRect(
            QRect(0, 0, width, 1000), Qt::TextWordWrap, index.data(Qt::DisplayRole).toString());
        return {natural.width(), std::max(IconSize.height(), text.height()) + RowMargin};
    }

private:
    QTreeWidget* m_tree;
};

}  // namespace

ElementExplorer::ElementExplorer(QWidget* parent)
    : QWidget(parent),
      m_filter(new QLineEdit(this)),
      m_nothing(new QLabel(this)),
      m_tree(new PaletteTree(this)) {
    setWindowTitle(tr("Elements"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setAccessibleName(tr("Filter"));
    m_tree->setAccessibleName(tr("Elements"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    m_nothing->setTextFormat(Qt::PlainText);
    m_nothing->setWordWrap(true);
    m_nothing->hide();
    m_tree->setHeaderHidden(true);
    m_tree->setIconSize(IconSize);
    m_tree->setIndentation(12);
    m_tree->setWordWrap(true);
    m_tree->setItemDelegate(new NameDelegate(m_tree));
    m_tree->setDragEnabled(true);
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_nothing);
    layout->addWidget(m_tree);
    setFocusProxy(m_filter);

    connect(m_filter, &QLineEdit::textChanged, this, &ElementExplorer::applyFilter);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &ElementExplorer::showMenu);
    connect(m_tree, &QTreeWidget::itemClicked, this, &ElementExplorer::requestPlacing);
    connect(m_tree, &QTreeWidget::itemActivated, this, &ElementExplorer::requestPlacing);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, [this] { m_chosenByFilter = false; });
    const auto noteGroup = [this](QTreeWidgetItem* group) {
        if (group->isExpanded()) {
            m_collapsed.remove(group->text(0));
        } else {
            m_collapsed.insert(group->text(0));
        }
    };
    connect(m_tree, &QTreeWidget::itemCollapsed, this, noteGroup);
    connect(m_tree, &QTreeWidget::itemExpanded, this, noteGroup);
}

void ElementExplorer::setEntries(const QVector<Entry>& entries) {
    m_entries = entries;
    applyFilter(m_filter->text());
}

QString ElementExplorer::selectedElementName() {
    return typeOf(m_tree->selectedItems().value(0));
}

void ElementExplorer::applyFilter(const QString& text) {
    const bool isFiltered = !text.trimmed().isEmpty();
    const QString chosen = selectedElementName();
    const bool wasByFilter = m_chosenByFilter;
    const QVector<Entry> fitting = isFiltered ? bestEntries(m_entries, text) : m_entries;
    fillTree(fitting);
    m_nothing->setText(tr("Nothing fits \"%1\"").arg(text.trimmed()));
    m_nothing->setVisible(isFiltered && fitting.isEmpty());

    // A type that can't be seen must not be what a double click on the canvas creates. What the
    // user has chosen stays; what the filter chose follows the filter.
    QTreeWidgetItem* first = nullptr;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        const QString type = typeOf(*it);
        if (type == chosen && !type.isEmpty() && (!isFiltered || !wasByFilter)) {
            choose(*it);
            m_chosenByFilter = wasByFilter;
            return;
        }
        if (!first && !type.isEmpty()) {
            first = *it;
        }
    }
    if (isFiltered && first) {
        choose(first);
        m_chosenByFilter = true;
    }
}

void ElementExplorer::choose(QTreeWidgetItem* item) {
    m_tree->setCurrentItem(item);
    m_tree->scrollToItem(item);
}

void ElementExplorer::fillTree(const QVector<Entry>& entries) {
    m_tree->clear();
    const bool isFiltered = !m_filter->text().trimmed().isEmpty();
    const QSet<QString> collapsed = m_collapsed;
    QHash<QString, QTreeWidgetItem*> groups;
    for (const Entry& entry : entries) {
        QTreeWidgetItem*& group = groups[entry.library];
        if (!group) {
            group = new QTreeWidgetItem(m_tree, {entry.library});
            group->setFlags(Qt::ItemIsEnabled);
        }
        auto* item = new QTreeWidgetItem(group, {entry.label});
        item->setIcon(0, entry.icon);
        const QString key =
            entry.shortcut.isEmpty() ? QString() : tr("\nKey: %1").arg(entry.shortcut);
        item->setToolTip(0, QStringLiteral("%1\n%2%3").arg(entry.type, entry.description, key));
        item->setData(0, TypeRole, entry.type);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
    }
    for (QTreeWidgetItem* group : qAsConst(groups)) {
        group->setExpanded(isFiltered || !collapsed.contains(group->text(0)));
    }
    m_collapsed = collapsed;
}

void ElementExplorer::requestPlacing(QTreeWidgetItem* item) {
    const QString type = typeOf(item);
    if (!type.isEmpty()) {
        emit placeRequested(type);
    }
}

bool ElementExplorer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Down:
            case Qt::Key_Up:
                m_tree->setFocus();
                return QCoreApplication::sendEvent(m_tree, event);
            case Qt::Key_Return:
            case Qt::Key_Enter:
                requestPlacing(m_tree->selectedItems().value(0));
                return true;
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
    const QString type = typeOf(m_tree->itemAt(position));
    if (type.isEmpty()) {
        return;
    }
    QMenu menu(this);
    emit elementRightClicked(type, &menu);
    if (!menu.isEmpty()) {
        menu.exec(m_tree->viewport()->mapToGlobal(position));
    }
}
