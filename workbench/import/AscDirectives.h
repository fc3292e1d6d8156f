#pragma once

#include "Analysis.h"

#include <QHash>
#include <QPair>
#include <QStringList>
#include <QVector>

/// What the directives of a sheet mean to the workbench.
class AscDirectives {
public:
    /// Takes one text, of one or more lines. What has no place in the project but that of a text in
    /// the drawing adds a remark.
    void take(const QString& text, QStringList* remarks);

    const SimulationSetup& setup() const { return m_setup; }
    const QVector<QPair<QString, QString>>& parameters() const { return m_parameters; }
    /// How names are spelt, by their lower case.
    QHash<QString, QString> spelling() const;
    bool isSmallSignal() const { return m_isSmallSignal; }

private:
    bool takeLine(const QString& line);
    bool takeTransient(const QStringList& words);
    bool takeDc(const QStringList& words);
    bool takeNoise(const QStringList& words);
    bool takeSpectrum(const QString& analysis, const QStringList& words);
    bool takeStep(QStringList words);
    bool takeParameters(const QString& line);
    /// False if one of the words that must be a number is none.
    bool set(const QString& analysis, const QStringList& fields, const QStringList& words);
    void activate(const QString& analysis);

    SimulationSetup m_setup;
    bool m_hasAnalysis = false;
    bool m_isSmallSignal = false;
    QVector<QPair<QString, QString>> m_parameters;
};
