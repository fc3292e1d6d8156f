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

/// "X" and "Y"; 0 for what is no number, and nothing that lies beyond all drawings.
QPointF storedPosition(const QDomElement& record);
void setStoredPosition(QDomElement& record, const QPointF& position);
/// "X", "Y", "Width" and "Height", read with the same care.
QRectF storedRect(const QDomElement& record);
void setStoredRect(QDomElement& record, const QRectF& rect);

/// The path of the "ShapeElement" records: moves and lines, anything else is passed over.
QPainterPath storedPath(const QList<QDomElement>& shapeElements);

/// Writes the colours that aren't the palette's default.
void setStoredColors(QDomElement& record, const CCircuitEditorTextBox& box);
/// Gives the box the colours that the record has.
void applyStoredColors(const QDomElement& record, CCircuitEditorTextBox* box);

/// Appends the text as CDATA: one section, or several where the text holds the mark that ends one.
void appendCData(QDomDocument document, QDomElement& record, const QString& text);

}  // namespace RecordFields
