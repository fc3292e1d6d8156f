#pragma once

#include <QLineF>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QVector>

/// The geometry of drawings that needs no widget. All lengths are scene units, y points down.
namespace CircuitGeometry {

/// Nearest whole number, a half going upward (towards plus infinity). What doesn't fit an int is
/// clamped, what is no number reads as 0.
int roundedInt(double value);
/// The whole part, with the same treatment of what no int can hold.
int truncatedInt(double value);
/// The point with both coordinates rounded by `roundedInt`.
QPoint roundedPoint(const QPointF& point);

/// The text as a finite number; 0 for anything else.
double finiteNumber(const QString& text);

/// The step of a grid in scene units: a grid under 1 counts as 1.
int gridStep(int grid);

/// Snaps to the nearest multiple of `grid`, after rounding to whole units; a tie goes away from
/// zero.
double snapped(double coordinate, int grid);
QPointF snapped(const QPointF& point, int grid);
/// Snaps both corners of the normalised rectangle; keeps its size if that is whole grid steps.
QRectF snapped(const QRectF& rect, int grid);

/// A point that lies within a slope of one tenth of an axis through `last` is put on that axis.
QPointF straightened(const QPointF& point, const QPointF& last);

/// Where a wire leaves its element.
enum ExitDirection { ExitNone = 0, ExitRight = 1, ExitLeft = 2, ExitUp = 3, ExitDown = 4 };

/// The routing record of one terminal of a net.
struct PointStruct {
    QPointF point;  ///< scene position of the terminal
    int direction = ExitNone;
};

/// The exit of a terminal at `point` on an element with the given outline: the side that lies
/// nearer than 15, bottom and top asked before right and left.
ExitDirection exitDirection(const QPointF& point, const QRectF& outline);

/// Where the branches of a net meet, before snapping: between two terminals by their exits, else
/// the centre of `bounds`. `clearance` is how far a wire stands off its element. Needs at least two
/// entries.
QPointF meetingPoint(const QVector<PointStruct>& terminals, const QRectF& bounds, double clearance);

/// Adds to `path` the branch from a terminal to the meeting point: straight out if there is room
/// (strictly more than `clearance`), else around the element.
void routeBranch(const QPointF& from, const QPointF& to, int direction, double clearance,
                 QPainterPath& path);

/// Whether the segment crosses the edge of the square of half side 10 around the point. A segment
/// that lies wholly inside, or along an edge, doesn't.
bool segmentHit(const QLineF& segment, const QPointF& point);

/// Whether a straight segment of the path is hit; curves are passed over.
bool pathHit(const QPainterPath& path, const QPointF& point);

/// The sub-paths of the path, each begun by a move.
QVector<QPainterPath> subPaths(const QPainterPath& path);

}  // namespace CircuitGeometry
