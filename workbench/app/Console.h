#pragma once

class QByteArray;
class QString;

/// Exit statuses of the program.
enum ExitStatus { Succeeded = 0, Failed = 1, BadUse = 2 };

/// One line on the standard error stream.
void printError(const QString& message);
/// False, with the reason, if the standard output doesn't take all of it.
bool printOutput(const QByteArray& text, QString* error);
