#include "HistoryEar.h"

#include "CompleteHistory.h"

HistoryEar::HistoryEar(CompleteHistory* history) : QObject(history), m_history(history) {}

void HistoryEar::hear(const QObject* object, std::initializer_list<const char*> signalNames) {
    ++m_heard;
    for (const char* name : signalNames) {
        connect(object, name, SLOT(touch()));
    }
}

void HistoryEar::forget(const QObject* object) {
    --m_heard;
    QObject::disconnect(object, nullptr, this, nullptr);
}

void HistoryEar::touch() {
    m_history->touchObject(sender());
}
