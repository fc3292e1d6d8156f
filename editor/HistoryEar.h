#pragma once

#include <QObject>

#include <initializer_list>

class CompleteHistory;

/// Hears a few of a circuit's objects for the history, which has too many of them for one receiver:
/// to tell which one sent a signal takes longer the more a receiver is connected to.
class HistoryEar : public QObject {
    Q_OBJECT

public:
    /// So many objects at the most should share an ear.
    static constexpr int Most = 16;

    /// Belongs to the history.
    explicit HistoryEar(CompleteHistory* history);

    /// Each of the signals, as SIGNAL gives them, tells that the object may have changed.
    void hear(const QObject* object, std::initializer_list<const char*> signalNames);
    void forget(const QObject* object);
    bool isIdle() const { return m_heard == 0; }

private slots:
    void touch();

private:
    CompleteHistory* m_history;
    int m_heard = 0;
};
