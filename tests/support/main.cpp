#include "WarningGuard.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vortel-workbench-tests"));
    QApplication::setQuitOnLastWindowClosed(false);
    installWarningGuard();
    return RUN_ALL_TESTS();
}
