#pragma once

#include "CurveData.h"

#include <qwt_plot.h>

#include <QPoint>
#include <QRectF>
#include <QVector>

#include <memory>

class CurveItem;
class QRubberBand;
class QwtPlotGrid;
class QwtPlotMarker;

/// Curves of one quantity over the swept one, and what the pointer does to them: the left button
/// frames what to see and moves cursors, the middle one pans, the right one goes back, the wheel
/// zooms, with Shift it pans. Only asks for another view, since several plots share their abscissa.
class CurvePlot : public QwtPlot {
    Q_OBJECT

public:
    CurvePlot(const QString& quantity, bool xLog, bool yLog, QWidget* parent = nullptr);
    ~CurvePlot() override;

    /// `number` is that of the curve in the whole, which chooses its colour.
    void addCurve(int number, const QString& name, const QVector<double>& x,
                  const QVector<double>& y);
    void showCurve(int number, bool shown);
    /// Not a number if there is none.
    double valueAt(int number, double x) const;
    /// The number of the visible curve that passes the place on the canvas; -1 for none.
    int curveAt(const QPoint& place) const;

    /// Of the visible curves, with a margin above and below.
    QRectF bounds() const;
    /// In the units of the axes; y points up.
    QRectF view() const;
    void setView(const QRectF& view);
    /// Two upright lines.
    void setCursors(bool shown, double first, double second);
    void setXLog(bool log);
    void setYLog(bool log);
    /// Whether any ordinate is positive.
    bool canBeLog() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// `step` tells that the user may want to come back.
    void viewWanted(const QRectF& view, bool step);
    void backWanted();
    void fitWanted();
    void curveClicked(int number);
    void cursorMoved(int cursor, double x);

protected:
    void changeEvent(QEvent* event) override;

private:
    enum class Drag { None, Frame, Pan, Cursor };

    void setLog(int axis, bool log, bool* isLog);
    void followPalette();
    bool press(const QPoint& place, Qt::MouseButton button);
    void move(const QPoint& place);
    void release(const QPoint& place);
    void wheel(const QPointF& place, double turns, bool pans);
    /// What shows between the two corners of a frame, in pixels of the canvas.
    QRectF viewOf(const QRectF& frame) const;
    /// -1 for none.
    int cursorAt(const QPoint& place) const;

    QVector<CurveItem*> m_curves;
    QwtPlotGrid* m_grid;
    QwtPlotMarker* m_cursors[2];
    bool m_xLog;
    bool m_yLog;
    std::unique_ptr<QRubberBand> m_band;
    Drag m_drag = Drag::None;
    int m_draggedCursor = 0;
    QPoint m_pressed;
};
