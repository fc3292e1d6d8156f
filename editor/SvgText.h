#pragma once

#include <QByteArray>

class QBrush;
class QColor;
class QFont;
class QGradient;
class QPainterPath;
class QPen;
class QTransform;

/// What SVG says of Qt's pens, brushes, fonts and paths. All functions append to `out`; attributes
/// come with a blank before them.
namespace SvgText {

/// In the shortest form that keeps eight digits.
void appendNumber(QByteArray& out, double number);
/// ` name="number"`
void appendAttribute(QByteArray& out, const char* name, double number);
/// ` name="text"`; the text needs no escapes.
void appendAttribute(QByteArray& out, const char* name, const QByteArray& text);
/// ` name="#rrggbb"`, with ` name-opacity="..."` if the colour isn't opaque.
void appendColor(QByteArray& out, const char* name, const QColor& color);
void appendPen(QByteArray& out, const QPen& pen);
/// Of a solid brush or none.
void appendFill(QByteArray& out, const QBrush& brush);
/// Points count at `resolution` dots per inch.
void appendFont(QByteArray& out, const QFont& font, int resolution);
/// Nothing for the identity.
void appendTransform(QByteArray& out, const QTransform& transform);
/// ` d="..."`
void appendPath(QByteArray& out, const QPainterPath& path);
/// The element of a linear or radial gradient, in user space or that of the object's bounds.
void appendGradient(QByteArray& out, const QGradient& gradient, const QTransform& transform,
                    const QByteArray& id);

}  // namespace SvgText
