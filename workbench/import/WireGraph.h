#pragma once

#include <QHash>
#include <QLine>
#include <QMap>
#include <QPair>
#include <QPoint>
#include <QSet>
#include <QVector>

/// The wires of a schematic as a graph of places: wires meet where one ends, on another's end or
/// inside it, and where something else is put on them. Wires that cross don't meet.
class WireGraph {
public:
    /// Something that joins what runs through there.
    void addPlace(const QPoint& place) { m_places.insert(key(place)); }
    void addWire(const QLine& wire);
    /// Cuts the wires at the places. To be called once, after all was added.
    void build();

    /// The same number for all places of one net.
    int netOf(const QPoint& place);
    /// For what joins places without a wire, as a common name.
    void join(const QPoint& a, const QPoint& b);
    /// The pieces of wire by net.
    QHash<int, QVector<QLine>> pieces();
    /// Whether a wire leaves the place that way.
    bool leaves(const QPoint& place, const QPoint& direction) const;

private:
    using Key = QPair<int, int>;
    static Key key(const QPoint& p) { return {p.x(), p.y()}; }

    int idOf(const Key& place);
    int rootOf(int id);
    void cut(const QLine& wire);
    void addPiece(const QPoint& a, const QPoint& b);

    QVector<QLine> m_wires;
    QSet<Key> m_places;
    QHash<Key, int> m_ids;
    QVector<int> m_parents;
    QSet<QPair<Key, Key>> m_pieces;
    QHash<Key, QVector<QPoint>> m_directions;
    // The places of a row, and of a column, in their order.
    QHash<int, QMap<int, bool>> m_rows;
    QHash<int, QMap<int, bool>> m_columns;
};

/// The lines as few paths: each runs from one end, junction or `stop` to the next, without points
/// in the middle of straight parts.
QVector<QVector<QPoint>> pathsOf(const QVector<QLine>& lines, const QVector<QPoint>& stops);
