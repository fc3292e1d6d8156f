#include "ProjectDiff.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QPointF>
#include <QSet>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ProjectDiff", text);
}

QString text(const QJsonObject& object, const char* key) {
    return object.value(QLatin1String(key)).toVariant().toString();
}

QString quoted(const QString& text) {
    QString shown = text;
    shown.replace(QLatin1String("{|?|}"), QLatin1String(" / "));
    return QLatin1Char('"') + shown.simplified() + QLatin1Char('"');
}

QPointF placeOf(const QJsonObject& object) {
    return {object.value(QLatin1String("x")).toDouble(),
            object.value(QLatin1String("y")).toDouble()};
}

using Objects = QMap<QString, QJsonObject>;
using Rename = QMap<QString, QString>;

/// By a member that is unique, or else by the same with a number behind it.
Objects byName(const QJsonObject& drawing, const char* list, const char* member = "name") {
    Objects result;
    for (const QJsonValue& value : drawing.value(QLatin1String(list)).toArray()) {
        const QJsonObject object = value.toObject();
        QString name = text(object, member);
        for (int i = 2; result.contains(name); ++i) {
            name = QStringLiteral("%1 (%2)").arg(text(object, member)).arg(i);
        }
        result.insert(name, object);
    }
    return result;
}

class Differences {
public:
    Differences(const QJsonObject& before, const QJsonObject& after)
        : m_before(before), m_after(after) {}

    QStringList all() {
        if (text(m_before, "title") != text(m_after, "title")) {
            tell(tr("title: %1 -> %2")
                     .arg(quoted(text(m_before, "title")), quoted(text(m_after, "title"))));
        }
        compareElements();
        compareNets();
        compareTexts();
        compareValues("globalParameters", tr("parameter %1"));
        compareValues("outputVariables", tr("output variable %1"));
        compareSimulation();
        return m_lines;
    }

private:
    void tell(const QString& line) { m_lines.append(line); }
    static QString arrow(const QString& before, const QString& after) {
        const auto shown = [](const QString& value) {
            return value.isEmpty() ? tr("nothing") : value;
        };
        return QStringLiteral("%1 -> %2").arg(shown(before), shown(after));
    }

    /// Those of `all` that the other side lacks.
    static QStringList only(const Objects& all, const Objects& other) {
        QStringList names;
        for (auto it = all.begin(); it != all.end(); ++it) {
            if (!other.contains(it.key())) {
                names.append(it.key());
            }
        }
        return names;
    }

    /// What stays when an element gets another name: a caption that followed it doesn't.
    static QJsonObject nameless(QJsonObject element) {
        if (text(element, "caption") == text(element, "name")) {
            element.remove(QStringLiteral("caption"));
        }
        element.remove(QStringLiteral("name"));
        return element;
    }

    static QString kindOf(const QJsonObject& element) {
        return text(element, "type")
            .section(QLatin1Char('.'), 0, 0)
            .section(QLatin1Char(';'), 0, 0);
    }

    static QString valuesOf(const QJsonObject& element) {
        const QJsonObject parameters = element.value(QLatin1String("parameters")).toObject();
        QStringList values;
        for (auto it = parameters.begin(); it != parameters.end(); ++it) {
            values.append(QStringLiteral("%1 = %2").arg(it.key(), it.value().toString()));
        }
        return values.isEmpty() ? QString()
                                : QStringLiteral(" (%1)").arg(values.join(QLatin1String(", ")));
    }

    void compareElements() {
        const Objects before = byName(m_before, "elements");
        const Objects after = byName(m_after, "elements");
        QStringList added = only(after, before);
        for (const QString& name : only(before, after)) {
            const auto same = std::find_if(added.begin(), added.end(), [&](const QString& other) {
                return nameless(before.value(name)) == nameless(after.value(other));
            });
            if (same == added.end()) {
                tell(tr("%1 removed: %2").arg(name, kindOf(before.value(name))));
                continue;
            }
            tell(tr("%1 renamed: %2").arg(name, *same));
            m_renamed.insert(name, *same);
            added.erase(same);
        }
        for (const QString& name : qAsConst(added)) {
            tell(tr("%1 added: %2%3")
                     .arg(name, kindOf(after.value(name)), valuesOf(after.value(name))));
        }
        for (auto it = before.begin(); it != before.end(); ++it) {
            if (after.contains(it.key())) {
                compareElement(it.key(), it.value(), after.value(it.key()));
            }
        }
    }

