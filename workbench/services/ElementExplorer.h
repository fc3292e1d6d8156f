#pragma once

#include "IElementExplorer.h"
#include "PaletteSearch.h"

#include <QSet>
#include <QVector>
#include <QWidget>

class QLabel;
class QLineEdit;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

/// The palette of element types: a tree grouped by library, with a filter above it. Typing in the
/// filter brings what fits best to the top and chooses it; arrow keys move on from there. A click
/// or Return asks to place the type; dragged, an entry carries the name of its type.
class ElementExplorer : public QWidget, public IElementExplorer {
    Q_OBJECT
    Q_INTERFACES(IElementExplorer)

public:
    using Entry = PaletteEntry;
    /// What an entry is dragged as: the complete type name in UTF-8.
    static constexpr char TypeMimeType[] = "application/x-vortel-element-type";

    explicit ElementExplorer(QWidget* parent = nullptr);

    /// Replaces the content; libraries come in the order of their first entry.
    void setEntries(const QVector<Entry>& entries);
    const QVector<Entry>& entries() const { return m_entries; }

    QObject* containerObject() override { return this; }
    QString selectedElementName() override;

signals:
    void elementRightClicked(QString name, QMenu* menu);
    /// The user wants to place elements of the type.
    void placeRequested(QString type);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyFilter(const QString& text);
    void fillTree(const QVector<Entry>& entries);
    void choose(QTreeWidgetItem* item);
    void requestPlacing(QTreeWidgetItem* item);
    void showMenu(const QPoint& position);

    QVector<Entry> m_entries;
    QSet<QString> m_collapsed;
    /// Whether the filter chose what is chosen.
    bool m_chosenByFilter = false;
    QLineEdit* m_filter = nullptr;
    QLabel* m_nothing = nullptr;
    QTreeWidget* m_tree = nullptr;
};
