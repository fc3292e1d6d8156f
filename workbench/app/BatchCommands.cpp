#include "BatchCommands.h"

#include "CommandLine.h"
#include "Console.h"
#include "OperatingPoint.h"
#include "ProjectManager.h"
#include "SimulationCommands.h"
#include "Workbench.h"

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
        case CommandLine::Command::Describe: {
            const QByteArray text = workbench.describe(error);
            return !text.isEmpty() && printOutput(text, error);
        }
        case CommandLine::Command::Netlist:
            return writeNetlistFile(workbench.simulation(), line.output, error);
        case CommandLine::Command::Simulate:
            return simulateToFile(workbench.simulation(), line.analysis, line.timeout, line.output,
                                  error);
        default:
            return true;
    }
}

}  // namespace

int runBatchCommand(const CommandLine& line, Workbench& workbench) {
    // Nobody asks a command that ends by itself whether the project has changed.
    workbench.projectManager()->setComparesContent(false);
    QString message;
    if (!workbench.open(line.file, &message)) {
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
