#pragma once

#include <QObject>

class SimulationPanel;
class Workbench;

/// Ties the panels of the simulation to the window: what they point at shows on the canvas, the
/// docks open when there is something to see.
class SimulationTools : public QObject {
    Q_OBJECT

public:
    SimulationTools(Workbench& workbench, QObject* parent);

private slots:
    /// Selects the net, or else the element, and brings it into sight.
    void show(const QString& net, const QString& element);

private:
    Workbench& m_workbench;
};
