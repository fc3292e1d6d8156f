#include "WireStretch.h"

#include "CircuitGeometry.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace WireStretch {

namespace {

using Polyline = QVector<QPointF>;

// Wider than the mark of a connection made at a drop, and than what a copy loses of a coordinate.
constexpr double Near = 0.5;
constexpr double SameAxis = 0.01;
// What stands for a branch without length: an empty path couldn't be picked, nor stretched again.
const QPointF Mark(0.1, 0.1);

bool isNear(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) <= Near && std::abs(a.y() - b.y()) <= Near;
}

bool isSame(double a, double b) {
    return std::abs(a - b) <= SameAxis;
}

bool isNearAny(const QPointF& point, const QVector<QPointF>& others) {
    return std::any_of(others.begin(), others.end(),
                       [&point](const QPointF& other) { return isNear(point, other); });
}

bool liesOn(const QPointF& p, const QPointF& a, const QPointF& b) {
    const QPointF d = b - a;
    const double length = QPointF::dotProduct(d, d);
    const double t = length > 0 ? QPointF::dotProduct(p - a, d) / length : 0;
    return isNear(p, a + d * std::clamp(t, 0.0, 1.0));
}

/// The index of the segment that holds the point; -1 if none does.
int segmentAt(const Polyline& line, const QPointF& point) {
    for (int i = 1; i < line.size(); ++i) {
        if (liesOn(point, line.at(i - 1), line.at(i))) {
            return i - 1;
        }
    }
    return -1;
}

/// A level or upright direction, and coordinates along and across it.
struct Axis {
    bool isLevel = true;
    double along(const QPointF& p) const { return isLevel ? p.x() : p.y(); }
    double across(const QPointF& p) const { return isLevel ? p.y() : p.x(); }
    QPointF point(double along, double across) const {
        return isLevel ? QPointF(along, across) : QPointF(across, along);
    }
    bool holds(const QPointF& a, const QPointF& b) const { return isSame(across(a), across(b)); }
};

/// From `to` to `from`, which it reaches across the axis.
Polyline branch(const QPointF& from, const QPointF& to, const Axis& axis) {
    if (isSame(from.x(), to.x()) || isSame(from.y(), to.y())) {
        return {to, from};
    }
    return {to, axis.point(axis.along(from), axis.across(to)), from};
}

/// Takes out what a change at the line's beginning has left without length or turn.
void tidyBeginning(Polyline& line) {
    for (int i = std::min<int>(3, line.size() - 1); i > 0; --i) {
        const bool isLast = i == line.size() - 1;
        if (isNear(line.at(i), line.at(i - 1)) && line.size() > 2) {
            line.removeAt(isLast ? i - 1 : i);
            continue;
        }
        if (isLast) {
            continue;
        }
        const QPointF before = line.at(i - 1);
        const QPointF after = line.at(i + 1);
        for (const Axis axis : {Axis{true}, Axis{false}}) {
            if (axis.holds(before, line.at(i)) && axis.holds(line.at(i), after) &&
                (axis.along(line.at(i)) - axis.along(before)) *
                        (axis.along(after) - axis.along(line.at(i))) >=
                    0) {
                line.removeAt(i);
                break;
            }
        }
    }
    if (line.size() == 2 && isNear(line.first(), line.last())) {
        line[1] = line.first() + Mark;
    }
}

/// Whether the corner behind the first segment may slide along the second one: nothing may hang on
/// the part of it that would go.
bool maySlide(const Polyline& line, const QPointF& corner, const Axis& axis,
              const QVector<QPointF>& kept) {
    if (line.size() < 3 || !Axis{!axis.isLevel}.holds(line.at(1), line.at(2))) {
        return false;
    }
    return std::all_of(kept.begin(), kept.end(), [&](const QPointF& point) {
        return !liesOn(point, line.at(1), line.at(2)) || liesOn(point, corner, line.at(2));
    });
}

