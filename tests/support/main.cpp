#include "WarningGuard.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThreadPool>

#include <pthread.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // What the application remembers for its user isn't the tests' to read or change.
    const QTemporaryDir home;
    for (const char* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        qputenv(folder, QFile::encodeName(home.filePath(QLatin1String(folder))));
    }
    QApplication application(argc, argv);
    // Threads that wait to paint are not in a child, which would wait for them without end.
    pthread_atfork([] { QThreadPool::globalInstance()->waitForDone(); }, nullptr, nullptr);
    QApplication::setApplicationName(QStringLiteral("vortel-workbench-tests"));
    QApplication::setQuitOnLastWindowClosed(false);
    installWarningGuard();
    return RUN_ALL_TESTS();
}
