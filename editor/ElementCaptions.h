#pragma once

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QVector>

class CCircuitEditor;
class CCircuitEditorElementItem;
class CCircuitElementPropertyTextBox;
class ICircuitElement;

/// The boxes that tell an element's caption and main values.
namespace ElementCaptions {

/// A clear box with small text.
CCircuitElementPropertyTextBox* makeBox(CCircuitEditor* editor, ICircuitElement* element,
                                        const QString& property);

/// Whether the element has a box that shows the property.
bool has(const CCircuitEditorElementItem& item, const QString& property);

/// Gives the element boxes for its caption and the properties that its type wants shown, as far as
/// it has none, in a column where there is room: clear of elements, wires and other boxes. Boxes
/// that are there stay where they are.
void add(CCircuitEditorElementItem* item);
/// The same for every element of the drawing.
void addToAll(CCircuitEditor* editor);

/// For elements that were turned: where boxes of one now lie on anything, its boxes are put in such
/// a column. Nothing for an editor that doesn't caption by itself.
void keepClear(const QList<CCircuitEditorElementItem*>& items);

/// Where a column of that size lies best beside the outline: the first of the usual places that
/// covers nothing, or else the one that covers least. All in scene units.
QRectF bestPlace(const QRectF& outline, const QSizeF& size, const QVector<QRectF>& obstacles);

}  // namespace ElementCaptions
