#include "Console.h"

#include <QString>

#include <cstdio>

void printError(const QString& message) {
    // Names of files may hold line breaks; the message stays one line.
    QString line = message;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "%s\n", qPrintable(line));
}
