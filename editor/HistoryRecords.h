#pragma once

#include "TextRuns.h"

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QHash>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <optional>
#include <vector>

/// What the complete history keeps of a drawing. Objects are named by numbers of the history's own,
/// which an object keeps when it dies and another one takes its place.
namespace HistoryRecords {

using Id = int;
constexpr Id NoId = 0;

/// Position in scene units. The properties are the XML that a file would hold of them.
struct ElementState {
    QString type;
    QString name;
    QString model;
    QPointF position;
    QByteArray properties;
};
bool operator==(const ElementState& a, const ElementState& b);

struct TerminalState {
    Id element = NoId;
    QString name;
};
bool operator==(const TerminalState& a, const TerminalState& b);

/// The path, in the item's coordinates, is empty unless the wire was laid by hand: others are
/// routed. The position is the item's, in scene units.
struct NetState {
    QVector<TerminalState> terminals;
    QString name;
    bool isManual = false;
    QPointF position;
    QPainterPath path;
    QByteArray properties;
};
bool operator==(const NetState& a, const NetState& b);

/// A box of any kind. The text of a property box is the name of its property; `element` is for
/// property boxes, `parameter` for those of a global parameter. The colour behind a property box is
/// in no file: two boxes that differ in it alone are equal.
struct BoxState {
    QRectF rect;
    QFont font;
    int fontPointSize = -1;
    QString text;
    QVector<TextRun> runs;
    Id element = NoId;
    QString parameter;
    QColor border;
    QColor fill;
    QColor textColor;
    QColor backdrop;
    bool isSizedByHand = false;
};
bool operator==(const BoxState& a, const BoxState& b);

struct ParameterState {
    enum Kind { Integer, Real, String };
    QString name;
    QVariant value;
    Kind kind = Integer;
};
bool operator==(const ParameterState& a, const ParameterState& b);

struct OutputState {
    int type = 0;
    QString name;
    bool isAC = false;
    Id element = NoId;
    QString terminal;
    Id net = NoId;
    QString variable;

    bool hasSameSource(const OutputState& other) const;
};
bool operator==(const OutputState& a, const OutputState& b);

/// One object before and after a step; absent where it didn't exist. The rows are those in the list
/// of its kind, and mean something only for what came or went.
template <class State>
struct Change {
    Id id = NoId;
    int rowBefore = -1;
    int rowAfter = -1;
    std::optional<State> before;
    std::optional<State> after;

    const std::optional<State>& state(bool isAfter) const { return isAfter ? after : before; }
    int row(bool isAfter) const { return isAfter ? rowAfter : rowBefore; }
};

/// The part of a list that a step has replaced.
template <class Row>
struct Splice {
    int at = 0;
    QVector<Row> before;
    QVector<Row> after;

    Splice() = default;
    Splice(const QVector<Row>& was, const QVector<Row>& is) {
        const int shorter = std::min(was.size(), is.size());
        while (at < shorter && was.at(at) == is.at(at)) {
            ++at;
        }
        int tail = 0;
        while (tail < shorter - at &&
               was.at(was.size() - 1 - tail) == is.at(is.size() - 1 - tail)) {
            ++tail;
        }
        before = was.mid(at, was.size() - at - tail);
        after = is.mid(at, is.size() - at - tail);
    }
    bool isEmpty() const { return before.isEmpty() && after.isEmpty(); }
    /// The whole list on one side of the step, of that on the other side.
    QVector<Row> applied(const QVector<Row>& list, bool isAfter) const {
        const QVector<Row>& out = isAfter ? before : after;
        return list.mid(0, at) + (isAfter ? after : before) + list.mid(at + out.size());
    }
};

enum BoxKind { TextBoxes, PropertyBoxes, ParameterBoxes, BoxKindCount };

/// One step of the user.
struct Entry {
    std::vector<Change<ElementState>> elements;
    std::vector<Change<NetState>> nets;
    std::vector<Change<BoxState>> boxes[BoxKindCount];
    Splice<ParameterState> parameters;
    Splice<OutputState> outputs;
    QString titleBefore;
    QString titleAfter;

