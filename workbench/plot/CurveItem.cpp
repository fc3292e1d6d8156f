#include "CurveItem.h"

#include <qwt_graphic.h>
#include <qwt_text.h>

#include <QLineF>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace {

constexpr double Width = 1.6;
/// A longer line, in pixels, is full of strokes: it is drawn thin, and one that is longer still
/// also plainly, for wide and smooth strokes cost.
constexpr double LongestWide = 2500;
constexpr double LongestSmooth = 10000;

/// Not counted any further than it matters.
double lengthOf(const QPolygonF& line) {
    double length = 0;
    for (int i = 1; i < line.size() && length <= LongestSmooth; ++i) {
        length += (line.at(i) - line.at(i - 1)).manhattanLength();
    }
    return length;
}

double distanceTo(const QLineF& line, const QPointF& place) {
    const QPointF way = line.p2() - line.p1();
    const double square = QPointF::dotProduct(way, way);
    const double share = square > 0 ? QPointF::dotProduct(place - line.p1(), way) / square : 0;
    return QLineF(place, line.pointAt(std::clamp(share, 0.0, 1.0))).length();
}

}  // namespace

CurveItem::CurveItem(int number, const QString& name, CurveData data)
    : QwtPlotItem(QwtText(name, QwtText::PlainText)), m_number(number), m_data(std::move(data)) {
    setItemAttribute(QwtPlotItem::Legend);
    setZ(20);
}

double CurveItem::distance(const QPointF& place, const QwtScaleMap& xMap,
                           const QwtScaleMap& yMap) const {
    constexpr double Reach = 8;
    double least = std::numeric_limits<double>::infinity();
    for (const QPolygonF& line : m_data.lines(xMap, yMap, place.x() - Reach, place.x() + Reach)) {
        for (int i = 0; i < line.size(); ++i) {
            const QPointF from = line.at(std::max(i - 1, 0));
            least = std::min(least, distanceTo(QLineF(from, line.at(i)), place));
        }
    }
    return least;
}

void CurveItem::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                     const QRectF& canvas) const {
    painter->save();
    for (const QPolygonF& line : m_data.lines(xMap, yMap, canvas.left(), canvas.right())) {
        const double length = lengthOf(line);
        painter->setRenderHint(QPainter::Antialiasing, length <= LongestSmooth);
        painter->setPen(QPen(m_color, length <= LongestWide ? Width : 0));
        painter->drawPolyline(line);
        if (line.size() == 1) {
            painter->drawEllipse(line.first(), 2, 2);
        }
    }
    painter->restore();
}

QwtGraphic CurveItem::legendIcon(int, const QSizeF& size) const {
    QwtGraphic icon;
    icon.setDefaultSize(size);
    QPainter painter(&icon);
    painter.setPen(QPen(m_color, 2));
    painter.drawLine(QPointF(0, size.height() / 2), QPointF(size.width(), size.height() / 2));
    return icon;
}
