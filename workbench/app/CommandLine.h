#pragma once

#include "PictureFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// What the user asked for on the command line.
struct CommandLine {
    enum class Command {
        Window,
        Export,
        Describe,
        Convert,
        Netlist,
        Simulate,
        Diff,
        Help,
        Version
    };

    Command command = Command::Window;
    /// Of which command help is wanted.
    Command helpTopic = Command::Window;
    /// The project or circuit to read; may be empty for the window only.
    QString file;
    QList<PictureOutput> pictures;
    QString convertedFile;
    /// Of diff: what `file` has become.
    QString otherFile;
    /// Of netlist and simulate.
    QString output;
    /// Empty for the one that the project has active.
    QString analysis;
    /// In seconds: how long a simulation may take.
    int timeout = 600;
    /// Whether pictures show the values of the operating point.
    bool operatingPoint = false;
    /// Empty for the plug-in that lies beside the program.
    QString plugin;
};

/// Reads the arguments, the program's name first. On bad use nothing, with one sentence in
/// `*error`.
std::optional<CommandLine> parseCommandLine(const QStringList& arguments, QString* error);

/// True if the arguments name a command that opens no window. Looks at the raw arguments, because
/// the display platform must be chosen before there is an application that could decode them.
bool isBatchCommand(int argc, const char* const* argv);

/// One line.
QString usage();
