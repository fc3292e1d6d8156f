#pragma once

#include <QString>

class QByteArray;

/// A file in the making: written under a temporary name beside its target and put in the target's
/// place only when it is whole and on the disk. What isn't committed is removed, so that a failure
/// leaves the target as it was; after a crash the target is the old or the new file.
class PendingFile {
public:
    explicit PendingFile(const QString& target);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// Why the target can't be written, found out without writing; empty if nothing speaks against
    /// it.
    QString obstacle() const;
    /// Where to write. The file doesn't exist yet.
    QString temporaryName() const { return m_temporary; }
    /// Puts the file in the target's place, with the permissions of the one that it replaces.
    /// False, with the reason, if that fails.
    bool commit(QString* reason);

    /// The whole way for a content that is at hand. False, with the reason, if the target couldn't
    /// be written; it is then as it was.
    static bool write(const QString& target, const QByteArray& content, QString* reason);

private:
    /// The target, or where it leads to if it is a link.
    QString m_target;
    QString m_temporary;
};
