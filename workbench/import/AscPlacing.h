#pragma once

#include <QPoint>
#include <QPointF>
#include <QVector>

/// Where an element stands so that its terminals are as near as can be to where those of another
/// program's symbol were, and the pieces of wire from each terminal to there. Scene units.
struct AscPlace {
    QPoint position;
    int rotation = 0;
    int flip = 0;
    QVector<QPoint> terminals;       ///< in the scene
    QVector<QVector<QPoint>> stubs;  ///< from a terminal to its pin; empty if they coincide
};

/// The place of a sheet, which has steps of 16, some of 8, on the canvas, which has 10.
QPoint onCanvas(const QPoint& place);

/// The terminal as it lies from the element's position.
QPoint turned(const QPointF& terminal, int rotation, int flip);

/// `terminals` in the type's coordinates, `pins` in the scene; as many of these as of those.
AscPlace placeOf(const QVector<QPointF>& terminals, const QVector<QPoint>& pins);

/// The piece of wire alone, for a terminal that stands on an outline of the given size.
QVector<QPoint> stubOf(const QPoint& terminal, const QPoint& outward, const QPoint& pin);
