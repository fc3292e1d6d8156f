#pragma once

#include "Analysis.h"
#include "Netlist.h"
#include "Results.h"

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QVector>

#include <memory>

/// Runs ngspice as a process of its own, once or for each value of a swept parameter. A crash or a
/// hang of it stays its own; one run at a time.
class Simulator : public QObject {
    Q_OBJECT

public:
    /// One answer, of one value of the swept parameter.
    struct Run {
        double parameter = 0;
        Results results;
    };

    explicit Simulator(QObject* parent = nullptr);
    ~Simulator() override;

    /// The program that is run: by default the first "ngspice" on the path.
    void setProgram(const QString& program) { m_program = program; }
    /// How long a whole run may take before it is given up; 0, the default, is for ever.
    void setTimeLimit(int seconds) { m_timeLimit = seconds; }
    /// Why there is nothing to run it with, as one sentence that names the package; empty if there
    /// is.
    QString obstacle() const;

    /// Starts the analysis that is active. False, with the reason, if it can't be started; nothing
    /// is emitted then.
    bool start(Circuit& circuit, const SpiceModels& models, const SimulationSetup& setup,
               QString* reason);
    /// The same, and waits for the end.
    bool runToEnd(Circuit& circuit, const SpiceModels& models, const SimulationSetup& setup,
                  QString* reason);
    void cancel();
    bool isRunning() const { return m_running; }

    /// Of the last run that ended well, in the order of the values.
    const QVector<Run>& runs() const { return m_runs; }
    QString analysis() const { return m_runsAnalysis; }
    QString sweptParameter() const { return m_runsParameter; }
    /// Drops the runs.
    void forget() { m_runs.clear(); }
    /// What the simulator printed, for people who want to know.
    QString log() const { return m_log; }

signals:
    /// From 0 to 100.
    void progressed(int percent);
    /// `error` is one sentence, empty for success; `element` names what it is about, if anything.
    void finished(const QString& error, const QString& element);

private:
    void startProcess();
    void readOutput();
    void processEnded(int exitCode, QProcess::ExitStatus status);
    void processFailed(QProcess::ProcessError error);
    void stopProcess();
    void end(const QString& error, const QString& element = {});
    /// The first complaint in what was printed.
    QString complaint(QString* element) const;
    /// The drawing's element behind what the simulator names; empty for any other word.
    QString elementOf(const QString& word) const;
    QString writeInput() const;

    QString m_program;
    QString m_analysis;
    QString m_analysisLine;
    // Of a transient, in seconds.
    double m_stop = 0;
    QString m_sweptParameter;
    QVector<double> m_values;
    Netlist m_netlist;
    QVector<Run> m_runs;
    QString m_runsAnalysis;
    QString m_runsParameter;
    QVector<Run> m_pending;
    QString m_log;
    QString m_output;
    int m_at = 0;
    bool m_running = false;
    // Why the process is being stopped; empty while it isn't.
    QString m_stopReason;
    int m_timeLimit = 0;
    QTimer m_watch;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_process;
};
