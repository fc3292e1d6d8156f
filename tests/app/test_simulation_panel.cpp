// Set up, run, look: the panels of the simulation in the window, with the real simulator.

#include "Circuit.h"
#include "CircuitElementNode.h"
#include "CurveColors.h"
#include "CurveData.h"
#include "CurvePlot.h"
#include "ICircuitSolver.h"
#include "NetlistTools.h"
#include "OperatingPoint.h"
#include "PlotPanel.h"
#include "SimulationPanel.h"
#include "SimulationPart.h"
#include "WarningGuard.h"
#include "WindowTest.h"

#include <qwt_scale_map.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QFile>
#include <QGraphicsScene>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

#include <cmath>
#include <complex>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr int RunMs = 20000;

}  // namespace

class SimulationPanelTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        open(QStringLiteral(VORTEL_SOURCE_DIR "/examples/rc-lowpass.vprj"));
        panel = qobject_cast<SimulationPanel*>(
            workbench.object("CSimulationComponent.simulationPanel"));
        plot = qobject_cast<PlotPanel*>(workbench.object("CSimulationComponent.plotPanel"));
        ASSERT_TRUE(panel && plot);
        if (!workbench.simulation()->simulator().obstacle().isEmpty()) {
            GTEST_SKIP() << "ngspice is not installed";
        }
    }

    QDockWidget* dock(const char* name) {
        return window->findChild<QDockWidget*>(QLatin1String(name));
    }
    void type(const char* field, const char* text) {
        auto* line = panel->findChild<QLineEdit*>(QLatin1String(field));
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, QLatin1String(text));
    }
    void choose(const char* label) {
        auto* box = panel->findChild<QComboBox*>("analysis");
        box->setCurrentText(QLatin1String(label));
        emit box->activated(box->currentIndex());
    }
    /// True if the run has ended well.
    bool run() {
        QSignalSpy succeeded(panel, &SimulationPanel::succeeded);
        QSignalSpy failed(panel, &SimulationPanel::failed);
        QTest::keyClick(window.get(), Qt::Key_F5);
        const bool ended =
            QTest::qWaitFor([&] { return succeeded.count() + failed.count() > 0; }, RunMs);
        // The plots find their places.
        QApplication::processEvents();
        return ended && failed.isEmpty();
    }
    QTreeWidgetItem* row(const char* curve) {
        const auto rows =
            plot->findChild<QTreeWidget*>()->findItems(QLatin1String(curve), Qt::MatchExactly);
        return rows.value(0);
    }
    const PlotCurve& curve(int number) { return plot->content().curves.at(number); }
    CurvePlot& page(int number) { return *plot->plots().at(number); }
    /// The place on the canvas of the plot where the curve is a third of the width along.
    QPoint placeOn(int plotNumber, int curveNumber) {
        CurvePlot& of = page(plotNumber);
        const int x = of.canvas()->width() / 3;
        const double y = of.valueAt(curveNumber, of.invTransform(QwtPlot::xBottom, x));
        return {x, qRound(of.transform(QwtPlot::yLeft, y))};
    }

    SimulationPanel* panel = nullptr;
    PlotPanel* plot = nullptr;
};

TEST_F(SimulationPanelTest, PlotsTheResponseOfAFilter) {
    EXPECT_FALSE(dock("showCurves")->isVisible());
    dock("showSimulation")->show();
    type("ac.to", "100k");
    ASSERT_TRUE(run());
    EXPECT_TRUE(dock("showCurves")->isVisible());
    // What was typed counts though the field was never left, and is kept with the project.
    EXPECT_EQ(workbench.simulation()->setup().value("ac", "to"), "100k");
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_EQ(plot->plots().size(), 2);
    EXPECT_TRUE(plot->content().xLog);
    const PlotCurve output = curve(1);
    EXPECT_EQ(output.name, "output");
    ASSERT_GT(output.x.size(), 200);
    EXPECT_NEAR(output.x.last(), 1e5, 1);
    for (int i = 0; i < output.x.size(); ++i) {
        const std::complex<double> answer =
            1.0 / std::complex<double>(1, 2 * Pi * output.x.at(i) * 1e3 * 100e-9);
        ASSERT_NEAR(output.traces.at(0).values.at(i), 20 * std::log10(std::abs(answer)), 1e-4);
        ASSERT_NEAR(output.traces.at(1).values.at(i), std::arg(answer) * 180 / Pi, 1e-3);
    }
    EXPECT_NEAR(page(0).valueAt(1, 1 / (2 * Pi * 1e-4)), -3.0103, 0.01);

    // A further variable needs no further run, and leaves what is looked at.
    const QRectF view(10, -20, 990, 15);
    page(0).setView(view);
    const QSignalSpy runs(&workbench.simulation()->simulator(), &Simulator::finished);
    circuit()->addOutputVariable(element("C1"), QStringLiteral("v"));
    QApplication::processEvents();
    ASSERT_EQ(plot->content().curves.size(), 3);
    EXPECT_EQ(curve(2).element, "C1");
    EXPECT_NEAR(curve(2).traces.at(0).values.last(), output.traces.at(0).values.last(), 1e-9);
    EXPECT_EQ(page(0).view(), view);
    EXPECT_TRUE(runs.isEmpty());
}

