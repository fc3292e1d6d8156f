#pragma once

#include <QSettings>

#include <functional>

/// What the application remembers for its user, in `settings.ini` of the user's configuration
/// folder. Keys: "RecentFiles", "AutosaveSeconds", 0 for no autosaves,
/// "PictureMargin", "DarkCanvas", and those of page and window.
class Settings : public QSettings {
public:
    Settings();
    /// Writes what was changed. What can't be written holds until the program ends, is tried again
    /// with the next change, and is told once.
    ~Settings() override;

    /// Who tells the user, with one sentence; nobody sends it to the standard error.
    static void setTeller(const std::function<void(const QString&)>& teller);
};
