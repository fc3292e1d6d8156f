#include "Autosave.h"

#include "PendingFile.h"
#include "ProjectFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

namespace {

const QString Suffix = QStringLiteral(".autosave");

QString commonFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/autosave");
}

/// One name for a file however one gets there.
QString absoluteName(const QString& fileName) {
    if (fileName.isEmpty()) {
        return {};
    }
    const QFileInfo info(fileName);
    const QString real = info.canonicalFilePath();
    return real.isEmpty() ? info.absoluteFilePath() : real;
}

QString nameBeside(const QString& projectFile) {
    const QFileInfo info(projectFile);
    return info.absoluteDir().filePath(QLatin1Char('.') + info.fileName() + Suffix);
}

/// Of an autosave in the common folder; nothing if that isn't one.
std::optional<QString> projectOf(const QString& autosave) {
    QString reason;
    const std::optional<ProjectFile> file = ProjectFile::read(autosave, &reason);
    if (!file) {
        return {};
    }
    return file->root().attribute(QLatin1String(Autosave::ProjectAttribute));
}

QDateTime timeOf(const std::unique_ptr<Autosave>& autosave) {
    return QFileInfo(autosave->fileName()).lastModified();
}

QFileDevice::Permissions permissionsFor(const QString& projectFile) {
    const QFileDevice::Permissions own = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    return QFileInfo(projectFile).isFile() ? QFile::permissions(projectFile) | own : own;
}

}  // namespace

Autosave::Autosave(const QString& projectFile) : m_projectFile(absoluteName(projectFile)) {}

Autosave::~Autosave() = default;

bool Autosave::lock(const QString& fileName) {
    auto lock = std::make_unique<QLockFile>(fileName + QStringLiteral(".lock"));
    // However old it is: only the end of its program makes a lock stale.
    lock->setStaleLockTime(0);
    if (!lock->tryLock()) {
        // A lock without an owner is one whose program ended while it wrote it; it would never
        // become stale by itself.
        qint64 owner = 0;
        QString host;
        QString program;
        if (lock->error() != QLockFile::LockFailedError ||
            lock->getLockInfo(&owner, &host, &program) || !lock->removeStaleLockFile() ||
            !lock->tryLock()) {
            return false;
        }
    }
    m_lock = std::move(lock);
    m_fileName = fileName;
    return true;
}

std::vector<std::unique_ptr<Autosave>> Autosave::abandoned(const QString& projectFile) {
    const QString project = absoluteName(projectFile);
    std::vector<std::unique_ptr<Autosave>> found;
    const auto take = [&found](const QString& fileName, const QString& itsProject) {
        auto autosave = std::make_unique<Autosave>(itsProject);
        // Its owner may have removed it in the meantime.
        if (autosave->lock(fileName) && QFileInfo(fileName).isFile()) {
            found.push_back(std::move(autosave));
        }
    };
    if (!project.isEmpty() && QFileInfo(nameBeside(project)).isFile()) {
        take(nameBeside(project), project);
    }
    const QFileInfoList common =
        QDir(commonFolder()).entryInfoList({QLatin1Char('*') + Suffix}, QDir::Files);
    for (const QFileInfo& info : common) {
        const std::optional<QString> itsProject = projectOf(info.filePath());
        if (itsProject && (project.isEmpty() || *itsProject == project)) {
            take(info.filePath(), *itsProject);
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return timeOf(a) > timeOf(b); });
    return found;
}

bool Autosave::write(const QByteArray& content, QString* reason) {
    if (m_fileName.isEmpty()) {
        const QString beside = m_projectFile.isEmpty() ? QString() : nameBeside(m_projectFile);
        // Never over what a crash has left there.
        const bool isFree = !beside.isEmpty() && !QFileInfo::exists(beside);
        if (!isFree || !lock(beside)) {
            const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
            QDir().mkpath(commonFolder());
            if (!lock(commonFolder() + QLatin1Char('/') + id + Suffix)) {
                *reason = QStringLiteral("there is no access to %1").arg(commonFolder());
                return false;
            }
        }
    }
    return PendingFile::write(m_fileName, content, reason, permissionsFor(m_projectFile));
}

void Autosave::discard() {
    if (!m_fileName.isEmpty()) {
        QFile::remove(m_fileName);
        m_fileName.clear();
        m_lock.reset();
    }
}
