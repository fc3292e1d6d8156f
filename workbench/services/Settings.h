#pragma once

#include <QSettings>
#include <QStandardPaths>

/// What the application remembers for its user, in `settings.ini` of the user's configuration
/// folder. Keys: "RecentFiles", "AutosaveSeconds", 0 for no autosaves,
/// "PictureMargin", "DarkCanvas", and those of page and window.
class Settings : public QSettings {
public:
    Settings()
        : QSettings(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                        QStringLiteral("/settings.ini"),
                    QSettings::IniFormat) {}
};
