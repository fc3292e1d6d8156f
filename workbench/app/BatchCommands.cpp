#include "BatchCommands.h"

#include "AscImport.h"
#include "CommandLine.h"
#include "Console.h"
#include "OperatingPoint.h"
#include "ProjectDiff.h"
#include "SimulationCommands.h"
#include "SimulationPart.h"
#include "Workbench.h"

#include <QBuffer>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

bool run(const CommandLine& line, Workbench& workbench, QString* error) {
    switch (line.command) {
        case CommandLine::Command::Export: {
            std::unique_ptr<ValueItems> values;
            if (line.operatingPoint && !(values = operatingPointItems(workbench, error))) {
                return false;
            }
            for (const PictureOutput& picture : line.pictures) {
                if (!workbench.savePicture(picture, error)) {
                    return false;
                }
            }
            return true;
        }
        case CommandLine::Command::Convert: {
            const QString losses = workbench.lossesOnSaving(line.convertedFile);
            if (!workbench.save(line.convertedFile, error)) {
                return false;
            }
            if (!losses.isEmpty()) {
                printError(losses);
            }
            return true;
        }
        case CommandLine::Command::Describe:
            return printOutput([&](QIODevice* output) { return workbench.describe(output, error); },
                               error);
        case CommandLine::Command::Netlist:
            return writeNetlistFile(workbench.simulation(), line.output, error);
        case CommandLine::Command::Simulate:
            return simulateToFile(workbench.simulation(), line.analysis, line.timeout, line.output,
                                  error);
        default:
            return true;
    }
}

/// What the project says of the simulation, defaults included.
QJsonObject describeSimulation(const SimulationSetup& setup) {
    QJsonObject result{{QStringLiteral("analysis"), setup.active()}};
    for (const AnalysisType& type : analysisTypes()) {
        for (const AnalysisField& field : type.fields) {
            const QString name =
                QLatin1String(type.name) + QLatin1Char(' ') + QLatin1String(field.name);
            result.insert(name, setup.value(QLatin1String(type.name), QLatin1String(field.name)));
        }
    }
    return result;
}

bool openAny(const QString& fileName, Workbench& workbench, QString* message) {
    QStringList remarks;
    const bool isOpen = isForeignFile(fileName) ? workbench.import(fileName, &remarks, message)
                                                : workbench.open(fileName, message);
    for (const QString& remark : qAsConst(remarks)) {
        printError(fileName + QLatin1String(": ") + remark);
    }
    return isOpen;
}

/// False, with the reason told, if the file can't be read.
bool describeFile(const QString& fileName, Workbench& workbench, QJsonObject* drawing) {
    QString message;
    // What git gives for a file that isn't there.
    if (fileName == QLatin1String("/dev/null")) {
        workbench.clear();
    } else if (!openAny(fileName, workbench, &message)) {
        printError(message);
        return false;
    }
    if (!message.isEmpty()) {
        printError(message);
    }
    QBuffer text;
    text.open(QIODevice::WriteOnly);
    workbench.describe(&text, &message);
    *drawing = QJsonDocument::fromJson(text.data()).object();
    drawing->insert(QStringLiteral("simulation"),
                    describeSimulation(workbench.simulation()->setup()));
    return true;
}

/// Its statuses are those of the program diff.
int runDiff(const CommandLine& line, Workbench& workbench) {
    enum DiffStatus { Same = 0, Different = 1, Trouble = 2 };
    QJsonObject before;
    QJsonObject after;
    if (!describeFile(line.file, workbench, &before) ||
        !describeFile(line.otherFile, workbench, &after)) {
        return Trouble;
    }
    const QStringList lines = differencesOf(before, after);
    QString error;
    for (const QString& text : lines) {
        if (!printOutput(text.toUtf8() + '\n', &error)) {
            printError(error);
            return Trouble;
        }
    }
    return lines.isEmpty() ? Same : Different;
}

}  // namespace

int runBatchCommand(const CommandLine& line, Workbench& workbench) {
    workbench.serveCommand();
    if (line.command == CommandLine::Command::Diff) {
        return runDiff(line, workbench);
    }
    QString message;
    if (!openAny(line.file, workbench, &message)) {
        printError(message);
        return Failed;
    }
    if (!message.isEmpty()) {
        printError(message);
    }
    QString error;
    if (!run(line, workbench, &error)) {
        printError(error);
        return Failed;
    }
    return Succeeded;
}
