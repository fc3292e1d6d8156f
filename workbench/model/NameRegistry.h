#pragma once

#include <QHash>
#include <QString>

/// The names that are in use among the elements, nets or output variables of one circuit, and the
/// next automatic name. A name may be taken several times, for several nets may bear one name.
/// Finding the next name costs nothing that grows with the circuit as long as names come and go
/// one at a time.
class NameRegistry {
public:
    bool contains(const QString& name) const { return m_uses.contains(name); }
    /// The prefix with the lowest positive number that makes a name not in use. Doesn't take it.
    QString lowestFree(const QString& prefix);

    void take(const QString& name);
    void release(const QString& name);

private:
    QHash<QString, int> m_uses;
    // By prefix: all numbers below this one are in use.
    QHash<QString, int> m_lowest;
};
