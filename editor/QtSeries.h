#pragma once

#include <QColor>
#include <QPen>

/// What differs between the Qt series, in one place.
namespace QtSeries {

/// A pen whose width is left unsaid: cosmetic, so that it adds nothing to an item's bounds. Newer
/// series would make it one unit wide.
inline QPen hairline(const QColor& color) {
    QPen pen(color);
    pen.setWidth(0);
    return pen;
}

inline QPen hairline() {
    return hairline(Qt::black);
}

}  // namespace QtSeries
