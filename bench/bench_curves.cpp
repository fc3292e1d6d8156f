// Ten curves of a million points: what a step of zooming or panning takes until it is on the
// screen.

#include "CurvePlot.h"

#include "Ratios.h"

#include <QApplication>
#include <QPixmap>

#include <cmath>

namespace {

constexpr int Points = 1000000;
constexpr int Curves = 10;

/// Noisy, so that every column of pixels is full of strokes: the most that a curve can cost.
CurvePlot& plot() {
    static CurvePlot* made = [] {
        auto* plot = new CurvePlot(QStringLiteral("V"), false, false);
        QVector<double> xs(Points);
        for (int i = 0; i < Points; ++i) {
            xs[i] = i * 1e-6;
        }
        for (int c = 0; c < Curves; ++c) {
            QVector<double> ys(Points);
            unsigned state = 1 + static_cast<unsigned>(c);
            for (int i = 0; i < Points; ++i) {
                state = state * 1664525u + 1013904223u;
                ys[i] = c + std::sin(xs.at(i) * 50) + (state >> 16) / 65536.0;
            }
            plot->addCurve(c, QString::number(c), xs, ys);
        }
        plot->resize(1400, 700);
        plot->show();
        plot->setView(plot->bounds());
        return plot;
    }();
    return *made;
}

/// The range is how much of the whole shows, one in so many.
void zoomStep(benchmark::State& state) {
    const double width = 1.0 / static_cast<double>(state.range(0));
    const QRectF whole = plot().bounds();
    double left = 0;
    for (auto _ : state) {
        plot().setView(QRectF(left, whole.top(), width, whole.height()));
        benchmark::DoNotOptimize(plot().grab());
        left = std::fmod(left + 0.01 * width, 1 - width + 1e-9);
    }
}
BENCHMARK(zoomStep)
    ->Name("curves: a step of zoom or pan")
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Arg(10000)
    ->Arg(30000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // A screen shows 60 pictures a second, of which the eye misses every other one.
    for (const char* share : {"1", "100"}) {
        const std::string name = std::string("curves: a step of zoom or pan/") + share;
        Ratios::requireWithin(name, name, 33);
    }
    return Ratios::run(argc, argv);
}
