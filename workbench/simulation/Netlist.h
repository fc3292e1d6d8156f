#pragma once

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

class Circuit;
class CircuitElement;
class SpiceModels;

/// A circuit as the simulator reads it, without analyses and without its last line, and what its
/// answers mean in the drawing. Names of vectors are in lower case, as the simulator answers them.
struct Netlist {
    /// The vector of a terminal's voltage against ground, by element and terminal; empty for ground
    /// itself, whose voltage is no vector.
    QHash<QPair<QString, QString>, QString> voltages;
    /// The vector of the current into a terminal.
    QHash<QPair<QString, QString>, QString> currents;
    /// The vector of a net by the net's name; empty for ground.
    QHash<QString, QString> nets;
    /// The drawing's element by the name of its device.
    QHash<QString, QString> elements;
    /// The same by the name of an ammeter at it.
    QHash<QString, QString> ammeters;
    QStringList lines;
};

/// How much of what can be plotted the netlist must answer.
enum class NetlistProbes {
    None,  ///< as a person would write it
    All    ///< with an ammeter in each terminal whose current a type's results name, and a voltage
           ///< for each digital net
};

/// Writes a circuit for ngspice. Stable: the same circuit gives the same lines.
Netlist writeNetlist(Circuit& circuit, const SpiceModels& models,
                     NetlistProbes probes = NetlistProbes::None);
