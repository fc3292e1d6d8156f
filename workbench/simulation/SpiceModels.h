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

    /// What the lines of a text in the drawing say to the simulator: further models, and what else
    /// a netlist may have.
    void addDirectives(const QString& text);
    /// Whether a line is of that kind: a model, initial values, options, functions, or the coupling
    /// of inductors. Parameters and analyses are the circuit's and the set-up's.
    static bool isDirective(const QString& line);
    /// The lines of a text, those that begin with "+" put to the ones that they continue.
    static QStringList wholeLines(const QString& text);

    /// Those that name no model.
    const QStringList& furtherLines() const { return m_furtherLines; }
    bool contains(const QString& name) const { return m_blocks.contains(name.toLower()); }
    /// Case of letters doesn't count; empty for an unknown name.
    QStringList lines(const QString& name) const { return m_blocks.value(name.toLower()); }

private:
    void addBlocks(const QStringList& lines);

    QMap<QString, QStringList> m_blocks;
    QStringList m_furtherLines;
};
