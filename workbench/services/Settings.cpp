#include "Settings.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace {

std::function<void(const QString&)>& teller() {
    static std::function<void(const QString&)> function;
    return function;
}

void tellOnce(const QString& fileName) {
    static bool isTold = false;
    if (isTold) {
        return;
    }
    isTold = true;
    const QString sentence =
        QCoreApplication::translate("Settings", "your settings could not be saved in %1")
            .arg(fileName);
    if (teller()) {
        teller()(sentence);
    } else {
        qWarning("%s", qUtf8Printable(sentence));
    }
}

}  // namespace

Settings::Settings()
    : QSettings(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                    QStringLiteral("/settings.ini"),
                QSettings::IniFormat) {}

Settings::~Settings() {
    sync();
    if (status() == QSettings::AccessError) {
        tellOnce(fileName());
    }
}

void Settings::setTeller(const std::function<void(const QString&)>& function) {
    teller() = function;
}
