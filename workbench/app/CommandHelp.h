#pragma once

#include "CommandLine.h"

/// How the command is used and what it does, in a few lines; of the window also which commands
/// there are.
QString helpOn(CommandLine::Command command);
