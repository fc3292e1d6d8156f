#pragma once

#include <QObject>
#include <QPageLayout>

class MainWindow;
class QPrinter;
class Workbench;

/// Puts the drawing on paper: as large as the page takes it, but not larger than in nature's size
/// doubled, with the title in the lower right corner. Page size and margins are remembered for the
/// next start.
class Printing : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    Printing(Workbench* workbench, MainWindow* window);

    void print();
    void preview();
    void setUpPage();

    /// Paints the drawing as it is on the printer's page. False, with the reason, if there is
    /// nothing to paint or the printer takes none.
    bool paint(QPrinter* printer, QString* error);

private:
    QPageLayout layout() const;
    void keepLayout(const QPageLayout& layout);
    QString title() const;
    void tell(const QString& error);

    Workbench* m_workbench;
    MainWindow* m_window;
};
