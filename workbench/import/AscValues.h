#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Texts of an LTspice schematic as the workbench writes them: "10Meg" is "10M", "10M" is "10m", a
/// unit behind the number goes.
namespace AscValues {

/// Null if the text is neither a number nor an expression in braces. Names in expressions are
/// spelt as `parameters` has them, by their lower case.
QString value(const QString& text, const QHash<QString, QString>& parameters = {});

/// Any text for the simulator: a number in its notation, "µ" as "u", all else as it is.
QString simulatorText(const QString& text);

/// "SINE(0 1 1k) AC 1": the function with its arguments, and what stands before and behind it.
struct Waveform {
    QString function;  ///< upper case; empty for a plain source
    QStringList arguments;
    QString dc;
    bool isAc = false;
    QString acMagnitude;
    QString acPhase;
    bool isUnderstood = true;
};
Waveform waveform(const QString& text);

/// The assignments of a line such as `.param a=1k b={2*a}`, or `L=1u W=10u`, in their order.
QVector<QPair<QString, QString>> assignments(const QString& text);

}  // namespace AscValues