    bool isEmpty() const;
    /// Takes up the step that followed. False, and nothing done, unless both only changed elements,
    /// nets and boxes that were there and stayed.
    bool append(const Entry& next);
};

/// What the user reads of a step for which nobody has given a text.
QString textOf(const Entry& entry);

/// All objects of a kind as the history last saw them, in their order, and which of them may have
/// changed since.
template <class State, class Object>
class Mirror {
public:
    Id idOf(Object* object) const { return m_ids.value(object, NoId); }
    Object* object(Id id) const { return m_objects.value(id); }
    const QHash<Id, State>& states() const { return m_states; }
    const QHash<Object*, Id>& ids() const { return m_ids; }
    const QSet<Id>& touched() const { return m_touched; }

    void add(Object* object, Id id) {
        m_ids.insert(object, id);
        m_objects.insert(id, object);
        m_touched.insert(id);
    }
    void remove(Object* object) {
        if (const Id id = m_ids.take(object)) {
            m_objects.remove(id);
            m_touched.insert(id);
        }
    }
    bool touch(Object* object) {
        const Id id = idOf(object);
        if (id != NoId) {
            m_touched.insert(id);
        }
        return id != NoId;
    }
    void clear() { *this = {}; }

    /// Takes over what has changed. `capture` gives the state of an object.
    template <class Capture>
    std::vector<Change<State>> takeChanges(Capture capture) {
        std::vector<Change<State>> changes;
        // In the order in which the objects came to be.
        QVector<Id> touched(m_touched.begin(), m_touched.end());
        std::sort(touched.begin(), touched.end());
        m_touched.clear();
        for (const Id id : qAsConst(touched)) {
            Object* alive = object(id);
            Change<State> change;
            change.id = id;
            change.after = alive ? capture(alive) : std::nullopt;
            const auto known = m_states.constFind(id);
            if (known != m_states.constEnd()) {
                change.before = *known;
            }
            if (change.before == change.after) {
                continue;
            }
            change.after ? (void)m_states.insert(id, *change.after) : (void)m_states.remove(id);
            changes.push_back(std::move(change));
        }
        changes.shrink_to_fit();
        renumber(changes);
        return changes;
    }
    /// The rows that an undo or redo is about to give the objects.
    void reorder(const std::vector<Change<State>>& changes, bool isAfter) {
        for (const Change<State>& change : changes) {
            m_touched.insert(change.id);
            if (change.state(!isAfter) && !change.state(isAfter)) {
                m_order.removeOne(change.id);
            }
        }
        for (const Change<State>* change : cameBack(changes, isAfter)) {
            m_order.insert(std::min<int>(change->row(isAfter), m_order.size()), change->id);
        }
    }
    int rowOf(Id id) const { return m_order.indexOf(id); }
    /// Takes over what an undo or redo has made of the objects.
    template <class Capture>
    void follow(const std::vector<Change<State>>& changes, Capture capture) {
        for (const Change<State>& change : changes) {
            m_touched.insert(change.id);
        }
        for (const Id id : qAsConst(m_touched)) {
            Object* alive = object(id);
            const std::optional<State> now = alive ? capture(alive) : std::nullopt;
            now ? (void)m_states.insert(id, *now) : (void)m_states.remove(id);
        }
        m_touched.clear();
    }
    /// Those that exist on that side of the step only, by row.
    static std::vector<const Change<State>*> cameBack(const std::vector<Change<State>>& changes,
                                                      bool isAfter) {
        std::vector<const Change<State>*> result;
        for (const Change<State>& change : changes) {
            if (change.state(isAfter) && !change.state(!isAfter)) {
                result.push_back(&change);
            }
        }
        std::sort(result.begin(), result.end(), [isAfter](const auto* a, const auto* b) {
            return a->row(isAfter) < b->row(isAfter);
        });
        return result;
    }

private:
    void renumber(std::vector<Change<State>>& changes) {
        QHash<Id, Change<State>*> gone;
        for (Change<State>& change : changes) {
            if (!change.after) {
                gone.insert(change.id, &change);
            }
        }
        if (!gone.isEmpty()) {
            QVector<Id> left;
            left.reserve(m_order.size());
            for (int row = 0; row < m_order.size(); ++row) {
                if (Change<State>* change = gone.value(m_order.at(row))) {
                    change->rowBefore = row;
                } else {
                    left.append(m_order.at(row));
                }
            }
            m_order = left;
        }
        for (Change<State>& change : changes) {
            if (!change.before) {
                change.rowAfter = m_order.size();
                m_order.append(change.id);
            }
        }
    }

    QHash<Object*, Id> m_ids;
    QHash<Id, Object*> m_objects;
    QHash<Id, State> m_states;
    QVector<Id> m_order;
    QSet<Id> m_touched;
};

}  // namespace HistoryRecords
