#pragma once

class QString;

/// Exit statuses of the program.
enum ExitStatus { Succeeded = 0, Failed = 1, BadUse = 2 };

/// One line on the standard error stream.
void printError(const QString& message);
