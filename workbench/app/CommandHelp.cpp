#include "CommandHelp.h"

namespace {

constexpr char ExportHelp[] =
    R"(usage: vortel-workbench export FILE [--operating-point] -o OUT...

Writes the drawing of FILE as pictures. The ending of each OUT chooses the format: %1. With
--operating-point the values of the circuit at rest stand beside its nets and elements.)";

constexpr char DescribeHelp[] =
    R"(usage: vortel-workbench describe FILE

Prints the drawing of FILE as JSON, for comparing drawings.)";

constexpr char ConvertHelp[] =
    R"(usage: vortel-workbench convert FILE OUT

Reads FILE and writes it as OUT. The ending chooses what it becomes: .vprj a project with all that
FILE holds, .ckt a circuit file with elements and wires only. FILE may also be an LTspice schematic
(.asc): what of it has no counterpart is told, a line each.)";

constexpr char NetlistHelp[] =
    R"(usage: vortel-workbench netlist FILE -o OUT

Writes the circuit of FILE as the simulator ngspice reads it. What is doubtful is told, a line each.)";

constexpr char SimulateHelp[] =
    R"(usage: vortel-workbench simulate FILE [--analysis NAME] [--timeout SECONDS] -o OUT

Runs the analysis that FILE has active, or the one named (op, dc, ac, tran or noise), with ngspice,
and writes the output variables, without any all nets. The ending of OUT chooses the format: .csv a
table, .svg the curves, .raw what the simulator wrote. Gives up after 600 seconds, or those named.)";

constexpr char DiffHelp[] =
    R"(usage: vortel-workbench diff FILE FILE

Tells in words what changed from the first to the second. The status is 0 if nothing did, 1 if
something did, 2 for trouble. /dev/null stands for an empty project.)";

constexpr char WindowHelp[] =
    R"(Opens the window, with FILE: a project (.vprj) or a circuit file (.ckt). The commands open none:

  export      writes pictures of the drawing
  describe    prints the drawing as JSON
  convert     writes a project as a circuit file, or the other way round
  netlist     writes what ngspice reads
  simulate    runs an analysis and writes what comes of it
  diff        tells what changed between two files

"vortel-workbench COMMAND --help" tells more. Other options:

  --plugin FILE   takes another editor than the one that belongs to the program
  --version       prints the version

The status is 0, 2 for bad use, or 1 with one line that tells what went wrong.)";

}  // namespace

QString helpOn(CommandLine::Command command) {
    switch (command) {
        case CommandLine::Command::Export:
            return QString::fromLatin1(ExportHelp).arg(pictureSuffixes().join(QLatin1String(", ")));
        case CommandLine::Command::Describe:
            return QString::fromLatin1(DescribeHelp);
        case CommandLine::Command::Convert:
            return QString::fromLatin1(ConvertHelp);
        case CommandLine::Command::Netlist:
            return QString::fromLatin1(NetlistHelp);
        case CommandLine::Command::Simulate:
            return QString::fromLatin1(SimulateHelp);
        case CommandLine::Command::Diff:
            return QString::fromLatin1(DiffHelp);
        default:
            return usage() + QLatin1String("\n\n") + QString::fromLatin1(WindowHelp);
    }
}
