#pragma once

#include <QMainWindow>
#include <QString>

class Workbench;

/// The window: the canvas with the element palette and the property panel beside it. Asks before
/// unsaved work is lost; a file that can't be opened leaves what is open as it is. Owns the widgets
/// that the components gave it a place for, and so dies before they do.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(Workbench* workbench);

    /// Fills the window once the components have started. False, with one sentence, if the GUI
    /// description asks for what isn't there.
    bool build(QString* error);
    /// Opens the file without a question; false, with the reason, if it can't be opened. What could
    /// not be restored shows in the status bar and is told in `*message`.
    bool openFile(const QString& fileName, QString* message);

signals:
    /// A page of the workspace comes to the front: this window has one, the canvas.
    void workspaceWidgetActivated(QWidget* widget);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private slots:
    void markModified();

private:
    void newCircuit();
    void open();
    bool save();
    bool saveAs();
    bool saveTo(const QString& fileName);
    /// True if nothing would be lost, or if the user has saved it or gives it up.
    bool mayDiscard();
    /// After what is open has changed as a whole.
    void showDocument();
    void helpElement();
    /// At the pointer, or in the middle of the view if the pointer is elsewhere.
    void paste();
    QString startFolder() const;

    Workbench* m_workbench;
};
