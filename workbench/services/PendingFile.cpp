#include "PendingFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

QString unusedNameBeside(const QFileInfo& target) {
    const QDir folder = target.absoluteDir();
    for (int i = 0;; ++i) {
        const QString name = folder.filePath(QStringLiteral(".%1.%2-%3.part")
                                                 .arg(target.fileName())
                                                 .arg(QCoreApplication::applicationPid())
                                                 .arg(i));
        const QFileInfo info(name);
        if (!info.exists() && !info.isSymLink()) {
            return name;
        }
    }
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

PendingFile::PendingFile(const QString& target) : m_target(target) {
    const QString linked = QFileInfo(target).canonicalFilePath();
    if (!linked.isEmpty()) {
        m_target = linked;
    }
    m_temporary = unusedNameBeside(QFileInfo(m_target));
}

PendingFile::~PendingFile() {
    QFile::remove(m_temporary);
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

bool PendingFile::commit(QString* reason) {
    if (QFileInfo::exists(m_target)) {
        QFile::setPermissions(m_temporary, QFile::permissions(m_target));
    }
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

bool PendingFile::write(const QString& target, const QByteArray& content, QString* reason) {
    PendingFile pending(target);
    *reason = pending.obstacle();
    if (!reason->isEmpty()) {
        return false;
    }
    QFile file(pending.temporaryName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.flush()) {
        *reason = file.errorString();
        return false;
    }
    file.close();
    return pending.commit(reason);
}