/// Leads the line's first point to another place. `kept` are the points of the line that others
/// hang on.
void stretchBeginning(Polyline& line, const QPointF& to, const QVector<QPointF>& kept) {
    while (line.size() > 2 && isNear(line.at(0), line.at(1))) {
        line.removeAt(1);
    }
    const QPointF from = line.at(0);
    const QPointF next = line.at(1);
    const Axis axis{isSame(from.y(), next.y())};
    if (!axis.holds(from, next)) {
        line[0] = to;  // oblique, and stays so
        return;
    }
    // The nearest point of the first segment that must stay where it is.
    QPointF hold = next;
    bool isHeld = line.size() == 2;
    for (const QPointF& point : kept) {
        if (liesOn(point, from, next) && !isNear(point, from)) {
            isHeld = true;
            const double distance = std::abs(axis.along(point) - axis.along(from));
            if (distance + Near < std::abs(axis.along(hold) - axis.along(from))) {
                hold = axis.point(axis.along(point), axis.across(from));
            }
        }
    }
    const double a = axis.along(hold);
    const bool isPast = (axis.along(to) - a) * (axis.along(from) - a) < 0;
    const QPointF slid = axis.point(axis.along(next), axis.across(to));
    if (axis.holds(from, to)) {
        line[0] = to;
        if (isPast && hold != next) {
            line.insert(1, hold);
        }
    } else if (!isHeld && maySlide(line, slid, axis, kept)) {
        line[0] = to;
        line[1] = slid;
    } else if (!isPast) {
        line[0] = axis.point(axis.along(to), axis.across(from));
        line.prepend(to);
    } else {
        line[0] = hold;
        line.prepend(axis.point(a, axis.across(to)));
        line.prepend(to);
    }
    tidyBeginning(line);
}

/// One net while it is stretched.
class Net {
public:
    Net(const QPainterPath& path, const QVector<Shift>& shifts, const QVector<QPointF>& fixed);
    QPainterPath stretched();

private:
    bool isMark(int i) const { return m_lines.at(i).isEmpty() || isNearExtent(m_lines.at(i)); }
    static bool isNearExtent(const Polyline& line) {
        return std::all_of(line.begin(), line.end(),
                           [&line](const QPointF& p) { return isNear(p, line.first()); });
    }
    QPointF end(int i, int e) const {
        return e == 0 ? m_lines.at(i).first() : m_lines.at(i).last();
    }
    const Shift* shiftAt(const QPointF& point) const;
    std::optional<QPointF> shiftOfEnd(int i, int e) const;
    void findCarried();
    /// The segments' axis at a point that stays because others hold it.
    std::optional<Axis> anchorAt(const QPointF& point) const;
    bool isOnUnmoved(const QPointF& point) const;
    void leaveAnchors();
    void stretchEnds();
    QVector<QPointF> keptOn(int i) const;

    QVector<Polyline> m_lines;
    QVector<Shift> m_shifts;
    QVector<QPointF> m_fixed;
    // What a line that goes along whole moves by.
    QVector<std::optional<QPointF>> m_carried;
    // Moved terminals whose old place is held by others: what ends there stays.
    QVector<QPointF> m_anchored;
    QVector<Polyline> m_branches;
};

Net::Net(const QPainterPath& path, const QVector<Shift>& shifts, const QVector<QPointF>& fixed)
    : m_shifts(shifts), m_fixed(fixed) {
    for (const QPainterPath& part : CircuitGeometry::subPaths(path)) {
        Polyline line;
        for (int i = 0; i < part.elementCount(); ++i) {
            line.append(part.elementAt(i));
        }
        m_lines.append(line);
    }
    m_carried.resize(m_lines.size());
}

const Shift* Net::shiftAt(const QPointF& point) const {
    const auto found = std::find_if(m_shifts.begin(), m_shifts.end(), [&point](const Shift& shift) {
        return isNear(shift.from, point);
    });
    return found == m_shifts.end() ? nullptr : &*found;
}

