#include "BatchCommands.h"
#include "CommandHelp.h"
#include "CommandLine.h"
#include "Console.h"
#include "MainWindow.h"
#include "Places.h"
#include "ProjectManager.h"
#include "QtSeries.h"
#include "QuitOnSignal.h"
#include "Workbench.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <QTimer>
#include <QTranslator>

namespace {

/// Before there is an application: the commands need no display, and a machine may have none.
void choosePlatform(int argc, const char* const* argv) {
    if (isBatchCommand(argc, argv)) {
        // Boxes that fit their text have the same size wherever a file is converted.
        qputenv("QT_FONT_DPI", "96");
    }
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") &&
        (!hasDisplay || isBatchCommand(argc, argv))) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

QtMessageHandler defaultHandler = nullptr;

/// Machines without a login session lack a folder that Qt then makes up itself. Its remark on that
/// would stand between the lines that the commands promise.
void passOnMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
        defaultHandler(type, context, text);
    }
}

QString pluginFile(const CommandLine& line) {
    return line.plugin.isEmpty() ? Places::plugin() : line.plugin;
}

bool start(Workbench& workbench, const CommandLine& line, QWidget* window) {
    QString error;
    if (!workbench.start(pluginFile(line), window, &error)) {
        printError(error);
        return false;
    }
    for (const QString& problem : workbench.libraryProblems()) {
        printError(problem);
    }
    return true;
}

/// The window's language, if it is one of those that the program speaks. Commands keep to English.
void installTranslations(QTranslator* own, QTranslator* ofQt) {
    if (!own->load(QLocale(), QStringLiteral("workbench"), QStringLiteral("_"),
                   QStringLiteral(":/translations"))) {
        return;
    }
    QCoreApplication::installTranslator(own);
    if (ofQt->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                   QtSeries::translationFolder())) {
        QCoreApplication::installTranslator(ofQt);
    }
}

int runWindow(const CommandLine& line) {
    QTranslator translator;
    QTranslator translatorOfQt;
    installTranslations(&translator, &translatorOfQt);
    Workbench workbench;
    MainWindow window(&workbench);
    QString message;
    if (!start(workbench, line, &window)) {
        return Failed;
    }
    if (!window.build(&message)) {
        printError(message);
        return Failed;
    }
    if (!line.file.isEmpty()) {
        const bool opened = window.openFile(line.file, &message);
        if (!message.isEmpty()) {
            printError(message);
        }
        if (opened) {
            message.clear();
        }
    }
    const QuitOnSignal quitOnSignal;
    window.show();
    // Once the window is there to ask over.
    const bool isPlain = line.file.isEmpty();
    QTimer::singleShot(0, &window, [&window, isPlain, message] {
        if (!message.isEmpty()) {
            window.tellCannotOpen(message);
        }
        window.offerRecovery(isPlain);
    });
    const int status = QApplication::exec();
    // Still open: the end came from outside, and nobody was asked.
    workbench.projectManager()->autosave();
    return status;
}

int tell(const QString& line) {
    QString error;
    if (!printOutput(line.toLocal8Bit() + '\n', &error)) {
        printError(error);
        return Failed;
    }
    return Succeeded;
}

/// diff keeps 1 for files that differ.
int failureOf(const CommandLine& line) {
    return line.command == CommandLine::Command::Diff ? BadUse : Failed;
}

int run(const CommandLine& line) {
    switch (line.command) {
        case CommandLine::Command::Help:
            return tell(helpOn(line.helpTopic));
        case CommandLine::Command::Version:
            return tell(QStringLiteral("vortel-workbench ") +
                        QCoreApplication::applicationVersion());
        case CommandLine::Command::Window:
            return runWindow(line);
        default:
            break;
    }
    Workbench workbench;
    return start(workbench, line, nullptr) ? runBatchCommand(line, workbench) : failureOf(line);
}

constexpr char NoMemory[] = "there is not enough memory for that";

/// An exception that reached the event loop would end the program, and with it unsaved work.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::bad_alloc&) {
            QMessageBox::information(activeWindow(), tr("Out of memory"), QLatin1String(NoMemory));
        } catch (const std::exception& failure) {
            QMessageBox::information(activeWindow(), tr("Something went wrong"),
                                     QString::fromLocal8Bit(failure.what()));
        }
        return false;
    }
};

int runOrTell(const CommandLine& line) {
    try {
        return run(line);
    } catch (const std::bad_alloc&) {
        printError(QLatin1String(NoMemory));
    } catch (const std::exception& failure) {
        printError(QString::fromLocal8Bit(failure.what()));
    }
    return failureOf(line);
}

}  // namespace

int main(int argc, char** argv) {
    // The order of attributes in files is hash order: with a fixed seed a file that is saved twice
    // has the same bytes.
    QtSeries::fixHashOrder();
    choosePlatform(argc, argv);
    defaultHandler = qInstallMessageHandler(passOnMessage);
    // Qt would take options of its own out of the arguments, and --plugin is one of those.
    int ownNameOnly = 1;
    Application application(ownNameOnly, argv);
    QApplication::setApplicationName(QStringLiteral("vortel-workbench"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vortel Workbench"));
    QApplication::setDesktopFileName(QStringLiteral("vortel-workbench"));
    QApplication::setWindowIcon(QIcon(Places::data(QStringLiteral("icons/vortel-workbench.svg"))));
    QApplication::setApplicationVersion(QStringLiteral(VORTEL_VERSION));

    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QFile::decodeName(argv[i]));
    }
    QString error;
    const std::optional<CommandLine> line = parseCommandLine(arguments, &error);
    if (!line) {
        printError(error);
        printError(usage());
        return BadUse;
    }
    return runOrTell(*line);
}
