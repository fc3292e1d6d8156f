#pragma once

#include "Analysis.h"
#include "CircuitCheck.h"
#include "IProjectPart.h"
#include "Simulator.h"
#include "SpiceModels.h"

#include <QObject>

#include <functional>

class OutputVariable;

/// The simulation of the application's circuit: its set-up, which is a part of the project, and its
/// last run. A project whose set-up is the default one has no such part.
class SimulationPart : public QObject, public IProjectPart {
    Q_OBJECT
    Q_INTERFACES(IProjectPart)

public:
    explicit SimulationPart(Circuit* circuit, QObject* parent = nullptr);

    Circuit& circuit() const { return m_circuit; }
    SpiceModels& models() { return m_models; }
    Simulator& simulator() { return m_simulator; }
    const Simulator& simulator() const { return m_simulator; }
    const SimulationSetup& setup() const { return m_setup; }
    void setSetup(const SimulationSetup& setup);

    /// Where the texts in the drawing come from; some are for the simulator, see `SpiceModels`.
    void setTexts(std::function<QStringList()> texts) { m_texts = std::move(texts); }

    QVector<CircuitProblem> check() const { return checkCircuit(m_circuit, allModels()); }
    /// As a person would write it, with the active analysis.
    QString netlist() const;
    /// Starts the active analysis; see `Simulator::start`.
    bool run(QString* reason);
    /// Runs it and waits for the end. False, with the reason.
    bool runToEnd(QString* reason);

    /// What the output variables of the circuit, or without any all nets, were in one of the runs.
    /// Variables that the run doesn't tell of are left out and told of in `problems`.
    QVector<Curve> curves(const Simulator::Run& run, QStringList* problems) const;
    /// All runs as comma-separated values: the swept quantity, then a column for each curve; of a
    /// complex one its magnitude in dB and its phase in degrees. The curves of a family are read
    /// off at the points of the first run.
    QByteArray csv(QStringList* problems) const;

    // IContainer
    QObject* containerObject() override { return this; }

    // IProjectPart
    QString projectPartID() override { return QStringLiteral("Simulation"); }
    bool newProjectPart() override;
    bool loadProjectPart(QDomDocument document, QDomElement element) override;
    bool initializeProjectPart() override { return true; }
    bool saveProjectPart(QDomDocument document, QDomElement element) override;
    bool closeProjectPart() override;

signals:
    void projectPartModified() override;
    /// Another project, or other values.
    void setupChanged();
    /// Another run has ended well, or the runs are of a project that is closed.
    void resultsChanged();

private:
    /// With those that the drawing has.
    SpiceModels allModels() const;

    Circuit& m_circuit;
    SpiceModels m_models;
    std::function<QStringList()> m_texts;
    SimulationSetup m_setup;
    bool m_isStored = false;
    Simulator m_simulator;
};
