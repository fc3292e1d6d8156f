#pragma once

#include <QPolygonF>
#include <QRectF>
#include <QVector>

class QwtScaleMap;

/// The points of a line, of which a million are drawn as fast as there are pixels: each column of
/// pixels shows the first, least, greatest and last of its values. Where the abscissa turns back,
/// as in a nested sweep, a new piece begins; values that aren't finite leave a gap.
class CurveData {
public:
    CurveData(const QVector<double>& x, const QVector<double>& y);

    int size() const { return m_x.size(); }
    /// Of points with a positive abscissa, or ordinate, only, if a logarithmic axis shows them.
    /// Null if there are none.
    QRectF bounds(bool positiveX, bool positiveY) const;
    /// On the straight line between the neighbours; not a number beyond the ends. Of several pieces
    /// the first that has it counts.
    double valueAt(double x) const;
    /// The lines, in pixels, that show what lies between two columns.
    QVector<QPolygonF> lines(const QwtScaleMap& xMap, const QwtScaleMap& yMap, double left,
                             double right) const;

private:
    struct Range {
        double least;
        double greatest;
    };

    void appendPiece(int begin);
    void prepareBlocks();
    Range rangeOf(int begin, int end) const;
    QPolygonF pieceLine(int begin, int end, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                        double left, double right) const;

    QVector<double> m_x;
    QVector<double> m_y;
    /// Where each piece begins, and the end of the last. The abscissa rises within a piece.
    QVector<int> m_pieces{0};
    /// Of so many values in a row each.
    QVector<Range> m_blocks;
};
