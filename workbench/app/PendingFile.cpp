#include "PendingFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

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
    // Unlike QFile::rename this replaces an existing target in one step.
    if (std::rename(QFile::encodeName(m_temporary).constData(),
                    QFile::encodeName(m_target).constData()) != 0) {
        *reason = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    return true;
}
