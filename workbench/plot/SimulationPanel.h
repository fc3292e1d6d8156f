#pragma once

#include <QVector>
#include <QWidget>

class AnalysisForm;
struct CircuitProblem;
class QComboBox;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QToolButton;
class SimulationPart;

/// Chooses and sets up the analysis, runs it, and lists what is wrong.
class SimulationPanel : public QWidget {
    Q_OBJECT

public:
    explicit SimulationPanel(SimulationPart* simulation, QWidget* parent = nullptr);

public slots:
    /// Looks at the circuit, and starts the analysis unless there is an error. Does nothing while
    /// one runs.
    void run();
    void cancel();
    /// Asks for a name; tells in a box what goes wrong.
    void exportNetlist();

signals:
    void runningChanged(bool running);
    /// A run has ended well.
    void succeeded();
    /// There is something in the list that keeps the analysis from running.
    void failed();
    /// The user asks where a problem is; one of both is empty.
    void problemPicked(const QString& net, const QString& element);

private:
    void showSetup();
    void store();
    void addProblem(const CircuitProblem& problem);
    void ended(const QString& error, const QString& element);
    void setRunning(bool running);
    void pick(QListWidgetItem* item);

    SimulationPart* m_simulation;
    QComboBox* m_analysis;
    QStackedWidget* m_pages;
    QVector<AnalysisForm*> m_forms;
    AnalysisForm* m_sweep;
    QToolButton* m_sweepSwitch;
    QLabel* m_hint;
    QPushButton* m_run;
    QPushButton* m_cancel;
    QProgressBar* m_progress;
    QListWidget* m_problems;
    bool m_showing = false;
};
