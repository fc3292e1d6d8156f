#pragma once

#include <QDomDocument>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

struct Netlist;

/// What a set-up of the simulation consists of: one field of one analysis, for forms and files.
struct AnalysisField {
    enum Kind { Number, Choice, Text, Flag };

    const char* name;
    const char* label;
    const char* unit;
    const char* value;
    Kind kind = Number;
    /// Separated by '|'.
    const char* choices = "";
    /// May be left empty.
    bool optional = false;
};

/// A kind of analysis.
struct AnalysisType {
    const char* name;   ///< in files and on the command line: "tran"
    const char* label;  ///< for people
    QVector<AnalysisField> fields;
};

/// The kinds, in the order in which they are offered; last the sweep of a parameter, which goes
/// with any other and isn't run by itself.
const QVector<AnalysisType>& analysisTypes();
/// Null for an unknown name.
const AnalysisType* analysisType(const QString& name);

/// The set-up of all analyses of a project, and which of them runs.
class SimulationSetup {
public:
    /// The defaults.
    SimulationSetup();

    QString active() const { return m_active; }
    /// Ignores an unknown name.
    void setActive(const QString& analysis);
    /// Empty for an unknown field.
    QString value(const QString& analysis, const QString& field) const;
    /// Ignores an unknown field.
    void setValue(const QString& analysis, const QString& field, const QString& value);

    /// Why the analysis can't run with its values, as one sentence; empty if it can.
    QString problem(const QString& analysis) const;
    /// The simulator's line of the analysis in the circuit that the netlist was made of. Empty,
    /// with the reason, if the circuit lacks what the analysis names.
    QString line(const QString& analysis, const Netlist& netlist, QString* reason) const;
    /// The global parameter whose values are run through, each with a run of its own; empty for
    /// none.
    QString sweptParameter() const {
        return value(QStringLiteral("sweep"), QStringLiteral("parameter"));
    }
    QVector<double> sweepValues() const;

    /// One element per analysis, with an attribute per field that isn't the default.
    void save(QDomDocument document, QDomElement parent) const;
    /// What a file doesn't have is the default; what it has beyond is passed over.
    static SimulationSetup load(const QDomElement& parent);

    bool operator==(const SimulationSetup& other) const;

private:
    QString m_active;
    QMap<QString, QMap<QString, QString>> m_values;
};