std::optional<QPointF> Net::shiftOfEnd(int i, int e) const {
    const QPointF point = end(i, e);
    if (isNearAny(point, m_fixed)) {
        return {};
    }
    if (const Shift* shift = shiftAt(point)) {
        return shift->to - shift->from;
    }
    for (int k = 0; k < m_lines.size(); ++k) {
        if (k != i && m_carried.at(k) && segmentAt(m_lines.at(k), point) >= 0) {
            return m_carried.at(k);
        }
    }
    return {};
}

void Net::findCarried() {
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (int i = 0; i < m_lines.size(); ++i) {
            const auto first = m_carried.at(i) || isMark(i) ? std::nullopt : shiftOfEnd(i, 0);
            const auto last = first ? shiftOfEnd(i, 1) : std::nullopt;
            const bool isHeld = std::any_of(
                m_fixed.begin(), m_fixed.end(),
                [this, i](const QPointF& point) { return segmentAt(m_lines.at(i), point) >= 0; });
            if (last && isNear(*first, *last) && !isHeld) {
                m_carried[i] = first;
                isFound = true;
            }
        }
    }
}

std::optional<Axis> Net::anchorAt(const QPointF& point) const {
    std::optional<Axis> axis;
    int ends = 0;
    bool isHeld = false;
    for (int i = 0; i < m_lines.size(); ++i) {
        const int at = m_carried.at(i) || isMark(i) ? -1 : segmentAt(m_lines.at(i), point);
        if (at < 0) {
            continue;
        }
        const int ending = int(isNear(point, end(i, 0))) + int(isNear(point, end(i, 1)));
        ends += ending;
        isHeld = isHeld || ending == 0;
        const Polyline& line = m_lines.at(i);
        axis = Axis{std::abs(line.at(at).y() - line.at(at + 1).y()) <=
                    std::abs(line.at(at).x() - line.at(at + 1).x())};
    }
    if (isHeld || ends > 1) {
        return axis;
    }
    if (!isNearAny(point, m_fixed)) {
        return {};
    }
    return axis ? *axis : Axis{false};
}

bool Net::isOnUnmoved(const QPointF& point) const {
    for (int i = 0; i < m_lines.size(); ++i) {
        if (!m_carried.at(i) && !isMark(i) && segmentAt(m_lines.at(i), point) >= 0 &&
            !(shiftOfEnd(i, 0) && !isNearAny(end(i, 0), m_anchored)) &&
            !(shiftOfEnd(i, 1) && !isNearAny(end(i, 1), m_anchored))) {
            return true;
        }
    }
    return false;
}

/// Where others hold the old place of a terminal, the terminal leaves on a branch of its own.
void Net::leaveAnchors() {
    QVector<std::pair<Shift, Axis>> leaving;
    for (const Shift& shift : qAsConst(m_shifts)) {
        const std::optional<Axis> axis = anchorAt(shift.from);
        if (axis && !isNear(shift.from, shift.to) && !isNearAny(shift.from, m_anchored)) {
            m_anchored.append(shift.from);
            leaving.append({shift, *axis});
        }
    }
    for (const auto& [shift, axis] : qAsConst(leaving)) {
        const QPointF from = shift.from;
        // The mark of a drop at the old place gives way to the branch.
        bool wasMarked = false;
        for (int i = 0; i < m_lines.size(); ++i) {
            if (!m_lines.at(i).isEmpty() && isMark(i) && isNear(m_lines.at(i).first(), from)) {
                m_lines[i].clear();
                wasMarked = true;
            }
        }
        if (!isOnUnmoved(shift.to)) {
            m_branches.append(branch(from, shift.to, axis));
        } else if (wasMarked) {
            m_branches.append({shift.to, shift.to + Mark});
        }
    }
}

