#pragma once

#include <QPointF>
#include <QString>

/// Letters as strokes of an SVG path: they look alike on all machines, need no fonts, and pictures
/// of any format have them. Capitals only; what it has no strokes of is a box.
namespace StrokeText {

/// From one letter to the next, and the height of a letter.
constexpr double Advance = 6;
constexpr double Height = 7.2;

enum class Anchor { Left, Middle, Right };

/// The data of a path. `place` is the point of the text's middle line that the anchor tells, in the
/// units of the picture, y down.
QString path(const QString& text, const QPointF& place, Anchor anchor);

}  // namespace StrokeText
