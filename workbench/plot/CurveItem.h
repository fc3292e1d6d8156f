#pragma once

#include "CurveData.h"

#include <qwt_plot_item.h>

#include <QColor>

/// A curve in a plot.
class CurveItem : public QwtPlotItem {
public:
    CurveItem(int number, const QString& name, CurveData data);

    int number() const { return m_number; }
    const CurveData& data() const { return m_data; }
    void setColor(const QColor& color) { m_color = color; }
    /// How far the curve passes the place, in pixels.
    double distance(const QPointF& place, const QwtScaleMap& xMap, const QwtScaleMap& yMap) const;

    // QwtPlotItem
    int rtti() const override { return Rtti_PlotUserItem; }
    void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
              const QRectF& canvas) const override;
    QwtGraphic legendIcon(int index, const QSizeF& size) const override;

private:
    int m_number;
    CurveData m_data;
    QColor m_color;
};
