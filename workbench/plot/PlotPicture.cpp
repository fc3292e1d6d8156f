#include "PlotPicture.h"

#include "CurvePlot.h"

#include <qwt_legend.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>
#include <QWidget>

#include <cmath>

namespace {

constexpr int PictureWidth = 900;
constexpr int PlotHeight = 320;

}  // namespace

bool isYLog(const PlotContent& content, const CurvePlot& plot) {
    const QString quantity = plot.axisTitle(QwtPlot::yLeft).text();
    const bool isLogAlready = quantity == QLatin1String("dB") || quantity == QLatin1String("°");
    return content.yLog && !isLogAlready && plot.canBeLog();
}

QVector<CurvePlot*> makePlots(const PlotContent& content, QWidget* parent) {
    QVector<CurvePlot*> plots;
    if (content.isPoint) {
        return plots;
    }
    for (const QString& quantity : content.quantities()) {
        auto* plot = new CurvePlot(quantity, content.xLog, false, parent);
        for (int i = 0; i < content.curves.size(); ++i) {
            const PlotCurve& curve = content.curves.at(i);
            for (const PlotTrace& trace : curve.traces) {
                if (trace.quantity == quantity) {
                    plot->addCurve(i, curve.name, curve.x, trace.values);
                }
            }
        }
        plot->setYLog(isYLog(content, *plot));
        plots.append(plot);
    }
    return plots;
}

void alignPlots(const QVector<CurvePlot*>& plots, const QString& xTitle) {
    double widest = 0;
    for (CurvePlot* plot : plots) {
        plot->updateAxes();
        QwtScaleDraw* scale = plot->axisScaleDraw(QwtPlot::yLeft);
        scale->setMinimumExtent(0);
        widest = qMax(widest, scale->extent(plot->axisWidget(QwtPlot::yLeft)->font()));
        const bool isLast = plot == plots.last();
        plot->setAxisTitle(QwtPlot::xBottom,
                           QwtText(isLast ? xTitle : QString(), QwtText::PlainText));
    }
    for (CurvePlot* plot : plots) {
        plot->axisScaleDraw(QwtPlot::yLeft)->setMinimumExtent(std::ceil(widest));
        plot->updateLayout();
    }
}

QVector<QRectF> fittingViews(const QVector<CurvePlot*>& plots) {
    QVector<QRectF> views;
    QRectF all;
    for (const CurvePlot* plot : plots) {
        const QRectF bounds = plot->bounds();
        if (bounds.width() > 0) {
            all.setLeft(all.isNull() ? bounds.left() : qMin(all.left(), bounds.left()));
            all.setRight(all.isNull() ? bounds.right() : qMax(all.right(), bounds.right()));
            all.setHeight(1);
        }
        views.append(bounds);
    }
    for (QRectF& view : views) {
        view = QRectF(all.left(), view.top(), all.width(), view.height());
    }
    return views;
}

QByteArray plotSvg(const PlotContent& content, const QSet<QString>& hidden,
                   const QVector<QRectF>& views) {
    QWidget sheet;
    QPalette onPaper(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white);
    sheet.setPalette(onPaper);
    const QVector<CurvePlot*> plots = makePlots(content, &sheet);
    for (CurvePlot* plot : plots) {
        for (int i = 0; i < content.curves.size(); ++i) {
            plot->showCurve(i, !hidden.contains(content.curves.at(i).name));
        }
    }
    const QVector<QRectF> shown = views.size() == plots.size() ? views : fittingViews(plots);
    for (int i = 0; i < plots.size(); ++i) {
        plots.at(i)->setView(shown.at(i));
    }
    alignPlots(plots, content.xTitle);

    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    const QRect page(0, 0, PictureWidth, PlotHeight * qMax(1, plots.size()));
    generator.setSize(page.size());
    generator.setViewBox(page);
    generator.setTitle(content.xTitle);
    QPainter painter(&generator);
    painter.fillRect(page, Qt::white);
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    for (int i = 0; i < plots.size(); ++i) {
        if (i == 0) {
            plots.at(i)->insertLegend(new QwtLegend, QwtPlot::TopLegend);
        }
        renderer.render(plots.at(i), &painter,
                        QRectF(0, i * PlotHeight, PictureWidth, PlotHeight).adjusted(8, 8, -8, -8));
    }
    painter.end();
    return buffer.data();
}
