// The abilities that a host can switch on: each is a property, and has sources of its own.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "ConnectedDrag.h"
#include "ElementCaptions.h"

bool CCircuitEditor::movesConnectedElements() const {
    return d->connectedDrag != nullptr;
}

void CCircuitEditor::setMoveConnectedElements(bool on) {
    if (on != movesConnectedElements()) {
        d->connectedDrag = on ? std::make_unique<ConnectedDrag>(this) : nullptr;
    }
}

bool CCircuitEditor::showsJunctions() const {
    return d->showJunctions;
}

void CCircuitEditor::setShowJunctions(bool on) {
    if (on != d->showJunctions) {
        d->showJunctions = on;
        updateViewport();
    }
}

bool CCircuitEditor::captionsNewElements() const {
    return d->captionNewElements;
}

void CCircuitEditor::setCaptionNewElements(bool on) {
    d->captionNewElements = on;
}

bool CCircuitEditor::keepsTextStyles() const {
    return d->keepTextStyles;
}

void CCircuitEditor::setKeepTextStyles(bool on) {
    d->keepTextStyles = on;
    for (int i = 0; on && i < elementPropertyTextBoxCount(); ++i) {
        // An element with the pointer on it can't take back the colour that it has lent.
        CCircuitElementPropertyTextBox* box = elementPropertyTextBox(i);
        box->setBackgroundColor(box->look().background);
    }
}

bool CCircuitEditor::placesPastedItems() const {
    return d->placePastedItems;
}

void CCircuitEditor::setPlacePastedItems(bool on) {
    d->placePastedItems = on;
}

void CCircuitEditor::captionElements() {
    // In a larger drawing they can't be read, and only take time.
    constexpr int MostCaptioned = 5000;
    if (d->captionNewElements && d->elementItemMap.size() <= MostCaptioned) {
        ElementCaptions::addToAll(this);
    }
    // The captions belong to what was loaded.
    restartHistory();
}

void CCircuitEditor::captionNewElement(ICircuitElement* element) {
    if (CCircuitEditorElementItem* item = elementItem(element)) {
        ElementCaptions::add(item);
        item->setSelected(true);
    }
}
