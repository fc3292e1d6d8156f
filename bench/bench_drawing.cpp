// What drawing costs, beside the same drawing out of Qt's own items. `n` is the number of elements;
// there are one and a half times as many nets.

#include "BareScene.h"
#include "CCircuitEditorElementItem.h"
#include "CircuitGenerator.h"
#include "Drawing.h"
#include "Program.h"
#include "Ratios.h"

#include <QApplication>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QPrinter>
#include <QSvgGenerator>

namespace {

const QSize Screen(1920, 1080);
const QRectF ScreenInScene(QPointF(1000, 500), QSizeF(Screen));

/// One drawing in the editor and in Qt's own items, both shown. Only one at a time is kept.
struct Stage {
    explicit Stage(int size) : size(size), drawing(size) {
        drawing.load();
        drawing.settle();
        const QRectF bounds = drawing.editor->scene()->itemsBoundingRect();
        drawing.editor->setEditorSize(
            static_cast<int>(2 * std::max(bounds.right(), bounds.bottom())));
        outlines = std::make_unique<BareScene>(*drawing.editor, BareScene::Outlines);
        symbols = std::make_unique<BareScene>(*drawing.editor, BareScene::Symbols);
        for (QGraphicsView* view : {editor(), &symbols->view}) {
            view->resize(Screen);
            view->show();
        }
        drawing.settle();
    }
    static Stage& of(const benchmark::State& state) {
        const auto size = static_cast<int>(state.range(0));
        if (!kept() || kept()->size != size) {
            kept().reset();
            kept() = std::make_unique<Stage>(size);
        }
        return *kept();
    }
    /// Must be emptied while there is an application.
    static std::unique_ptr<Stage>& kept() {
        static std::unique_ptr<Stage> stage;
        return stage;
    }
    QGraphicsView* editor() { return drawing.editor.get(); }

    int size;
    Drawing drawing;
    std::unique_ptr<BareScene> outlines;
    std::unique_ptr<BareScene> symbols;
};

using View = QGraphicsView* (*)(Stage&);

QGraphicsView* editorOf(Stage& stage) {
    return stage.editor();
}

QGraphicsView* bareViewOf(Stage& stage) {
    return &stage.symbols->view;
}

void captureTo(benchmark::State& state, CCircuitEditor::CaptureFormat format, const char* name) {
    Stage& stage = Stage::of(state);
    for (auto _ : state) {
        stage.drawing.editor->captureToFile(format, stage.drawing.outputFile(name));
    }
}

void svg(benchmark::State& state) {
    captureTo(state, CCircuitEditor::SVG, "drawing.svg");
}

void pdf(benchmark::State& state) {
    captureTo(state, CCircuitEditor::PDF, "drawing.pdf");
}

void render(QGraphicsScene& scene, QPaintDevice* device, bool inSceneUnits) {
    QPainter painter(device);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    const QRectF source = scene.itemsBoundingRect();
    scene.render(&painter, inSceneUnits ? QRectF(QPointF(), source.size()) : QRectF(), source);
}

void writeBareSvg(Stage& stage) {
    QSvgGenerator generator;
    generator.setFileName(stage.drawing.outputFile("bare.svg"));
    render(stage.outlines->scene, &generator, true);
}

void writeBarePdf(Stage& stage) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(stage.drawing.outputFile("bare.pdf"));
    render(stage.outlines->scene, &printer, false);
}

void bareSvg(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    for (auto _ : state) {
        writeBareSvg(stage);
    }
    const auto megabytes = [&stage](const char* name) {
        return static_cast<double>(QFileInfo(stage.drawing.outputFile(name)).size()) / 1e6;
    };
    Ratios::note("SVG, bytes, " + std::to_string(stage.size) + " elements",
                 megabytes("drawing.svg"), 2 * megabytes("bare.svg"), "MB");
}

void barePdf(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    for (auto _ : state) {
        writeBarePdf(stage);
    }
}

