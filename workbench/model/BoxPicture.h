#pragma once

#include <QByteArray>
#include <QLine>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVector>

/// The picture of an element that is drawn as a box with pins: a frame and a lead to each pin.
namespace BoxPicture {

/// An SVG of twice the size around (0, 0). `texts` are further elements of it.
QByteArray svg(const QSize& half, const QRect& frame, const QVector<QLine>& leads,
               const QString& texts = {});

}  // namespace BoxPicture
