#include "GuiBuilder.h"

#include "ActionText.h"
#include "CanvasSelection.h"
#include "ICanvas.h"
#include "Places.h"
#include "ThemedIcon.h"
#include "Workbench.h"

#include <Plexa/MethodCall.h>

#include <QAbstractScrollArea>
#include <QAction>
#include <QCoreApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

#include <algorithm>

namespace {

// Of the window's width; the rest is the canvas's.
constexpr double LargestShareOfDocks = 0.6;

QString text(const QVariantMap& map, const char* key);

/// What people read, in their language.
QString shown(const QVariantMap& map, const char* key) {
    return QCoreApplication::translate("gui", text(map, key).toUtf8());
}

QString text(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toString();
}

QVariantList list(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toList();
}

}  // namespace

GuiBuilder::GuiBuilder(QMainWindow* window, const Workbench& workbench, Handlers handlers)
    : m_window(window), m_workbench(workbench), m_handlers(std::move(handlers)) {}

bool GuiBuilder::build(QString* error) {
    const auto section = [this](const char* name) {
        return m_workbench.guiSection(QLatin1String(name));
    };
    const auto forEachMap = [](const QVariant& entries, const auto& make) {
        for (const QVariant& entry : entries.toList()) {
            if (!make(entry.toMap())) {
                return false;
            }
        }
        return true;
    };
    const auto makeActions = [&] {
        const QVariantMap actions = section("actions").toMap();
        for (auto it = actions.begin(); it != actions.end(); ++it) {
            if (!makeAction(it.key(), it.value().toMap())) {
                return false;
            }
        }
        return true;
    };
    const auto makeMenu = [this](const QVariantMap& description) {
        QMenu* menu = m_window->menuBar()->addMenu(shown(description, "title"));
        menu->setObjectName(text(description, "name"));
        return fillMenu(menu, list(description, "items"));
    };
    const auto fillStatusBar = [&] {
        for (const QString& name : section("statusBar").toStringList()) {
            QWidget* shown = widget(name);
            if (!shown) {
                return false;
            }
            m_window->statusBar()->addPermanentWidget(shown);
        }
        return true;
    };
    const auto makeDockOf = [this](const QVariantMap& map) { return makeDock(map); };
    const auto makeToolBarOf = [this](const QVariantMap& map) { return makeToolBar(map); };

    QWidget* central = widget(section("central").toString());
    if (central) {
        m_window->setCentralWidget(central);
    }
    // Docks before menus, which list the docks' own actions.
    const bool built = central && makeActions() && forEachMap(section("docks"), makeDockOf) &&
                       forEachMap(section("menus"), makeMenu) &&
                       forEachMap(section("toolbars"), makeToolBarOf) && fillStatusBar();
    if (!built) {
        *error = QStringLiteral("the GUI description is wrong: %1").arg(m_mistake);
    }
    leaveRoom();
    return built;
}

bool GuiBuilder::makeAction(const QString& id, const QVariantMap& description) {
    const bool isComponents = description.contains(QStringLiteral("action"));
    const bool isToggle = description.contains(QStringLiteral("toggles"));
    QAction* action = isToggle ? toggleAction(description) : new QAction(m_window);
    if (!action) {
        return false;
    }
    if (!isComponents) {
        action->setObjectName(id);
    }
    action->setText(shown(description, "text"));
    const QString icon = text(description, "icon");
    if (!icon.isEmpty()) {
        // A resource of a component, or one of the application's own.
        const bool isResource = icon.startsWith(QLatin1Char(':'));
        action->setIcon(
            themedIcon(isResource ? icon : Places::data(QStringLiteral("icons/") + icon)));
    }
    QList<QKeySequence> shortcuts;
    for (const QString& keys : description.value(QStringLiteral("shortcut")).toStringList()) {
        shortcuts.append(QKeySequence(keys));
    }
    action->setShortcuts(shortcuts);
    const QString tip = shown(description, "tip");
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
    action->setStatusTip(tip);
    m_actions.insert(id, action);
    if (!listenForShortcut(action, description)) {
        return false;
    }
    const QString kind = text(description, "enabledWhile");
    if (!kind.isEmpty() && !followSelection(action, kind)) {
        return false;
    }
    if (isToggle) {
        return true;
    }
    if (description.contains(QStringLiteral("call"))) {
        return connectCall(action, description);
    }
    const std::function<void()> handler = m_handlers.value(id);
    if (!handler) {
        return fail(QStringLiteral("nothing performs the action \"%1\"").arg(id));
    }
    QObject::connect(action, &QAction::triggered, m_window, handler);
    return true;
}

