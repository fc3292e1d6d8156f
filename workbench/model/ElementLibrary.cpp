#include "ElementLibrary.h"

#include "ElementTypeReader.h"

#include <QDir>

ElementLibrary::ElementLibrary() = default;

ElementLibrary::~ElementLibrary() = default;

bool ElementLibrary::load(const QString& folder) {
    const int earlier = m_problems.size();
    const QDir root(folder);
    if (!root.exists()) {
        m_problems.append(folder + QLatin1String(": there is no such folder"));
        return false;
    }
    for (const QString& library : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QDir files(root.absoluteFilePath(library));
        for (const QString& file :
             files.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
            loadFile(files.absoluteFilePath(file));
        }
    }
    return m_problems.size() == earlier;
}

void ElementLibrary::loadFile(const QString& fileName) {
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
    description = std::make_unique<ElementDescription>(std::move(data));
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
    return it == m_descriptions.end() ? nullptr : it->second.get();
}
