#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <memory>

class QLockFile;

/// What a file on the disk was like, to tell later whether another program has changed it.
class FileState {
public:
    FileState() = default;
    /// Of a file that needn't be there.
    explicit FileState(const QString& fileName);

    /// False as well while the file isn't there.
    bool hasChanged() const;

private:
    QString m_fileName;
    qint64 m_size = -1;
    QDateTime m_time;
    QByteArray m_digest;
};

/// Marks a file as open in this program as long as it lives. The marks lie in the user's data
/// folder, and one whose program is gone counts no more.
class OpenMark {
public:
    explicit OpenMark(const QString& fileName);
    ~OpenMark();
    OpenMark(const OpenMark&) = delete;
    OpenMark& operator=(const OpenMark&) = delete;

    /// Another window has opened the file before, and holds the mark.
    bool isOpenElsewhere() const { return m_isOpenElsewhere; }

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_isOpenElsewhere = false;
};
