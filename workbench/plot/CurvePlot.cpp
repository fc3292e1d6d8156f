#include "CurvePlot.h"

#include "CurveColors.h"
#include "CurveItem.h"
#include "PlotContent.h"

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <QApplication>
#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

/// How near, in pixels, the pointer must come to a curve or a cursor.
constexpr double NearCurve = 6;
constexpr double NearCursor = 5;
/// Of the height of the curves, above and below them.
constexpr double Margin = 0.05;
/// How much of the width shows after one notch of the wheel; how much passes by with Shift.
constexpr double ZoomStep = 0.8;
constexpr double PanStep = 0.1;
constexpr double AngleOfNotch = 120;

/// Of the numbers at the axes.
constexpr int LeastDigits = 4;
constexpr int MostDigits = 12;

class EngineeringScale : public QwtScaleDraw {
public:
    /// With as many digits as tell neighbours apart.
    QwtText label(double value) const override {
        const QList<double> ticks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
        int digits = LeastDigits;
        if (ticks.size() > 1 && ticks.at(1) != ticks.at(0)) {
            const double most = std::max(std::abs(ticks.first()), std::abs(ticks.last()));
            const double step = std::abs(ticks.at(1) - ticks.at(0));
            digits = qBound(digits, static_cast<int>(std::ceil(std::log10(most / step))) + 2,
                            MostDigits);
        }
        return shortNumber(value, {}, digits);
    }
};

}  // namespace

CurvePlot::CurvePlot(const QString& quantity, bool xLog, bool yLog, QWidget* parent)
    : QwtPlot(parent), m_grid(new QwtPlotGrid), m_xLog(!xLog), m_yLog(!yLog) {
    setAutoReplot(false);
    for (const int axis : {xBottom, yLeft}) {
        setAxisScaleDraw(axis, new EngineeringScale);
    }
    setAxisTitle(yLeft, QwtText(quantity, QwtText::PlainText));
    setXLog(xLog);
    setYLog(yLog);
    plotLayout()->setAlignCanvasToScales(true);
    m_grid->enableXMin(true);
    m_grid->attach(this);
    for (int i = 0; i < 2; ++i) {
        m_cursors[i] = new QwtPlotMarker;
        m_cursors[i]->setLineStyle(QwtPlotMarker::VLine);
        m_cursors[i]->setLabelAlignment(Qt::AlignRight | Qt::AlignTop);
        m_cursors[i]->setZ(30);
        m_cursors[i]->setVisible(false);
        m_cursors[i]->attach(this);
    }
    auto* page = static_cast<QwtPlotCanvas*>(canvas());
    page->setFrameStyle(QFrame::NoFrame);
    page->setCursor(Qt::CrossCursor);
    page->setMouseTracking(true);
    page->installEventFilter(this);
    setMinimumHeight(90);
    followPalette();
}

CurvePlot::~CurvePlot() = default;

void CurvePlot::addCurve(int number, const QString& name, const QVector<double>& x,
                         const QVector<double>& y) {
    auto* curve = new CurveItem(number, name, CurveData(x, y));
    curve->setColor(curveColor(number, palette().color(QPalette::Base)));
    curve->attach(this);
    m_curves.append(curve);
}

void CurvePlot::showCurve(int number, bool shown) {
    for (CurveItem* curve : qAsConst(m_curves)) {
        if (curve->number() == number) {
            curve->setVisible(shown);
            curve->setItemAttribute(QwtPlotItem::Legend, shown);
        }
    }
}

double CurvePlot::valueAt(int number, double x) const {
    for (const CurveItem* curve : m_curves) {
        if (curve->number() == number) {
            return curve->data().valueAt(x);
        }
    }
    return std::nan("");
}

int CurvePlot::curveAt(const QPoint& place) const {
    int nearest = -1;
    double least = NearCurve;
    for (const CurveItem* curve : m_curves) {
        const double distance = curve->isVisible()
                                    ? curve->distance(place, canvasMap(xBottom), canvasMap(yLeft))
                                    : NearCurve;
        if (distance < least) {
            least = distance;
            nearest = curve->number();
        }
    }
    return nearest;
}

