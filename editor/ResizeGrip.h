#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRectF>

/// What all boxes on the canvas have in common: how small they may be, the corner by which they are
/// resized, and how they look under the pointer.
namespace ResizeGrip {

/// Of either side of a box, in scene units.
constexpr double SmallestSide = 21;
/// Of the triangle's legs, in scene units.
constexpr double Size = 16;

/// The triangle in the rectangle's bottom right corner.
inline QPainterPath path(const QRectF& rect) {
    const double right = rect.x() + rect.width();
    const double bottom = rect.y() + rect.height();
    QPainterPath grip(QPointF(right, bottom));
    grip.lineTo(right, bottom - Size);
    grip.lineTo(right - Size, bottom);
    grip.closeSubpath();
    return grip;
}

inline QColor color() {
    return {192, 192, 192, 128};
}

/// Laid over a box, or in place of its fill, while the pointer is on it.
inline QColor veil() {
    return {255, 255, 255, 200};
}

}  // namespace ResizeGrip
