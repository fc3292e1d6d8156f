// Writes a generated circuit into a file: write_circuit COUNT FILE.ckt

#include "CircuitGenerator.h"

#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    const int count = argc == 3 ? QByteArray(argv[1]).toInt() : 0;
    if (count < 1) {
        std::fprintf(stderr, "usage: write_circuit COUNT FILE.ckt\n");
        return 2;
    }
    const QByteArray text = circuitFileText(count);
    QFile file(QFile::decodeName(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        std::fprintf(stderr, "cannot write %s: %s\n", argv[2], qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
