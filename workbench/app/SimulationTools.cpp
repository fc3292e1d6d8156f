#include "SimulationTools.h"

#include "Circuit.h"
#include "ICanvas.h"
#include "ICircuitEditorExt.h"
#include "ICircuitElement.h"
#include "ICircuitNode.h"
#include "SimulationPanel.h"
#include "SimulationPart.h"
#include "Workbench.h"

#include <QDockWidget>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QTimer>

namespace {

/// Around what is brought into sight, in pixels.
constexpr int VisibleMargin = 60;

/// What was in the middle of the canvas stays there, though the canvas gets smaller.
void openDockOf(QWidget* panel, QGraphicsView* view) {
    const QPointF middle = view->mapToScene(view->viewport()->rect().center());
    if (!panel->isVisible()) {
        QTimer::singleShot(0, view, [view, middle] { view->centerOn(middle); });
    }
    for (QWidget* widget = panel; widget; widget = widget->parentWidget()) {
        if (auto* dock = qobject_cast<QDockWidget*>(widget)) {
            dock->show();
            dock->raise();
        }
    }
}

}  // namespace

SimulationTools::SimulationTools(Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    auto* panel = qobject_cast<SimulationPanel*>(
        workbench.object(QStringLiteral("CSimulationComponent.simulationPanel")));
    if (!panel) {
        return;
    }
    QGraphicsView* view = workbench.canvas()->graphicsView();
    connect(panel, &SimulationPanel::problemPicked, this, &SimulationTools::show);
    connect(panel, &SimulationPanel::failed, panel, [panel, view] { openDockOf(panel, view); });
    auto* plot =
        qobject_cast<QWidget*>(workbench.object(QStringLiteral("CSimulationComponent.plotPanel")));
    if (plot) {
        connect(panel, &SimulationPanel::succeeded, plot, [plot, view] { openDockOf(plot, view); });
        connect(plot, SIGNAL(picked(QString, QString)), this, SLOT(show(QString, QString)));
    }
}

void SimulationTools::show(const QString& net, const QString& element) {
    Circuit& circuit = m_workbench.simulation()->circuit();
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    QGraphicsItem* item = nullptr;
    for (int i = 0; i < circuit.nodeCount() && !net.isEmpty(); ++i) {
        if (circuit.node(i)->name() == net) {
            item = items->itemFor(circuit.node(i));
        }
    }
    for (int i = 0; i < circuit.elementCount() && !item && !element.isEmpty(); ++i) {
        if (circuit.element(i)->name() == element) {
            item = items->itemFor(circuit.element(i));
        }
    }
    if (!item) {
        return;
    }
    m_workbench.canvas()->graphicsScene()->clearSelection();
    item->setSelected(true);
    m_workbench.canvas()->graphicsView()->ensureVisible(item, VisibleMargin, VisibleMargin);
}
