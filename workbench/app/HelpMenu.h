#pragma once

#include <QObject>

class HelpWindow;
class MainWindow;
class QMenu;
class Workbench;

/// What the help menu opens: the user guide, the page of all keys, the examples, and who made this.
class HelpMenu : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    HelpMenu(const Workbench& workbench, MainWindow* window);

    void showUserGuide();
    void showKeys();
    void showAbout();
    /// One entry for each example.
    void fillExamples(QMenu* menu);

private:
    const Workbench& m_workbench;
    MainWindow* m_window;
    HelpWindow* m_guide = nullptr;
    HelpWindow* m_keys = nullptr;
};
