// The program really killed: while it writes a file, and while its user works.

#include "ProjectFile.h"
#include "WorkbenchProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <functional>

namespace {

const QString Divider = QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/divider.ckt");
constexpr int Timeout = 60000;

}  // namespace

class Crashes : public WorkbenchTest {
protected:
    Crashes() {
        QDir().mkpath(homePath("vortel-workbench"));
        writeSettings();
    }
    void writeSettings() {
        QFile settings(homePath("vortel-workbench/settings.ini"));
        EXPECT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write("[General]\nAutosaveSeconds=0.02\n");
    }

    struct Window {
        QProcess process;
        QByteArray output;

        /// The state that the program tells of, once it is as it should be.
        QJsonObject waitFor(const std::function<bool(const QJsonObject&)>& isExpected) {
            QJsonObject state;
            const auto hasCome = [&] {
                output += process.readAllStandardOutput();
                const QList<QByteArray> lines = output.split('\n');
                for (const QByteArray& line : lines) {
                    state = QJsonDocument::fromJson(line).object();
                    if (!state.isEmpty() && isExpected(state)) {
                        return true;
                    }
                }
                return false;
            };
            EXPECT_TRUE(QTest::qWaitFor(hasCome, Timeout))
                << output.constData() << process.readAllStandardError().constData();
            return state;
        }
        void kill() {
            if (process.state() != QProcess::NotRunning) {
                process.kill();
                EXPECT_TRUE(process.waitForFinished(Timeout));
            }
        }
        ~Window() { kill(); }
    };

    /// Opens a window that answers each question so.
    std::unique_ptr<Window> open(const QStringList& arguments, const QString& answer,
                                 bool edits = false) {
        QProcessEnvironment driven = environment;
        driven.insert("QT_PLUGIN_PATH", builtFile("testplugins"));
        driven.insert("QT_QPA_GENERIC_PLUGINS", "vorteldriver");
        driven.insert("VORTEL_DRIVER_ANSWER", answer);
        if (edits) {
            driven.insert("VORTEL_DRIVER_ADD", "1");
        }
        auto window = std::make_unique<Window>();
        window->process.setProcessEnvironment(driven);
        window->process.start(builtFile("vortel-workbench"), arguments);
        return window;
    }

    /// From now on steps of writing in the folder count.
    void breakAt(const QString& folder, bool isFull) {
        environment.insert("LD_PRELOAD", builtFile("libcrash_shim.so"));
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") +
                                               ":verify_asan_link_order=0:detect_leaks=0");
        environment.insert("CRASH_FOLDER", folder);
        isFull ? environment.insert("CRASH_FULL", "1") : environment.remove("CRASH_FULL");
    }

    QStringList autosavesAtHome() const {
        return QDir(homePath("vortel-workbench/autosave")).entryList(QDir::Files);
    }
};

TEST_F(Crashes, AndFullDisksLeaveTheOldOrTheNewFile) {
    for (const QString suffix : {"vprj", "ckt", "svg", "png", "pdf"}) {
        const QString target = path("x." + suffix);
        const QStringList arguments = suffix == "vprj" || suffix == "ckt"
                                          ? QStringList{"convert", Divider, target}
                                          : QStringList{"export", Divider, "-o", target};
        for (const bool isFull : {false, true}) {
            environment.remove("CRASH_AT");
            ASSERT_EQ(run(arguments).status, 0);
            const qint64 wholeSize = QFileInfo(target).size();
            breakAt(QFileInfo(target).absolutePath(), isFull);
            int step = 0;
            for (int status = 1; status != 0; ++step) {
                ASSERT_LT(step, 100);
                SCOPED_TRACE(qPrintable(QString("%1 %2 %3").arg(suffix).arg(isFull).arg(step)));
                write("x." + suffix, "old");
                environment.insert("CRASH_AT", QString::number(step + 1));
                const Outcome outcome = run(arguments);
                status = outcome.status;
                // Pictures hold the time of their making, but always as much of it.
                EXPECT_TRUE(contentOf(target) == "old" || QFileInfo(target).size() == wholeSize);
                ASSERT_EQ(status, status == 0 ? 0 : isFull ? 1 : 128 + SIGKILL);
                if (isFull && status != 0) {
                    EXPECT_EQ(files(), QStringList("x." + suffix));
                    ASSERT_EQ(outcome.errorLines.size(), 1);
                    EXPECT_TRUE(outcome.errorLines.first().startsWith("cannot write " + target));
                }
            }
            // The file, its content, that to the disk, and the name.
            EXPECT_GE(step, 4);
        }
        QFile::remove(target);
    }
}

