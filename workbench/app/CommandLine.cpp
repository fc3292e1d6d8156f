#include "CommandLine.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <cstring>

namespace {

constexpr char ExportCommand[] = "export";
constexpr char DescribeCommand[] = "describe";
constexpr char ConvertCommand[] = "convert";
constexpr char NetlistCommand[] = "netlist";
constexpr char SimulateCommand[] = "simulate";
constexpr char DiffCommand[] = "diff";
constexpr char PluginOption[] = "--plugin";
constexpr char AnalysisOption[] = "--analysis";
constexpr char TimeoutOption[] = "--timeout";
/// A day.
constexpr int LongestTimeout = 86400;
constexpr char OperatingPointOption[] = "--operating-point";
/// Options that a word belongs to, and what it is.
constexpr const char* ValuedOptions[][2] = {{"-o", "a file name"},
                                            {PluginOption, "a file name"},
                                            {AnalysisOption, "a name"},
                                            {TimeoutOption, "a number of seconds"}};

/// The arguments sorted by kind, before anyone asks whether they make sense together.
struct Words {
    QStringList names;
    QStringList outputs;
    QString plugin;
    QString analysis;
    QString timeout;
    bool operatingPoint = false;
    bool help = false;
    bool version = false;
};

/// What must follow the option; null if nothing does.
const char* valueOf(const QString& option) {
    for (const auto& valued : ValuedOptions) {
        if (option == QLatin1String(valued[0])) {
            return valued[1];
        }
    }
    return nullptr;
}

bool sortWords(const QStringList& arguments, Words* words, QString* error) {
    bool onlyNames = false;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (onlyNames || !argument.startsWith(QLatin1Char('-')) || argument.size() == 1) {
            words->names.append(argument);
        } else if (argument == QLatin1String("--")) {
            onlyNames = true;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            words->help = true;
        } else if (argument == QLatin1String("--version")) {
            words->version = true;
        } else if (argument == QLatin1String(OperatingPointOption)) {
            words->operatingPoint = true;
        } else if (const char* wanted = valueOf(argument)) {
            if (i + 1 == arguments.size() || arguments.at(i + 1).isEmpty()) {
                *error = QStringLiteral("%1 needs %2").arg(argument, QLatin1String(wanted));
                return false;
            }
            const QString& value = arguments.at(++i);
            if (argument == QLatin1String("-o")) {
                words->outputs.append(value);
            } else if (argument == QLatin1String(AnalysisOption)) {
                words->analysis = value;
            } else if (argument == QLatin1String(TimeoutOption)) {
                words->timeout = value;
            } else {
                words->plugin = value;
            }
        } else {
            *error = QStringLiteral("unknown option %1").arg(argument);
            return false;
        }
    }
    return true;
}

bool takePictures(const QStringList& outputs, CommandLine* line, QString* error) {
    for (const QString& output : outputs) {
        const std::optional<PictureFormat> format = pictureFormatOf(output);
        if (!format) {
            *error = QStringLiteral("%1: the name of a picture must end in %2")
                         .arg(output, pictureSuffixes().join(QStringLiteral(", ")));
            return false;
        }
        line->pictures.append({*format, output});
    }
    if (line->pictures.isEmpty()) {
        *error = QStringLiteral("export needs at least one -o OUT");
        return false;
    }
    return true;
}

bool takeConvertedFile(const QString& name, CommandLine* line, QString* error) {
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix != QLatin1String("ckt") && suffix != QLatin1String("vprj")) {
        *error =
            QStringLiteral("%1: convert writes files whose names end in .vprj or .ckt").arg(name);
        return false;
    }
    line->convertedFile = name;
    return true;
}

/// The one file that netlist and simulate write.
bool takeOutput(const Words& words, CommandLine* line, QString* error) {
    const bool isNetlist = line->command == CommandLine::Command::Netlist;
    if (words.outputs.size() != 1) {
        *error = QStringLiteral("%1 needs one -o OUT")
                     .arg(QLatin1String(isNetlist ? NetlistCommand : SimulateCommand));
        return false;
    }
    line->output = words.outputs.first();
    const QString suffix = QFileInfo(line->output).suffix().toLower();
    const QStringList suffixes = {QStringLiteral("csv"), QStringLiteral("svg"),
                                  QStringLiteral("raw")};
    if (!isNetlist && !suffixes.contains(suffix)) {
        *error = QStringLiteral("%1: simulate writes files whose names end in .csv, .svg or .raw")
                     .arg(line->output);
        return false;
    }
    return true;
}

