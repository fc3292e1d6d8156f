#include "WireGraph.h"

#include <algorithm>

namespace {

QPoint sign(const QPoint& way) {
    const auto one = [](int value) { return value > 0 ? 1 : (value < 0 ? -1 : 0); };
    return {one(way.x()), one(way.y())};
}

/// Whether b lies on the straight way from a to c.
bool isBetween(const QPoint& a, const QPoint& b, const QPoint& c) {
    const qint64 cross =
        qint64(b.x() - a.x()) * (c.y() - b.y()) - qint64(b.y() - a.y()) * (c.x() - b.x());
    const qint64 dot =
        qint64(b.x() - a.x()) * (c.x() - b.x()) + qint64(b.y() - a.y()) * (c.y() - b.y());
    return cross == 0 && dot > 0;
}

}  // namespace

void WireGraph::addWire(const QLine& wire) {
    m_wires.append(wire);
    addPlace(wire.p1());
    addPlace(wire.p2());
}

int WireGraph::idOf(const Key& place) {
    const auto known = m_ids.constFind(place);
    if (known != m_ids.constEnd()) {
        return *known;
    }
    m_ids.insert(place, m_parents.size());
    m_parents.append(m_parents.size());
    return m_parents.size() - 1;
}

int WireGraph::rootOf(int id) {
    while (m_parents.at(id) != id) {
        m_parents[id] = m_parents.at(m_parents.at(id));
        id = m_parents.at(id);
    }
    return id;
}

int WireGraph::netOf(const QPoint& place) {
    return rootOf(idOf(key(place)));
}

void WireGraph::join(const QPoint& a, const QPoint& b) {
    const int from = netOf(a);
    m_parents[from] = netOf(b);
}

void WireGraph::build() {
    for (const Key& place : qAsConst(m_places)) {
        m_rows[place.second].insert(place.first, true);
        m_columns[place.first].insert(place.second, true);
    }
    for (const QLine& wire : qAsConst(m_wires)) {
        cut(wire);
    }
}

void WireGraph::cut(const QLine& wire) {
    const bool isLevel = wire.dy() == 0;
    if (!isLevel && wire.dx() != 0) {
        // Oblique wires are rare, and nothing lies on them but at their ends.
        addPiece(wire.p1(), wire.p2());
        return;
    }
    const QMap<int, bool>& line = isLevel ? m_rows[wire.y1()] : m_columns[wire.x1()];
    const int from = isLevel ? std::min(wire.x1(), wire.x2()) : std::min(wire.y1(), wire.y2());
    const int to = isLevel ? std::max(wire.x1(), wire.x2()) : std::max(wire.y1(), wire.y2());
    const auto at = [&](int along) {
        return isLevel ? QPoint(along, wire.y1()) : QPoint(wire.x1(), along);
    };
    int last = from;
    for (auto it = line.upperBound(from); it != line.end() && it.key() <= to; ++it) {
        addPiece(at(last), at(it.key()));
        last = it.key();
    }
}

void WireGraph::addPiece(const QPoint& a, const QPoint& b) {
    join(a, b);
    const bool isAhead = key(a) < key(b);
    m_pieces.insert({key(isAhead ? a : b), key(isAhead ? b : a)});
    m_directions[key(a)].append(sign(b - a));
    m_directions[key(b)].append(sign(a - b));
}

QHash<int, QVector<QLine>> WireGraph::pieces() {
    QVector<QPair<Key, Key>> sorted(m_pieces.begin(), m_pieces.end());
    std::sort(sorted.begin(), sorted.end());
    QHash<int, QVector<QLine>> result;
    for (const QPair<Key, Key>& piece : qAsConst(sorted)) {
        const QLine line(piece.first.first, piece.first.second, piece.second.first,
                         piece.second.second);
        result[netOf(line.p1())].append(line);
    }
    return result;
}

bool WireGraph::leaves(const QPoint& place, const QPoint& direction) const {
    return m_directions.value(key(place)).contains(direction);
}

QVector<QVector<QPoint>> pathsOf(const QVector<QLine>& lines, const QVector<QPoint>& stops) {
    using Key = QPair<int, int>;
    const auto key = [](const QPoint& p) { return Key(p.x(), p.y()); };
    QMap<Key, QVector<int>> touching;
    for (int i = 0; i < lines.size(); ++i) {
        touching[key(lines.at(i).p1())].append(i);
        touching[key(lines.at(i).p2())].append(i);
    }
    QSet<Key> ends;
    for (auto it = touching.begin(); it != touching.end(); ++it) {
        if (it.value().size() != 2) {
            ends.insert(it.key());
        }
    }
    for (const QPoint& stop : stops) {
        ends.insert(key(stop));
    }
    QVector<bool> used(lines.size(), false);
    QVector<QVector<QPoint>> paths;
    const auto walk = [&](QPoint at) {
        QVector<QPoint> path = {at};
        const auto next = [&] {
            for (const int i : touching.value(key(at))) {
                if (!used.at(i)) {
                    return i;
                }
            }
            return -1;
        };
        for (int i = next(); i >= 0; i = ends.contains(key(at)) ? -1 : next()) {
            used[i] = true;
            at = lines.at(i).p1() == at ? lines.at(i).p2() : lines.at(i).p1();
            if (path.size() > 1 && isBetween(path.at(path.size() - 2), path.last(), at)) {
                path.removeLast();
            }
            path.append(at);
        }
        if (path.size() > 1) {
            paths.append(path);
        }
        return path.size() > 1;
    };
    const auto walkAll = [&](const Key& from) {
        while (walk(QPoint(from.first, from.second))) {
        }
    };
    for (auto it = touching.begin(); it != touching.end(); ++it) {
        if (ends.contains(it.key())) {
            walkAll(it.key());
        }
    }
    // What is left runs in circles.
    for (auto it = touching.begin(); it != touching.end(); ++it) {
        walkAll(it.key());
    }
    return paths;
}
