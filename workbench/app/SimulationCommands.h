#pragma once

#include <QString>

class SimulationPart;

// What the command line asks of the simulation. False, with one sentence, for what went wrong; no
// half-written file is left.

bool writeNetlistFile(SimulationPart* simulation, const QString& fileName, QString* error);
/// Runs the analysis, or the project's own if the name is empty, and writes what the output
/// variables were: the ending of the name chooses csv, svg or raw.
/// After so many seconds it gives up.
bool simulateToFile(SimulationPart* simulation, const QString& analysis, int timeout,
                    const QString& fileName, QString* error);
