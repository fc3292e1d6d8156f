#include "PendingFile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// In bytes, at most. What is added to a target's name to make the temporary one fits beside it.
constexpr int LongestStem = 200;

/// What the names of temporary files begin with. Names near the longest that there can be leave no
/// place for more.
QString stemOf(const QFileInfo& target) {
    const QByteArray name = QFile::encodeName(target.fileName());
    const bool isLong = name.size() > LongestStem;
    return QLatin1Char('.') +
           (isLong ? QString::fromLatin1(
                         QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex())
                   : target.fileName());
}

/// Where the name leads to, whether there is a file yet or not; the name itself if it is no link.
QString linkTarget(const QString& name) {
    const QString file = QFileInfo(name).canonicalFilePath();
    if (!file.isEmpty()) {
        return file;
    }
    QString target = name;
    // Links may lead in circles.
    for (int i = 0; i < 40 && QFileInfo(target).isSymLink(); ++i) {
        target = QFileInfo(target).symLinkTarget();
    }
    return target;
}

/// Makes the file, which nobody but its owner can read. A name that can't be made is as good as
/// any: to open it fails with the reason.
QString newFileBeside(const QFileInfo& target) {
    const QString prefix = QLatin1Char('/') + stemOf(target) + QLatin1Char('.') +
                           QString::number(QCoreApplication::applicationPid());
    for (int i = 0;; ++i) {
        const QString name = target.absolutePath() + prefix + QStringLiteral("-%1.part").arg(i);
        const int handle = open(QFile::encodeName(name).constData(),
                                O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (handle >= 0) {
            close(handle);
            return name;
        }
        if (errno != EEXIST) {
            return name;
        }
    }
}

void removeAbandonedBeside(const QFileInfo& target) {
    const QRegularExpression pattern(QStringLiteral("^%1\\.(\\d+)-\\d+\\.part$")
                                         .arg(QRegularExpression::escape(stemOf(target))));
    const QDir folder = target.absoluteDir();
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch match = pattern.match(name);
        const pid_t owner = match.captured(1).toInt();
        if (owner > 0 && kill(owner, 0) != 0 && errno == ESRCH) {
            QFile::remove(folder.filePath(name));
        }
    }
}

/// What a file gets that is made in the ordinary way.
QFileDevice::Permissions permissionsOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    permissions.setFlag(QFileDevice::ReadGroup, !(mask & S_IRGRP));
    permissions.setFlag(QFileDevice::WriteGroup, !(mask & S_IWGRP));
    permissions.setFlag(QFileDevice::ReadOther, !(mask & S_IROTH));
    permissions.setFlag(QFileDevice::WriteOther, !(mask & S_IWOTH));
    return permissions;
}

/// False, with errno, if the system couldn't hand the file or folder over to the disk.
bool reachDisk(const QString& name) {
    const int handle = open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) {
        return false;
    }
    const bool reached = fsync(handle) == 0;
    const int error = errno;
    close(handle);
    errno = error;
    return reached;
}

}  // namespace

PendingFile::PendingFile(const QString& target) : m_target(linkTarget(target)) {}

PendingFile::~PendingFile() {
    if (!m_temporary.isEmpty()) {
        QFile::remove(m_temporary);
    }
}

QString PendingFile::temporaryName() {
    if (m_temporary.isEmpty()) {
        removeAbandonedBeside(QFileInfo(m_target));
        m_temporary = newFileBeside(QFileInfo(m_target));
    }
    return m_temporary;
}

QString PendingFile::obstacle() const {
    const QFileInfo target(m_target);
    const QFileInfo folder(target.absolutePath());
    if (target.isDir()) {
        return QStringLiteral("it is a folder");
    }
    if (target.exists() && !target.isFile()) {
        return QStringLiteral("it is not a regular file");
    }
    if (!folder.isDir()) {
        return QStringLiteral("there is no folder %1").arg(folder.filePath());
    }
    if (!folder.isWritable() || (target.exists() && !target.isWritable())) {
        return QStringLiteral("permission denied");
    }
    return {};
}

QString PendingFile::lackOfRoom() const {
    const int handle =
        open(QFile::encodeName(m_temporary).constData(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (handle < 0) {
        return QString::fromLocal8Bit(std::strerror(errno));
    }
    // What is left of a room may take a part.
    const QByteArray more(64 * 1024, ' ');
    ssize_t written = 0;
    for (int left = more.size(); left > 0 && written >= 0; left -= static_cast<int>(written)) {
        written = ::write(handle, more.constData(), static_cast<size_t>(left));
    }
    const bool grows = written >= 0 && fsync(handle) == 0;
    const int error = errno;
    close(handle);
    return grows ? QString() : QString::fromLocal8Bit(std::strerror(error));
}

bool PendingFile::commit(QString* reason, std::optional<QFileDevice::Permissions> permissions) {
    if (!permissions) {
        permissions =
            QFileInfo::exists(m_target) ? QFile::permissions(m_target) : permissionsOfNewFiles();
    }
    QFile::setPermissions(m_temporary, *permissions);
    // The content must be on the disk before the name is: after a power failure the new name could
    // otherwise lead to an empty file. Unlike QFile::rename this replaces an existing target in one
    // step.
    if (!reachDisk(m_temporary) || std::rename(QFile::encodeName(m_temporary).constData(),
                                               QFile::encodeName(m_target).constData()) != 0) {
        *reason = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    // Whole it is by now in any case; not every file system can do this for a folder.
    reachDisk(QFileInfo(m_target).absolutePath());
    return true;
}

bool PendingFile::write(const QString& target, const QByteArray& content, QString* reason,
                        std::optional<QFileDevice::Permissions> permissions) {
    PendingFile pending(target);
    *reason = pending.obstacle();
    if (!reason->isEmpty()) {
        return false;
    }
    QFile file(pending.temporaryName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.flush()) {
        const QString lack = pending.lackOfRoom();
        *reason = lack.isEmpty() ? file.errorString() : lack;
        return false;
    }
    file.close();
    return pending.commit(reason, permissions);
}
