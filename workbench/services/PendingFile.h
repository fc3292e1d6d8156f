#pragma once

#include <QFileDevice>
#include <QString>

#include <optional>

class QByteArray;

/// A file in the making: written under a temporary name beside its target and put in the target's
/// place only when it is whole and on the disk. What isn't committed is removed, so that a failure
/// leaves the target as it was; after a crash the target is the old or the new file. Until then it
/// is its owner's alone.
class PendingFile {
public:
    explicit PendingFile(const QString& target);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// Why the target can't be written, found out without writing; empty if nothing speaks against
    /// it.
    QString obstacle() const;
    /// What keeps the temporary file from growing; empty if nothing does. For writers that fail
    /// without a reason.
    QString lackOfRoom() const;
    /// Where to write: an empty file, unless the folder takes none. The first call also removes
    /// what programs that were killed have left of the same target.
    QString temporaryName();
    /// Puts the file in the target's place, with the permissions given, else those of the file that
    /// it replaces, else those of any new file. False, with the reason, if that fails.
    bool commit(QString* reason, std::optional<QFileDevice::Permissions> permissions = {});

    /// The whole way for a content that is at hand. False, with the reason, if the target couldn't
    /// be written; it is then as it was.
    static bool write(const QString& target, const QByteArray& content, QString* reason,
                      std::optional<QFileDevice::Permissions> permissions = {});

private:
    /// The target, or where it leads to if it is a link.
    QString m_target;
    // Empty before it is asked for.
    QString m_temporary;
};
