#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

class SimulationPart;

/// One line of a curve in the plot of its quantity: "dB", "°", or a unit.
struct PlotTrace {
    QString quantity;
    QVector<double> values;
};

/// What one output variable was in one run. A complex one has two traces, magnitude and phase.
struct PlotCurve {
    QString name;
    /// Where in the drawing; either may be empty.
    QString net;
    QString element;
    QVector<double> x;
    QVector<PlotTrace> traces;
};

/// What there is to show of the last simulation.
struct PlotContent {
    /// With its unit: "frequency (Hz)".
    QString xTitle;
    QString xUnit;
    bool xLog = false;
    bool yLog = false;
    /// An operating point: one value each, and nothing to draw.
    bool isPoint = false;
    QVector<PlotCurve> curves;
    /// One sentence for each output variable that the simulation doesn't tell of.
    QStringList problems;

    /// In the order in which they appear.
    QStringList quantities() const;
};

/// Phases run on beyond ±180° where they turn further, so that they don't jump.
PlotContent plotContent(const SimulationPart& simulation);

/// Four digits, or as many as are asked for, with the suffix of engineers: "1.592k". A unit follows
/// directly.
QString shortNumber(double value, const QString& unit = {}, int digits = 4);
