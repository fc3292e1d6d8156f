#pragma once

#include "AscPins.h"
#include "ImportedDrawing.h"
#include "WireGraph.h"

#include <QHash>

/// Which terminals of a sheet are on one net, what it is called, and its wires.
class AscNets {
public:
    AscNets(const AscSchematic& schematic, const QVector<AscDevice>& devices, QStringList* remarks);

    /// `place` is the sheet's.
    void add(const QPoint& place, const ImportedDrawing::Terminal& terminal);
    /// Gives the flag's name to its net, unless that has another one.
    void name(const AscSchematic::Flag& flag);
    /// Whether a wire leaves the sheet's place that way.
    bool leaves(const QPoint& place, const QPoint& way) const { return m_wires.leaves(place, way); }

    /// Those of two terminals at least, all with names. What joins nothing adds a remark.
    QVector<ImportedDrawing::Net> all();

private:
    WireGraph m_wires;
    QStringList* m_remarks;
    // By the number that the wires give a net.
    QHash<int, QVector<ImportedDrawing::Terminal>> m_terminals;
    QHash<int, QString> m_names;
};
