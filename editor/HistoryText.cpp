// What a step is called, by what it has changed.

#include "HistoryRecords.h"
#include "QtSeriesXml.h"

#include <QDomDocument>
#include <QMap>
#include <QStringList>

namespace HistoryRecords {

namespace {

template <class State>
struct Tally {
    explicit Tally(const std::vector<Change<State>>& changes) {
        for (const Change<State>& change : changes) {
            (!change.before ? added : !change.after ? removed : changed).append(&change);
        }
    }
    QVector<const Change<State>*> added;
    QVector<const Change<State>*> removed;
    QVector<const Change<State>*> changed;
};

/// "Move R1", "Move 5 elements".
QString about(const char* verb, const QVector<const Change<ElementState>*>& elements) {
    const Change<ElementState>& first = *elements.first();
    return elements.size() == 1
               ? QStringLiteral("%1 %2").arg(QLatin1String(verb),
                                             (first.after ? first.after : first.before)->name)
               : QStringLiteral("%1 %2 elements").arg(QLatin1String(verb)).arg(elements.size());
}

QMap<QString, QString> valuesOf(const QByteArray& properties) {
    QMap<QString, QString> values;
    QDomDocument document;
    QtSeries::readXml(&document, properties);
    for (QDomElement record = document.documentElement().firstChildElement(); !record.isNull();
         record = record.nextSiblingElement()) {
        values.insert(record.attribute(QStringLiteral("Name")),
                      record.attribute(QStringLiteral("Value")));
    }
    return values;
}

QString textOfChanged(const QVector<const Change<ElementState>*>& elements) {
    const ElementState& before = *elements.first()->before;
    const ElementState& after = *elements.first()->after;
    if (before.position != after.position) {
        return about("Move", elements);
    }
    if (before.name != after.name) {
        return QStringLiteral("Rename %1").arg(after.name);
    }
    const QMap<QString, QString> was = valuesOf(before.properties);
    const QMap<QString, QString> is = valuesOf(after.properties);
    for (auto it = is.begin(); it != is.end(); ++it) {
        if (was.value(it.key()) == it.value()) {
            continue;
        }
        if (it.key() == QLatin1String("Rotation")) {
            return about("Rotate", elements);
        }
        if (it.key() == QLatin1String("Flip")) {
            return about("Flip", elements);
        }
        return elements.size() == 1 ? QStringLiteral("Change %1 of %2").arg(it.key(), after.name)
                                    : about("Change", elements);
    }
    return about("Change", elements);
}

QString textOf(const Tally<ElementState>& elements) {
    if (!elements.added.isEmpty()) {
        return about("Place", elements.added);
    }
    if (!elements.removed.isEmpty()) {
        return about("Delete", elements.removed);
    }
    return elements.changed.isEmpty() ? QString() : textOfChanged(elements.changed);
}

QString textOf(const Tally<NetState>& nets) {
    if (!nets.added.isEmpty()) {
        return QStringLiteral("Connect");
    }
    if (nets.changed.isEmpty()) {
        return nets.removed.isEmpty()
                   ? QString()
                   : QStringLiteral("Delete net %1").arg(nets.removed.first()->before->name);
    }
    const NetState& before = *nets.changed.first()->before;
    const NetState& after = *nets.changed.first()->after;
    if (after.terminals.size() > before.terminals.size()) {
        return QStringLiteral("Connect");
    }
    if (after.terminals.size() < before.terminals.size()) {
        return QStringLiteral("Disconnect");
    }
    return before.name != after.name ? QStringLiteral("Rename net %1").arg(after.name)
                                     : QStringLiteral("Change wire");
}

QString textOf(const Tally<BoxState>& boxes) {
    if (!boxes.added.isEmpty()) {
        return QStringLiteral("Add text");
    }
    if (!boxes.removed.isEmpty()) {
        return QStringLiteral("Delete text");
    }
    if (boxes.changed.isEmpty()) {
        return {};
    }
    const BoxState& before = *boxes.changed.first()->before;
    const BoxState& after = *boxes.changed.first()->after;
    if (before.text != after.text || !(before.runs == after.runs) || before.font != after.font ||
        before.element != after.element) {
        return QStringLiteral("Edit text");
    }
    if (before.rect.size() != after.rect.size()) {
        return QStringLiteral("Resize text");
    }
    return before.rect.topLeft() != after.rect.topLeft() ? QStringLiteral("Move text")
                                                         : QStringLiteral("Change colours");
}

template <class Row>
QString textOf(const Splice<Row>& rows, const QString& what) {
    if (rows.isEmpty()) {
        return {};
    }
    if (rows.before.size() < rows.after.size()) {
        return QStringLiteral("Add %1 %2").arg(what, rows.after.last().name);
    }
    if (rows.before.size() > rows.after.size()) {
        return QStringLiteral("Delete %1 %2").arg(what, rows.before.first().name);
    }
    if (rows.after.size() > 1) {
        return QStringLiteral("Change %1s").arg(what);
    }
    const Row& before = rows.before.first();
    const Row& after = rows.after.first();
    return before.name != after.name ? QStringLiteral("Rename %1").arg(after.name)
                                     : QStringLiteral("Change %1 %2").arg(what, after.name);
}

}  // namespace

QString textOf(const Entry& entry) {
    const QString texts[] = {
        // A deletion or renaming of a parameter changes what refers to it, too, and so on: the
        // cause comes before what follows from it.
        textOf(entry.parameters, QStringLiteral("parameter")),
        textOf(Tally<ElementState>(entry.elements)),
        textOf(Tally<NetState>(entry.nets)),
        textOf(Tally<BoxState>(entry.boxes[TextBoxes])),
        textOf(Tally<BoxState>(entry.boxes[ParameterBoxes])),
        textOf(Tally<BoxState>(entry.boxes[PropertyBoxes])),
        textOf(entry.outputs, QStringLiteral("output variable")),
        entry.titleBefore != entry.titleAfter ? QStringLiteral("Change title") : QString(),
    };
    const auto* found = std::find_if(std::begin(texts), std::end(texts),
                                     [](const QString& text) { return !text.isEmpty(); });
    return found == std::end(texts) ? QStringLiteral("Change") : *found;
}

}  // namespace HistoryRecords