/// The least that a command which exports can do: a document of the circuit file, and the picture.
template <void (*Write)(Stage&)>
void documentAnd(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    const QByteArray text = circuitFileText(stage.size);
    for (auto _ : state) {
        QDomDocument document;
        document.setContent(text);
        Write(stage);
    }
}

void runExport(benchmark::State& state, const char* picture) {
    const QTemporaryDir folder;
    const QString circuit = folder.filePath("circuit.ckt");
    {
        QFile file(circuit);
        const QByteArray text = circuitFileText(static_cast<int>(state.range(0)));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(circuit));
        }
    }
    for (auto _ : state) {
        const ProgramUsage usage = runProgram({"export", circuit, "-o", folder.filePath(picture)});
        if (usage.status != 0) {
            state.SkipWithError("the program failed");
        }
        state.SetIterationTime(usage.cpuSeconds);
        state.counters["MB"] = usage.peakMegabytes;
        if (state.range(0) == 100000) {
            Ratios::note("export to " + std::string(picture) + ", 100,000 elements, memory",
                         usage.peakMegabytes, 1200, "MB");
        }
    }
}

void exportSvg(benchmark::State& state) {
    runExport(state, "drawing.svg");
}

void exportPdf(benchmark::State& state) {
    runExport(state, "drawing.pdf");
}

template <View Of>
void repaintFitted(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    QGraphicsView* view = Of(stage);
    view->fitInView(stage.editor()->scene()->itemsBoundingRect(), Qt::KeepAspectRatio);
    stage.drawing.settle();
    for (auto _ : state) {
        view->viewport()->repaint();
    }
}

QGraphicsView* showInScale(QGraphicsView* view) {
    view->setTransform(QTransform());
    view->centerOn(ScreenInScene.center());
    QApplication::processEvents();
    return view;
}

template <View Of>
void repaintInScale(benchmark::State& state) {
    QGraphicsView* view = showInScale(Of(Stage::of(state)));
    for (auto _ : state) {
        view->viewport()->repaint();
    }
}

template <View Of>
void pick(benchmark::State& state) {
    QGraphicsView* view = showInScale(Of(Stage::of(state)));
    QApplication::processEvents();
    for (auto _ : state) {
        benchmark::DoNotOptimize(view->itemAt(QPoint(900, 500)));
    }
}

void sendMouse(QGraphicsView* view, QEvent::Type type, const QPoint& place,
               Qt::MouseButton button = Qt::NoButton) {
    QWidget* viewport = view->viewport();
    QMouseEvent event(type, place, viewport->mapToGlobal(place), button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(viewport, &event);
}

/// An element without wires follows the pointer, with the repaint that each step brings.
template <View Of>
void drag(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    const bool isEditor = Of(stage) == stage.editor();
    QGraphicsView* view = showInScale(Of(stage));
    ICircuitElement* element = stage.drawing.factory.createElement("Resistor.Basic");
    stage.drawing.circuit.addElement(element);
    CCircuitEditorElementItem* original = stage.drawing.editor->elementItem(element);
    // In front of what lies there.
    original->setZValue(1500);
    original->setPos(ScreenInScene.center());
    QGraphicsItem* item = original;
    if (!isEditor) {
        item = stage.symbols->scene.addRect(original->rect());
        item->setFlags(original->flags());
        item->setPos(original->pos());
        item->setZValue(1500);
    }
    QApplication::processEvents();
    const QPoint start = view->mapFromScene(item->pos());
    sendMouse(view, QEvent::MouseButtonPress, start, Qt::LeftButton);
    QApplication::processEvents();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 50;
        sendMouse(view, QEvent::MouseMove, start + QPoint(3 * step, step));
        QApplication::processEvents();
    }
    if (step != 0 && item->pos() == ScreenInScene.center()) {
        state.SkipWithError("nothing moved");
    }
    sendMouse(view, QEvent::MouseButtonRelease, start, Qt::LeftButton);
    if (!isEditor) {
        delete item;
    }
    stage.drawing.circuit.removeElement(element);
    QApplication::processEvents();
}

