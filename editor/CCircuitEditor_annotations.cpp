// The three lists of annotations.

#include "CCircuitEditorData.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CompleteHistory.h"
#include "HistoryStep.h"

namespace {

const QSizeF PropertyBoxSize(60, 20);
constexpr int VisibleMargin = 50;

template <class Box>
void enlist(CCircuitEditorData* d, QList<Box*>& list, Box* box) {
    if (!box || !d->scene || list.contains(box)) {
        return;
    }
    list.append(box);
    box->setParent(d->circuitEditor);
    d->scene->addItem(box);
    box->setVisible(d->textBoxLayerVisible);
    if (d->completeHistory) {
        d->completeHistory->enlist(box);
    }
}

template <class Box>
void delist(CCircuitEditorData* d, QList<Box*>& list, Box* box) {
    // Also if the list was emptied at once.
    if (box && d->completeHistory) {
        d->completeHistory->delist(box);
    }
    if (!box || !list.removeOne(box)) {
        return;
    }
    d->forgetItem(box);
    if (box->scene()) {
        box->scene()->removeItem(box);
    }
}

template <class Box>
void setAllVisible(const QList<Box*>& list, bool on) {
    for (Box* box : list) {
        box->setVisible(on);
    }
}

}  // namespace

void CCircuitEditor::addTextBox(CCircuitEditorTextBox* textBox) {
    enlist(d.get(), d->textBoxes, textBox);
}

CCircuitEditorTextBox* CCircuitEditor::addTextBox(const QRectF& rect) {
    auto* box = new CCircuitEditorTextBox(this);
    box->setRect(rect);
    addTextBox(box);
    return box;
}

CCircuitEditorTextBox* CCircuitEditor::addTextBox(const QPointF& point) {
    return addTextBox(QRectF(point, QSizeF(d->textBoxDefaultWidth, d->textBoxDefaultHeight)));
}

void CCircuitEditor::removeTextBox(CCircuitEditorTextBox* textBox) {
    delist(d.get(), d->textBoxes, textBox);
}

int CCircuitEditor::textBoxCount() const {
    return d->textBoxes.size();
}

CCircuitEditorTextBox* CCircuitEditor::textBox(int index) const {
    return d->textBoxes.value(index);
}

void CCircuitEditor::addGlobalParamTextBox(CCircuitEditorGlobaParamTextBox* textBox) {
    enlist(d.get(), d->globalParamTextBoxes, textBox);
}

CCircuitEditorGlobaParamTextBox* CCircuitEditor::addGlobalParamTextBox(const QRectF& rect) {
    auto* box = new CCircuitEditorGlobaParamTextBox(this);
    box->setRect(rect);
    addGlobalParamTextBox(box);
    return box;
}

CCircuitEditorGlobaParamTextBox* CCircuitEditor::addGlobalParamTextBox(const QPointF& point) {
    return addGlobalParamTextBox(
        QRectF(point, QSizeF(d->textBoxDefaultWidth, d->textBoxDefaultHeight)));
}

void CCircuitEditor::removeGlobalParamTextBox(CCircuitEditorGlobaParamTextBox* textBox) {
    delist(d.get(), d->globalParamTextBoxes, textBox);
}

int CCircuitEditor::globalParamTextBoxCount() const {
    return d->globalParamTextBoxes.size();
}

CCircuitEditorGlobaParamTextBox* CCircuitEditor::globalParamTextBox(int index) const {
    return d->globalParamTextBoxes.value(index);
}

void CCircuitEditor::addElementPropertyTextBox(CCircuitElementPropertyTextBox* textBox) {
    enlist(d.get(), d->elementPropertyTextBoxes, textBox);
}

CCircuitElementPropertyTextBox* CCircuitEditor::addElementPropertyTextBox(const QRectF& rect) {
    auto* box = new CCircuitElementPropertyTextBox(this);
    box->setRect(rect);
    return box;
}

CCircuitElementPropertyTextBox* CCircuitEditor::addElementPropertyTextBox(const QPointF& point) {
    return addElementPropertyTextBox(QRectF(point, PropertyBoxSize));
}

void CCircuitEditor::removeElementPropertyTextBox(CCircuitElementPropertyTextBox* textBox) {
    delist(d.get(), d->elementPropertyTextBoxes, textBox);
}

int CCircuitEditor::elementPropertyTextBoxCount() const {
    return d->elementPropertyTextBoxes.size();
}

CCircuitElementPropertyTextBox* CCircuitEditor::elementPropertyTextBox(int index) const {
    return d->elementPropertyTextBoxes.value(index);
}

bool CCircuitEditor::isTextBoxLayerVisible() const {
    return d->textBoxLayerVisible;
}

void CCircuitEditor::setTextBoxLayerVisible(bool on) {
    if (on == d->textBoxLayerVisible) {
        return;
    }
    d->textBoxLayerVisible = on;
    setAllVisible(d->textBoxes, on);
    setAllVisible(d->elementPropertyTextBoxes, on);
    setAllVisible(d->globalParamTextBoxes, on);
}

void CCircuitEditor::interactiveAddTextBox() {
    if (!d->scene) {
        return;
    }
    const HistoryStep step(this);
    const QPointer<CCircuitEditorTextBox> box(addTextBox(d->scene->itemsBoundingRect().center()));
    box->editText();
    // The dialog ran its own event loop: the box may be gone, and the editor with it.
    if (box) {
        ensureVisible(box, VisibleMargin, VisibleMargin);
    }
}

void CCircuitEditor::on_textBoxSelected(CCircuitEditorTextBox* textBox) {
    if (textBox) {
        d->selection->initFromItem(textBox);
    }
}
