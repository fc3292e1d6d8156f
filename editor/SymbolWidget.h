#pragma once

#include <QWidget>

class QTableWidget;
class QTableWidgetItem;

/// A palette of letters, shown in the "Symbol" font in two rows that fill the widget. Its signals
/// tell the plain letter.
class SymbolWidget : public QWidget {
    Q_OBJECT

public:
    explicit SymbolWidget(QWidget* parent = nullptr);

    void setShowGrid(bool show);
    bool isShowGrid() const;
    void resizeRowsAndColumns();

public slots:
    /// Does nothing: the palette keeps no current symbol for others to set.
    void setCurrentSymbol(QChar symbol);

signals:
    void symbolClicked(QChar symbol);
    void symbolDoubleClicked(QChar symbol);
    /// Null characters where there is no symbol.
    void currentSymbolChanged(QChar current, QChar previous);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

protected slots:
    void slotCurrentItemChanged(QTableWidgetItem* current, QTableWidgetItem* previous);
    void slotItemClicked(QTableWidgetItem* item);
    void slotItemDoubleClicked(QTableWidgetItem* item);

private:
    QTableWidget* m_tableWidget;
};
