#include "WarningGuard.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <cstdio>

namespace {

QStringList announced;
QStringList logged;
QStringList unexpected;

void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    logged.append(text);
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::abort();
    }
    if (type != QtWarningMsg && type != QtCriticalMsg) {
        return;
    }
    // What the windowless platform remarks on every window.
    if (text.startsWith(QLatin1String("This plugin does not support "))) {
        return;
    }
    for (const QString& known : qAsConst(announced)) {
        if (text.contains(known)) {
            return;
        }
    }
    unexpected.append(text);
}

class WarningListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        announced.clear();
        logged.clear();
        unexpected.clear();
    }
    void OnTestEnd(const testing::TestInfo&) override {
        for (const QString& text : qAsConst(unexpected)) {
            ADD_FAILURE() << "unannounced log line: " << qPrintable(text);
        }
    }
};

}  // namespace

void announceLog(const QString& text) {
    announced.append(text);
}

int loggedCount(const QString& text) {
    return static_cast<int>(logged.filter(text).size());
}

QStringList unannouncedLog() {
    return unexpected;
}

void installWarningGuard() {
    qInstallMessageHandler(handleMessage);
    // Before the default printer, whose result line must already know of the failures.
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    testing::TestEventListener* printer = listeners.Release(listeners.default_result_printer());
    listeners.Append(new WarningListener);
    listeners.Append(printer);
}
