#pragma once

#include "Analysis.h"

#include <QLine>
#include <QPair>
#include <QPoint>
#include <QString>
#include <QVector>

class ProjectFile;

/// Another program's drawing as the canvas would have it, in scene units, with no word of where it
/// comes from.
struct ImportedDrawing {
    struct Element {
        QString type;
        QString name;
        QString caption;
        QString model;
        QVector<QPair<QString, QString>> parameters;
        QPoint position;
        int rotation = 0;
        int flip = 0;
    };
    struct Terminal {
        int element = 0;  ///< in the list of elements
        QString name;
        QPoint place;
        QVector<QPoint> stub;  ///< a piece of wire to where the wires end
    };
    /// Of two terminals at least.
    struct Net {
        QString name;
        QVector<Terminal> terminals;
        QVector<QLine> wires;
    };
    struct Text {
        QPoint place;  ///< of the middle of the first line, at its left end
        QString text;  ///< lines are parted by "\n"
    };

    QString title;
    QVector<Element> elements;
    QVector<Net> nets;
    QVector<QPair<QString, QString>> parameters;
    QVector<Text> texts;
    SimulationSetup setup;

    /// The place in the list of the element that was added last.
    int lastElement() const { return static_cast<int>(elements.size()) - 1; }

    /// Adds the parts of the circuit and of the simulation.
    void write(ProjectFile* project) const;
};
