// What a command costs from start to end, beside reading and writing the same bytes as a bare
// document. `n` is the number of elements; there are one and a half times as many nets.

#include "CircuitGenerator.h"
#include "Program.h"
#include "Ratios.h"

#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>

#include <map>

namespace {

const QTemporaryDir& folder() {
    static const QTemporaryDir folder;
    return folder;
}

/// A generated circuit file, written once.
QString circuitFile(int elementCount) {
    static std::map<int, QString> files;
    QString& name = files[elementCount];
    if (name.isEmpty()) {
        name = folder().filePath(QStringLiteral("circuit-%1.ckt").arg(elementCount));
        QFile file(name);
        const QByteArray text = circuitFileText(elementCount);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(name));
        }
    }
    return name;
}

void run(benchmark::State& state, const QString& command, const QStringList& rest) {
    const auto size = static_cast<int>(state.range(0));
    const QStringList arguments = QStringList{command, circuitFile(size)} + rest;
    for (auto _ : state) {
        const ProgramUsage usage = runProgram(arguments);
        if (usage.status != 0) {
            state.SkipWithError("the program failed");
        }
        state.SetIterationTime(usage.cpuSeconds);
        state.counters["MB"] = usage.peakMegabytes;
        if (size == 100000) {
            Ratios::note(command.toStdString() + ", 100,000 elements, memory", usage.peakMegabytes,
                         1200, "MB");
        }
    }
}

void describe(benchmark::State& state) {
    run(state, QStringLiteral("describe"), {});
}

void convert(benchmark::State& state) {
    run(state, QStringLiteral("convert"), {folder().filePath(QStringLiteral("converted.vprj"))});
}

/// The document of the same bytes, read and written.
void document(benchmark::State& state) {
    const QByteArray text = circuitFileText(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QDomDocument document;
        document.setContent(text);
        benchmark::DoNotOptimize(document.toByteArray());
    }
}

BENCHMARK(document)->Arg(10000)->Unit(benchmark::kMillisecond);

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseManualTime();
}

BENCHMARK(describe)->Apply(sizes);
BENCHMARK(convert)->Apply(sizes);

}  // namespace

int main(int argc, char** argv) {
    for (const std::string command : {"describe", "convert"}) {
        Ratios::require(command + ", 10,000 elements, whole process", command + "/10000",
                        "document/10000", 3.5);
        Ratios::require(command + ", 100,000 elements to 10,000", command + "/100000",
                        command + "/10000", 12);
    }
    return Ratios::run(argc, argv);
}
