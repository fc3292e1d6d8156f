#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QVariant>

#include <functional>

class CanvasSelection;
class QAction;
class QMainWindow;
class QMenu;
class QWidget;
class Workbench;

/// Makes a window's actions, docks, menus and toolbars as the GUI description tells. All that it
/// makes belongs to the window. The first mistake in the description ends the work with a sentence.
class GuiBuilder {
public:
    using Handlers = QHash<QString, std::function<void()>>;

    /// `handlers` are the actions that the window itself performs; all others call a component.
    GuiBuilder(QMainWindow* window, const Workbench& workbench, Handlers handlers);

    bool build(QString* error);

private:
    bool makeAction(const QString& id, const QVariantMap& description);
    /// Where the action's shortcut is heard: on the widgets named, else in the whole window.
    bool listenForShortcut(QAction* action, const QVariantMap& description);
    bool connectCall(QAction* action, const QVariantMap& description);
    /// Greys the action by a signal of the object, and lets the object add to its text.
    bool followState(QAction* action, QObject* object, const QVariantMap& description);
    /// Greys the action while the canvas has no selection of the kind that the action works on.
    bool followSelection(QAction* action, const QString& kind);
    /// An action that switches something: a component's own, or one for the method that it names.
    QAction* toggleAction(const QVariantMap& description);
    bool makeDock(const QVariantMap& description);
    /// In a small window the canvas comes first: all docks share the left side, as tabs.
    void leaveRoom();
    bool fillMenu(QMenu* menu, const QVariantList& items);
    bool makeToolBar(const QVariantMap& description);
    /// The widget with that complete name; null, with the mistake noted, if there is none.
    QWidget* widget(const QString& completeName);
    QAction* action(const QString& id);
    bool fail(const QString& mistake);

    QMainWindow* m_window;
    const Workbench& m_workbench;
    Handlers m_handlers;
    CanvasSelection* m_selection = nullptr;
    QHash<QString, QAction*> m_actions;
    // Of the docks that are open, in pixels.
    QMap<Qt::DockWidgetArea, int> m_sideWidths;
    QString m_mistake;
};
