#pragma once

#include <QByteArray>

class QWidget;
class SimulationPart;
struct PlotContent;

/// What draws curves, for those who do without it where the program is built without Qwt.
namespace Plots {

/// A new PlotPanel, or null.
QWidget* makePanel(SimulationPart* simulation);
/// The curves on white, as a scalable picture; empty if nothing draws them.
QByteArray svg(const PlotContent& content);

}  // namespace Plots
