#pragma once

#include "PictureFile.h"

#include <QObject>

class MainWindow;
class QAction;
class Workbench;

/// Writes the drawing as a picture that the user asks for. Proposes the project's own name, beside
/// it; what goes wrong is told, and no half-written file stays.
class PictureExport : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    PictureExport(Workbench* workbench, MainWindow* window);

    void exportAs(PictureFormat format);
    /// Lets pictures have a margin, and remembers it for the next start. `action` is the switch.
    void followMargin(QAction* action);
    /// Pictures have the values of the operating point while the action is ticked.
    void followValues(QAction* action);

private:
    Workbench* m_workbench;
    MainWindow* m_window;
    QAction* m_withValues = nullptr;
};
