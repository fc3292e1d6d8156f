#pragma once

#include "AscFile.h"

/// A symbol of the schematic with its pins where they are.
struct AscDevice {
    struct Pin {
        QString name;
        QPoint place;
    };

    AscSchematic::Symbol symbol;
    QString kind;       ///< the name without folders, in lower case
    QVector<Pin> pins;  ///< in the simulator's order, if that is known
    /// Where wires end near by, since nothing tells of the symbol.
    bool arePinsGuessed = false;
    /// Its file lies beside the schematic and says that it is a sub-circuit, or a schematic does
    /// that bears its name.
    bool isBlock = false;
};

/// The file of that name in the folder, however the case of its letters is; empty if there is none.
QString fileBeside(const QString& folder, const QString& name);

/// Finds the pins of all symbols: in the files that lie in the folder, in the table of the common
/// ones, else by the wires that end near by.
QVector<AscDevice> devicesOf(const AscSchematic& schematic, const QString& folder,
                             QStringList* remarks);
