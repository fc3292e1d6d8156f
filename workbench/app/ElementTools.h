#pragma once

#include <QList>
#include <QObject>

class ICircuitElement;
class MainWindow;
class QAction;
class QMenu;
class Workbench;

/// What the application adds to elements on the canvas: entries in their menu, and the way from a
/// double click to the values in the property panel and back. Knows the editor by its signals and
/// interfaces only.
class ElementTools : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    ElementTools(const Workbench& workbench, MainWindow* window);

    /// The entries, null for a separator.
    void setMenuActions(const QList<QAction*>& actions) { m_actions = actions; }
    /// Opens the first value of what is selected in the property panel.
    void editProperties();

private slots:
    void addEntries(ICircuitElement* element, QMenu* menu);
    void editLater();

private:
    const Workbench& m_workbench;
    MainWindow* m_window;
    QList<QAction*> m_actions;
};
