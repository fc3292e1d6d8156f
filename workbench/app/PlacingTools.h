#pragma once

#include "PaletteSearch.h"

#include <QObject>

class ElementExplorer;
class NetlistTools;
class QMenu;
class SearchBox;
class Workbench;

/// The ways to a new element: an action for each type of the palette, with the key that the type
/// has chosen, a chooser for all of them, clicks in the palette, and what is dragged out of it.
/// Knows the editor by its methods only.
class PlacingTools : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    PlacingTools(const Workbench& workbench, NetlistTools* netlists, QWidget* window);

    /// Adds a menu for each library, in front of what the menu holds. `taken` are keys of the
    /// canvas that no type gets.
    void fillMenu(QMenu* menu, QStringList taken);
    /// Opens the chooser of types at the pointer.
    void choose();

protected:
    /// The canvas takes what is dragged from the palette.
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void place(const QString& entry);

private:
    QWidget* m_editor;
    NetlistTools* m_netlists;
    ElementExplorer* m_palette;
    SearchBox* m_chooser = nullptr;
    QVector<PaletteEntry> m_entries;
};
