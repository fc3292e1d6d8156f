#include "Console.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdio>

void printError(const QString& message) {
    // Names of files may hold line breaks; the message stays one line.
    QString line = message;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "%s\n", qPrintable(line));
}

bool printOutput(const QByteArray& text, QString* error) {
    return printOutput([&text](QIODevice* output) { return output->write(text) == text.size(); },
                       error);
}

bool printOutput(const std::function<bool(QIODevice* output)>& write, QString* error) {
    QFile output;
    output.open(stdout, QIODevice::WriteOnly);
    if (write(&output) && output.flush()) {
        return true;
    }
    if (error->isEmpty()) {
        *error =
            QStringLiteral("cannot write to the standard output: %1").arg(output.errorString());
    }
    return false;
}
