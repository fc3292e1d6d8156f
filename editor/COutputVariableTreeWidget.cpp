#include "COutputVariableTreeWidget.h"

#include "ItemData.h"

#include <QDataStream>
#include <QMimeData>

#include <algorithm>

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

void COutputVariableTreeWidget::makeRow(QTreeWidgetItem* item, const ItemData& data) {
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

QMimeData* COutputVariableTreeWidget::mimeData(const QList<QTreeWidgetItem*> items) const {
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
    while (!stream.atEnd()) {
        QByteArray record;
        stream >> record;
        QDataStream recordStream(record);
        QString text;
        QByteArray fields;
        recordStream >> text >> fields;
        if (stream.status() != QDataStream::Ok || recordStream.status() != QDataStream::Ok ||
            fields.size() != ItemData::SavedSize) {
            break;
        }
        ItemData carried;
        carried.load(fields);
        const QTreeWidgetItem* known = rowOf(carried.outputVariable);
        if (!known) {
            continue;
        }
        auto* item = new QTreeWidgetItem(0);
        item->setText(0, text);
        // The list's own data: the carried ones may say anything.
        makeRow(item, itemData(known));
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