TEST_F(Crashes, AndFullDisksLeaveSettingsAndAutosavesWhole) {
    const QString file = path("x.vprj");
    ASSERT_EQ(run({"convert", Divider, file}).status, 0);
    QDir homeAutosaves(homePath("vortel-workbench/autosave"));
    // Beside the file, or at home while what a lock left behind isn't old enough.
    const auto autosaves = [&] {
        QStringList found;
        for (const QDir& folder : {QFileInfo(file).absoluteDir(), homeAutosaves}) {
            for (const QString& name :
                 folder.entryList({"*.autosave"}, QDir::Files | QDir::Hidden)) {
                found.append(folder.filePath(name));
            }
        }
        return found;
    };
    for (const bool isFull : {false, true}) {
        // What both folders' names begin with.
        breakAt(QDir::tempPath() + '/', isFull);
        bool hasEnded = false;
        for (int step = 1; step < 100 && !hasEnded; ++step) {
            SCOPED_TRACE(qPrintable(QString("%1 %2").arg(isFull).arg(step)));
            writeSettings();
            environment.insert("CRASH_AT", QString::number(step));
            auto window = open({file}, "Discard", true);
            // Closed in order, unless it ends before.
            const auto isOver = [&] { return window->process.state() == QProcess::NotRunning; };
            const auto tells = [&](const char* sentence) {
                window->output += window->process.readAllStandardOutput();
                return window->output.contains(sentence);
            };
            const auto failsToAutosave = [&] { return tells("changes could not be autosaved: "); };
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return isOver() || !autosaves().isEmpty() || failsToAutosave(); }, Timeout));
            window->process.terminate();
            EXPECT_TRUE(QTest::qWaitFor(isOver, Timeout));
            const bool isInOrder = window->process.exitStatus() == QProcess::NormalExit;
            EXPECT_TRUE(isInOrder || !isFull);
            hasEnded = isInOrder && !failsToAutosave();
            const QByteArray settings = contentOf(homePath("vortel-workbench/settings.ini"));
            EXPECT_TRUE(settings.contains("Autosave"));
            EXPECT_EQ(tells("your settings could not be saved"),
                      isFull && !settings.contains("x.vprj"));
            for (const QString& name : autosaves()) {
                QString reason;
                EXPECT_TRUE(ProjectFile::read(name, &reason)) << qPrintable(name + ' ' + reason);
                QFile::remove(name);
            }
        }
        EXPECT_TRUE(hasEnded);
    }
}

TEST_F(Crashes, LeaveTheChangesOfAFileToBeRecovered) {
    const QString file = path("x.vprj");
    const QString autosave = path(".x.vprj.autosave");
    ASSERT_EQ(run({"convert", Divider, file}).status, 0);
    const QByteArray saved = contentOf(file);
    const auto shown = [](const QJsonObject&) { return true; };
    const auto isModified = [](const QJsonObject& state) { return state["modified"].toBool(); };
    const auto elements = [](const QJsonObject& state) { return state["elements"].toInt(); };

    auto window = open({file}, "none", true);
    window->waitFor(isModified);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(autosave); }, Timeout));
    // Another program sees the file, and nothing to recover; its own changes go elsewhere.
    auto other = open({file}, "none", true);
    EXPECT_EQ(other->waitFor(isModified)["asked"].toArray().size(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return autosavesAtHome().size() >= 2; }, Timeout));
    other->kill();
    other = open({file}, "Discard");
    EXPECT_EQ(other->waitFor(shown)["asked"].toArray().size(), 1);
    EXPECT_EQ(autosavesAtHome(), QStringList());
    other->kill();
    window->kill();
    EXPECT_EQ(contentOf(file), saved);

    // Recovered, and lost in another crash, and still there.
    for (int i = 0; i < 2; ++i) {
        window = open(i == 0 ? QStringList(file) : QStringList(), "Recover");
        const QJsonObject state = window->waitFor(isModified);
        EXPECT_EQ(elements(state), 5);
        EXPECT_TRUE(isModified(state));
        EXPECT_EQ(state["title"].toString(), "x.vprj[*] - Vortel Workbench");
        EXPECT_EQ(state["asked"].toArray().size(), 1);
        EXPECT_TRUE(state["asked"].toArray().first().toString().startsWith(file));
        window->kill();
        EXPECT_EQ(contentOf(file), saved);
    }

    // Who doesn't decide loses nothing; who declines gets the file.
    window = open({file}, "Cancel");
    EXPECT_EQ(elements(window->waitFor(shown)), 0);
    window->kill();
    window = open({file}, "Discard");
    const QJsonObject declined = window->waitFor(shown);
    EXPECT_EQ(elements(declined), 4);
    EXPECT_FALSE(isModified(declined));
    EXPECT_EQ(files(), QStringList("x.vprj"));
    EXPECT_EQ(contentOf(file), saved);
}

TEST_F(Crashes, LeaveAProjectWithoutAFileToBeRecovered) {
    const auto holds = [](int count) {
        return [count](const QJsonObject& state) {
            return state["elements"].toInt() == count && state["modified"].toBool();
        };
    };
    auto window = open({}, "none", true);
    window->waitFor(holds(1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return autosavesAtHome().size() == 2; }, Timeout));
    window->kill();

    window = open({}, "Recover");
    const QJsonObject state = window->waitFor(holds(1));
    EXPECT_EQ(state["title"].toString(), "Untitled[*] - Vortel Workbench");
    // A session that is shut down asks nobody, and keeps the work as well.
    window->process.terminate();
    ASSERT_TRUE(window->process.waitForFinished(Timeout));
    EXPECT_EQ(window->process.exitCode(), 0);
    window = open({}, "Recover");
    window->waitFor(holds(1));
    window->kill();

    window = open({Divider}, "Discard");
    EXPECT_TRUE(QTest::qWaitFor([&] { return autosavesAtHome().isEmpty(); }, Timeout));
}

using TwoPrograms = Crashes;

TEST_F(TwoPrograms, CopyToEachOther) {
    const QByteArray display = qgetenv("DISPLAY");
    if (display.isEmpty()) {
        GTEST_SKIP() << "programs share a clipboard on a display only";
    }
    environment.insert("DISPLAY", QString::fromLocal8Bit(display));
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("VORTEL_DRIVER_CALL", "selectAll,copy");
    auto giver = open({Divider}, "none");
    const int elements = giver
                             ->waitFor([](const QJsonObject& state) {
                                 return state["elements"].toInt() > 0;
                             })["elements"]
                             .toInt();
    environment.insert("VORTEL_DRIVER_CALL", "pasteFromClipboard");
    auto taker = open({}, "none");
    taker->waitFor(
        [elements](const QJsonObject& state) { return state["elements"].toInt() == elements; });
}
