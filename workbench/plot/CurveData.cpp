#include "CurveData.h"

#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int BlockSize = 64;
/// More points than these for each column are thinned out.
constexpr int DensePoints = 4;
/// Farther outside, in pixels, nobody sees the difference, and painters lose count.
constexpr double Outside = 100000;

}  // namespace

CurveData::CurveData(const QVector<double>& x, const QVector<double>& y) {
    const int points = std::min(x.size(), y.size());
    m_x.reserve(points);
    m_y.reserve(points);
    int begin = 0;
    int direction = 0;
    for (int i = 0; i < points; ++i) {
        const bool isNumber = std::isfinite(x.at(i)) && std::isfinite(y.at(i));
        if (isNumber && m_x.size() > begin && x.at(i) != m_x.last()) {
            const int step = x.at(i) > m_x.last() ? 1 : -1;
            if (direction != 0 && step != direction) {
                appendPiece(begin);
                begin = m_x.size();
                direction = 0;
            } else {
                direction = step;
            }
        }
        if (isNumber) {
            m_x.append(x.at(i));
            m_y.append(y.at(i));
        } else if (m_x.size() > begin) {
            appendPiece(begin);
            begin = m_x.size();
            direction = 0;
        }
    }
    appendPiece(begin);
    prepareBlocks();
}

void CurveData::appendPiece(int begin) {
    if (m_x.size() == begin) {
        return;
    }
    if (m_x.last() < m_x.at(begin)) {
        std::reverse(m_x.begin() + begin, m_x.end());
        std::reverse(m_y.begin() + begin, m_y.end());
    }
    m_pieces.append(m_x.size());
}

void CurveData::prepareBlocks() {
    for (int i = 0; i < m_y.size(); i += BlockSize) {
        const auto end = m_y.constBegin() + std::min<int>(i + BlockSize, m_y.size());
        const auto [least, greatest] = std::minmax_element(m_y.constBegin() + i, end);
        m_blocks.append({*least, *greatest});
    }
}

CurveData::Range CurveData::rangeOf(int begin, int end) const {
    Range range{m_y.at(begin), m_y.at(begin)};
    const auto take = [&range](const Range& other) {
        range.least = std::min(range.least, other.least);
        range.greatest = std::max(range.greatest, other.greatest);
    };
    for (int i = begin; i < end;) {
        if (i % BlockSize == 0 && i + BlockSize <= end) {
            take(m_blocks.at(i / BlockSize));
            i += BlockSize;
        } else {
            take({m_y.at(i), m_y.at(i)});
            ++i;
        }
    }
    return range;
}

QRectF CurveData::bounds(bool positiveX, bool positiveY) const {
    bool found = false;
    QPointF least;
    QPointF greatest;
    for (int i = 0; i < m_x.size(); ++i) {
        const QPointF point(m_x.at(i), m_y.at(i));
        if ((positiveX && point.x() <= 0) || (positiveY && point.y() <= 0)) {
            continue;
        }
        least =
            found ? QPointF(std::min(least.x(), point.x()), std::min(least.y(), point.y())) : point;
        greatest =
            found ? QPointF(std::max(greatest.x(), point.x()), std::max(greatest.y(), point.y()))
                  : point;
        found = true;
    }
    return QRectF(least, greatest);
}

double CurveData::valueAt(double x) const {
    for (int piece = 0; piece + 1 < m_pieces.size(); ++piece) {
        const auto begin = m_x.begin() + m_pieces.at(piece);
        const auto end = m_x.begin() + m_pieces.at(piece + 1);
        const auto next = std::lower_bound(begin, end, x);
        if (next == end || (next == begin && *next != x)) {
            continue;
        }
        const int i = static_cast<int>(next - m_x.begin());
        if (next == begin || *next == x) {
            return m_y.at(i);
        }
        const double share = (x - m_x.at(i - 1)) / (m_x.at(i) - m_x.at(i - 1));
        return m_y.at(i - 1) + share * (m_y.at(i) - m_y.at(i - 1));
    }
    return std::numeric_limits<double>::quiet_NaN();
}

QVector<QPolygonF> CurveData::lines(const QwtScaleMap& xMap, const QwtScaleMap& yMap, double left,
                                    double right) const {
    QVector<QPolygonF> lines;
    for (int piece = 0; piece + 1 < m_pieces.size(); ++piece) {
        const QPolygonF line =
            pieceLine(m_pieces.at(piece), m_pieces.at(piece + 1), xMap, yMap, left, right);
        if (!line.isEmpty()) {
            lines.append(line);
        }
    }
    return lines;
}

QPolygonF CurveData::pieceLine(int begin, int end, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                               double left, double right) const {
    const auto indexOf = [this](int from, int to, double x) {
        return static_cast<int>(std::lower_bound(m_x.begin() + from, m_x.begin() + to, x) -
                                m_x.begin());
    };
    // With a neighbour on either side, whose line reaches into the picture.
    const int first = std::max(begin, indexOf(begin, end, xMap.invTransform(left)) - 1);
    const int last = std::min(end, indexOf(first, end, xMap.invTransform(right)) + 1);
    QPolygonF line;
    const auto append = [&](double x, double y) {
        const double height = std::isfinite(y) ? y : Outside;
        if (std::isfinite(x)) {
            line.append(
                QPointF(std::clamp(x, -Outside, Outside), std::clamp(height, -Outside, Outside)));
        }
    };
    const int columns = static_cast<int>(right - left) + 1;
    if (last - first <= DensePoints * columns) {
        for (int i = first; i < last; ++i) {
            append(xMap.transform(m_x.at(i)), yMap.transform(m_y.at(i)));
        }
        return line;
    }
    int at = first;
    for (int column = 0; column <= columns && at < last; ++column) {
        const bool isLast = column == columns;
        const int next = isLast ? last : indexOf(at, last, xMap.invTransform(left + column + 1));
        if (next == at) {
            continue;
        }
        const Range range = rangeOf(at, next);
        for (const double y : {m_y.at(at), range.least, range.greatest, m_y.at(next - 1)}) {
            append(left + column + 0.5, yMap.transform(y));
        }
        at = next;
    }
    return line;
}
