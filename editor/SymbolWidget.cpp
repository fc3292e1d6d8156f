#include "SymbolWidget.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int RowCount = 2;
constexpr int ColumnCount = 13;
constexpr int PointSize = 20;

const QStringList& alphabets() {
    // The capital stands for a letter form that the small "v" doesn't give.
    static const QStringList letters = QStringLiteral(
                                           "a b c d e f g h i j k l m "
                                           "n o p q r s t u W w x y z")
                                           .split(QLatin1Char(' '));
    return letters;
}

QChar symbolOf(const QTableWidgetItem* item) {
    const QString text = item ? item->text() : QString();
    return text.isEmpty() ? QChar() : text.at(0);
}

/// Sections of one size; the last takes what is left of the length.
void fillWith(QHeaderView* header, int length) {
    const int last = header->count() - 1;
    const int size = static_cast<int>(static_cast<double>(length) / header->count());
    for (int i = 0; i < last; ++i) {
        header->resizeSection(i, size);
    }
    header->resizeSection(last, length - size * last);
}

}  // namespace

SymbolWidget::SymbolWidget(QWidget* parent)
    : QWidget(parent), m_tableWidget(new QTableWidget(RowCount, ColumnCount, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_tableWidget);
    m_tableWidget->setFont(QFont(QStringLiteral("Symbol"), PointSize, -1, false));
    for (int i = 0; i < alphabets().size(); ++i) {
        auto* item = new QTableWidgetItem(alphabets().at(i));
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        item->setTextAlignment(Qt::AlignCenter);
        m_tableWidget->setItem(i / ColumnCount, i % ColumnCount, item);
    }
    for (QHeaderView* header :
         {m_tableWidget->horizontalHeader(), m_tableWidget->verticalHeader()}) {
        header->hide();
        // The style's own minimum would make the sections too large for the widget.
        header->setMinimumSectionSize(1);
    }
    m_tableWidget->setShowGrid(true);
    m_tableWidget->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_tableWidget->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_tableWidget, &QTableWidget::currentItemChanged, this,
            &SymbolWidget::slotCurrentItemChanged);
    connect(m_tableWidget, &QTableWidget::itemClicked, this, &SymbolWidget::slotItemClicked);
    connect(m_tableWidget, &QTableWidget::itemDoubleClicked, this,
            &SymbolWidget::slotItemDoubleClicked);
    resizeRowsAndColumns();
}

void SymbolWidget::setShowGrid(bool show) {
    m_tableWidget->setShowGrid(show);
}

bool SymbolWidget::isShowGrid() const {
    return m_tableWidget->showGrid();
}

void SymbolWidget::resizeRowsAndColumns() {
    const QSize size = m_tableWidget->viewport()->size();
    fillWith(m_tableWidget->horizontalHeader(), size.width());
    fillWith(m_tableWidget->verticalHeader(), size.height());
}

void SymbolWidget::setCurrentSymbol(QChar) {}

void SymbolWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    resizeRowsAndColumns();
}

void SymbolWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    resizeRowsAndColumns();
}

void SymbolWidget::slotCurrentItemChanged(QTableWidgetItem* current, QTableWidgetItem* previous) {
    emit currentSymbolChanged(symbolOf(current), symbolOf(previous));
}

void SymbolWidget::slotItemClicked(QTableWidgetItem* item) {
    emit symbolClicked(symbolOf(item));
}

void SymbolWidget::slotItemDoubleClicked(QTableWidgetItem* item) {
    emit symbolDoubleClicked(symbolOf(item));
}
