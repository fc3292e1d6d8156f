#pragma once

struct CommandLine;
class Workbench;

/// Runs a command that opens no window; the exit status. What goes wrong is told in one line on
/// the standard error stream, and leaves no half-written file.
int runBatchCommand(const CommandLine& line, Workbench& workbench);
