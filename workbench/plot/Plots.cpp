#include "Plots.h"

#ifdef VORTEL_PLOTS

#include "PlotPanel.h"
#include "PlotPicture.h"

QWidget* Plots::makePanel(SimulationPart* simulation) {
    return new PlotPanel(simulation);
}

QByteArray Plots::svg(const PlotContent& content) {
    return plotSvg(content);
}

#else

QWidget* Plots::makePanel(SimulationPart* /*simulation*/) {
    return nullptr;
}

QByteArray Plots::svg(const PlotContent& /*content*/) {
    return {};
}

#endif