QRectF CurvePlot::bounds() const {
    QRectF all;
    for (const CurveItem* curve : m_curves) {
        const QRectF own = curve->data().bounds(m_xLog, m_yLog);
        if (curve->isVisible() && !own.isNull()) {
            // Not united(), to which a level line is no rectangle.
            all = all.isNull()
                      ? own
                      : QRectF(QPointF(qMin(all.left(), own.left()), qMin(all.top(), own.top())),
                               QPointF(qMax(all.right(), own.right()),
                                       qMax(all.bottom(), own.bottom())));
        }
    }
    if (m_yLog && all.top() > 0) {
        all.setTop(all.top() / 1.5);
        all.setBottom(all.bottom() * 1.5);
        return all;
    }
    const double level = qMax(std::abs(all.top()), std::abs(all.bottom()));
    // What rounding leaves of a level line isn't blown up to the whole height.
    const bool isLevel = all.height() <= 1e-9 * level;
    const double margin = isLevel ? (level > 0 ? 0.1 * level : 1) : Margin * all.height();
    return all.adjusted(0, -margin, 0, margin);
}

QRectF CurvePlot::view() const {
    const QwtInterval x = axisInterval(xBottom);
    const QwtInterval y = axisInterval(yLeft);
    return QRectF(x.minValue(), y.minValue(), x.width(), y.width());
}

void CurvePlot::setView(const QRectF& view) {
    if (view.width() > 0) {
        setAxisScale(xBottom, view.left(), view.right());
    }
    if (view.height() > 0) {
        setAxisScale(yLeft, view.top(), view.bottom());
    }
    replot();
}

void CurvePlot::setCursors(bool shown, double first, double second) {
    const double places[] = {first, second};
    for (int i = 0; i < 2; ++i) {
        m_cursors[i]->setVisible(shown);
        m_cursors[i]->setXValue(places[i]);
    }
    replot();
}

void CurvePlot::setXLog(bool log) {
    setLog(xBottom, log, &m_xLog);
}

void CurvePlot::setYLog(bool log) {
    setLog(yLeft, log, &m_yLog);
}

void CurvePlot::setLog(int axis, bool log, bool* isLog) {
    if (log != *isLog) {
        *isLog = log;
        if (log) {
            setAxisScaleEngine(axis, new QwtLogScaleEngine);
        } else {
            setAxisScaleEngine(axis, new QwtLinearScaleEngine);
        }
    }
}

bool CurvePlot::canBeLog() const {
    for (const CurveItem* curve : m_curves) {
        if (!curve->data().bounds(false, true).isNull()) {
            return true;
        }
    }
    return false;
}

bool CurvePlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched != canvas()) {
        return QwtPlot::eventFilter(watched, event);
    }
    switch (event->type()) {
        case QEvent::MouseButtonPress: {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            return press(mouse->pos(), mouse->button());
        }
        case QEvent::MouseMove:
            move(static_cast<QMouseEvent*>(event)->pos());
            return true;
        case QEvent::MouseButtonRelease:
            release(static_cast<QMouseEvent*>(event)->pos());
            return true;
        case QEvent::MouseButtonDblClick:
            emit fitWanted();
            return true;
        case QEvent::Wheel: {
            auto* wheelEvent = static_cast<QWheelEvent*>(event);
            const QPoint angle = wheelEvent->angleDelta();
            const bool pans = wheelEvent->modifiers().testFlag(Qt::ShiftModifier);
            wheel(wheelEvent->position(), (angle.y() != 0 ? angle.y() : angle.x()) / AngleOfNotch,
                  pans);
            return true;
        }
        default:
            return QwtPlot::eventFilter(watched, event);
    }
}

bool CurvePlot::press(const QPoint& place, Qt::MouseButton button) {
    m_pressed = place;
    if (button == Qt::RightButton) {
        emit backWanted();
    } else if (button == Qt::MiddleButton) {
        m_drag = Drag::Pan;
    } else if (button == Qt::LeftButton) {
        m_draggedCursor = cursorAt(place);
        m_drag = m_draggedCursor >= 0 ? Drag::Cursor : Drag::Frame;
    }
    return true;
}

