#include "AscPlacing.h"

#include <QRect>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr int Grid = 10;
// A corner in a piece of wire counts as much as this length; one that leads back over its own
// element must not be.
constexpr int CornerCost = 40;
constexpr int BackwardCost = 400;

int onGrid(double value) {
    return int(std::lround(value / Grid)) * Grid;
}

/// Which way a wire leaves each of the terminals; at a corner up or down, as the canvas does.
QPoint outwardOf(const QPoint& terminal, const QRect& all) {
    if (all.height() > 1 && (terminal.y() == all.top() || terminal.y() == all.bottom())) {
        return {0, terminal.y() == all.top() ? -1 : 1};
    }
    return {terminal.x() == all.left() ? -1 : 1, 0};
}

QRect boundsOf(const QVector<QPoint>& points) {
    QRect all(points.first(), points.first());
    for (const QPoint& point : points) {
        all |= QRect(point, point);
    }
    return all;
}

int costOf(const QPoint& way, const QPoint& outward) {
    const bool hasCorner = way.x() != 0 && way.y() != 0;
    const bool leadsBack = QPoint::dotProduct(way, outward) < 0;
    return way.manhattanLength() + (hasCorner ? CornerCost : 0) + (leadsBack ? BackwardCost : 0);
}

/// The middle, and whatever brings one of the terminals to its pin.
QVector<int> offsets(const QVector<int>& ways) {
    const double sum = std::accumulate(ways.begin(), ways.end(), 0.0);
    QVector<int> result = {onGrid(sum / ways.size())};
    for (const int way : ways) {
        result.append(onGrid(way));
    }
    return result;
}

}  // namespace

QPoint onCanvas(const QPoint& place) {
    return {qRound(place.x() * 1.25), qRound(place.y() * 1.25)};
}

QPoint turned(const QPointF& terminal, int rotation, int flip) {
    QPoint p = terminal.toPoint();
    p = QPoint(flip == 2 ? -p.x() : p.x(), flip == 1 ? -p.y() : p.y());
    for (int i = 0; i < rotation; ++i) {
        p = QPoint(-p.y(), p.x());
    }
    return p;
}

QVector<QPoint> stubOf(const QPoint& terminal, const QPoint& outward, const QPoint& pin) {
    if (terminal == pin) {
        return {};
    }
    const QPoint way = pin - terminal;
    if (way.x() == 0 || way.y() == 0) {
        return {terminal, pin};
    }
    const bool isLevelFirst = (outward.x() != 0) == (QPoint::dotProduct(way, outward) >= 0);
    return {terminal, isLevelFirst ? QPoint(pin.x(), terminal.y()) : QPoint(terminal.x(), pin.y()),
            pin};
}

AscPlace placeOf(const QVector<QPointF>& terminals, const QVector<QPoint>& pins) {
    AscPlace best;
    int least = -1;
    for (int turn = 0; turn < 12; ++turn) {
        const int rotation = turn % 4;
        const int flip = turn / 4;
        QVector<QPoint> own;
        QVector<int> xs;
        QVector<int> ys;
        for (int i = 0; i < terminals.size(); ++i) {
            own.append(turned(terminals.at(i), rotation, flip));
            xs.append(pins.at(i).x() - own.at(i).x());
            ys.append(pins.at(i).y() - own.at(i).y());
        }
        const QRect all = boundsOf(own);
        for (const int x : offsets(xs)) {
            for (const int y : offsets(ys)) {
                int cost = 0;
                for (int i = 0; i < own.size(); ++i) {
                    cost +=
                        costOf(pins.at(i) - own.at(i) - QPoint(x, y), outwardOf(own.at(i), all));
                }
                if (least < 0 || cost < least) {
                    least = cost;
                    best.position = QPoint(x, y);
                    best.rotation = rotation;
                    best.flip = flip;
                }
            }
        }
    }
    QVector<QPoint> own;
    for (const QPointF& terminal : terminals) {
        own.append(turned(terminal, best.rotation, best.flip));
    }
    const QRect all = boundsOf(own);
    for (int i = 0; i < own.size(); ++i) {
        best.terminals.append(best.position + own.at(i));
        best.stubs.append(stubOf(best.terminals.last(), outwardOf(own.at(i), all), pins.at(i)));
    }
    return best;
}
