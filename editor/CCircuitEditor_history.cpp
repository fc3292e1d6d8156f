// Undo and redo, and the complete history where it is on.

#include "CCircuitEditorData.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"

bool CCircuitEditor::isCompleteHistory() const {
    return d->completeHistory != nullptr;
}

void CCircuitEditor::setCompleteHistory(bool on) {
    if (on == isCompleteHistory()) {
        return;
    }
    d->undoStack->clear();
    d->completeHistory.reset();
    if (on) {
        d->completeHistory = std::make_unique<CompleteHistory>(d.get());
        connect(d->completeHistory.get(), &CompleteHistory::savedStateChanged, this,
                &CCircuitEditor::savedStateChanged);
    }
}

CompleteHistory* CCircuitEditor::completeHistory() const {
    // Items ask on their way out, too.
    return d ? d->completeHistory.get() : nullptr;
}

void CCircuitEditor::touchHistory(QGraphicsItem* item) {
    if (CompleteHistory* history = completeHistory()) {
        history->touch(item);
    }
}

void CCircuitEditor::bindHistory() {
    if (d->completeHistory) {
        d->completeHistory->bind();
    }
}

void CCircuitEditor::restartHistory() {
    if (d->completeHistory) {
        d->completeHistory->restart();
    }
}

void CCircuitEditor::beginHistoryGesture() {
    if (d->completeHistory) {
        d->completeHistory->beginGesture();
    }
}

void CCircuitEditor::endHistoryGesture() {
    if (d->completeHistory) {
        d->completeHistory->endGesture();
    }
}

void CCircuitEditor::undo() {
    if (d->completeHistory) {
        d->completeHistory->endGesture();
        d->completeHistory->settle();
    }
    d->undoStack->undo();
}

void CCircuitEditor::redo() {
    if (d->completeHistory) {
        d->completeHistory->endGesture();
        d->completeHistory->settle();
    }
    d->undoStack->redo();
}

QString CCircuitEditor::undoText() const {
    return d->undoStack->undoText();
}

QString CCircuitEditor::redoText() const {
    return d->undoStack->redoText();
}

void CCircuitEditor::markSaved() {
    if (d->completeHistory) {
        d->completeHistory->markSaved();
    }
}

void CCircuitEditor::forgetSaved() {
    if (d->completeHistory) {
        d->completeHistory->forgetSaved();
    }
}

bool CCircuitEditor::isAsSaved() {
    return d->completeHistory && d->completeHistory->isAsSaved();
}
