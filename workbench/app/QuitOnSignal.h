#pragma once

#include <QObject>

#include <array>

class QSocketNotifier;

/// Turns SIGTERM, SIGINT and SIGHUP into an orderly end of the event loop, so that a session that
/// is shut down, or Ctrl+C in the terminal, destroys everything as closing the window does. Unsaved
/// work is not asked for: nobody may be there to answer. One of these may exist at a time.
class QuitOnSignal : public QObject {
    Q_OBJECT

public:
    explicit QuitOnSignal(QObject* parent = nullptr);
    ~QuitOnSignal() override;

private:
    /// Read end and write end: a signal handler may do no more than write.
    std::array<int, 2> m_pipe = {-1, -1};
    QSocketNotifier* m_notifier = nullptr;
};
