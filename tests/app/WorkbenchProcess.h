#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << qPrintable(text) << '"';
}
inline void PrintTo(const QStringList& lines, std::ostream* os) {
    *os << "\n  " << qPrintable(lines.join(QStringLiteral("\n  ")));
}

/// What a run of the program left behind.
struct Outcome {
    int status = -1;
    QByteArray output;
    QStringList errorLines;
};

/// Runs the built program as a user does, in a folder of its own and without a display.
class WorkbenchTest : public testing::Test {
protected:
    WorkbenchTest();

    static QString dataFile(const QString& name);
    static QString builtFile(const QString& name);
    static QByteArray contentOf(const QString& fileName);

    /// A name in the test's own folder.
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& content) const;
    /// Everything in the folder, hidden files too.
    QStringList files() const;

    /// What the program keeps for its user: in a folder of the test's own, too.
    QString homePath(const QString& name) const { return m_home.filePath(name); }

    /// The status is that of a shell: 128 and the signal if one ended the program.
    Outcome run(const QStringList& arguments) const;

    QProcessEnvironment environment;

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
};