    void compareElement(const QString& name, const QJsonObject& before, const QJsonObject& after) {
        const auto compare = [&](const char* member, const QString& what) {
            if (text(before, member) != text(after, member)) {
                tell(QStringLiteral("%1: %2 %3")
                         .arg(name, what, arrow(text(before, member), text(after, member))));
            }
        };
        compare("type", tr("type"));
        compare("caption", tr("caption"));
        compare("model", tr("model"));
        const QJsonObject values = before.value(QLatin1String("parameters")).toObject();
        const QJsonObject newValues = after.value(QLatin1String("parameters")).toObject();
        QStringList parameters = values.keys() + newValues.keys();
        parameters.removeDuplicates();
        for (const QString& parameter : qAsConst(parameters)) {
            const QString from = values.value(parameter).toString();
            const QString to = newValues.value(parameter).toString();
            if (from != to) {
                tell(QStringLiteral("%1: %2 %3").arg(name, parameter, arrow(from, to)));
            }
        }
        const QPointF way = placeOf(after) - placeOf(before);
        if (!way.isNull()) {
            tell(tr("%1: moved by (%2, %3)").arg(name).arg(way.x()).arg(way.y()));
        }
        if (text(before, "rotation") != text(after, "rotation") ||
            text(before, "flip") != text(after, "flip")) {
            tell(tr("%1: turned or flipped").arg(name));
        }
    }

    QSet<QString> terminalsOf(const QJsonObject& net, const Rename& renamed) const {
        QSet<QString> terminals;
        for (const QJsonValue& value : net.value(QLatin1String("terminals")).toArray()) {
            const QJsonObject terminal = value.toObject();
            const QString element = text(terminal, "element");
            terminals.insert(renamed.value(element, element) + QLatin1Char('.') +
                             text(terminal, "terminal"));
        }
        return terminals;
    }
    static QString listOf(const QSet<QString>& terminals) {
        QStringList sorted = terminals.values();
        std::sort(sorted.begin(), sorted.end());
        return sorted.join(QLatin1String(", "));
    }

    void compareNets() {
        const Objects before = nets(m_before);
        const Objects after = nets(m_after);
        QStringList added = only(after, before);
        for (const QString& name : only(before, after)) {
            const QSet<QString> terminals = terminalsOf(before.value(name), m_renamed);
            const auto same = std::find_if(added.begin(), added.end(), [&](const QString& other) {
                return terminals == terminalsOf(after.value(other), {});
            });
            if (same == added.end()) {
                tell(tr("net %1 removed: %2").arg(name, listOf(terminals)));
                continue;
            }
            tell(tr("net %1 renamed: %2").arg(name, *same));
            added.erase(same);
        }
        for (const QString& name : qAsConst(added)) {
            tell(tr("net %1 added: %2").arg(name, listOf(terminalsOf(after.value(name), {}))));
        }
        for (auto it = before.begin(); it != before.end(); ++it) {
            if (!after.contains(it.key())) {
                continue;
            }
            const QSet<QString> old = terminalsOf(it.value(), m_renamed);
            const QSet<QString> now = terminalsOf(after.value(it.key()), {});
            const QSet<QString> joined = now - old;
            const QSet<QString> left = old - now;
            if (!joined.isEmpty()) {
                tell(tr("net %1: joined by %2").arg(it.key(), listOf(joined)));
            }
            if (!left.isEmpty()) {
                tell(tr("net %1: left by %2").arg(it.key(), listOf(left)));
            }
            if (joined.isEmpty() && left.isEmpty() &&
                it.value().value(QLatin1String("path")) !=
                    after.value(it.key()).value(QLatin1String("path"))) {
                tell(tr("net %1: drawn in another way").arg(it.key()));
            }
        }
    }

    /// Nets of one name are one net: their terminals and paths together.
    static Objects nets(const QJsonObject& drawing) {
        Objects result;
        for (const QJsonValue& value : drawing.value(QLatin1String("nodes")).toArray()) {
            const QJsonObject net = value.toObject();
            QJsonObject& whole = result[text(net, "name")];
            for (const char* member : {"terminals", "path"}) {
                QJsonArray all = whole.value(QLatin1String(member)).toArray();
                for (const QJsonValue& one : net.value(QLatin1String(member)).toArray()) {
                    all.append(one);
                }
                whole.insert(QLatin1String(member), all);
            }
        }
        return result;
    }

