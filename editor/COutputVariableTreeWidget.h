#pragma once

#include <QTreeWidget>

#include <memory>

class COutputVariableTreeWidgetData;
class ICircuitOutputVariable;
class ItemData;

/// The rows of the output variables panel, which can be dragged within the list. A row holds an
/// `ItemData` and no text; what it shows is the delegate's.
class COutputVariableTreeWidget : public QTreeWidget {
    Q_OBJECT

public:
    explicit COutputVariableTreeWidget(QWidget* parent = nullptr);
    ~COutputVariableTreeWidget() override;

    static ItemData itemData(const QTreeWidgetItem* item);
    /// Gives the item its data, and the flags of a row: it can be selected, edited and dragged, and
    /// nothing is dropped on it.
    static void makeRow(QTreeWidgetItem* item, const ItemData& data);
    /// The first row of the variable, or null. The variable is only compared.
    QTreeWidgetItem* rowOf(const ICircuitOutputVariable* variable) const;

protected:
    QMimeData* mimeData(const QList<QTreeWidgetItem*> items) const override;
    /// Takes rows of variables that the list holds at this moment, since the data carry addresses;
    /// what is damaged or forged ends the reading. False if there was no such row.
    bool dropMimeData(QTreeWidgetItem* parent, int index, const QMimeData* data,
                      Qt::DropAction action) override;
    void dropEvent(QDropEvent* event) override;

private:
    std::unique_ptr<COutputVariableTreeWidgetData> d;
};
