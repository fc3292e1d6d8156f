#include "SimulationCommands.h"

#include "Circuit.h"
#include "Console.h"
#include "PendingFile.h"
#include "PlotContent.h"
#include "Plots.h"
#include "SimulationPart.h"

#include <QFileInfo>

namespace {

/// As a line of the command line's, which ends without a full stop.
QString asLine(QString sentence) {
    sentence = sentence.simplified();
    return sentence.endsWith(QLatin1Char('.')) ? sentence.chopped(1) : sentence;
}

bool write(const QString& fileName, const QByteArray& content, QString* error) {
    QString reason;
    if (PendingFile::write(fileName, content, &reason)) {
        return true;
    }
    *error = QStringLiteral("cannot write %1: %2").arg(fileName, reason);
    return false;
}

/// False if nothing can be run; what may be wrong is told in passing.
bool tellProblems(const SimulationPart& simulation) {
    bool fit = true;
    for (const CircuitProblem& problem : simulation.check()) {
        printError(asLine(problem.text));
        fit = fit && problem.severity != CircuitProblem::Error;
    }
    return fit;
}

}  // namespace

bool writeNetlistFile(SimulationPart* simulation, const QString& fileName, QString* error) {
    tellProblems(*simulation);
    return write(fileName, simulation->netlist().toUtf8(), error);
}

bool simulateToFile(SimulationPart* simulation, const QString& analysis, int timeout,
                    const QString& fileName, QString* error) {
    simulation->simulator().setTimeLimit(timeout);
    SimulationSetup setup = simulation->setup();
    if (!analysis.isEmpty()) {
        setup.setActive(analysis);
        if (setup.active() != analysis) {
            *error = QStringLiteral("there is no analysis \"%1\"").arg(analysis);
            return false;
        }
        simulation->setSetup(setup);
    }
    QString reason;
    if (!simulation->runToEnd(&reason)) {
        *error = asLine(reason);
        return false;
    }
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    const QVector<Simulator::Run>& runs = simulation->simulator().runs();
    if (suffix == QLatin1String("raw")) {
        QByteArray bytes;
        for (const Simulator::Run& run : runs) {
            bytes += writeRawFile(run.results.plot(), simulation->circuit().title());
        }
        return write(fileName, bytes, error);
    }
    QStringList problems;
    QByteArray content;
    if (suffix == QLatin1String("svg")) {
        const PlotContent curves = plotContent(*simulation);
        if (curves.isPoint) {
            *error =
                QStringLiteral("cannot write %1: an operating point has no curves").arg(fileName);
            return false;
        }
        problems = curves.problems;
        content = Plots::svg(curves);
        if (content.isEmpty()) {
            *error = QStringLiteral("cannot write %1: this program was built without curves")
                         .arg(fileName);
            return false;
        }
    } else {
        content = simulation->csv(&problems);
    }
    for (const QString& problem : qAsConst(problems)) {
        printError(asLine(problem));
    }
    return write(fileName, content, error);
}
