#include "FuzzTargets.h"

#include "CCircuitEditor.h"
#include "Circuit.h"
#include "ElementTypeReader.h"
#include "EngineeringNumber.h"
#include "GuiBuilder.h"
#include "ICircuit.h"
#include "Invariants.h"
#include "ParameterExpression.h"
#include "ProjectManager.h"
#include "RawFile.h"
#include "SimulationPart.h"
#include "TextBoxText.h"
#include "Workbench.h"

#include <Plexa/ComponentManager.h>
#include <Plexa/ObjectIterator.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMainWindow>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTreeWidget>

#include <cstdio>
#include <cstdlib>

namespace {

/// Where inputs become files. Gone with the program.
const QTemporaryDir* folder = nullptr;
Workbench* workbench = nullptr;
CCircuitEditor* editor = nullptr;

void require(bool holds, const QString& promise) {
    if (!holds) {
        std::fprintf(stderr, "BROKEN: %s\n", qPrintable(promise));
        std::abort();
    }
}

QString write(const QString& name, const QByteArray& bytes) {
    QFile file(folder->filePath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
            QStringLiteral("the folder takes files"));
    return file.fileName();
}

QByteArray read(const QString& fileName) {
    QFile file(fileName);
    require(file.open(QIODevice::ReadOnly), QStringLiteral("what was saved is there"));
    return file.readAll();
}

void checkDrawing() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QStringList breaches = invariantBreaches(*editor);
    require(breaches.isEmpty(), breaches.join(QLatin1Char('\n')));
}

QByteArray saved(const QString& name) {
    QString error;
    require(workbench->save(folder->filePath(name), &error), error);
    return read(folder->filePath(name));
}

/// What is open is saved as a file that opens without a remark, as the same drawing.
void saveAndReopen(const QString& ending) {
    checkDrawing();
    const QByteArray drawing = editor->describe();
    const QByteArray first = saved(QStringLiteral("first") + ending);
    QString message;
    require(workbench->open(folder->filePath(QStringLiteral("first") + ending), &message), message);
    require(message.isEmpty(), message);
    checkDrawing();
    require(editor->describe() == drawing, QStringLiteral("a file holds the drawing"));
    // The numbers of elements go on from one circuit file to the next.
    require(saved(QStringLiteral("second") + ending) == first || ending != QLatin1String(".vprj"),
            QStringLiteral("a project that is opened and saved stays as it is"));
}

void runFile(const QByteArray& bytes, const QString& ending) {
    QString message;
    if (workbench->open(write(QStringLiteral("in") + ending, bytes), &message)) {
        saveAndReopen(ending);
    } else {
        require(!message.isEmpty(), QStringLiteral("a refusal has a reason"));
    }
}

void runSchematic(const QByteArray& bytes) {
    QStringList remarks;
    QString message;
    if (workbench->import(write(QStringLiteral("in.asc"), bytes), &remarks, &message)) {
        saveAndReopen(QStringLiteral(".vprj"));
    } else {
        require(!message.isEmpty(), QStringLiteral("a refusal has a reason"));
    }
}

void runCircuit(const QByteArray& bytes) {
    runFile(bytes, QStringLiteral(".ckt"));
}

void runProject(const QByteArray& bytes) {
    runFile(bytes, QStringLiteral(".vprj"));
}

/// A paste can be taken back.
void runPaste(const QByteArray& bytes) {
    workbench->clear();
    QApplication::clipboard()->setText(QString::fromUtf8(bytes));
    editor->pasteFromClipboard(QPointF(0, 0));
    checkDrawing();
    editor->undo();
    checkDrawing();
    require(workbench->circuit()->elementCount() == 0 && workbench->circuit()->nodeCount() == 0,
            QStringLiteral("a paste can be taken back"));
    editor->redo();
    checkDrawing();
}

/// What is read and written again settles: a symbol that opens a block is lost, and what it leaves
/// may open one in its turn.
void runText(const QByteArray& bytes) {
    QTextDocument document;
    QString text = TextBoxText::withoutBreakingSymbols(QString::fromUtf8(bytes));
    TextBoxText::fillFromPlainText(&document, text, QFont());
    TextBoxText::repair(&document, QFont());
    QString before;
    for (int round = 0; round < 8; ++round) {
        before = text;
        TextBoxText::fill(&document, text, QFont());
        text = TextBoxText::encodedText(document);
    }
    require(text == before, QStringLiteral("a text settles"));
}

