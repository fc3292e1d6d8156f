#include "WorkbenchProcess.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

constexpr int Timeout = 60000;

}  // namespace

WorkbenchTest::WorkbenchTest() : environment(QProcessEnvironment::systemEnvironment()) {
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
        environment.remove(QLatin1String(name));
    }
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.path());
}

QString WorkbenchTest::dataFile(const QString& name) {
    return QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/") + name;
}

QString WorkbenchTest::builtFile(const QString& name) {
    return QStringLiteral(VORTEL_BIN_DIR "/") + name;
}

QByteArray WorkbenchTest::contentOf(const QString& fileName) {
    QFile file(fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(fileName);
    return file.readAll();
}

QString WorkbenchTest::write(const QString& name, const QByteArray& content) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName();
}

QStringList WorkbenchTest::files() const {
    return QDir(m_folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDir::Name);
}

Outcome WorkbenchTest::run(const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
    process.start(builtFile("vortel-workbench"), arguments, QIODevice::ReadOnly);
    Outcome outcome;
    if (!process.waitForFinished(Timeout)) {
        ADD_FAILURE() << "the program did not end: " << qPrintable(arguments.join(' '));
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    const bool ended = process.exitStatus() == QProcess::NormalExit;
    outcome.status = process.exitCode() + (ended ? 0 : 128);
    outcome.output = process.readAllStandardOutput();
    outcome.errorLines = QString::fromLocal8Bit(process.readAllStandardError())
                             .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return outcome;
}
