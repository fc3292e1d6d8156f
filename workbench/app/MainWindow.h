#pragma once

#include <QMainWindow>
#include <QString>

#include <memory>
#include <vector>

class Autosave;
class OpenMark;
class ElementTools;
class GuiBuilder;
class HelpMenu;
class NetlistTools;
class Printing;
class PictureExport;
class PlacingTools;
class DrawingSearch;
class QMenu;
class Workbench;

/// The window: the canvas with the element palette and the property panel beside it. Asks before
/// unsaved work is lost; a file that can't be opened leaves what is open as it is. Owns the widgets
/// that the components gave it a place for, and so dies before they do.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(Workbench* workbench);
    ~MainWindow() override;

    /// Fills the window once the components have started. False, with one sentence, if the GUI
    /// description asks for what isn't there.
    bool build(QString* error);
    /// Opens the file; asks only if a crash has left changes of it. False, with the reason, if it
    /// can't be opened, and without one if the user doesn't want it any more. What could not be
    /// restored, or that another window has the file open, too, shows in the status bar and is told
    /// in `*message`.
    bool openFile(const QString& fileName, QString* message);
    /// Opens a copy of the file, which has no file of its own yet, if nothing is lost by it.
    void openExample(const QString& fileName);

    /// Asks whether to go on with what a crash has left of projects without a file, and if
    /// `ofFiles` of those with one too: the recent ones and all that the user's data folder holds.
    void offerRecovery(bool ofFiles);

    /// Shows the sentence over the window that is there.
    void tellCannotOpen(const QString& message);

signals:
    /// A page of the workspace comes to the front: this window has one, the canvas.
    void workspaceWidgetActivated(QWidget* widget);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeTools();
    /// What the GUI description leaves to the window.
    void finishMenus();
    void newProject();
    void open();
    /// Another program's drawing, and what of it has no counterpart.
    void importFile();
    /// As the user asked for it: tells what goes wrong in a box.
    void openAndTell(const QString& fileName);
    void fillRecentMenu();
    /// False if another window has the project's file open.
    bool markAsOpen();
    bool save();
    bool saveAs();
    bool saveTo(const QString& fileName);
    /// Takes over what is being typed in one of the panels.
    void finishEditing();
    /// True if nothing would be lost, or if the user has saved it or gives it up.
    bool mayDiscard();
    /// Asks for each of the autosaves until the user recovers one, or cancels. True if nothing
    /// stands in the way of opening the file itself.
    bool recoverFirst(std::vector<std::unique_ptr<Autosave>> abandoned, bool* recovered,
                      QString* message);
    /// Size, place and panels, as they were when a window was closed last.
    void restoreLayout();
    /// After what is open has changed as a whole.
    void showDocument();
    /// The whole drawing, once another one is open.
    void fitDrawing();
    QString documentName() const;
    void helpElement();
    /// Pastes at the pointer, or in the middle of what is seen.
    void paste(const char* method);
    QString startFolder() const;

    Workbench* m_workbench;
    QMenu* m_recentMenu = nullptr;
    // Null while the project has no file.
    std::unique_ptr<OpenMark> m_openMark;
    // Owned as children.
    NetlistTools* m_netlists = nullptr;
    PlacingTools* m_placing = nullptr;
    DrawingSearch* m_search = nullptr;
    ElementTools* m_elements = nullptr;
    PictureExport* m_pictures = nullptr;
    HelpMenu* m_help = nullptr;
    Printing* m_printing = nullptr;
};