TEST_F(SimulationPanelTest, ThePointerZoomsHidesAndShowsInTheDrawing) {
    ASSERT_TRUE(run());
    CurvePlot& magnitude = page(0);
    QWidget* canvas = magnitude.canvas();
    const QRectF whole = magnitude.view();
    const QPoint from(canvas->width() / 4, canvas->height() / 4);
    const QPoint to(canvas->width() / 2, canvas->height() / 2);
    const double left = magnitude.invTransform(QwtPlot::xBottom, from.x());
    const double top = magnitude.invTransform(QwtPlot::yLeft, from.y());
    QTest::mousePress(canvas, Qt::LeftButton, {}, from);
    QTest::mouseMove(canvas, to);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, to);
    EXPECT_NEAR(magnitude.view().left() / left, 1, 0.02);
    EXPECT_NEAR(magnitude.view().bottom(), top, 0.02 * whole.height());
    // All plots share their abscissa, and one step leads back.
    EXPECT_DOUBLE_EQ(page(1).view().left(), magnitude.view().left());
    QTest::mouseClick(canvas, Qt::RightButton, {}, from);
    EXPECT_EQ(magnitude.view(), whole);

    const QPoint place = placeOn(0, 1);
    row("output")->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(magnitude.curveAt(place), 0);  // the input, which is as high here
    EXPECT_FALSE(plot->svg().contains("output"));
    row("output")->setCheckState(0, Qt::Checked);
    EXPECT_TRUE(plot->svg().contains("output"));
    const QPoint phase = placeOn(1, 0);
    QTest::mouseClick(page(1).canvas(), Qt::LeftButton, {}, phase);
    const QList<QGraphicsItem*> selected = workbench.canvas()->graphicsScene()->selectedItems();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(items()->circuitNodeFromItem(selected.first()), circuit()->node(0));

    // Cursors: dragging one changes what the list tells.
    plot->findChild<QAction*>("plotCursors")->trigger();
    QApplication::processEvents();
    const double before = magnitude.invTransform(QwtPlot::xBottom, canvas->width() / 3);
    QTest::mousePress(canvas, Qt::LeftButton, {}, {canvas->width() / 3, 20});
    QTest::mouseMove(canvas, {canvas->width() / 2, 20});
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, {canvas->width() / 2, 20});
    const double at = magnitude.invTransform(QwtPlot::xBottom, canvas->width() / 2);
    EXPECT_GT(at, 2 * before);
    EXPECT_EQ(row("output")->text(1), shortNumber(magnitude.valueAt(1, at), "dB") + ", " +
                                          shortNumber(page(1).valueAt(1, at), "°"));
    EXPECT_FALSE(row("output")->text(3).isEmpty());
}

TEST_F(SimulationPanelTest, OrdinatesAreLogarithmicWhereTheyCanBe) {
    choose("Transient");
    ASSERT_TRUE(run());
    plot->findChild<QAction*>("plotLogY")->trigger();
    EXPECT_GT(page(0).view().top(), 0);
    plot->findChild<QAction*>("plotLogY")->trigger();
    EXPECT_LT(page(0).view().top(), 0);
    choose("AC");
    ASSERT_TRUE(run());
    plot->findChild<QAction*>("plotLogY")->trigger();
    EXPECT_LT(page(0).view().top(), 0);  // decibels are logarithms already
}

