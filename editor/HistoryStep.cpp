#include "HistoryStep.h"

#include "CompleteHistory.h"

HistoryStep::HistoryStep(const CCircuitEditor* editor, const QString& text)
    : m_history(CompleteHistory::of(editor)) {
    if (m_history) {
        m_history->begin(text);
    }
}

HistoryStep::~HistoryStep() {
    if (m_history) {
        m_history->end();
    }
}
