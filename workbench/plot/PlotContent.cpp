#include "PlotContent.h"

#include "EngineeringNumber.h"
#include "SimulationPart.h"

#include <QCoreApplication>

#include <cmath>

namespace {

constexpr double DegreesPerRadian = 57.29577951308232;
/// A sweep of frequencies over less than this looks better on a linear axis.
constexpr double LeastLogRatio = 10;

QString tr(const char* text) {
    return QCoreApplication::translate("Plot", text);
}

void nameSweep(const RawPlot& plot, PlotContent* content) {
    const QString vector = plot.vectors.value(0);
    QString title = vector;
    if (vector == QLatin1String("time")) {
        title = tr("Time");
        content->xUnit = QStringLiteral("s");
    } else if (vector == QLatin1String("frequency")) {
        title = tr("Frequency");
        content->xUnit = QStringLiteral("Hz");
    } else if (vector == QLatin1String("v-sweep")) {
        title = tr("Swept voltage");
        content->xUnit = QStringLiteral("V");
    } else if (vector == QLatin1String("i-sweep")) {
        title = tr("Swept current");
        content->xUnit = QStringLiteral("A");
    }
    content->xTitle =
        content->xUnit.isEmpty() ? title : QStringLiteral("%1 (%2)").arg(title, content->xUnit);
}

QVector<PlotTrace> bodeTraces(const QVector<std::complex<double>>& values) {
    PlotTrace magnitude{QStringLiteral("dB"), {}};
    PlotTrace phase{QStringLiteral("°"), {}};
    double before = 0;
    for (const std::complex<double>& value : values) {
        magnitude.values.append(20 * std::log10(std::abs(value)));
        const double degrees = std::arg(value) * DegreesPerRadian;
        const double turns = phase.values.isEmpty() ? 0 : std::round((before - degrees) / 360);
        before = degrees + 360 * turns;
        phase.values.append(before);
    }
    return {magnitude, phase};
}

PlotTrace realTrace(const Curve& curve) {
    PlotTrace trace{curve.unit, {}};
    trace.values.reserve(curve.values.size());
    for (const std::complex<double>& value : curve.values) {
        trace.values.append(value.real());
    }
    return trace;
}

}  // namespace

QStringList PlotContent::quantities() const {
    QStringList quantities;
    for (const PlotCurve& curve : curves) {
        for (const PlotTrace& trace : curve.traces) {
            if (!quantities.contains(trace.quantity)) {
                quantities.append(trace.quantity);
            }
        }
    }
    return quantities;
}

PlotContent plotContent(const SimulationPart& simulation) {
    PlotContent content;
    const Simulator& simulator = simulation.simulator();
    const QVector<Simulator::Run>& runs = simulator.runs();
    if (runs.isEmpty()) {
        return content;
    }
    const RawPlot& first = runs.first().results.plot();
    const QVector<double> xs = runs.first().results.sweep();
    const bool isNoise = simulator.analysis() == QLatin1String("noise");
    content.isPoint = simulator.analysis() == QLatin1String("op");
    content.yLog = isNoise;
    content.xLog = (isNoise || first.isComplex) && xs.size() > 1 && xs.first() > 0 &&
                   xs.last() >= LeastLogRatio * xs.first();
    nameSweep(first, &content);
    for (const Simulator::Run& run : runs) {
        for (const Curve& curve : simulation.curves(run, &content.problems)) {
            PlotCurve shown{curve.name, curve.net, curve.element, run.results.sweep(), {}};
            if (runs.size() > 1) {
                shown.name += QStringLiteral(" (%1=%2)")
                                  .arg(simulator.sweptParameter(), shortNumber(run.parameter));
            }
            if (run.results.plot().isComplex) {
                shown.traces = bodeTraces(curve.values);
            } else {
                shown.traces = {realTrace(curve)};
            }
            content.curves.append(shown);
        }
    }
    content.problems.removeDuplicates();
    return content;
}

QString shortNumber(double value, const QString& unit, int digits) {
    if (!std::isfinite(value)) {
        return QStringLiteral("–");
    }
    // Rounded to nothing beside what surrounds it: scales count up to zero by adding.
    const double rounded =
        std::abs(value) < 1e-30 ? 0 : QString::number(value, 'g', digits).toDouble();
    const bool isPlain = unit == QLatin1String("dB") || unit == QLatin1String("°");
    return (isPlain ? QString::number(rounded, 'g', 5) : EngineeringNumber::format(rounded)) + unit;
}
