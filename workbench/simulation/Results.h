#pragma once

#include "Netlist.h"
#include "RawFile.h"

#include <QString>
#include <QVector>

#include <complex>

class CircuitElement;
class OutputVariable;

/// The values of something that was asked for, along a plot.
struct Curve {
    QString name;
    /// Empty where none is known.
    QString unit;
    QVector<std::complex<double>> values;
    /// Where in the drawing it is; either may be empty.
    QString net = {};
    QString element = {};
};

/// What a run of the simulator answered, in terms of the drawing.
class Results {
public:
    Results() = default;
    Results(Netlist netlist, RawPlot plot)
        : m_netlist(std::move(netlist)), m_plot(std::move(plot)) {}

    const RawPlot& plot() const { return m_plot; }
    const Netlist& netlist() const { return m_netlist; }
    /// The values of the swept quantity, the first vector.
    QVector<double> sweep() const { return m_plot.real.value(0); }

    /// False, with the reason as one sentence, for what the run can't tell.
    bool curveOf(OutputVariable* variable, Curve* curve, QString* reason) const;
    bool netCurve(const QString& net, Curve* curve, QString* reason) const;
    bool elementCurve(CircuitElement* element, const QString& variable, Curve* curve,
                      QString* reason) const;
    /// The voltages of all nets, ground excepted, by name.
    QVector<Curve> netCurves() const;

private:
    bool vector(const QString& name, QVector<std::complex<double>>* values) const;

    Netlist m_netlist;
    RawPlot m_plot;
};
