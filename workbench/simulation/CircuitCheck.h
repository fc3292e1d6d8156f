#pragma once

#include <QString>
#include <QVector>

class Circuit;
class SpiceModels;

/// Something that keeps a circuit from being simulated, or makes it doubtful.
struct CircuitProblem {
    enum Severity {
        Warning,  ///< the simulator may cope
        Error     ///< there is nothing to run
    };

    Severity severity = Warning;
    /// One sentence that names the element or the net.
    QString text;
    /// Where: the name of an element, or else of a net; both empty for the whole.
    QString element;
    QString net;
};

/// What a look at the drawing tells before the simulator is asked: errors first, each kind in the
/// circuit's order.
QVector<CircuitProblem> checkCircuit(Circuit& circuit, const SpiceModels& models);
