#pragma once

#include "QtSeries.h"

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
    /// nothing is dropped on it. The circuit that the variable is of is only compared.
    static void makeRow(QTreeWidgetItem* item, const ItemData& data, const QObject* circuit);
    /// The first row of the variable, or null. The variable is only compared.
    QTreeWidgetItem* rowOf(const ICircuitOutputVariable* variable) const;
    /// Removes the variable's first row. Should it have others, they forget it.
    bool removeRowOf(const ICircuitOutputVariable* variable);
    /// Removes the rows of a circuit that is gone, without a look at its variables.
    void removeRowsOf(const QObject* circuit);
    /// The variables of the selected rows if the current one is among them, else the current one's.
    QList<ICircuitOutputVariable*> chosenVariables() const;

protected:
    QMimeData* mimeData(QtSeries::TreeItems items) const override;
    /// Takes rows of variables that the list holds at this moment, since the data carry addresses,
    /// and passes over what is damaged or forged. False if there was no such row: the view takes
    /// the sources of a drop that went well away.
    bool dropMimeData(QTreeWidgetItem* parent, int index, const QMimeData* data,
                      Qt::DropAction action) override;
    void dropEvent(QDropEvent* event) override;
    /// What was dragged stays selected and current.
    void startDrag(Qt::DropActions supportedActions) override;

private:
    std::unique_ptr<COutputVariableTreeWidgetData> d;
};
