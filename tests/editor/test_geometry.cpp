// Routing, rounding and hit tests, against values worked out by hand.

#include "CircuitGeometry.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace CircuitGeometry;

namespace {

using Points = std::vector<QPointF>;

Points pointsOf(const QPainterPath& path) {
    Points result;
    for (int i = 0; i < path.elementCount(); ++i) {
        result.push_back(path.elementAt(i));
    }
    return result;
}

Points branch(QPointF from, QPointF to, int exit, double clearance = 20) {
    QPainterPath path;
    routeBranch(from, to, exit, clearance, path);
    return pointsOf(path);
}

}  // namespace

TEST(Geometry, RoundsHalvesUpward) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        int rounded;
        int truncated;
    } rows[] = {{14.5, 15, 14},
                {-14.5, -14, -14},
                {0.49, 0, 0},
                {-0.5, 0, 0},
                {-0.51, -1, 0},
                {1e300, INT_MAX, INT_MAX},
                {-1e300, INT_MIN, INT_MIN},
                {infinity, INT_MAX, INT_MAX},
                {std::numeric_limits<double>::quiet_NaN(), 0, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(roundedInt(row.value), row.rounded) << row.value;
        EXPECT_EQ(truncatedInt(row.value), row.truncated) << row.value;
    }
}

TEST(Geometry, ReadsOnlyFiniteNumbers) {
    EXPECT_EQ(finiteNumber(QStringLiteral("-12.5")), -12.5);
    for (const char* text : {"", "x", "nan", "inf", "-inf", "1e999"}) {
        EXPECT_EQ(finiteNumber(QString::fromLatin1(text)), 0.0) << text;
    }
}

TEST(Geometry, SnapsCoordinatesInTwoRoundings) {
    const struct {
        double value;
        int grid;
        double snapped;
    } rows[] = {{14.4, 10, 10},
                {-14.4, 10, -10},
                {14.9, 10, 20},
                {-15, 10, -20},
                {15, 10, 20},
                {5, 10, 10},
                {-4.9, 10, -10},
                {4.9, 10, 10},
                {-4.4, 10, 0},
                {4.4, 10, 0},
                {-14.5, 10, -10},
                {14.5, 10, 20},
                // Half of 7 is 3: a remainder of 3 goes away from zero though 0 is nearer.
                {3, 7, 7},
                {-3, 7, -7},
                {2.4, 7, 0},
                {10, 7, 14},
                // A grid that can't divide counts as 1.
                {2.6, 0, 3},
                {-7.2, -5, -7}};
    for (const auto& row : rows) {
        EXPECT_EQ(snapped(row.value, row.grid), row.snapped) << row.value << " on " << row.grid;
    }
}

TEST(Geometry, SnapsRectangles) {
    const struct {
        QRectF rect;
        QRectF snapped;
    } rows[] = {// Size in whole steps is kept, fractions included: only its whole part is asked.
                {{-32, -18, 60, 40}, {-30, -20, 60, 40}},
                {{-32, -18, 60.9, 40.2}, {-30, -20, 60.9, 40.2}},
                // Otherwise both corners are snapped.
                {{-32, -18, 61, 40}, {-30, -20, 60, 40}},
                {{0, 0, 14, 15}, {0, 0, 10, 20}},
                // Turned inside out.
                {{28, 22, -60, -40}, {-30, -20, 60, 40}}};
    for (const auto& row : rows) {
        EXPECT_EQ(snapped(row.rect, 10), row.snapped) << row.rect.x() << ", " << row.rect.width();
    }
}

