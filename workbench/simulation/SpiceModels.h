#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Device models by name, as ".model" lines or ".subckt" blocks of the simulator.
class SpiceModels {
public:
    /// Adds the models of a file: blocks that begin with ".model" or ".subckt"; lines that begin
    /// with "*" or are blank stand between them. False, with the reason, if it can't be read.
    bool load(const QString& fileName, QString* reason);

    bool contains(const QString& name) const { return m_blocks.contains(name.toLower()); }
    /// Case of letters doesn't count; empty for an unknown name.
    QStringList lines(const QString& name) const { return m_blocks.value(name.toLower()); }

private:
    QMap<QString, QStringList> m_blocks;
};