void CurvePlot::move(const QPoint& place) {
    const QRect page = canvas()->rect();
    if (m_drag == Drag::None) {
        canvas()->setCursor(cursorAt(place) >= 0  ? Qt::SizeHorCursor
                            : curveAt(place) >= 0 ? Qt::PointingHandCursor
                                                  : Qt::CrossCursor);
    } else if (m_drag == Drag::Cursor) {
        const int x = qBound(page.left(), place.x(), page.right());
        emit cursorMoved(m_draggedCursor, invTransform(xBottom, x));
    } else if (m_drag == Drag::Pan) {
        const QPoint way = m_pressed - place;
        m_pressed = place;
        emit viewWanted(viewOf(QRectF(page).translated(way)), false);
    } else {
        if (!m_band) {
            m_band = std::make_unique<QRubberBand>(QRubberBand::Rectangle, canvas());
        }
        m_band->setGeometry(QRect(m_pressed, place).normalized() & page);
        m_band->setVisible((place - m_pressed).manhattanLength() >=
                           QApplication::startDragDistance());
    }
}

void CurvePlot::release(const QPoint& place) {
    if (m_drag == Drag::Cursor || m_drag == Drag::Pan) {
        move(place);
    }
    const Drag drag = m_drag;
    m_drag = Drag::None;
    if (drag != Drag::Frame) {
        return;
    }
    m_band.reset();
    const QRect frame = QRect(m_pressed, place).normalized() & canvas()->rect();
    if ((place - m_pressed).manhattanLength() < QApplication::startDragDistance()) {
        const int number = curveAt(place);
        if (number >= 0) {
            emit curveClicked(number);
        }
    } else if (frame.width() > 1 && frame.height() > 1) {
        emit viewWanted(viewOf(frame), true);
    }
}

void CurvePlot::wheel(const QPointF& place, double turns, bool pans) {
    QRectF frame = canvas()->rect();
    if (pans) {
        frame.translate(-turns * PanStep * frame.width(), 0);
    } else {
        const double scale = std::pow(ZoomStep, turns);
        frame.setLeft(place.x() - (place.x() - frame.left()) * scale);
        frame.setRight(place.x() + (frame.right() - place.x()) * scale);
    }
    emit viewWanted(viewOf(frame), false);
}

QRectF CurvePlot::viewOf(const QRectF& frame) const {
    const QwtScaleMap x = canvasMap(xBottom);
    const QwtScaleMap y = canvasMap(yLeft);
    return QRectF(QPointF(x.invTransform(frame.left()), y.invTransform(frame.bottom())),
                  QPointF(x.invTransform(frame.right()), y.invTransform(frame.top())));
}

int CurvePlot::cursorAt(const QPoint& place) const {
    for (int i = 0; i < 2; ++i) {
        if (m_cursors[i]->isVisible() &&
            std::abs(transform(xBottom, m_cursors[i]->xValue()) - place.x()) <= NearCursor) {
            return i;
        }
    }
    return -1;
}

void CurvePlot::changeEvent(QEvent* event) {
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        followPalette();
        replot();
    }
}

void CurvePlot::followPalette() {
    const QColor page = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    const auto faint = [&](double share) {
        return QColor::fromRgbF(page.redF() + share * (ink.redF() - page.redF()),
                                page.greenF() + share * (ink.greenF() - page.greenF()),
                                page.blueF() + share * (ink.blueF() - page.blueF()));
    };
    setCanvasBackground(page);
    m_grid->setMajorPen(faint(0.25), 0);
    m_grid->setMinorPen(faint(0.10), 0);
    for (int i = 0; i < 2; ++i) {
        QwtText letter(QString(QLatin1Char(i == 0 ? 'A' : 'B')));
        letter.setColor(ink);
        m_cursors[i]->setLabel(letter);
        m_cursors[i]->setLinePen(ink, 1, Qt::DashLine);
    }
    for (CurveItem* curve : qAsConst(m_curves)) {
        curve->setColor(curveColor(curve->number(), page));
    }
}