TEST(Geometry, ExitsByTheNearSideWithBottomAndTopFirst) {
    const QRectF outline(-30, -40, 60, 80);
    const struct {
        QPointF point;
        ExitDirection exit;
    } rows[] = {{{-30, 0}, ExitLeft},
                {{30, 0}, ExitRight},
                {{0, -40}, ExitUp},
                {{0, 40}, ExitDown},
                // Near two sides: vertical wins.
                {{30, 26}, ExitDown},
                {{-30, -26}, ExitUp},
                // Strictly nearer than 15.
                {{30, 25}, ExitRight},
                {{30, 25.001}, ExitDown},
                {{0, 25}, ExitNone},
                {{15, 0}, ExitNone},
                {{15.001, 0}, ExitRight},
                // From outside, too.
                {{0, 54.9}, ExitDown},
                {{0, 55}, ExitNone}};
    for (const auto& row : rows) {
        EXPECT_EQ(exitDirection(row.point, outline), row.exit)
            << row.point.x() << ", " << row.point.y();
    }
    // Thin: bottom is asked before top.
    EXPECT_EQ(exitDirection({-30, 0}, QRectF(-30, -10, 60, 20)), ExitDown);
}

TEST(Geometry, MeetsByThePairOfExits) {
    const QPointF a(0, 0);
    const QPointF b(100, 60);
    const struct {
        ExitDirection first;
        ExitDirection second;
        QPointF meeting;
    } rows[] = {{ExitRight, ExitLeft, {50, 30}},   {ExitLeft, ExitRight, {50, 30}},
                {ExitUp, ExitDown, {50, 30}},      {ExitDown, ExitUp, {50, 30}},
                {ExitRight, ExitUp, {100, 0}},     {ExitLeft, ExitDown, {100, 0}},
                {ExitRight, ExitDown, {100, 0}},   {ExitLeft, ExitUp, {100, 0}},
                {ExitUp, ExitRight, {0, 60}},      {ExitDown, ExitLeft, {0, 60}},
                {ExitUp, ExitLeft, {0, 60}},       {ExitDown, ExitRight, {0, 60}},
                {ExitRight, ExitRight, {120, 30}}, {ExitLeft, ExitLeft, {-20, 30}},
                {ExitDown, ExitDown, {50, 80}},    {ExitUp, ExitUp, {50, -20}},
                {ExitNone, ExitRight, {50, 30}},   {ExitUp, ExitNone, {50, 30}}};
    for (const auto& row : rows) {
        const QPointF meeting = meetingPoint({{a, row.first}, {b, row.second}}, QRectF(a, b), 20);
        EXPECT_EQ(meeting, row.meeting) << row.first << " to " << row.second;
    }
    // Three terminals: the centre of the bounds, whatever the exits.
    EXPECT_EQ(
        meetingPoint({{a, ExitUp}, {b, ExitUp}, {{10, -20}, ExitUp}}, QRectF(0, -20, 100, 80), 20),
        QPointF(50, 20));
}

TEST(Geometry, RoutesOneBranch) {
    const struct {
        const char* what;
        QPointF from;
        QPointF to;
        int exit;
        Points expected;
    } rows[] = {{"room to the right", {0, 0}, {50, 30}, ExitRight, {{0, 0}, {50, 0}, {50, 30}}},
                {"the test is strict",
                 {0, 0},
                 {20, 0},
                 ExitRight,
                 {{0, 0}, {20, 0}, {20, -20}, {20, -20}, {20, 0}}},
                {"room to the left", {0, 0}, {-50, 30}, ExitLeft, {{0, 0}, {-50, 0}, {-50, 30}}},
                {"around, far below the meeting point",
                 {0, 100},
                 {-50, 0},
                 ExitRight,
                 {{0, 100}, {20, 100}, {20, 20}, {-50, 20}, {-50, 0}}},
                {"around, above the meeting point",
                 {0, -100},
                 {-50, 0},
                 ExitRight,
                 {{0, -100}, {20, -100}, {20, -20}, {-50, -20}, {-50, 0}}},
                {"around, at exactly twice the clearance",
                 {0, 40},
                 {-50, 0},
                 ExitRight,
                 {{0, 40}, {20, 40}, {20, 20}, {-50, 20}, {-50, 0}}},
                {"the side doesn't depend on the exit",
                 {0, -100},
                 {50, 0},
                 ExitLeft,
                 {{0, -100}, {-20, -100}, {-20, -20}, {50, -20}, {50, 0}}},
                {"room upward", {0, 0}, {30, -50}, ExitUp, {{0, 0}, {0, -50}, {30, -50}}},
                {"room downward", {0, 0}, {30, 50}, ExitDown, {{0, 0}, {0, 50}, {30, 50}}},
                {"strict downward",
                 {0, 0},
                 {0, 20},
                 ExitDown,
                 {{0, 0}, {0, 20}, {-20, 20}, {-20, 20}, {0, 20}}},
                {"around upward, right of it",
                 {100, 0},
                 {0, 50},
                 ExitUp,
                 {{100, 0}, {100, -20}, {20, -20}, {20, 50}, {0, 50}}},
                {"around upward, at twice the clearance",
                 {40, 0},
                 {0, 50},
                 ExitUp,
                 {{40, 0}, {40, -20}, {20, -20}, {20, 50}, {0, 50}}},
                {"around downward, left of it",
                 {-100, 0},
                 {0, -50},
                 ExitDown,
                 {{-100, 0}, {-100, 20}, {-20, 20}, {-20, -50}, {0, -50}}},
                {"no exit", {0, 0}, {30, 70}, ExitNone, {{0, 0}, {30, 70}}},
                {"unknown exit", {0, 0}, {30, 70}, 9, {{0, 0}, {30, 70}}}};
    for (const auto& row : rows) {
        // A point that repeats the last one is dropped by the path.
        Points expected;
        for (const QPointF& point : row.expected) {
            if (expected.empty() || expected.back() != point) {
                expected.push_back(point);
            }
        }
        EXPECT_EQ(branch(row.from, row.to, row.exit), expected) << row.what;
    }
}

