#include "SimulationPart.h"

#include "Circuit.h"
#include "OutputVariable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double DegreesPerRadian = 57.29577951308232;

QByteArray numberText(double value) {
    return QByteArray::number(value, 'g', 10);
}

QByteArray quoted(const QString& text) {
    return '"' + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")).toUtf8() + '"';
}

/// The value at `x`, on a straight line between the neighbours; the nearest beyond the ends.
std::complex<double> valueAt(double x, const QVector<double>& xs,
                             const QVector<std::complex<double>>& values) {
    const auto next = std::lower_bound(xs.begin(), xs.end(), x);
    const int i = static_cast<int>(next - xs.begin());
    if (i == 0 || i == xs.size()) {
        return values.at(qMin<int>(i, xs.size() - 1));
    }
    const double width = xs.at(i) - xs.at(i - 1);
    const double share = width > 0 ? (x - xs.at(i - 1)) / width : 1;
    return values.at(i - 1) + share * (values.at(i) - values.at(i - 1));
}

}  // namespace

SimulationPart::SimulationPart(Circuit* circuit, QObject* parent)
    : QObject(parent), m_circuit(*circuit) {
    connect(&m_simulator, &Simulator::finished, this, [this](const QString& error) {
        if (error.isEmpty()) {
            emit resultsChanged();
        }
    });
}

void SimulationPart::setSetup(const SimulationSetup& setup) {
    if (!(setup == m_setup)) {
        m_setup = setup;
        emit setupChanged();
        emit projectPartModified();
    }
}

QString SimulationPart::netlist() const {
    const Netlist netlist = writeNetlist(m_circuit, allModels());
    QStringList lines = netlist.lines;
    QString reason;
    // A netlist without its analysis is one still.
    if (m_setup.problem(m_setup.active()).isEmpty()) {
        const QString line = m_setup.line(m_setup.active(), netlist, &reason);
        if (!line.isEmpty()) {
            lines << QString() << line;
        }
    }
    lines << QStringLiteral(".end") << QString();
    return lines.join(QLatin1Char('\n'));
}

SpiceModels SimulationPart::allModels() const {
    SpiceModels models = m_models;
    for (const QString& text : m_texts ? m_texts() : QStringList()) {
        models.addDirectives(text);
    }
    return models;
}

bool SimulationPart::run(QString* reason) {
    return m_simulator.start(m_circuit, allModels(), m_setup, reason);
}

bool SimulationPart::runToEnd(QString* reason) {
    return m_simulator.runToEnd(m_circuit, m_models, m_setup, reason);
}

QVector<Curve> SimulationPart::curves(const Simulator::Run& run, QStringList* problems) const {
    QVector<Curve> curves;
    if (m_simulator.analysis() == QLatin1String("noise")) {
        const RawPlot& plot = run.results.plot();
        for (int i = 1; i < plot.vectors.size(); ++i) {
            Curve curve{plot.vectors.at(i), QStringLiteral("V/√Hz"), {}};
            std::copy(plot.real.at(i).begin(), plot.real.at(i).end(),
                      std::back_inserter(curve.values));
            curves.append(curve);
        }
        return curves;
    }
    for (int i = 0; i < m_circuit.outputVariableCount(); ++i) {
        Curve curve;
        QString reason;
        if (run.results.curveOf(OutputVariable::from(m_circuit.outputVariable(i)), &curve,
                                &reason)) {
            curves.append(curve);
        } else {
            problems->append(reason);
        }
    }
    return m_circuit.outputVariableCount() == 0 ? run.results.netCurves() : curves;
}

QByteArray SimulationPart::csv(QStringList* problems) const {
    const QVector<Simulator::Run>& runs = m_simulator.runs();
    if (runs.isEmpty()) {
        return {};
    }
    const RawPlot& plot = runs.first().results.plot();
    const QVector<double> xs = runs.first().results.sweep();
    const bool isFamily = runs.size() > 1;
    const bool isPoint = m_simulator.analysis() == QLatin1String("op");
    QVector<QByteArray> rows(xs.size());
    QByteArray head = isPoint ? QByteArray() : quoted(plot.vectors.value(0));
    for (int i = 0; i < xs.size() && !isPoint; ++i) {
        rows[i] = numberText(xs.at(i));
    }
    const auto append = [](QByteArray* row, const QByteArray& text) {
        *row += (row->isEmpty() ? "" : ",") + text;
    };
    for (const Simulator::Run& run : runs) {
        const QVector<double> ownXs = run.results.sweep();
        for (const Curve& curve : curves(run, problems)) {
            const QString name = isFamily ? QStringLiteral("%1 (%2=%3)")
                                                .arg(curve.name, m_simulator.sweptParameter())
                                                .arg(run.parameter)
                                          : curve.name;
            if (plot.isComplex) {
                append(&head, quoted(name + QStringLiteral(" dB")));
                append(&head, quoted(name + QStringLiteral(" deg")));
            } else {
                append(&head, quoted(name));
            }
            for (int i = 0; i < rows.size(); ++i) {
                const std::complex<double> value =
                    isPoint ? curve.values.at(i) : valueAt(xs.at(i), ownXs, curve.values);
                if (plot.isComplex) {
                    append(&rows[i], numberText(20 * std::log10(std::abs(value))));
                    append(&rows[i], numberText(std::arg(value) * DegreesPerRadian));
                } else {
                    append(&rows[i], numberText(value.real()));
                }
            }
        }
    }
    problems->removeDuplicates();
    QByteArray text = head + '\n';
    for (const QByteArray& row : qAsConst(rows)) {
        text += row + '\n';
    }
    return text;
}

bool SimulationPart::newProjectPart() {
    m_setup = {};
    m_isStored = false;
    emit setupChanged();
    return true;
}

bool SimulationPart::loadProjectPart(QDomDocument, QDomElement element) {
    m_setup = SimulationSetup::load(element);
    m_isStored = true;
    emit setupChanged();
    return true;
}

bool SimulationPart::saveProjectPart(QDomDocument document, QDomElement element) {
    // What the file has must be replaced, be it by the defaults.
    if (m_setup == SimulationSetup() && !m_isStored) {
        return false;
    }
    m_setup.save(document, element);
    return true;
}

bool SimulationPart::closeProjectPart() {
    m_simulator.cancel();
    m_simulator.forget();
    emit resultsChanged();
    m_setup = {};
    emit setupChanged();
    return true;
}
