#include "Simulator.h"

#include "Circuit.h"
#include "CircuitCheck.h"
#include "EngineeringNumber.h"
#include "SpiceModels.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

constexpr char InputName[] = "circuit.cir";
constexpr char AnswerName[] = "answer.raw";
/// How long a simulator that is asked to stop may take before it is killed.
constexpr int PatienceMs = 500;
/// What it prints is kept for people to read; more than this nobody reads.
constexpr int LongestLog = 200000;

/// The plot that an analysis is asked for: noise answers two, of which the first is the spectrum.
const RawPlot* wantedPlot(const QVector<RawPlot>& plots) {
    for (const RawPlot& plot : plots) {
        if (!plot.name.startsWith(QLatin1String("Integrated"))) {
            return &plot;
        }
    }
    return plots.isEmpty() ? nullptr : &plots.first();
}

}  // namespace

Simulator::Simulator(QObject* parent) : QObject(parent) {
    m_watch.setSingleShot(true);
    connect(&m_watch, &QTimer::timeout, this, [this] {
        m_stopReason = tr("The simulation took longer than %1 s.").arg(m_timeLimit);
        stopProcess();
    });
}

Simulator::~Simulator() {
    cancel();
}

QString Simulator::obstacle() const {
    const QString program = m_program.isEmpty() ? QStringLiteral("ngspice") : m_program;
    return QStandardPaths::findExecutable(program).isEmpty()
               ? tr("The simulator %1 is not installed: install the package ngspice.").arg(program)
               : QString();
}

bool Simulator::start(Circuit& circuit, const SpiceModels& models, const SimulationSetup& setup,
                      QString* reason) {
    *reason = m_running ? tr("A simulation is running.") : obstacle();
    for (const QString& analysis : {setup.active(), QStringLiteral("sweep")}) {
        if (reason->isEmpty()) {
            *reason = setup.problem(analysis);
        }
    }
    if (!reason->isEmpty()) {
        return false;
    }
    for (const CircuitProblem& problem : checkCircuit(circuit, models)) {
        if (problem.severity == CircuitProblem::Error) {
            *reason = problem.text;
            return false;
        }
    }
    m_netlist = writeNetlist(circuit, models, NetlistProbes::All);
    m_analysis = setup.active();
    m_analysisLine = setup.line(m_analysis, m_netlist, reason);
    bool isNumber = false;
    m_stop = EngineeringNumber::parse(setup.value(QStringLiteral("tran"), QStringLiteral("stop")),
                                      &isNumber);
    m_sweptParameter = setup.sweptParameter();
    m_values = setup.sweepValues();
    const QString parameterLine = QStringLiteral(".param %1 = ").arg(m_sweptParameter);
    const auto isParameter = [&](const QString& line) { return line.startsWith(parameterLine); };
    if (reason->isEmpty() && !m_sweptParameter.isEmpty() &&
        std::none_of(m_netlist.lines.begin(), m_netlist.lines.end(), isParameter)) {
        *reason = tr("%1 is no parameter of the circuit.").arg(m_sweptParameter);
    }
    m_folder = std::make_unique<QTemporaryDir>();
    if (reason->isEmpty() && !m_folder->isValid()) {
        *reason = tr("There is no room for the simulation: %1.").arg(m_folder->errorString());
    }
    if (!reason->isEmpty()) {
        return false;
    }
    if (m_values.isEmpty()) {
        m_values = {0};
    }
    m_at = 0;
    m_pending.clear();
    m_log.clear();
    m_running = true;
    m_stopReason.clear();
    if (m_timeLimit > 0) {
        m_watch.start(m_timeLimit * 1000);
    }
    emit progressed(0);
    startProcess();
    return true;
}

bool Simulator::runToEnd(Circuit& circuit, const SpiceModels& models, const SimulationSetup& setup,
                         QString* reason) {
    QEventLoop loop;
    QString problem;
    const auto connection =
        connect(this, &Simulator::finished, &loop, [&](const QString& error, const QString&) {
            problem = error;
            loop.quit();
        });
    const bool started = start(circuit, models, setup, reason);
    if (started && m_running) {
        loop.exec();
    }
    disconnect(connection);
    if (started) {
        *reason = problem;
    }
    return started && problem.isEmpty();
}

QString Simulator::writeInput() const {
    QFile file(m_folder->filePath(QLatin1String(InputName)));
    QStringList lines = m_netlist.lines;
    if (!m_sweptParameter.isEmpty()) {
        const QString head = QStringLiteral(".param %1 = ").arg(m_sweptParameter);
        for (QString& line : lines) {
            if (line.startsWith(head)) {
                line = head + QString::number(m_values.at(m_at), 'g', 17);
            }
        }
    }
    // A trickle to ground from everywhere: a net that floats has a voltage, instead of ending the
    // run.
    lines << QString() << QStringLiteral(".options rshunt=1e12") << m_analysisLine
          << QStringLiteral(".end") << QString();
    const QByteArray text = lines.join(QLatin1Char('\n')).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        return tr("There is no room for the simulation: %1.").arg(file.errorString());
    }
    return {};
}