/// As the workbench has it, from here on.
void switchIndexOn(benchmark::State& state) {
    Stage& stage = Stage::of(state);
    for (auto _ : state) {
        stage.drawing.editor->setSpatialIndex(true);
        stage.editor()->itemAt(QPoint(900, 500));
    }
}

void pickByIndex(benchmark::State& state) {
    pick<editorOf>(state);
}

void dragByIndex(benchmark::State& state) {
    drag<editorOf>(state);
}

void repaintByIndex(benchmark::State& state) {
    repaintInScale<editorOf>(state);
}

/// All of a size before the next one: a large stage takes long to set.
void addBenchmarks(int size) {
    const auto add = [size](const char* name, void (*function)(benchmark::State&)) {
        return benchmark::RegisterBenchmark(name, function)
            ->Arg(size)
            ->Unit(benchmark::kMillisecond);
    };
    add("svg", svg);
    add("bareSvg", bareSvg);
    add("pdf", pdf);
    add("barePdf", barePdf);
    add("documentAndSvg", documentAnd<writeBareSvg>);
    add("documentAndPdf", documentAnd<writeBarePdf>);
    add("exportSvg", exportSvg)->UseManualTime();
    add("exportPdf", exportPdf)->UseManualTime();
    add("repaintFitted", repaintFitted<editorOf>);
    add("bareRepaintFitted", repaintFitted<bareViewOf>);
    add("repaintInScale", repaintInScale<editorOf>);
    add("bareRepaintInScale", repaintInScale<bareViewOf>);
    add("pick", pick<editorOf>);
    add("barePick", pick<bareViewOf>);
    add("drag", drag<editorOf>);
    add("bareDrag", drag<bareViewOf>);
    add("switchIndexOn", switchIndexOn)->Iterations(1);
    add("pickByIndex", pickByIndex);
    add("dragByIndex", dragByIndex);
    add("repaintByIndex", repaintByIndex);

    if (size < 10000) {
        return;  // what the program takes to start, and a repaint of the whole canvas, outweigh all
    }
    const std::string n = "/" + std::to_string(size);
    const std::string tail = ", " + std::to_string(size) + " elements";
    Ratios::require("SVG in the editor" + tail, "svg" + n, "bareSvg" + n, 2.2);
    Ratios::require("PDF in the editor" + tail, "pdf" + n, "barePdf" + n, 3);
    Ratios::require("export to SVG, whole process" + tail, "exportSvg" + n, "documentAndSvg" + n,
                    2.2);
    Ratios::require("export to PDF, whole process" + tail, "exportPdf" + n, "documentAndPdf" + n,
                    3);
    Ratios::require("repaint, fitted" + tail, "repaintFitted" + n, "bareRepaintFitted" + n, 0.5);
    Ratios::require("repaint 1:1, no index" + tail, "repaintInScale" + n, "bareRepaintInScale" + n,
                    1);
    Ratios::require("repaint 1:1, as in the workbench" + tail, "repaintByIndex" + n,
                    "bareRepaintInScale" + n, 1);
    Ratios::require("drag step, no index" + tail, "drag" + n, "bareDrag" + n, 1.1);
    Ratios::require("drag step, as in the workbench" + tail, "dragByIndex" + n, "bareDrag" + n,
                    1.1);
    Ratios::require("pick, no index" + tail, "pick" + n, "barePick" + n, 1);
    Ratios::require("pick, as in the workbench" + tail, "pickByIndex" + n, "barePick" + n, 1);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    for (const int size : {1000, 10000, 100000}) {
        addBenchmarks(size);
    }
    for (const std::string format : {"Svg", "Pdf"}) {
        Ratios::require("export to " + format + ", 100,000 elements to 10,000",
                        "export" + format + "/100000", "export" + format + "/10000", 12);
    }
    const int status = Ratios::run(argc, argv);
    Stage::kept().reset();
    return status;
}