    /// Where a text stands, or what it belongs to, by which it is known when it changes.
    QString addressOf(const QJsonObject& box, const Rename& renamed) const {
        const QString element = text(box, "element");
        const QString parameter = text(box, "parameter");
        if (!element.isEmpty()) {
            return renamed.value(element, element) + QLatin1Char('.') + text(box, "property");
        }
        return parameter.isEmpty() ? QString() : tr("parameter %1").arg(parameter);
    }

    void compareTexts() {
        QVector<QJsonObject> added;
        for (const QJsonValue& box : m_after.value(QLatin1String("textBoxes")).toArray()) {
            added.append(box.toObject());
        }
        QVector<QJsonObject> removed;
        for (const QJsonValue& value : m_before.value(QLatin1String("textBoxes")).toArray()) {
            const int same = added.indexOf(value.toObject());
            if (same >= 0) {
                added.remove(same);
            } else {
                removed.append(value.toObject());
            }
        }
        for (const QJsonObject& old : qAsConst(removed)) {
            const int now = counterpart(old, added);
            if (now < 0) {
                tell(tr("text removed: %1").arg(nameOf(old, m_renamed)));
            } else {
                compareText(old, added.takeAt(now));
            }
        }
        for (const QJsonObject& box : qAsConst(added)) {
            tell(tr("text added: %1").arg(nameOf(box, {})));
        }
    }
    QString nameOf(const QJsonObject& box, const Rename& renamed) const {
        const QString address = addressOf(box, renamed);
        return address.isEmpty()
                   ? quoted(text(box, "text"))
                   : QStringLiteral("%1 at %2").arg(quoted(text(box, "text")), address);
    }
    int counterpart(const QJsonObject& old, const QVector<QJsonObject>& candidates) const {
        const QString address = addressOf(old, m_renamed);
        for (const bool byPlace : {true, false}) {
            for (int i = 0; i < candidates.size(); ++i) {
                const QJsonObject& box = candidates.at(i);
                const bool fits =
                    byPlace ? placeOf(box) == placeOf(old)
                            : !address.isEmpty() || text(box, "text") == text(old, "text");
                if (fits && text(box, "kind") == text(old, "kind") &&
                    addressOf(box, {}) == address) {
                    return i;
                }
            }
        }
        return -1;
    }
    void compareText(const QJsonObject& old, const QJsonObject& now) {
        const bool hasAddress = !addressOf(old, m_renamed).isEmpty();
        if (text(old, "text") != text(now, "text")) {
            // What follows a value was told with the value.
            if (!hasAddress) {
                tell(
                    tr("text: %1 -> %2").arg(quoted(text(old, "text")), quoted(text(now, "text"))));
            }
        } else if (placeOf(old) != placeOf(now)) {
            tell(tr("text moved: %1").arg(nameOf(now, {})));
        } else {
            tell(tr("text looks different: %1").arg(nameOf(now, {})));
        }
    }

    void compareValues(const char* list, const QString& what) {
        const Objects before = byName(m_before, list);
        const Objects after = byName(m_after, list);
        const auto content = [](const QJsonObject& object) {
            return text(object, object.contains(QLatin1String("value")) ? "value" : "text");
        };
        for (auto it = before.begin(); it != before.end(); ++it) {
            if (!after.contains(it.key())) {
                tell(tr("%1 removed").arg(what.arg(it.key())));
            } else if (it.value() != after.value(it.key())) {
                tell(QStringLiteral("%1: %2").arg(
                    what.arg(it.key()),
                    arrow(content(it.value()), content(after.value(it.key())))));
            }
        }
        for (const QString& name : only(after, before)) {
            tell(tr("%1 added: %2").arg(what.arg(name), content(after.value(name))));
        }
    }

    void compareSimulation() {
        const QJsonObject before = m_before.value(QLatin1String("simulation")).toObject();
        const QJsonObject after = m_after.value(QLatin1String("simulation")).toObject();
        QStringList keys = before.keys() + after.keys();
        keys.removeDuplicates();
        for (const QString& key : qAsConst(keys)) {
            if (before.value(key) != after.value(key)) {
                tell(tr("simulation, %1: %2")
                         .arg(key,
                              arrow(before.value(key).toString(), after.value(key).toString())));
            }
        }
    }

    const QJsonObject& m_before;
    const QJsonObject& m_after;
    Rename m_renamed;
    QStringList m_lines;
};

}  // namespace

QStringList differencesOf(const QJsonObject& before, const QJsonObject& after) {
    return Differences(before, after).all();
}