void Simulator::startProcess() {
    const QString trouble = writeInput();
    if (!trouble.isEmpty()) {
        end(trouble);
        return;
    }
    m_output.clear();
    QFile::remove(m_folder->filePath(QLatin1String(AnswerName)));
    m_process = std::make_unique<QProcess>();
    m_process->setWorkingDirectory(m_folder->path());
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_process->setProcessEnvironment(environment);
    connect(m_process.get(), &QProcess::readyRead, this, &Simulator::readOutput);
    connect(m_process.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &Simulator::processEnded);
    connect(m_process.get(), &QProcess::errorOccurred, this, &Simulator::processFailed);
    m_process->start(m_program.isEmpty() ? QStringLiteral("ngspice") : m_program,
                     {QStringLiteral("-b"), QStringLiteral("-r"), QLatin1String(AnswerName),
                      QLatin1String(InputName)});
}

void Simulator::readOutput() {
    static const QRegularExpression reference(QStringLiteral("Reference value :\\s*(\\S+)\\s"));
    const QString text = QString::fromUtf8(m_process->readAll());
    if (m_output.size() < LongestLog) {
        m_output += text;
    }
    // In a transient it tells the time that it has reached.
    if (m_analysis != QLatin1String("tran")) {
        return;
    }
    double reached = 0;
    for (auto it = reference.globalMatch(text); it.hasNext();) {
        reached = it.next().captured(1).toDouble();
    }
    if (reached > 0 && m_stop > 0) {
        emit progressed(
            static_cast<int>(100 * (m_at + qMin(1.0, reached / m_stop)) / m_values.size()));
    }
}

void Simulator::processFailed(QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart && m_running) {
        end(tr("The simulator can not be started: %1.").arg(m_process->errorString()));
    }
}

void Simulator::processEnded(int exitCode, QProcess::ExitStatus status) {
    if (!m_running) {
        return;
    }
    readOutput();
    m_log = m_output;
    if (!m_stopReason.isEmpty()) {
        end(m_stopReason);
        return;
    }
    QString element;
    const QString error = complaint(&element);
    if (status == QProcess::CrashExit) {
        end(tr("The simulator ended unexpectedly."));
        return;
    }
    QFile file(m_folder->filePath(QLatin1String(AnswerName)));
    QString reason;
    QVector<RawPlot> plots;
    if (file.open(QIODevice::ReadOnly)) {
        plots = readRawFile(file.readAll(), &reason);
    } else {
        reason = tr("The simulator answered no values.");
    }
    const RawPlot* plot = wantedPlot(plots);
    if (!plot || exitCode != 0) {
        end(error.isEmpty() ? (reason.isEmpty() ? tr("The simulator failed.") : reason) : error,
            element);
        return;
    }
    if (plot->isCut) {
        end(tr("The answer of the simulator breaks off: is there room on the disk?"));
        return;
    }
    if (m_output.contains(QLatin1String("aborted"))) {
        end(error.isEmpty() ? tr("The simulator gave up.") : error, element);
        return;
    }
    m_pending.append({m_values.at(m_at), Results(m_netlist, *plot)});
    ++m_at;
    emit progressed(100 * m_at / m_values.size());
    if (m_at < m_values.size()) {
        // Not from within a signal of the process that this one replaces.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_running) {
                    m_stopReason.isEmpty() ? startProcess() : end(m_stopReason);
                }
            },
            Qt::QueuedConnection);
        return;
    }
    m_runs = m_pending;
    m_runsAnalysis = m_analysis;
    m_runsParameter = m_sweptParameter;
    end({});
}

void Simulator::end(const QString& error, const QString& element) {
    m_running = false;
    m_watch.stop();
    m_pending.clear();
    emit finished(error, element);
}

void Simulator::cancel() {
    if (!m_running) {
        return;
    }
    m_stopReason = tr("The simulation was cancelled.");
    stopProcess();
}

void Simulator::stopProcess() {
    if (m_process && m_process->state() != QProcess::NotRunning) {
        m_process->terminate();
        if (!m_process->waitForFinished(PatienceMs)) {
            m_process->kill();
            m_process->waitForFinished(PatienceMs);
        }
    }
}

QString Simulator::elementOf(const QString& word) const {
    const QString device = word.section(QLatin1Char('#'), 0, 0);
    return m_netlist.elements.value(device, m_netlist.ammeters.value(device));
}

QString Simulator::complaint(QString* element) const {
    static const QRegularExpression trouble(
        QStringLiteral("error|singular|too small|can't find|could not find|no such|unknown|"
                       "undefined|no dc path|aborted"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression place(QStringLiteral("\\bline no\\. (\\d+)"));
    static const QRegularExpression blanks(QStringLiteral("[\\s,:()]+"));
    QString first;
    QString known;
    for (const QString& line : m_output.split(QLatin1Char('\n'))) {
        // Of some faults it tells the line of what it has read.
        const QRegularExpressionMatch number = place.match(line);
        if (number.hasMatch() && known.isEmpty()) {
            const QString read = m_netlist.lines.value(number.captured(1).toInt() - 1);
            known = elementOf(read.section(QLatin1Char(' '), 0, 0).toLower());
            continue;
        }
        if (first.isEmpty() && trouble.match(line).hasMatch()) {
            first = line.simplified();
        }
        for (const QString& word : line.toLower().split(blanks, Qt::SkipEmptyParts)) {
            known = known.isEmpty() && !first.isEmpty() ? elementOf(word) : known;
        }
        if (!first.isEmpty() && !known.isEmpty()) {
            *element = known;
            return tr("The simulator complains about %1: %2").arg(known, first);
        }
    }
    return first.isEmpty() ? first : tr("The simulator complains: %1").arg(first);
}
