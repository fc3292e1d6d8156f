#include "Places.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

QString fromProgram(const QString& path) {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/') + path);
}

}  // namespace

QString Places::data(const QString& name) {
    return fromProgram(QStringLiteral(VORTEL_DATA_PLACE "/") + name);
}

QString Places::plugin() {
    const QString name = QStringLiteral("libcircuiteditor.so");
    const QString beside = fromProgram(name);
    return QFile::exists(beside) ? beside
                                 : fromProgram(QStringLiteral(VORTEL_PLUGIN_PLACE "/") + name);
}
