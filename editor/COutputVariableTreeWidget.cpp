#include "COutputVariableTreeWidget.h"

#include "ItemData.h"

#include <QDataStream>
#include <QMimeData>
#include <QPointer>

#include <algorithm>

namespace {

constexpr int CircuitRole = Qt::UserRole + 1;

quintptr addressOf(const QObject* object) {
    return reinterpret_cast<quintptr>(object);
}

void forgetVariable(QTreeWidgetItem* item) {
    item->setData(0, Qt::UserRole, QVariant::fromValue(ItemData()));
}

}  // namespace

class COutputVariableTreeWidgetData {};

COutputVariableTreeWidget::COutputVariableTreeWidget(QWidget* parent)
    : QTreeWidget(parent), d(std::make_unique<COutputVariableTreeWidgetData>()) {
    setAcceptDrops(true);
    setDragEnabled(true);
}

COutputVariableTreeWidget::~COutputVariableTreeWidget() = default;

ItemData COutputVariableTreeWidget::itemData(const QTreeWidgetItem* item) {
    return item->data(0, Qt::UserRole).value<ItemData>();
}

void COutputVariableTreeWidget::makeRow(QTreeWidgetItem* item, const ItemData& data,
                                        const QObject* circuit) {
    item->setData(0, CircuitRole, QVariant::fromValue(addressOf(circuit)));
    item->setData(0, Qt::UserRole, QVariant::fromValue(data));
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled |
                   Qt::ItemIsEnabled);
}

QTreeWidgetItem* COutputVariableTreeWidget::rowOf(const ICircuitOutputVariable* variable) const {
    for (int row = 0; row < topLevelItemCount(); ++row) {
        if (itemData(topLevelItem(row)).outputVariable == variable) {
            return topLevelItem(row);
        }
    }
    return nullptr;
}

bool COutputVariableTreeWidget::removeRowOf(const ICircuitOutputVariable* variable) {
    QTreeWidgetItem* first = rowOf(variable);
    if (!first) {
        return false;
    }
    // Before a row goes, for another becomes current with it and is looked at.
    for (QTreeWidgetItem* row = first; row; row = rowOf(variable)) {
        forgetVariable(row);
    }
    delete first;
    return true;
}

void COutputVariableTreeWidget::removeRowsOf(const QObject* circuit) {
    QList<QTreeWidgetItem*> gone;
    for (int row = 0; row < topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = topLevelItem(row);
        if (item->data(0, CircuitRole).value<quintptr>() == addressOf(circuit)) {
            forgetVariable(item);
            gone.append(item);
        }
    }
    qDeleteAll(gone);
}

QList<ICircuitOutputVariable*> COutputVariableTreeWidget::chosenVariables() const {
    QTreeWidgetItem* current = currentItem();
    if (!current) {
        return {};
    }
    const QList<QTreeWidgetItem*> rows =
        current->isSelected() ? selectedItems() : QList<QTreeWidgetItem*>{current};
    QList<ICircuitOutputVariable*> variables;
    for (const QTreeWidgetItem* row : rows) {
        variables.append(itemData(row).outputVariable);
    }
    return variables;
}

QMimeData* COutputVariableTreeWidget::mimeData(QtSeries::TreeItems items) const {
    // The model hands the items over in no order that means anything.
    QList<QTreeWidgetItem*> ordered = items;
    std::stable_sort(ordered.begin(), ordered.end(), [this](auto* a, auto* b) {
        return indexOfTopLevelItem(a) < indexOfTopLevelItem(b);
    });
    QByteArray array;
    QDataStream stream(&array, QIODevice::WriteOnly);
    for (const QTreeWidgetItem* item : qAsConst(ordered)) {
        QByteArray fields;
        itemData(item).save(fields);
        QByteArray record;
        QDataStream recordStream(&record, QIODevice::WriteOnly);
        recordStream << item->data(0, Qt::DisplayRole).toString() << fields;
        stream << record;
    }
    auto* data = new QMimeData;
    data->setData(mimeTypes().first(), array);
    return data;
}

bool COutputVariableTreeWidget::dropMimeData(QTreeWidgetItem*, int index, const QMimeData* data,
                                             Qt::DropAction) {
    const QByteArray array = data->data(mimeTypes().first());
    QDataStream stream(array);
    // The view's word for the place below the last row is -1.
    const int place = index < 0 ? topLevelItemCount() : qMin(index, topLevelItemCount());
    bool taken = false;
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        QByteArray record;
        stream >> record;
        QDataStream recordStream(record);
        QString text;
        QByteArray fields;
        recordStream >> text >> fields;
        ItemData carried;
        carried.load(fields);
        const QTreeWidgetItem* known =
            carried.outputVariable ? rowOf(carried.outputVariable) : nullptr;
        if (!known || recordStream.status() != QDataStream::Ok) {
            continue;
        }
        auto* item = new QTreeWidgetItem(0);
        item->setText(0, text);
        // The list's own data: the carried ones may say anything.
        makeRow(item, itemData(known), nullptr);
        item->setData(0, CircuitRole, known->data(0, CircuitRole));
        insertTopLevelItem(place, item);
        taken = true;
    }
    return taken;
}

void COutputVariableTreeWidget::dropEvent(QDropEvent* event) {
    // The tree widget's own way moves the items by itself and asks no `dropMimeData`. The plain
    // view asks it, and takes the sources away once the drag has ended.
    QTreeView::dropEvent(event);
}

void COutputVariableTreeWidget::startDrag(Qt::DropActions supportedActions) {
    const QPointer<COutputVariableTreeWidget> self(this);
    const ICircuitOutputVariable* current =
        currentItem() ? itemData(currentItem()).outputVariable : nullptr;
    const QList<ICircuitOutputVariable*> dragged = chosenVariables();
    QTreeWidget::startDrag(supportedActions);
    // The drag ran an event loop of its own, and what was dropped has rows of its own.
    QTreeWidgetItem* row = self && current ? rowOf(current) : nullptr;
    if (!row) {
        return;
    }
    setCurrentItem(row);
    for (const ICircuitOutputVariable* variable : dragged) {
        if (QTreeWidgetItem* its = variable ? rowOf(variable) : nullptr) {
            its->setSelected(true);
        }
    }
}