bool GuiBuilder::listenForShortcut(QAction* action, const QVariantMap& description) {
    const QStringList places = description.value(QStringLiteral("shortcutOn")).toStringList();
    if (places.isEmpty()) {
        m_window->addAction(action);
        return true;
    }
    // What is a command on the canvas is text, or a command on text, everywhere else.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    for (const QString& place : places) {
        QWidget* listener = widget(place);
        if (!listener) {
            return false;
        }
        listener->addAction(action);
    }
    return true;
}

bool GuiBuilder::followSelection(QAction* action, const QString& kind) {
    if (!m_selection) {
        m_selection = new CanvasSelection(m_workbench.canvas()->graphicsScene(),
                                          m_workbench.editorWidget(), m_window);
    }
    action->setEnabled(false);
    if (kind == QLatin1String("selected")) {
        QObject::connect(m_selection, &CanvasSelection::selectedChanged, action,
                         &QAction::setEnabled);
    } else if (kind == QLatin1String("turnable")) {
        QObject::connect(m_selection, &CanvasSelection::turnableChanged, action,
                         &QAction::setEnabled);
    } else if (kind == QLatin1String("copyable")) {
        QObject::connect(m_selection, &CanvasSelection::copyableChanged, action,
                         &QAction::setEnabled);
    } else {
        return fail(QStringLiteral("there is no selection \"%1\"").arg(kind));
    }
    return true;
}

QAction* GuiBuilder::toggleAction(const QVariantMap& description) {
    const QString name = text(description, "action");
    auto* action = qobject_cast<QAction*>(m_workbench.object(name));
    if (name.isEmpty()) {
        action = new QAction(m_window);
        action->setCheckable(true);
        action->setChecked(true);
    }
    if (!action) {
        fail(QStringLiteral("there is no action \"%1\"").arg(name));
        return nullptr;
    }
    const QString call = text(description, "toggles");
    QObject* object = m_workbench.object(call.section(QLatin1Char('.'), 0, 1));
    const QByteArray slot =
        (call.section(QLatin1Char('.'), 2) + QStringLiteral("(bool)")).toLatin1();
    if (!object || object->metaObject()->indexOfSlot(slot) < 0) {
        fail(QStringLiteral("there is no \"%1\"").arg(call));
        return nullptr;
    }
    // The number is the framework's mark for a slot, as the macro SLOT would set it.
    QObject::connect(action, SIGNAL(toggled(bool)), object, ('1' + slot).constData());
    return action;
}

bool GuiBuilder::connectCall(QAction* action, const QVariantMap& description) {
    const QString call = text(description, "call");
    QObject* object = m_workbench.object(call.section(QLatin1Char('.'), 0, 1));
    const QString method = call.section(QLatin1Char('.'), 2);
    if (!object ||
        object->metaObject()->indexOfMethod((method + QStringLiteral("()")).toLatin1()) < 0) {
        if (description.value(QStringLiteral("optional")).toBool()) {
            action->setVisible(false);
            return true;
        }
        return fail(QStringLiteral("there is no \"%1\"").arg(call));
    }
    QObject::connect(action, &QAction::triggered, object,
                     [object, method] { Plexa::callMethod(object, {method}); });
    return !description.contains(QStringLiteral("enabledBy")) ||
           followState(action, object, description);
}

bool GuiBuilder::followState(QAction* action, QObject* object, const QVariantMap& description) {
    const QByteArray enabledBy = text(description, "enabledBy").toLatin1();
    const QByteArray textBy = text(description, "textBy").toLatin1();
    const QMetaObject* meta = object->metaObject();
    const int signal = meta->indexOfSignal(enabledBy);
    if (signal < 0 || (!textBy.isEmpty() && meta->indexOfMethod(textBy + "()") < 0)) {
        return fail(QStringLiteral("there is no signal \"%1\" or no text \"%2\"")
                        .arg(QLatin1String(enabledBy), QLatin1String(textBy)));
    }
    action->setEnabled(false);
    // The number is the framework's mark for a signal, as the macro SIGNAL would set it.
    QObject::connect(object, ('2' + enabledBy).constData(), action, SLOT(setEnabled(bool)));
    if (textBy.isEmpty()) {
        return true;
    }
    // Told of the state anew with every command, so it knows when the text may be another.
    auto* follower = new ActionText(action, object, textBy);
    QObject::connect(object, ('2' + enabledBy).constData(), follower, SLOT(refresh()));
    return true;
}

