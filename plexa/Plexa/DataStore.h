#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace Plexa {

/// A map-like value: facts by key, keys in sorted order. An unknown key yields an invalid variant.
class DataStore {
public:
    DataStore() = default;

    QStringList keys() const { return m_values.keys(); }
    QVariant value(const QString& key) const { return m_values.value(key); }
    void insert(const QString& key, const QVariant& value) { m_values.insert(key, value); }

private:
    QMap<QString, QVariant> m_values;
};

}  // namespace Plexa
