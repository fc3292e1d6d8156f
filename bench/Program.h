#pragma once

#include <QStringList>

/// What a run of the whole program has cost.
struct ProgramUsage {
    /// Exit status; -1 if the program didn't end by itself.
    int status = -1;
    /// Of the program and of what it started.
    double cpuSeconds = 0;
    /// The most that was resident at one time, without huge pages: those would count memory that
    /// nobody has asked for.
    double peakMegabytes = 0;
};

/// Runs `vortel-workbench` to its end, its output thrown away.
ProgramUsage runProgram(const QStringList& arguments);