TEST_F(SimulationPanelTest, SavesWhatItShows) {
    choose("Transient");
    type("tran.stop", "2m");
    ASSERT_TRUE(run());
    DialogDriver driver;
    driver.chooseFile(folder.filePath("out.csv"));
    trigger("exportCurvesCsv");
    QFile file(folder.filePath("out.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readLine().trimmed(), "\"time\",\"input\",\"output\"");
    for (int i = 0; i < curve(0).x.size(); ++i) {
        const QList<QByteArray> words = file.readLine().trimmed().split(',');
        ASSERT_EQ(words.size(), 3);
        ASSERT_NEAR(words.at(0).toDouble(), curve(0).x.at(i), 1e-9);
        ASSERT_NEAR(words.at(2).toDouble(), curve(1).traces.at(0).values.at(i), 1e-9);
        // The source's own formula.
        ASSERT_NEAR(words.at(1).toDouble(), std::sin(2 * Pi * 1e3 * curve(0).x.at(i)), 1e-4);
    }
    EXPECT_TRUE(file.atEnd());
    driver.chooseFile(folder.filePath("no/out.svg"));
    driver.accept();
    trigger("exportCurvesSvg");
    EXPECT_TRUE(driver.texts.last().contains("cannot write")) << qPrintable(driver.texts.last());
    driver.chooseFile(folder.filePath("out.cir"));
    trigger("exportNetlist");
    QFile netlist(folder.filePath("out.cir"));
    ASSERT_TRUE(netlist.open(QIODevice::ReadOnly));
    EXPECT_TRUE(netlist.readAll().contains(".tran"));

    // The curves of a project go with it.
    window->setWindowModified(false);
    workbench.clear();
    EXPECT_TRUE(plot->plots().isEmpty());
}

TEST_F(SimulationPanelTest, TellsWhatKeepsItFromRunning) {
    type("ac.from", "10x");
    auto* hint = panel->findChild<QLabel*>("hint");
    EXPECT_FALSE(run());
    EXPECT_FALSE(hint->isHidden());
    EXPECT_TRUE(hint->text().contains("10x"));
    EXPECT_TRUE(dock("showSimulation")->isVisible());
    type("ac.from", "10");

    // A click on what is wrong leads to it.
    CircuitElement* resistor = element("R1");
    ASSERT_NE(resistor, nullptr);
    resistor->setPropertyValue(0, "{nope}");
    EXPECT_FALSE(run());
    auto* problems = panel->findChild<QListWidget*>("problems");
    ASSERT_GT(problems->count(), 0);
    EXPECT_TRUE(problems->item(0)->text().contains("R1"));
    QTest::mouseClick(problems->viewport(), Qt::LeftButton, {},
                      problems->visualItemRect(problems->item(0)).center());
    EXPECT_TRUE(items()->itemFor(resistor)->isSelected());
    resistor->setPropertyValue(0, "1k");
    EXPECT_TRUE(run());
    EXPECT_EQ(problems->count(), 0);
}

TEST_F(SimulationPanelTest, ShowsTheOperatingPointOverTheDrawingOnly) {
    Circuit& circuit = workbench.simulation()->circuit();
    for (int i = 0; i < circuit.elementNamed("V1")->propertyCount(); ++i) {
        if (circuit.elementNamed("V1")->propertyName(i) == "offset") {
            circuit.elementNamed("V1")->setPropertyValue(i, "3");
        }
    }
    const QTemporaryDir folder;
    const auto picture = [&](const char* name) {
        QString error;
        const QString fileName = folder.filePath(name);
        EXPECT_TRUE(workbench.savePicture({PictureFormat::SVG, fileName}, &error));
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QByteArray bare = picture("bare.svg");
    auto* values = window->findChild<OperatingPoint*>();
    window->findChild<QAction*>("showValues")->setChecked(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !values->labels().isEmpty(); }, RunMs));
    QStringList texts;
    for (const ValueLabel& label : values->labels()) {
        texts.append(label.text);
    }
    EXPECT_EQ(texts.mid(0, 2), QStringList({"3V", "3V"}));
    EXPECT_TRUE(window->findChild<QWidget*>("operatingPoint")->isVisible());
    EXPECT_EQ(picture("shown.svg"), bare);
    QString error;
    auto items = operatingPointItems(workbench, &error);
    ASSERT_TRUE(items) << qPrintable(error);
    EXPECT_NE(picture("asked.svg"), bare);
    items.reset();
    EXPECT_EQ(picture("after.svg"), bare);

    // What the drawing was before is not told of what it is now.
    circuit.elementNamed("R1")->setPropertyValue(0, "2k");
    emit circuit.elementNamed("R1")->elementChanged();
    QMetaObject::invokeMethod(workbench.editorWidget(), "projectPartModified");
    EXPECT_TRUE(values->labels().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !values->labels().isEmpty(); }, RunMs));
}

