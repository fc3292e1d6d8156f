#include "NetJunctions.h"

#include "CircuitGeometry.h"

#include <QLineF>
#include <QPainter>
#include <QPen>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace NetJunctions {

namespace {

// As wide as the mark of a connection made at a drop, which is no branch.
constexpr double Near = 0.5;
constexpr double DotBeyondPen = 4.0;
constexpr double OpenEndRadius = 3.5;
// Directions closer than this are one.
constexpr double AngleSteps = 720;

struct Segment {
    QPointF a;
    QPointF b;
    double left;
    double right;
    double top;
    double bottom;
};

bool isNear(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) <= Near && std::abs(a.y() - b.y()) <= Near;
}

int directionOf(const QPointF& from, const QPointF& to) {
    const double turn = std::atan2(to.y() - from.y(), to.x() - from.x()) / (2 * M_PI);
    return int(std::lround(turn * AngleSteps) + AngleSteps) % int(AngleSteps);
}

QVector<Segment> segmentsOf(const QPainterPath& path) {
    QVector<Segment> segments;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF a = path.elementAt(i - 1);
        const QPointF b = path.elementAt(i);
        if (path.elementAt(i).isLineTo() && !isNear(a, b)) {
            segments.append({a, b, std::min(a.x(), b.x()), std::max(a.x(), b.x()),
                             std::min(a.y(), b.y()), std::max(a.y(), b.y())});
        }
    }
    std::sort(segments.begin(), segments.end(),
              [](const Segment& one, const Segment& other) { return one.left < other.left; });
    return segments;
}

/// The ends of the segments and the points where they cross.
QVector<QPointF> candidates(const QVector<Segment>& segments) {
    QVector<QPointF> points;
    for (int i = 0; i < segments.size(); ++i) {
        const Segment& one = segments.at(i);
        points << one.a << one.b;
        for (int k = i + 1; k < segments.size() && segments.at(k).left <= one.right; ++k) {
            const Segment& other = segments.at(k);
            QPointF crossing;
            if (other.top <= one.bottom && one.top <= other.bottom &&
                QLineF(one.a, one.b).intersects(QLineF(other.a, other.b), &crossing) ==
                    QLineF::BoundedIntersection) {
                points << crossing;
            }
        }
    }
    return points;
}

int branchesAt(const QPointF& point, const QVector<Segment>& segments) {
    QSet<int> directions;
    for (const Segment& s : segments) {
        if (s.left > point.x() + Near) {
            break;
        }
        if (s.right < point.x() - Near || s.top > point.y() + Near || s.bottom < point.y() - Near) {
            continue;
        }
        const QPointF d = s.b - s.a;
        const double t = QPointF::dotProduct(point - s.a, d) / QPointF::dotProduct(d, d);
        if (!isNear(point, s.a + d * std::clamp(t, 0.0, 1.0))) {
            continue;
        }
        if (!isNear(point, s.a)) {
            directions.insert(directionOf(s.b, s.a));
        }
        if (!isNear(point, s.b)) {
            directions.insert(directionOf(s.a, s.b));
        }
    }
    return directions.size();
}

}  // namespace

QVector<QPointF> junctions(const QPainterPath& path, const QVector<QPointF>& terminals) {
    const QVector<Segment> segments = segmentsOf(path);
    QVector<QPointF> found;
    QSet<std::pair<int, int>> seen;
    for (const QPointF& point : candidates(segments) + terminals) {
        const std::pair<int, int> place(CircuitGeometry::roundedInt(point.x()),
                                        CircuitGeometry::roundedInt(point.y()));
        if (seen.contains(place)) {
            continue;
        }
        seen.insert(place);
        const auto pins =
            std::count_if(terminals.begin(), terminals.end(),
                          [&point](const QPointF& terminal) { return isNear(terminal, point); });
        if (branchesAt(point, segments) + pins >= 3) {
            found.append(point);
        }
    }
    return found;
}

void paint(QPainter* painter, const QPen& pen, const QVector<QPointF>& points) {
    if (points.isEmpty()) {
        return;
    }
    const double radius = (pen.widthF() + DotBeyondPen) / 2;
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen.brush());
    for (const QPointF& point : points) {
        painter->drawEllipse(point, radius, radius);
    }
}

void paintOpenEnd(QPainter* painter, const QColor& color, const QPointF& center) {
    painter->setPen(QPen(color, 1.0));
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(center, OpenEndRadius, OpenEndRadius);
}

}  // namespace NetJunctions