/// On the list of output variables, whose address stands where the bytes say "VARIABLE", and on the
/// canvas.
void runDrop(const QByteArray& bytes) {
    QString message;
    require(
        workbench->open(QStringLiteral(VORTEL_SOURCE_DIR "/examples/rc-lowpass.vprj"), &message),
        message);
    const ICircuitOutputVariable* variable = workbench->simulation()->circuit().outputVariable(0);
    const QByteArray address(reinterpret_cast<const char*>(&variable), sizeof variable);
    auto* panel = qobject_cast<QWidget*>(
        workbench->object(QStringLiteral("CCircuitEditorComponent.outVarsWidget")));
    QAbstractItemModel* list = panel->findChild<QTreeWidget*>()->model();
    QMimeData data;
    data.setData(list->mimeTypes().first(), QByteArray(bytes).replace("VARIABLE", address));
    list->dropMimeData(&data, Qt::MoveAction, 0, 0, {});
    editor->placeElement(QString::fromUtf8(bytes), QPointF(0, 0));
    checkDrawing();
}

void runWindow(const QByteArray& bytes) {
    Plexa::GuiDescription description;
    QString error;
    if (!description.parse(bytes, &error)) {
        require(!error.isEmpty(), QStringLiteral("a refusal has a reason"));
        return;
    }
    auto* manager = Plexa::ComponentManager::instance();
    const Plexa::GuiDescription before = manager->guiDescription();
    GuiBuilder::Handlers handlers;
    for (const QString& id : before.root().value(QStringLiteral("actions")).toMap().keys()) {
        handlers.insert(id, [] {});
    }
    manager->setGuiDescription(description);
    {
        QMainWindow window;
        const bool isBuilt = GuiBuilder(&window, *workbench, handlers).build(&error);
        require(isBuilt || !error.isEmpty(), QStringLiteral("a refusal has a reason"));
        // They belong to the components, which go on.
        const Plexa::ObjectIterator objects;
        for (QObject* object = objects.firstObject(); object; object = objects.nextObject()) {
            if (auto* widget = qobject_cast<QWidget*>(object)) {
                widget->setParent(nullptr);
            }
        }
    }
    manager->setGuiDescription(before);
}

void runType(const QByteArray& bytes) {
    const QString fileName = write(QStringLiteral("Type.json"), bytes);
    ElementTypeReader reader(fileName);
    ElementTypeData data;
    require(reader.read(&data) || !reader.problems().isEmpty(),
            QStringLiteral("a refusal has a reason"));
    for (const QString& problem : reader.problems()) {
        require(problem.startsWith(fileName), QStringLiteral("a complaint names its file"));
    }
}

void runExpression(const QByteArray& bytes) {
    const QString text = QString::fromUtf8(bytes);
    const auto lookup = [](const QString& name) {
        return name == QLatin1String("R") ? QStringLiteral("4k7") : QString();
    };
    const auto result = ParameterExpression::evaluate(text, lookup);
    require(result.ok == result.problem.isEmpty(),
            QStringLiteral("what has no value has a problem"));
    const QString renamed = ParameterExpression::renamed(text, QStringLiteral("R"), "Q");
    require(ParameterExpression::isWellFormed(renamed) == ParameterExpression::isWellFormed(text),
            QStringLiteral("another name leaves an expression one"));
    bool isNumber = false;
    const double value = EngineeringNumber::parse(text, &isNumber);
    require(
        !isNumber || EngineeringNumber::parse(EngineeringNumber::format(value), &isNumber) == value,
        QStringLiteral("a number that is written reads back"));
}

void runRaw(const QByteArray& bytes) {
    QString reason;
    const QVector<RawPlot> plots = readRawFile(bytes, &reason);
    require(!plots.isEmpty() || !reason.isEmpty(), QStringLiteral("a refusal has a reason"));
    for (const RawPlot& plot : plots) {
        for (const QVector<double>& column : plot.real) {
            require(column.size() == plot.points(), QStringLiteral("columns are of one length"));
        }
        if (plot.points() > 0) {
            const QVector<RawPlot> again = readRawFile(writeRawFile(plot, "t"), &reason);
            require(again.size() == 1 && again.first().points() == plot.points(), reason);
        }
    }
}

const FuzzTarget Targets[] = {{"circuit", runCircuit}, {"project", runProject},
                              {"paste", runPaste},     {"text", runText},
                              {"drop", runDrop},       {"window", runWindow},
                              {"type", runType},       {"expression", runExpression},
                              {"raw", runRaw},         {"schematic", runSchematic}};

}  // namespace

void startFuzzing(int* argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    new QApplication(*argc, argv);
    static const QTemporaryDir ownFolder;
    folder = &ownFolder;
    workbench = new Workbench;
    QString error;
    require(
        workbench->start(QStringLiteral(VORTEL_BIN_DIR "/libcircuiteditor.so"), nullptr, &error),
        error);
    // There is no pointer that what is pasted could hang at.
    editor = qobject_cast<CCircuitEditor*>(workbench->editorWidget());
    editor->setPlacePastedItems(false);
}

void endFuzzing() {
    delete workbench;
    delete qApp;
}

const FuzzTarget* fuzzTarget(const QByteArray& name) {
    for (const FuzzTarget& target : Targets) {
        if (name == target.name) {
            return &target;
        }
    }
    return nullptr;
}
