#pragma once

#include "PlotContent.h"

#include <QByteArray>
#include <QRectF>
#include <QSet>
#include <QVector>

class CurvePlot;
class QWidget;

/// Whether the plot's ordinate is to be logarithmic: where the content asks for it and it can be.
bool isYLog(const PlotContent& content, const CurvePlot& plot);
/// A plot for each quantity, with all curves.
QVector<CurvePlot*> makePlots(const PlotContent& content, QWidget* parent);
/// One beneath the other, with the abscissas aligned and named on the last.
void alignPlots(const QVector<CurvePlot*>& plots, const QString& xTitle);
/// The whole of the visible curves in each.
QVector<QRectF> fittingViews(const QVector<CurvePlot*>& plots);

/// The curves on white, as a scalable picture: those that aren't hidden, in the views given, or
/// whole.
QByteArray plotSvg(const PlotContent& content, const QSet<QString>& hidden = {},
                   const QVector<QRectF>& views = {});
