// How the time for a whole drawing grows with its size. `n` is the number of elements; there are
// one and a half times as many nets.

#include "CCircuitEditorNodeItem.h"
#include "Drawing.h"

#include <benchmark/benchmark.h>

#include <QApplication>

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
    state.SetComplexityN(state.range(0));
}

void save(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    const QString file = drawing.outputFile(QStringLiteral("saved.ckt"));
    for (auto _ : state) {
        drawing.editor->save(file);
    }
    state.SetComplexityN(state.range(0));
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
    state.SetComplexityN(state.range(0));
}

void describe(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    for (auto _ : state) {
        benchmark::DoNotOptimize(drawing.editor->describe());
    }
    state.SetComplexityN(state.range(0));
}

void exportSvg(benchmark::State& state) {
    Drawing drawing(elementCount(state));
    drawing.load();
    const QString file = drawing.outputFile(QStringLiteral("drawing.svg"));
    for (auto _ : state) {
        drawing.editor->captureToFile(CCircuitEditor::SVG, file);
    }
    state.SetComplexityN(state.range(0));
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
    state.SetComplexityN(state.range(0));
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
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(3000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK(load)->Apply(sizes);
BENCHMARK(save)->Apply(sizes);
BENCHMARK(route)->Apply(sizes);
BENCHMARK(describe)->Apply(sizes);
BENCHMARK(exportSvg)->Apply(sizes);
BENCHMARK(clear)->Apply(sizes);
BENCHMARK(destroyEditor)->Apply(sizes);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
