#pragma once

#include <functional>

class QByteArray;
class QIODevice;
class QString;

/// Exit statuses of the program.
enum ExitStatus { Succeeded = 0, Failed = 1, BadUse = 2 };

/// One line on the standard error stream.
void printError(const QString& message);
/// False, with the reason, if the standard output doesn't take all of it.
bool printOutput(const QByteArray& text, QString* error);
/// The same for what is written piece by piece: `write` is given the standard output, and false
/// from it with a reason of its own goes first.
bool printOutput(const std::function<bool(QIODevice* output)>& write, QString* error);
