#include "CircuitGeometry.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <limits>

namespace CircuitGeometry {

namespace {

constexpr double SideTolerance = 15.0;
constexpr double HitHalfSide = 10.0;
constexpr double LeastSlope = 0.1;

int clampedInt(double whole) {
    if (std::isnan(whole)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(whole, lowest, highest));
}

bool isHorizontal(int direction) {
    return direction == ExitRight || direction == ExitLeft;
}

bool isVertical(int direction) {
    return direction == ExitUp || direction == ExitDown;
}

/// The coordinate, across the exit's axis, of the detour: the side doesn't depend on the exit, only
/// on the signed distance of the terminal from the meeting point.
double detour(double from, double to, double clearance) {
    const double distance = from - to;
    if (distance > 2 * clearance) {
        return to + clearance;
    }
    if (distance < 2 * clearance) {
        return to - clearance;
    }
    return (to + from) * 0.5;
}

}  // namespace

int roundedInt(double value) {
    return clampedInt(std::floor(value + 0.5));
}

int truncatedInt(double value) {
    return clampedInt(std::trunc(value));
}

QPoint roundedPoint(const QPointF& point) {
    return {roundedInt(point.x()), roundedInt(point.y())};
}

double finiteNumber(const QString& text) {
    const double value = text.toDouble();
    return std::isfinite(value) ? value : 0.0;
}

int gridStep(int grid) {
    return std::max(1, grid);
}

double snapped(double coordinate, int grid) {
    const qint64 step = gridStep(grid);
    const qint64 value = roundedInt(coordinate);
    const qint64 size = std::abs(value);
    qint64 steps = size / step;
    // What is a multiple stays one, also on a grid of 1, whose half is 0.
    if (size % step != 0 && size % step >= step >> 1) {
        ++steps;
    }
    return static_cast<double>(value < 0 ? -steps * step : steps * step);
}

QPointF snapped(const QPointF& point, int grid) {
    return {snapped(point.x(), grid), snapped(point.y(), grid)};
}

QRectF snapped(const QRectF& rect, int grid) {
    const QRectF normal = rect.normalized();
    const QPointF topLeft = snapped(normal.topLeft(), grid);
    const QPointF bottomRight = snapped(normal.bottomRight(), grid);
    const int step = gridStep(grid);
    if (truncatedInt(normal.width()) % step == 0 && truncatedInt(normal.height()) % step == 0) {
        return {topLeft, normal.size()};
    }
    return {topLeft, QSizeF(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y())};
}

QPointF straightened(const QPointF& point, const QPointF& last) {
    const double dx = std::abs(point.x() - last.x());
    const double dy = std::abs(point.y() - last.y());
    // With both zero the ratio is no number, and no comparison with it holds.
    if (dx <= dy) {
        return {dx / dy >= LeastSlope ? point.x() : last.x(), point.y()};
    }
    return {point.x(), dy / dx >= LeastSlope ? point.y() : last.y()};
}

ExitDirection exitDirection(const QPointF& point, const QRectF& outline) {
    const double right = outline.x() + outline.width();
    const double bottom = outline.y() + outline.height();
    if (std::abs(point.y() - bottom) < SideTolerance) {
        return ExitDown;
    }
    if (std::abs(point.y() - outline.y()) < SideTolerance) {
        return ExitUp;
    }
    if (std::abs(point.x() - right) < SideTolerance) {
        return ExitRight;
    }
    if (std::abs(point.x() - outline.x()) < SideTolerance) {
        return ExitLeft;
    }
    return ExitNone;
}

QPointF meetingPoint(const QVector<PointStruct>& terminals, const QRectF& bounds,
                     double clearance) {
    if (terminals.size() != 2) {
        return bounds.normalized().center();
    }
    const QPointF p1 = terminals.at(0).point;
    const QPointF p2 = terminals.at(1).point;
    const int e1 = terminals.at(0).direction;
    const int e2 = terminals.at(1).direction;
    QPointF meeting((p1.x() + p2.x()) * 0.5, (p1.y() + p2.y()) * 0.5);
    if (isHorizontal(e1) && isVertical(e2)) {
        meeting = {p2.x(), p1.y()};
    } else if (isVertical(e1) && isHorizontal(e2)) {
        meeting = {p1.x(), p2.y()};
    } else if (e1 == ExitRight && e2 == ExitRight) {
        meeting.setX(std::max(p1.x(), p2.x()) + clearance);
    } else if (e1 == ExitLeft && e2 == ExitLeft) {
        meeting.setX(std::min(p1.x(), p2.x()) - clearance);
    } else if (e1 == ExitDown && e2 == ExitDown) {
        meeting.setY(std::max(p1.y(), p2.y()) + clearance);
    } else if (e1 == ExitUp && e2 == ExitUp) {
        meeting.setY(std::min(p1.y(), p2.y()) - clearance);
    }
    return meeting;
}

void routeBranch(const QPointF& from, const QPointF& to, int direction, double clearance,
                 QPainterPath& path) {
    path.moveTo(from);
    if (isHorizontal(direction)) {
        const bool isRoomy =
            direction == ExitRight ? from.x() + clearance < to.x() : to.x() < from.x() - clearance;
        if (isRoomy) {
            path.lineTo(to.x(), from.y());
        } else {
            const double x = direction == ExitRight ? from.x() + clearance : from.x() - clearance;
            const double y = detour(from.y(), to.y(), clearance);
            path.lineTo(x, from.y());
            path.lineTo(x, y);
            path.lineTo(to.x(), y);
        }
    } else if (isVertical(direction)) {
        const bool isRoomy =
            direction == ExitDown ? from.y() + clearance < to.y() : to.y() < from.y() - clearance;
        if (isRoomy) {
            path.lineTo(from.x(), to.y());
        } else {
            const double y = direction == ExitDown ? from.y() + clearance : from.y() - clearance;
            const double x = detour(from.x(), to.x(), clearance);
            path.lineTo(from.x(), y);
            path.lineTo(x, y);
            path.lineTo(x, to.y());
        }
    }
    path.lineTo(to);
}

bool segmentHit(const QLineF& segment, const QPointF& point) {
    const double left = point.x() - HitHalfSide;
    const double right = left + 2 * HitHalfSide;
    const double top = point.y() - HitHalfSide;
    const double bottom = top + 2 * HitHalfSide;
    const QLineF edges[] = {{left, top, left, bottom},
                            {left, top, right, top},
                            {right, top, right, bottom},
                            {left, bottom, right, bottom}};
    return std::any_of(std::begin(edges), std::end(edges), [&segment](const QLineF& edge) {
        return segment.intersects(edge, nullptr) == QLineF::BoundedIntersection;
    });
}

bool pathHit(const QPainterPath& path, const QPointF& point) {
    QPointF previous;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isLineTo() && segmentHit(QLineF(previous, element), point)) {
            return true;
        }
        if (element.isLineTo() || element.isMoveTo()) {
            previous = element;
        }
    }
    return false;
}

QVector<QPainterPath> subPaths(const QPainterPath& path) {
    QVector<QPainterPath> result;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            result.append(QPainterPath(element));
        } else if (element.isLineTo() && !result.isEmpty()) {
            result.last().lineTo(element);
        }
    }
    return result;
}

}  // namespace CircuitGeometry
