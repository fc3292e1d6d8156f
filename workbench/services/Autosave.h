#pragma once

#include <QString>

#include <memory>
#include <vector>

class QByteArray;
class QLockFile;

/// The autosaved state of one open project: a project file of its own, hidden beside the project's
/// file, or in the user's data folder if the project has no file yet, the folder is closed to us or
/// another running program autosaves the same project there. Who may not read the project's file
/// may not read this one. A lock beside it tells that its program runs; an autosave whose lock is
/// stale or missing was left by a crash. An object that dies gives up the lock and leaves the file.
class Autosave {
public:
    /// `projectFile` is empty for a project without a file.
    explicit Autosave(const QString& projectFile);
    ~Autosave();
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    /// What crashes have left of the project, or for an empty name all that the user's data folder
    /// holds, the latest first. Each is locked as long as it lives, so that nobody else offers it.
    static std::vector<std::unique_ptr<Autosave>> abandoned(const QString& projectFile);

    /// The project that was autosaved, as an absolute name; empty if it has no file.
    QString projectFile() const { return m_projectFile; }
    /// Where the state is; empty before the first write.
    QString fileName() const { return m_fileName; }

    /// Replaces the state, whole or not at all.
    bool write(const QByteArray& content, QString* reason);
    /// Removes the state, which isn't needed any more.
    void discard();

    /// The root's attribute that names the project of an autosave in the user's data folder.
    static constexpr char ProjectAttribute[] = "AutosaveOf";
    /// The one that tells what the project lacks of its file; missing if it lacks nothing.
    static constexpr char LossesAttribute[] = "AutosaveLosses";

private:
    bool lock(const QString& fileName);

    QString m_projectFile;
    QString m_fileName;
    std::unique_ptr<QLockFile> m_lock;
};
