#include "QuitOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <unistd.h>

namespace {

constexpr std::array<int, 3> Signals = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t writeEnd = -1;

extern "C" void passOn(int) {
    const char byte = 1;
    // A full pipe means that the end is under way already.
    const auto written = write(writeEnd, &byte, 1);
    static_cast<void>(written);
}

}  // namespace

QuitOnSignal::QuitOnSignal(QObject* parent) : QObject(parent) {
    if (pipe(m_pipe.data()) != 0) {
        return;
    }
    writeEnd = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        // Not quit(), which may close the windows first: they would ask what to do with changes.
        QCoreApplication::exit(0);
    });
    for (const int signal : Signals) {
        std::signal(signal, passOn);
    }
}

QuitOnSignal::~QuitOnSignal() {
    for (const int signal : Signals) {
        std::signal(signal, SIG_DFL);
    }
    writeEnd = -1;
    for (const int end : m_pipe) {
        if (end >= 0) {
            close(end);
        }
    }
}
