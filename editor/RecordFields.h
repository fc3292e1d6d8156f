#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QPointF>
#include <QRectF>

class CCircuitEditorTextBox;
class QPainterPath;
class QString;

/// Fields that several kinds of record have, in files and on the clipboard.
namespace RecordFields {

/// "X" and "Y"; 0 for what is no finite number.
QPointF storedPosition(const QDomElement& record);
/// The same, brought back to where a drawing can be: what lies far outside can't be found again,
/// and with it in the scene the drawing can't be looked at.
QPointF boundedPosition(const QDomElement& record);
void setStoredPosition(QDomElement& record, const QPointF& position);
/// "X", "Y", "Width" and "Height", each bounded in the same way.
QRectF storedRect(const QDomElement& record);
void setStoredRect(QDomElement& record, const QRectF& rect);

/// The path of the "ShapeElement" records, through what `position` answers for each: moves and
/// lines, anything else is passed over.
QPainterPath storedPath(const QList<QDomElement>& shapeElements,
                        QPointF (*position)(const QDomElement&));

/// Writes the colours that aren't the palette's default.
void setStoredColors(QDomElement& record, const CCircuitEditorTextBox& box);
/// Gives the box the colours that the record has.
void applyStoredColors(const QDomElement& record, CCircuitEditorTextBox* box);

/// Appends the text as CDATA: one section, or several where the text holds the mark that ends one.
void appendCData(QDomDocument document, QDomElement& record, const QString& text);

}  // namespace RecordFields
