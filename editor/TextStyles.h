#pragma once

#include <QDomElement>
#include <QFont>

class CCircuitElementPropertyTextBox;

/// What files and copies keep of the look of boxes while the editor's property KeepTextStyles is
/// on, beside what they always do. Records without it give the look of boxes that make themselves.
namespace TextStyles {

/// The size in which the font is drawn.
void store(QDomElement& record, const QFont& font);
void store(QDomElement& record, const CCircuitElementPropertyTextBox& box);
/// The font in the stored size, or as given.
QFont stored(const QDomElement& record, QFont font);
/// To be called before the box measures its text.
void apply(const QDomElement& record, CCircuitElementPropertyTextBox* box);

}  // namespace TextStyles
