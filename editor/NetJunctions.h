#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QVector>

class QPainter;
class QPen;

/// Where the branches of one net meet.
namespace NetJunctions {

/// The points at which three or more branches of the path meet, each once. Branches that lie upon
/// one another count as one; a terminal counts as one more.
QVector<QPointF> junctions(const QPainterPath& path, const QVector<QPointF>& terminals);

/// A dot at each of the points, of a size that goes with the wire's pen.
void paint(QPainter* painter, const QPen& pen, const QVector<QPointF>& points);

/// The mark of a terminal that is not on any net, around `center`.
void paintOpenEnd(QPainter* painter, const QColor& color, const QPointF& center);

}  // namespace NetJunctions