QVector<QPointF> Net::keptOn(int i) const {
    QVector<QPointF> kept = m_fixed + m_anchored;
    for (int k = 0; k < m_lines.size(); ++k) {
        if (k == i || m_carried.at(k) || m_lines.at(k).isEmpty()) {
            continue;
        }
        for (const int e : {0, 1}) {
            if (!shiftOfEnd(k, e) || isNearAny(end(k, e), m_anchored)) {
                kept.append(end(k, e));
            }
        }
    }
    kept.erase(std::remove_if(
                   kept.begin(), kept.end(),
                   [this, i](const QPointF& point) { return segmentAt(m_lines.at(i), point) < 0; }),
               kept.end());
    return kept;
}

void Net::stretchEnds() {
    // All is looked up in the lines as they were.
    QVector<Polyline> result = m_lines;
    for (int i = 0; i < m_lines.size(); ++i) {
        Polyline& line = result[i];
        if (line.isEmpty()) {
            continue;
        }
        if (m_carried.at(i)) {
            for (QPointF& point : line) {
                point += *m_carried.at(i);
            }
            continue;
        }
        if (isMark(i)) {
            if (const auto shift = shiftOfEnd(i, 0)) {
                for (QPointF& point : line) {
                    point += *shift;
                }
            }
            continue;
        }
        const QVector<QPointF> kept = keptOn(i);
        for (const int e : {0, 1}) {
            const QPointF point = end(i, e);
            const auto shift = isNearAny(point, m_anchored) ? std::nullopt : shiftOfEnd(i, e);
            if (shift && !shift->isNull()) {
                const Shift* terminal = shiftAt(point);
                if (e == 1) {
                    std::reverse(line.begin(), line.end());
                }
                stretchBeginning(line, terminal ? terminal->to : point + *shift, kept);
                if (e == 1) {
                    std::reverse(line.begin(), line.end());
                }
            }
        }
    }
    m_lines = result;
}

QPainterPath Net::stretched() {
    findCarried();
    leaveAnchors();
    stretchEnds();
    QPainterPath path;
    for (const Polyline& line : m_lines + m_branches) {
        for (int i = 0; i < line.size(); ++i) {
            i == 0 ? path.moveTo(line.at(i)) : path.lineTo(line.at(i));
        }
    }
    return path;
}

bool isStraight(const QPainterPath& path) {
    for (int i = 0; i < path.elementCount(); ++i) {
        if (!path.elementAt(i).isMoveTo() && !path.elementAt(i).isLineTo()) {
            return false;
        }
    }
    return true;
}

}  // namespace

QPainterPath stretched(const QPainterPath& path, const QVector<Shift>& shifts,
                       const QVector<QPointF>& fixed) {
    if (shifts.isEmpty() || path.isEmpty()) {
        return path;
    }
    const QPointF first = shifts.first().to - shifts.first().from;
    const bool isWhole = std::all_of(shifts.begin(), shifts.end(), [&first](const Shift& shift) {
        return isNear(shift.to - shift.from, first);
    });
    if (isWhole && fixed.isEmpty()) {
        return path.translated(first);
    }
    if (isStraight(path)) {
        return Net(path, shifts, fixed).stretched();
    }
    // A curve is nobody's hand: only its ends follow.
    QPainterPath result = path;
    for (int i = 0; i < path.elementCount(); ++i) {
        for (const Shift& shift : shifts) {
            if (isNear(path.elementAt(i), shift.from)) {
                result.setElementPositionAt(i, shift.to.x(), shift.to.y());
            }
        }
    }
    return result;
}

QPainterPath withoutBranchesTo(const QVector<QPointF>& ends, const QPainterPath& path) {
    QPainterPath kept;
    bool isDropped = false;
    for (const QPainterPath& part : CircuitGeometry::subPaths(path)) {
        if (isNearAny(part.elementAt(0), ends) || isNearAny(part.currentPosition(), ends)) {
            isDropped = true;
        } else {
            kept.addPath(part);
        }
    }
    return isDropped ? kept : QPainterPath();
}

}  // namespace WireStretch
