#pragma once

#include <QElapsedTimer>

/// A piece of work that the user waits for, as long as the object lives. Those who do it tell of
/// their steps, and whoever shows the program's state hears how far it has come once it has taken
/// half a second. Work within work counts as a part of it. All on the GUI thread.
class LongWork {
public:
    /// Shows how work goes on.
    class Watcher {
    public:
        virtual ~Watcher();
        /// Called now and then. Only where the work may stop may events be processed meanwhile, and
        /// false then gives it up.
        virtual bool goesOn(int done, int steps, bool mayStop) = 0;
        virtual void ended() = 0;
    };

    enum class Stop { Possible, Impossible };

    explicit LongWork(int steps, Stop stop = Stop::Impossible);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// Null for none, which is usual. Not owned.
    static void setWatcher(Watcher* watcher);
    /// In milliseconds: after how long work is shown.
    static void setPatience(int patience);
    /// A step of the work under way, if there is any. False once it has been given up: what is left
    /// of it isn't wanted any more. Steps that must not be interrupted by whatever events bring, as
    /// an autosave amid a save, say that they can't stop.
    static bool step(Stop stop = Stop::Possible);
    /// What is under way can't be given up any more.
    static void forbidStop();
    /// Whether the work under way has been given up. If so it is over with that, and what follows
    /// sets things right again.
    static bool takeStop();

private:
    int m_steps;
    bool m_mayStop;
    int m_done = 0;
    bool m_isShown = false;
    bool m_isStopped = false;
    QElapsedTimer m_sinceShown;
};
