#include "HistoryRecords.h"

#include <QDomDocument>
#include <QMap>
#include <QStringList>

namespace HistoryRecords {

namespace {

// Qt's own comparisons overlook small differences, which add up.
bool isSame(const QPointF& a, const QPointF& b) {
    return a.x() == b.x() && a.y() == b.y();
}

bool isSame(const QRectF& a, const QRectF& b) {
    return isSame(a.topLeft(), b.topLeft()) && a.width() == b.width() && a.height() == b.height();
}

bool isSame(const QPainterPath& a, const QPainterPath& b) {
    if (a.elementCount() != b.elementCount()) {
        return false;
    }
    for (int i = 0; i < a.elementCount(); ++i) {
        const QPainterPath::Element one = a.elementAt(i);
        const QPainterPath::Element other = b.elementAt(i);
        if (one.type != other.type || one.x != other.x || one.y != other.y) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool operator==(const ElementState& a, const ElementState& b) {
    return isSame(a.position, b.position) && a.properties == b.properties && a.model == b.model &&
           a.name == b.name && a.type == b.type;
}

bool operator==(const TerminalState& a, const TerminalState& b) {
    return a.element == b.element && a.name == b.name;
}

bool operator==(const NetState& a, const NetState& b) {
    return a.terminals == b.terminals && a.name == b.name && a.isManual == b.isManual &&
           isSame(a.position, b.position) && isSame(a.path, b.path) && a.properties == b.properties;
}

bool operator==(const BoxState& a, const BoxState& b) {
    return isSame(a.rect, b.rect) && a.font == b.font && a.fontPointSize == b.fontPointSize &&
           a.text == b.text && a.runs == b.runs && a.element == b.element &&
           a.parameter == b.parameter && a.border == b.border && a.fill == b.fill &&
           a.textColor == b.textColor && a.isSizedByHand == b.isSizedByHand;
}

bool operator==(const ParameterState& a, const ParameterState& b) {
    return a.name == b.name && a.kind == b.kind && a.value.toString() == b.value.toString();
}

bool OutputState::hasSameSource(const OutputState& other) const {
    return type == other.type && element == other.element && terminal == other.terminal &&
           net == other.net && variable == other.variable;
}

bool operator==(const OutputState& a, const OutputState& b) {
    return a.hasSameSource(b) && a.name == b.name && a.isAC == b.isAC;
}

bool Entry::isEmpty() const {
    return elements.empty() && nets.empty() && parameters.isEmpty() && outputs.isEmpty() &&
           titleBefore == titleAfter &&
           std::all_of(std::begin(boxes), std::end(boxes),
                       [](const auto& changes) { return changes.empty(); });
}

namespace {

template <class State>
bool isAllChanged(const std::vector<Change<State>>& changes) {
    return std::all_of(changes.begin(), changes.end(),
                       [](const Change<State>& change) { return change.before && change.after; });
}

template <class State>
void appendChanges(std::vector<Change<State>>& changes, const std::vector<Change<State>>& next) {
    QHash<Id, int> places;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        places.insert(changes[i].id, int(i));
    }
    for (const Change<State>& change : next) {
        const int place = places.value(change.id, -1);
        if (place < 0) {
            changes.push_back(change);
        } else {
            changes[std::size_t(place)].after = change.after;
        }
    }
}

bool isOfChangesOnly(const Entry& entry) {
    return entry.parameters.isEmpty() && entry.outputs.isEmpty() &&
           entry.titleBefore == entry.titleAfter && isAllChanged(entry.elements) &&
           isAllChanged(entry.nets) &&
           std::all_of(std::begin(entry.boxes), std::end(entry.boxes),
                       [](const auto& changes) { return isAllChanged(changes); });
}

}  // namespace

bool Entry::append(const Entry& next) {
    if (!isOfChangesOnly(*this) || !isOfChangesOnly(next)) {
        return false;
    }
    appendChanges(elements, next.elements);
    appendChanges(nets, next.nets);
    for (int kind = 0; kind < BoxKindCount; ++kind) {
        appendChanges(boxes[kind], next.boxes[kind]);
    }
    return true;
}

}  // namespace HistoryRecords
