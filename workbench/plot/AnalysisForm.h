#pragma once

#include <QMap>
#include <QWidget>

struct AnalysisField;
struct AnalysisType;
class QLineEdit;
class SimulationSetup;

/// The fields of one analysis. A number that can't be read is marked while it is typed.
class AnalysisForm : public QWidget {
    Q_OBJECT

public:
    /// The fields' object names are "analysis.field".
    explicit AnalysisForm(const AnalysisType& type, QWidget* parent = nullptr);

    void showValues(const SimulationSetup& setup);
    /// Puts what the fields hold into the set-up.
    void store(SimulationSetup* setup) const;

signals:
    /// The user has left a field, or chosen.
    void edited();

private:
    QWidget* makeField(const AnalysisField& field);
    static void mark(QLineEdit* line, const AnalysisField& field);
    QString text(const QString& field) const;

    const AnalysisType& m_type;
    QMap<QString, QWidget*> m_fields;
};