TEST(Geometry, HitsSegmentsThatCrossTheSquare) {
    const QLineF wire(-100, 0, 100, 0);
    const struct {
        const char* what;
        QLineF segment;
        QPointF point;
        bool hit;
    } rows[] = {{"9 away", wire, {0, 9}, true},
                {"10 away: runs along an edge, but crosses two", wire, {0, 10}, true},
                {"11 away", wire, {0, 11}, false},
                {"9 beyond its end", wire, {109, 0}, true},
                {"11 beyond its end", wire, {111, 0}, false},
                {"wholly inside", {-5, 0, 5, 0}, {0, 0}, false},
                {"from inside out", {-5, 0, 50, 0}, {0, 0}, true},
                {"wholly on an edge", {-5, 10, 5, 10}, {0, 0}, false},
                {"oblique through a corner", {-20, 0, 0, 20}, {0, 0}, true},
                {"oblique past a corner", {-21, 0, 0, 21}, {0, 0}, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(segmentHit(row.segment, row.point), row.hit) << row.what;
    }
}

TEST(Geometry, HitsPathsBySegmentAndSkipsCurves) {
    QPainterPath path(QPointF(0, 0));
    path.lineTo(100, 0);
    path.moveTo(200, 0);
    path.lineTo(300, 0);
    EXPECT_TRUE(pathHit(path, {50, 5}));
    EXPECT_FALSE(pathHit(path, {150, 0}));  // the gap between sub-paths is no segment
    EXPECT_TRUE(pathHit(path, {250, -5}));
    EXPECT_FALSE(pathHit(QPainterPath(), {0, 0}));
    QPainterPath curve(QPointF(0, 0));
    curve.cubicTo(0, 100, 100, 100, 100, 0);
    curve.lineTo(100, -100);
    // The previous point stays the one before the curve.
    EXPECT_FALSE(pathHit(curve, {0, 50}));
    EXPECT_TRUE(pathHit(curve, {50, -50}));
}

TEST(Geometry, SplitsPathsAtMoves) {
    QPainterPath path(QPointF(0, 0));
    path.lineTo(10, 0);
    path.moveTo(5, 5);
    path.lineTo(5, 9);
    path.lineTo(7, 9);
    const QVector<QPainterPath> parts = subPaths(path);
    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(pointsOf(parts.at(0)), (Points{{0, 0}, {10, 0}}));
    EXPECT_EQ(pointsOf(parts.at(1)), (Points{{5, 5}, {5, 9}, {7, 9}}));
}