bool GuiBuilder::makeDock(const QVariantMap& description) {
    const QString name = text(description, "widget");
    const bool optional = description.value(QStringLiteral("optional")).toBool();
    if (optional && !m_workbench.object(name)) {
        auto* absent = new QAction(m_window);
        absent->setVisible(false);
        m_actions.insert(text(description, "action"), absent);
        return true;
    }
    QWidget* content = widget(name);
    if (!content) {
        return false;
    }
    auto* dock = new QDockWidget(shown(description, "title"), m_window);
    dock->setObjectName(text(description, "action"));
    dock->setWidget(content);
    // The components' own views say nothing of themselves to a screen reader.
    for (QWidget* view : content->findChildren<QAbstractScrollArea*>()) {
        if (view->accessibleName().isEmpty()) {
            view->setAccessibleName(dock->windowTitle());
        }
    }
    static const QHash<QString, Qt::DockWidgetArea> areas = {
        {QStringLiteral("left"), Qt::LeftDockWidgetArea},
        {QStringLiteral("bottom"), Qt::BottomDockWidgetArea}};
    m_window->addDockWidget(areas.value(text(description, "area"), Qt::RightDockWidgetArea), dock);
    for (const auto& [key, direction] :
         {std::pair("width", Qt::Horizontal), std::pair("height", Qt::Vertical)}) {
        if (description.contains(QLatin1String(key))) {
            m_window->resizeDocks({dock}, {description.value(QLatin1String(key)).toInt()},
                                  direction);
        }
    }
    const bool isOpen = !description.value(QStringLiteral("closed")).toBool();
    dock->setVisible(isOpen);
    if (isOpen) {
        int& side = m_sideWidths[m_window->dockWidgetArea(dock)];
        side = std::max(side, description.value(QStringLiteral("width")).toInt());
    }
    m_actions.insert(dock->objectName(), dock->toggleViewAction());
    return true;
}

void GuiBuilder::leaveRoom() {
    int taken = 0;
    for (const int side : qAsConst(m_sideWidths)) {
        taken += side;
    }
    if (taken <= LargestShareOfDocks * m_window->width()) {
        return;
    }
    QDockWidget* left = nullptr;
    const QList<QDockWidget*> docks = m_window->findChildren<QDockWidget*>();
    for (QDockWidget* dock : docks) {
        left = m_window->dockWidgetArea(dock) == Qt::LeftDockWidgetArea && !left ? dock : left;
    }
    for (QDockWidget* dock : docks) {
        if (left && m_window->dockWidgetArea(dock) == Qt::RightDockWidgetArea) {
            const bool isClosed = dock->isHidden();
            m_window->tabifyDockWidget(left, dock);
            dock->setHidden(isClosed);
        }
    }
    if (left) {
        // Upright there is room for all titles.
        m_window->setTabPosition(Qt::LeftDockWidgetArea, QTabWidget::West);
        left->raise();
    }
}

bool GuiBuilder::fillMenu(QMenu* menu, const QVariantList& items) {
    for (const QVariant& item : items) {
        if (item.userType() == QMetaType::QVariantMap) {
            const QVariantMap description = item.toMap();
            QMenu* submenu = menu->addMenu(shown(description, "title"));
            // By its name the window finds a menu that it fills itself.
            submenu->setObjectName(text(description, "name"));
            if (!fillMenu(submenu, list(description, "items"))) {
                return false;
            }
        } else if (item.toString() == QLatin1String("-")) {
            menu->addSeparator();
        } else if (QAction* named = action(item.toString())) {
            menu->addAction(named);
        } else {
            return false;
        }
    }
    return true;
}

bool GuiBuilder::makeToolBar(const QVariantMap& description) {
    QToolBar* bar = m_window->addToolBar(shown(description, "title"));
    bar->setObjectName(text(description, "title"));
    for (const QVariant& item : list(description, "items")) {
        QAction* named = action(item.toString());
        if (!named) {
            return false;
        }
        bar->addAction(named);
    }
    return true;
}

QWidget* GuiBuilder::widget(const QString& completeName) {
    auto* found = qobject_cast<QWidget*>(m_workbench.object(completeName));
    if (!found) {
        fail(QStringLiteral("there is no widget \"%1\"").arg(completeName));
    }
    return found;
}

QAction* GuiBuilder::action(const QString& id) {
    QAction* found = m_actions.value(id);
    if (!found) {
        fail(QStringLiteral("there is no action \"%1\"").arg(id));
    }
    return found;
}

bool GuiBuilder::fail(const QString& mistake) {
    m_mistake = mistake;
    return false;
}