bool takeSimulationOptions(const Words& words, CommandLine* line, QString* error) {
    const bool isSimulation = line->command == CommandLine::Command::Simulate;
    line->analysis = words.analysis;
    line->operatingPoint = words.operatingPoint;
    bool isNumber = true;
    if (!words.timeout.isEmpty()) {
        line->timeout = words.timeout.toInt(&isNumber);
        isNumber = isNumber && line->timeout > 0 && line->timeout <= LongestTimeout;
    }
    if (!isSimulation && !words.analysis.isEmpty()) {
        *error = QStringLiteral("--analysis belongs to simulate");
    } else if (!isSimulation && !words.timeout.isEmpty()) {
        *error = QStringLiteral("--timeout belongs to simulate");
    } else if (!isNumber) {
        *error = QStringLiteral("%1 is no number of seconds").arg(words.timeout);
    } else if (words.operatingPoint && line->command != CommandLine::Command::Export) {
        *error = QStringLiteral("--operating-point belongs to export");
    }
    return error->isEmpty();
}

}  // namespace

std::optional<CommandLine> parseCommandLine(const QStringList& arguments, QString* error) {
    using Command = CommandLine::Command;
    Words words;
    if (!sortWords(arguments, &words, error)) {
        return {};
    }
    CommandLine line;
    line.plugin = words.plugin;
    static const QHash<QString, Command> commands = {
        {QLatin1String(ExportCommand), Command::Export},
        {QLatin1String(DescribeCommand), Command::Describe},
        {QLatin1String(ConvertCommand), Command::Convert},
        {QLatin1String(NetlistCommand), Command::Netlist},
        {QLatin1String(SimulateCommand), Command::Simulate},
        {QLatin1String(DiffCommand), Command::Diff}};
    const QString command = words.names.value(0);
    line.command = commands.value(command, Command::Window);
    if (words.help || words.version) {
        line.helpTopic = line.command;
        line.command = words.help ? Command::Help : Command::Version;
        return line;
    }
    const bool isWindow = line.command == Command::Window;
    if (!isWindow) {
        words.names.removeFirst();
    }
    const bool hasTwo = line.command == Command::Convert || line.command == Command::Diff;
    const int mostNames = hasTwo ? 2 : 1;
    const int leastNames = isWindow ? 0 : mostNames;
    if (words.names.size() < leastNames || words.names.contains(QString())) {
        *error = isWindow ? QStringLiteral("the file name is empty")
                          : QStringLiteral("%1 needs a file name").arg(command);
        return {};
    }
    if (words.names.size() > mostNames) {
        *error = QStringLiteral("too many file names: %1").arg(words.names.at(mostNames));
        return {};
    }
    line.file = words.names.value(0);
    if (line.command == Command::Diff) {
        line.otherFile = words.names.at(1);
    }
    const bool writesOne = line.command == Command::Netlist || line.command == Command::Simulate;
    if (writesOne && !takeOutput(words, &line, error)) {
        return {};
    }
    if (!writesOne && line.command != Command::Export && !words.outputs.isEmpty()) {
        *error = QStringLiteral("-o belongs to export, netlist and simulate");
        return {};
    }
    if (!takeSimulationOptions(words, &line, error)) {
        return {};
    }
    if (line.command == Command::Export && !takePictures(words.outputs, &line, error)) {
        return {};
    }
    if (line.command == Command::Convert && !takeConvertedFile(words.names.at(1), &line, error)) {
        return {};
    }
    return line;
}

bool isBatchCommand(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        if (valueOf(QString::fromLocal8Bit(argv[i]))) {
            ++i;
        } else if (argv[i][0] != '-') {
            const auto isNamed = [word = argv[i]](const char* command) {
                return std::strcmp(word, command) == 0;
            };
            return isNamed(ExportCommand) || isNamed(DescribeCommand) || isNamed(ConvertCommand) ||
                   isNamed(NetlistCommand) || isNamed(SimulateCommand) || isNamed(DiffCommand);
        }
    }
    return false;
}

QString usage() {
    return QStringLiteral(
               "usage: vortel-workbench [--plugin FILE] [FILE] | "
               "export FILE [--operating-point] -o OUT.(%1)... | "
               "describe FILE | convert FILE OUT.(vprj|ckt) | netlist FILE -o OUT.cir | "
               "simulate FILE [--analysis NAME] [--timeout SECONDS] -o OUT.(csv|svg|raw) | "
               "diff FILE FILE")
        .arg(pictureSuffixes().join(QLatin1Char('|')).remove(QLatin1Char('.')));
}
