// How the time for a whole drawing grows with its size, beside what a bare document takes for the
// same bytes. `n` is the number of elements; there are one and a half times as many nets.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CircuitGenerator.h"
#include "Drawing.h"
#include "ICircuitNode.h"
#include "ProjectFile.h"
#include "Ratios.h"

#include <QApplication>
#include <QDomDocument>
#include <QFile>

#include <malloc.h>

namespace {

int elementCount(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

/// Loads into an empty editor; the emptying isn't timed.
void load(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    for (auto _ : state) {
        drawing.load();
        state.PauseTiming();
        if (drawing.circuit.elementCount() != elementCount(state) ||
            drawing.circuit.nodeCount() * 2 != elementCount(state) * 3) {
            state.SkipWithError("the generated circuit was not loaded in full");
        }
        drawing.settle();
        drawing.clear();
        state.ResumeTiming();
    }
}

void save(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    const QString file = drawing.outputFile(QStringLiteral("saved.ckt"));
    for (auto _ : state) {
        drawing.editor->save(file);
    }
}

void setContent(benchmark::State& state) {
    const QByteArray text = circuitFileText(elementCount(state));
    for (auto _ : state) {
        QDomDocument document;
        document.setContent(text);
        state.PauseTiming();
        document = QDomDocument();
        state.ResumeTiming();
    }
}

void toByteArray(benchmark::State& state) {
    QDomDocument document;
    document.setContent(circuitFileText(elementCount(state)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(document.toByteArray(2));
    }
}

/// Bytes that the program has asked for and not given back; pages and their size don't count.
double bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// A drawing with its wires and a caption per element, at rest.
void memory(benchmark::State& state) {
    for (auto _ : state) {
        Drawing drawing(elementCount(state));
        const double before = bytesInUse();
        drawing.load();
        for (int i = 0; i < drawing.circuit.elementCount(); ++i) {
            QMetaObject::invokeMethod(drawing.editor->elementItem(drawing.circuit.element(i)),
                                      "createElementPropertyTextBoxForCaptionProperty");
        }
        drawing.settle();
        const double perElement = (bytesInUse() - before) / 1024 / elementCount(state);
        state.counters["KiB"] = perElement;
        Ratios::note("memory per element, wire and caption in it", perElement, 8, "KiB");
    }
}

/// A net of `n` terminals.
void loadBigNet(benchmark::State& state) {
    Drawing drawing(bigNetFileText(elementCount(state)));
    for (auto _ : state) {
        drawing.load();
        state.PauseTiming();
        if (drawing.circuit.nodeCount() != 1 ||
            drawing.circuit.node(0)->elementNodeCount() != elementCount(state)) {
            state.SkipWithError("the net was not loaded in full");
        }
        drawing.settle();
        drawing.clear();
        state.ResumeTiming();
    }
}

/// Takes over `n` parts of programs that know more than this one.
void keepForeignParts(benchmark::State& state) {
    ProjectFile earlier;
    for (int i = 0; i < state.range(0); ++i) {
        earlier.addPart(QStringLiteral("Foreign%1").arg(i));
    }
    for (auto _ : state) {
        ProjectFile file;
        file.addPart(QLatin1String(ProjectFile::CircuitPart));
        file.keepStrangers(earlier);
    }
}

/// Routes every net once.
void route(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    for (auto _ : state) {
        for (int i = 0; i < drawing.circuit.nodeCount(); ++i) {
            drawing.editor->nodeItem(drawing.circuit.node(i))->updateNode();
        }
    }
}

void describe(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    for (auto _ : state) {
        benchmark::DoNotOptimize(drawing.editor->describe());
    }
}

void exportSvg(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    const QString file = drawing.outputFile(QStringLiteral("drawing.svg"));
    for (auto _ : state) {
        drawing.editor->captureToFile(CCircuitEditor::SVG, file);
    }
}

/// In an editor whose event loop has run since the load, as in a window.
void clear(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    for (auto _ : state) {
        state.PauseTiming();
        drawing.load();
        drawing.settle();
        state.ResumeTiming();
        drawing.clear();
    }
}

/// The editor goes while its circuit lives on, and no event loop has run, as in a batch run.
void destroyEditor(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<Drawing>(elementCount(state));
        drawing->load();
        state.ResumeTiming();
        drawing->editor.reset();
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

void growth(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(setContent)->Apply(sizes);
BENCHMARK(load)->Apply(sizes);
BENCHMARK(toByteArray)->Apply(sizes);
BENCHMARK(save)->Apply(sizes);
BENCHMARK(route)->Apply(sizes);
BENCHMARK(describe)->Apply(sizes);
BENCHMARK(exportSvg)->Apply(sizes);
BENCHMARK(clear)->Apply(sizes);
BENCHMARK(destroyEditor)->Apply(sizes);
BENCHMARK(memory)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(loadBigNet)->Apply(growth);
// Of a size that no cache holds, so that only the growth is compared.
BENCHMARK(keepForeignParts)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void requireRatios() {
    for (const std::string size : {"1000", "10000", "100000"}) {
        Ratios::require("load, " + size + " elements", "load/" + size, "setContent/" + size, 3);
        Ratios::require("save, " + size + " elements", "save/" + size, "toByteArray/" + size, 3);
    }
    Ratios::requireWithin("one net of 10,000 terminals, load", "loadBigNet/10000", 2000);
    Ratios::require("one net, 10,000 terminals to 1,000", "loadBigNet/10000", "loadBigNet/1000",
                    12);
    Ratios::require("foreign parts, 100,000 to 10,000", "keepForeignParts/100000",
                    "keepForeignParts/10000", 12);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    requireRatios();
    return Ratios::run(argc, argv);
}
