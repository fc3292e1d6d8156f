// Runs each target on the files of its folder in the one that is given: the cases that once broke
// something, and the seeds from which the fuzzer starts.

#include "FuzzTargets.h"

#include <QDir>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    startFuzzing(&argc, argv);
    const QDir corpus(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
    int count = 0;
    for (const QString& name : corpus.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const FuzzTarget* target = fuzzTarget(name.toLatin1());
        const QDir folder(corpus.filePath(name));
        for (const QString& entry : folder.entryList(QDir::Files)) {
            // Before it runs: what ends the program is then the last line.
            std::printf("%s/%s\n", qPrintable(name), qPrintable(entry));
            std::fflush(stdout);
            QFile file(folder.filePath(entry));
            if (!target || !file.open(QIODevice::ReadOnly)) {
                return 1;
            }
            target->run(file.readAll());
            ++count;
        }
    }
    endFuzzing();
    return count > 0 ? 0 : 1;
}
