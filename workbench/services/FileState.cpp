#include "FileState.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

namespace {

QByteArray digestOf(const QString& fileName) {
    QFile file(fileName);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

}  // namespace

FileState::FileState(const QString& fileName) : m_fileName(fileName) {
    const QFileInfo info(fileName);
    if (!fileName.isEmpty() && info.isFile()) {
        m_size = info.size();
        m_time = info.lastModified();
        m_digest = digestOf(fileName);
    }
}

bool FileState::hasChanged() const {
    const QFileInfo info(m_fileName);
    if (m_fileName.isEmpty() || !info.isFile()) {
        return false;
    }
    const bool isUntouched = info.size() == m_size && info.lastModified() == m_time;
    return !isUntouched && digestOf(m_fileName) != m_digest;
}

OpenMark::OpenMark(const QString& fileName) {
    const QString name = QFileInfo(fileName).canonicalFilePath();
    if (name.isEmpty()) {
        return;
    }
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                      QStringLiteral("/open"));
    folder.mkpath(QStringLiteral("."));
    const QByteArray id = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex();
    m_lock = std::make_unique<QLockFile>(folder.filePath(QString::fromLatin1(id)));
    // However old it is: only the end of its program makes a mark stale.
    m_lock->setStaleLockTime(0);
    m_isOpenElsewhere = !m_lock->tryLock() && m_lock->error() == QLockFile::LockFailedError;
}

OpenMark::~OpenMark() = default;
