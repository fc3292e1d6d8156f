// The property text boxes that belong to an element item.

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementItemData.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CircuitGeometry.h"
#include "ElementCaptions.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "PropertyLookup.h"

#include <Plexa/DataStore.h>

#include <algorithm>
#include <iterator>

namespace {

// Between the element and its boxes, and between two boxes.
constexpr double Gap = 5.0;

double truncated(double value) {
    return CircuitGeometry::truncatedInt(value);
}

}  // namespace

QList<CCircuitElementPropertyTextBox*>& CCircuitEditorElementItem::propertyTextBoxList() {
    d->formatsPending = true;
    QMetaObject::invokeMethod(this, "updatePropertyTextBoxTextFormats", Qt::QueuedConnection);
    return d->propertyTextBoxes;
}

QList<CCircuitElementPropertyTextBox*> CCircuitEditorElementItem::propertyTextBoxes() const {
    return d->propertyTextBoxes;
}

void CCircuitEditorElementItem::createElementPropertyTextBoxForCaptionProperty() {
    if (!d->element) {
        return;
    }
    auto* box = ElementCaptions::makeBox(d->circuitEditor, d->element, QStringLiteral("Caption"));
    const QRectF outline = mapToScene(boundingRect()).boundingRect();
    if (outline.height() < outline.width()) {
        const double middle = truncated(outline.x() + outline.width() * 0.5);
        box->setPos(middle - box->sceneBoundingRect().width() * 0.5,
                    truncated(outline.height() + outline.y() + Gap));
    } else {
        box->setPos(truncated(outline.x() + outline.width() + Gap),
                    truncated(outline.height() * 0.5 + outline.y()));
    }
}

void CCircuitEditorElementItem::createElementPropertyTextBoxesForDisplayProperties() {
    if (!d->element) {
        return;
    }
    if (d->circuitEditor->captionsNewElements()) {
        ElementCaptions::add(this);
        return;
    }
    QStringList shown;
    for (const CCircuitElementPropertyTextBox* box : qAsConst(d->propertyTextBoxes)) {
        shown.append(box->propertyName());
    }
    auto* properties = qobject_cast<IEditableProperties*>(d->element->containerObject());
    const QStringList wanted = d->element->desc()
                                   ->info()
                                   .value(QStringLiteral("#display"))
                                   .toString()
                                   .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& name : wanted) {
        if (!shown.contains(name) && indexOfProperty(properties, name) >= 0) {
            ElementCaptions::makeBox(d->circuitEditor, d->element, name);
        }
    }
    stackPropertyTextBoxes();
}

void CCircuitEditorElementItem::stackPropertyTextBoxes() {
    double total = 0;
    for (const CCircuitElementPropertyTextBox* box : qAsConst(d->propertyTextBoxes)) {
        total += box->boundingRect().height() + Gap;
    }
    const QRectF outline = mapToScene(boundingRect()).boundingRect();
    const bool isWide = outline.width() > outline.height();
    const double x = truncated(isWide ? outline.x() + outline.width() * 0.5
                                      : outline.x() + outline.width() + Gap);
    double y = truncated(isWide ? outline.y() + outline.height() + Gap
                                : outline.height() * 0.5 + outline.y() - (total - Gap) * 0.5);
    for (CCircuitElementPropertyTextBox* box : qAsConst(d->propertyTextBoxes)) {
        box->setPos(isWide ? x - box->sceneBoundingRect().width() * 0.5 : x, y);
        y += truncated(box->boundingRect().height() + Gap);
    }
}

void CCircuitEditorElementItem::settlePropertyTextBoxes() {
    if (d->formatsPending) {
        updatePropertyTextBoxTextFormats();
    }
}

void CCircuitEditorElementItem::updatePropertyTextBoxTextFormats() {
    // What a step has settled already must not change once more after it: it would be one of its
    // own.
    const bool isSettled = !d->formatsPending && d->circuitEditor->isCompleteHistory();
    if (!d->element || isSettled) {
        return;
    }
    d->formatsPending = false;
    QList<CCircuitElementPropertyTextBox*> parameters;
    std::copy_if(d->propertyTextBoxes.cbegin(), d->propertyTextBoxes.cend(),
                 std::back_inserter(parameters), [](const CCircuitElementPropertyTextBox* box) {
                     return box->propertyGroup() == QLatin1String("rparams");
                 });
    // A value that stands alone needs no name.
    const auto format = parameters.size() < 2 ? CCircuitElementPropertyTextBox::ValueOnly
                                              : CCircuitElementPropertyTextBox::NameAndValue;
    for (CCircuitElementPropertyTextBox* box : qAsConst(parameters)) {
        box->setTextFormat(format);
    }
}
