#include "Console.h"

#include <QByteArray>
#include <QString>

#include <cerrno>
#include <cstdio>
#include <cstring>

void printError(const QString& message) {
    // Names of files may hold line breaks; the message stays one line.
    QString line = message;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "%s\n", qPrintable(line));
}

bool printOutput(const QByteArray& text, QString* error) {
    const auto size = static_cast<size_t>(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0) {
        return true;
    }
    *error = QStringLiteral("cannot write to the standard output: %1")
                 .arg(QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}
