#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QVector>

/// How the path of a wire that was laid by hand follows when terminals of its net move. All points
/// are in the coordinates of the path; a path is a net's branches, each a sub-path of straight
/// segments, which meet where one ends on another.
namespace WireStretch {

/// A terminal of the net that moves.
struct Shift {
    QPointF from;
    QPointF to;
};

/// The path whose ends lie on the moved terminals. Branches between terminals that move alike go
/// along whole. Others stretch at the end that moves: upright and level segments stay so, no
/// corner is made that can be done without, and nothing that another branch or one of the `fixed`
/// terminals hangs on is moved. Where a terminal leaves a point that is held by others, it gets a
/// branch of its own. A terminal that nothing was drawn to stays so.
QPainterPath stretched(const QPainterPath& path, const QVector<Shift>& shifts,
                       const QVector<QPointF>& fixed);

/// The path without the branches that begin or end at one of the points. Empty if there is no such
/// branch, or no other.
QPainterPath withoutBranchesTo(const QVector<QPointF>& ends, const QPainterPath& path);

}  // namespace WireStretch
