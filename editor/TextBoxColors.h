#pragma once

#include <QColor>
#include <QVariantMap>

/// The palette of the annotation boxes, as the application gives it. Without one there are no
/// colours to choose, and those that boxes start with are invalid.
namespace TextBoxColors {

/// The colour of that name, of `#` and digits too; invalid, and in silence, for any other text.
QColor named(const QString& name);
/// The colours of "Border", "Fill" or "Text", by the labels that menus show.
QVariantMap choices(const char* kind);
/// The one among these that a box starts with.
QColor standard(const char* kind);
/// The text of boxes that show a property.
QColor propertyText();

}  // namespace TextBoxColors
