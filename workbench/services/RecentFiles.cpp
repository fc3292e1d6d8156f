#include "RecentFiles.h"

#include "Settings.h"

#include <QFileInfo>

namespace {

const QString Key = QStringLiteral("RecentFiles");

}  // namespace

QStringList RecentFiles::list() {
    QStringList files;
    for (const QString& file : Settings().value(Key).toStringList()) {
        if (QFileInfo(file).isFile()) {
            files.append(file);
        }
    }
    return files;
}

void RecentFiles::add(const QString& fileName) {
    const QString file = QFileInfo(fileName).absoluteFilePath();
    QStringList files = list();
    files.removeAll(file);
    files.prepend(file);
    Settings().setValue(Key, QStringList(files.mid(0, MaximumCount)));
}