TEST_F(SimulationPanelTest, ANetlistElementIsEditedInItsPlace) {
    Circuit& circuit = workbench.simulation()->circuit();
    auto* items = qobject_cast<ICircuitEditorExt*>(workbench.editorWidget());
    DialogDriver driver;
    const auto answer = [&](const char* text) {
        driver.queue([text](QWidget* dialog) {
            dialog->findChild<QPlainTextEdit*>()->setPlainText(QLatin1String(text));
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
    };
    answer(".subckt Load a b\nR1 a b 1k\n.ends");
    NetlistTools tools(workbench, window.get());
    const QString type = tools.chosenType("Netlist.Subcircuits");
    bool placed = false;
    ASSERT_TRUE(QMetaObject::invokeMethod(workbench.editorWidget(), "placeElement",
                                          Q_RETURN_ARG(bool, placed), Q_ARG(QString, type),
                                          Q_ARG(QPointF, QPointF(200, 0))));
    CircuitElement* element = circuit.elementNamed("X1");
    ASSERT_TRUE(placed && element);
    CircuitElement* resistor = circuit.elementNamed("R1");
    circuit.circuitSolver()->makeConnection(element->elementNode("a"), resistor->elementNode("n"));
    const QPointF place = items->itemFor(element)->pos();
    const auto terminals = [&] { return circuit.elementNamed("X1")->elementNodeNames(); };
    QApplication::processEvents();
    workbench.canvas()->graphicsScene()->clearSelection();
    items->itemFor(element)->setSelected(true);
    answer(".subckt Load a b c\nR1 a b 1k\nR2 b c 1k\n.ends");
    window->findChild<QAction*>("editNetlist")->trigger();
    ASSERT_EQ(terminals(), QStringList({"a", "b", "c"}));
    element = circuit.elementNamed("X1");
    EXPECT_EQ(items->itemFor(element)->pos(), place);
    EXPECT_EQ(CircuitElementNode::from(element->elementNode("a"))->node(),
              CircuitElementNode::from(resistor->elementNode("n"))->node());
    QApplication::processEvents();
    announceLog("Undo: ");
    announceLog("Redo: ");
    workbench.canvas()->undo();
    EXPECT_EQ(terminals(), QStringList({"a", "b"}));
    EXPECT_NE(CircuitElementNode::from(circuit.elementNamed("X1")->elementNode("a"))->node(),
              nullptr);
    workbench.canvas()->redo();
    EXPECT_EQ(terminals(), QStringList({"a", "b", "c"}));
}

TEST(Curves, KeepPeaksWhenThinnedOut) {
    constexpr int Points = 1000000;
    QVector<double> xs(Points);
    QVector<double> ys(Points);
    for (int i = 0; i < Points; ++i) {
        xs[i] = i;
        ys[i] = i == 567890 ? 5 : std::sin(i * 0.01);
    }
    const CurveData data(xs, ys);
    QwtScaleMap xMap;
    QwtScaleMap yMap;
    xMap.setScaleInterval(0, Points);
    xMap.setPaintInterval(0, 800);
    yMap.setScaleInterval(-5, 5);
    yMap.setPaintInterval(500, 0);
    QVector<QPolygonF> lines = data.lines(xMap, yMap, 0, 800);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_LT(lines.first().size(), 4000);
    EXPECT_NEAR(lines.first().boundingRect().top(), 0, 1e-6);
    EXPECT_NEAR(lines.first().boundingRect().bottom(), yMap.transform(-1), 0.1);
    // Near by, each point counts, and a neighbour beyond either edge.
    xMap.setScaleInterval(567880, 567900);
    EXPECT_EQ(data.lines(xMap, yMap, 0, 800).first().size(), 22);

    // A sweep that begins anew, or goes down, and what is no number.
    const CurveData pieces({3, 2, 1, 3, 2, 1}, {30, 20, 10, 31, std::nan(""), 11});
    xMap.setScaleInterval(0, 4);
    EXPECT_EQ(pieces.lines(xMap, yMap, 0, 800).size(), 3);
    EXPECT_DOUBLE_EQ(pieces.valueAt(2.5), 25);
    EXPECT_TRUE(std::isnan(pieces.valueAt(4)));
}

TEST(Curves, AreToldApartOnDarkAndLight) {
    for (const QColor& background : {QColor(Qt::white), QColor(35, 38, 41)}) {
        QStringList colors;
        for (int i = 0; i < 20; ++i) {
            const QColor color = curveColor(i, background);
            EXPECT_GE(contrast(color, background), 3.5) << i;
            colors.append(color.name());
        }
        EXPECT_EQ(colors.removeDuplicates(), 0);
    }
}
