#include "ElementLibrary.h"

#include "BoxType.h"
#include "DrawingType.h"
#include "ElementTypeReader.h"
#include "NetlistType.h"
#include "SubCircuitDescription.h"

#include <QDir>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

/// Of drawings within drawings, which a file may claim to hold without end.
constexpr int DeepestDrawing = 20;

using InnerTypes = QHash<QString, QSet<QString>>;

/// Whether a sub-circuit is, or has somewhere inside, the other type.
bool holds(const InnerTypes& inner, const QString& outer, const QString& type) {
    QSet<QString> seen{outer};
    QStringList open{outer};
    while (!open.isEmpty() && !seen.contains(type)) {
        for (const QString& next : inner.value(open.takeLast())) {
            if (!seen.contains(next)) {
                seen.insert(next);
                open.append(next);
            }
        }
    }
    return seen.contains(type);
}

}  // namespace

ElementLibrary::ElementLibrary() = default;

ElementLibrary::~ElementLibrary() = default;

bool ElementLibrary::load(const QString& folder) {
    const int earlier = m_problems.size();
    const QDir root(folder);
    if (!root.exists()) {
        m_problems.append(folder + QLatin1String(": there is no such folder"));
        return false;
    }
    QVector<NewSubCircuit> subCircuits;
    for (const QString& library : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QDir files(root.absoluteFilePath(library));
        for (const QString& file :
             files.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
            loadFile(files.absoluteFilePath(file), &subCircuits);
        }
    }
    // Only now are all the types there that they may contain.
    refuseCircles(&subCircuits);
    for (const NewSubCircuit& added : qAsConst(subCircuits)) {
        const QStringList unknown =
            added.description->bind([this](const QString& type) { return description(type); });
        if (!unknown.isEmpty()) {
            m_problems.append(
                QStringLiteral("%1: there is no type for the inside's elements of \"%2\"")
                    .arg(added.fileName, unknown.join(QLatin1String("\", \""))));
        }
    }
    return m_problems.size() == earlier;
}

void ElementLibrary::refuseCircles(QVector<NewSubCircuit>* subCircuits) {
    InnerTypes inner;
    for (const NewSubCircuit& added : qAsConst(*subCircuits)) {
        const QStringList types = added.description->innerTypes();
        inner.insert(added.description->elementType(), QSet<QString>(types.begin(), types.end()));
    }
    QVector<NewSubCircuit> sound;
    QStringList refused;
    for (const NewSubCircuit& added : qAsConst(*subCircuits)) {
        const QString type = added.description->elementType();
        const QSet<QString> types = inner.value(type);
        const auto way = std::find_if(types.begin(), types.end(), [&](const QString& next) {
            return holds(inner, next, type);
        });
        if (way == types.end()) {
            sound.append(added);
            continue;
        }
        refused.append(type);
        m_problems.append(QStringLiteral("%1: the sub-circuit contains itself by way of \"%2\"")
                              .arg(added.fileName, *way));
    }
    *subCircuits = sound;
    for (const QString& type : qAsConst(refused)) {
        m_descriptions.erase(type);
    }
}

void ElementLibrary::loadFile(const QString& fileName, QVector<NewSubCircuit>* subCircuits) {
    ElementTypeReader reader(fileName);
    ElementTypeData data;
    if (!reader.read(&data)) {
        m_problems.append(reader.problems());
        return;
    }
    const QString type = data.type;
    auto& description = m_descriptions[type];
    if (description) {
        m_problems.append(
            QStringLiteral("%1: the type \"%2\" is known already").arg(fileName, type));
        return;
    }
    if (data.category != ICircuitElementDesc::SubCircuitCategory) {
        description = std::make_unique<ElementDescription>(std::move(data));
        return;
    }
    auto subCircuit = std::make_unique<SubCircuitDescription>(std::move(data));
    subCircuits->append({fileName, subCircuit.get()});
    description = std::move(subCircuit);
}

QStringList ElementLibrary::types() const {
    QStringList result;
    for (const auto& entry : m_descriptions) {
        result.append(entry.first);
    }
    return result;
}

ElementDescription* ElementLibrary::description(const QString& type) const {
    const auto it = m_descriptions.find(type);
    if (it != m_descriptions.end()) {
        return it->second.get();
    }
    const auto known = m_named.find(type);
    if (known != m_named.end()) {
        return known->second.get();
    }
    ElementTypeData data;
    QString reason;
    const QString text = NetlistType::textOf(type);
    auto drawn = m_depth < DeepestDrawing ? DrawingType::dataOf(type) : std::nullopt;
    if (drawn) {
        drawn->type = type;
        auto drawing = std::make_unique<SubCircuitDescription>(std::move(*drawn));
        ++m_depth;
        drawing->bind([this](const QString& inner) { return description(inner); });
        --m_depth;
        return (m_named[type] = std::move(drawing)).get();
    }
    if (const std::optional<BoxType> box = BoxType::fromName(type)) {
        data = box->data();
    } else if (text.isEmpty() || !NetlistType::describe(text, &data, &reason)) {
        return nullptr;
    }
    data.type = type;
    auto& added = m_named[type];
    added = std::make_unique<ElementDescription>(std::move(data));
    return added.get();
}
