#include "LongWork.h"

namespace {

constexpr int BetweenReports = 50;

int patience = 500;
LongWork::Watcher* watcher = nullptr;
LongWork* current = nullptr;

}  // namespace

LongWork::Watcher::~Watcher() = default;

LongWork::LongWork(int steps, Stop stop) : m_steps(steps), m_mayStop(stop == Stop::Possible) {
    m_sinceShown.start();
    if (!current) {
        current = this;
    }
}

LongWork::~LongWork() {
    if (current == this) {
        current = nullptr;
    }
    if (m_isShown && watcher) {
        watcher->ended();
    }
}

void LongWork::setWatcher(Watcher* other) {
    watcher = other;
}

void LongWork::setPatience(int milliseconds) {
    patience = milliseconds;
}

void LongWork::forbidStop() {
    if (current) {
        current->m_mayStop = false;
    }
}

bool LongWork::step(Stop stop) {
    LongWork* work = current;
    if (!work || !watcher) {
        return true;
    }
    ++work->m_done;
    if (work->m_isStopped) {
        return false;
    }
    if (work->m_sinceShown.elapsed() <
        (work->m_isShown ? qMin(BetweenReports, patience) : patience)) {
        return true;
    }
    work->m_isShown = true;
    const bool mayStop = work->m_mayStop && stop == Stop::Possible;
    work->m_isStopped = !watcher->goesOn(work->m_done, work->m_steps, mayStop) && mayStop;
    work->m_sinceShown.restart();
    return !work->m_isStopped;
}

bool LongWork::takeStop() {
    if (!current || !current->m_isStopped) {
        return false;
    }
    current = nullptr;
    return true;
}
