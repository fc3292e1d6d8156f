// The tie between the model's signals and the drawing, and the records in files.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CUndoRedo.h"
#include "ControlledElement.h"
#include "DrawingTest.h"
#include "DummyCircuitSolver.h"
#include "Invariants.h"

#include <QFile>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

namespace {

class Binding : public EditorTest {
protected:
    void addDivider() {
        add("Resistor.Basic", {0, 0});
        add("Resistor.Basic", {204.127, -3});
        add("Capacitor.Basic", {100, 100});
        join("R1.n", "R2.p")->setName(QStringLiteral("mid"));
        solver.makeConnection(terminal(QStringLiteral("C1.p")), circuit.node(0));
        element(QStringLiteral("R2"))->setRotation(1);
    }

    /// As the items ask for it.
    void requestRemoval(ICircuitNode* node) {
        EXPECT_TRUE(QMetaObject::invokeMethod(editor.get(), "on_removeNodeRequest",
                                              Q_ARG(ICircuitNode*, node)));
    }

    QDomElement savedPart() {
        document = QDomDocument();
        QDomElement part = document.createElement(QStringLiteral("Part"));
        document.appendChild(part);
        EXPECT_TRUE(editor->saveProjectPart(document, part));
        return part;
    }

    static QStringList childNames(const QDomElement& parent) {
        QStringList names;
        for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling()) {
            names << (child.isComment() ? child.nodeValue() : child.nodeName());
        }
        return names;
    }

    void loadPart(const char* records) {
        QDomDocument source;
        ASSERT_TRUE(source.setContent("<Part>" + QByteArray(records) + "</Part>"));
        EXPECT_TRUE(editor->loadProjectPart(source, source.documentElement()));
    }

    QDomDocument document;
};

}  // namespace

TEST_F(Binding, DrawsAPreloadedCircuitSilentlyAndLetsGoOfTheOld) {
    addDivider();
    Circuit second;
    CircuitSolver secondSolver(&second);
    second.addElement(factory.createElement(QStringLiteral("Diode.Semiconductors")));
    second.addElement(factory.createElement(QStringLiteral("Diode.Semiconductors")));
    secondSolver.makeConnection(second.element(0)->elementNode(QStringLiteral("A")),
                                second.element(1)->elementNode(QStringLiteral("K")));
    QSignalSpy modified(editor.get(), &CCircuitEditor::projectPartModified);
    editor->setCircuitSolver(&secondSolver);
    EXPECT_TRUE(modified.isEmpty());
    EXPECT_EQ(circuit.elementCount(), 0);
    EXPECT_NE(editor->nodeItem(second.node(0)), nullptr);
    EXPECT_TRUE(invariantBreaches(*editor).isEmpty());
    circuit.addElement(factory.createElement(QStringLiteral("Resistor.Basic")));
    EXPECT_TRUE(modified.isEmpty());

    editor->setCircuitSolver(nullptr);
    EXPECT_EQ(editor->circuit(), nullptr);
    EXPECT_EQ(second.elementCount(), 0);
    EXPECT_TRUE(editor->scene()->items().isEmpty());
    EXPECT_FALSE(editor->saveProjectPart(document, QDomElement()));
    EXPECT_FALSE(editor->loadProjectPart(document, QDomElement()));
}

TEST_F(Binding, SurvivesASolverThatGoesAway) {
    auto doomedSolver = std::make_unique<CircuitSolver>(&circuit);
    editor->setCircuitSolver(doomedSolver.get());
    addDivider();
    doomedSolver.reset();
    EXPECT_EQ(editor->circuit(), nullptr);
    editor->clear();
    requestRemoval(circuit.node(0));
    EXPECT_EQ(circuit.nodeCount(), 1);
    editor.reset();
}

TEST_F(Binding, ThePanelShowsTheSelectionAndLosesWhatIsRemoved) {
    PanelStub panel;
    editor->setPropertyEditor(&panel);
    addDivider();
    add("Resistor.Basic", {400, 0});
    add("Resistor.Basic", {600, 0});
    ICircuitNode* other = join("R3.n", "R4.p");
    other->setName(QStringLiteral("mid"));
    itemOf(element(QStringLiteral("R3")))->setSelected(true);
    EXPECT_EQ(panel.shown, element(QStringLiteral("R3")));
    panel.calls = 0;
    itemOf(circuit.node(0))->setSelected(true);
    EXPECT_TRUE(itemOf(other)->isSelected());  // of the same name
    EXPECT_EQ(panel.calls, 1);
    EXPECT_EQ(panel.shown, circuit.node(0)->containerObject());
    circuit.removeElement(element(QStringLiteral("R4")));
    EXPECT_NE(panel.shown, nullptr);
    circuit.removeNode(circuit.node(0));
    EXPECT_EQ(panel.shown, nullptr);

    panel.shown = &circuit;
    editor->clear();
    EXPECT_EQ(panel.shown, nullptr);
    QObject stranger;
    panel.shown = &stranger;
    editor->clear();
    EXPECT_EQ(panel.shown, nullptr);
}

TEST_F(Binding, WritesElementsWithTwoDecimalsAndNodesWithAll) {
    addDivider();
    itemOf(circuit.node(0))->setPos(1.23456789, 0);
    itemOf(circuit.node(0))->addShape(QPainterPath(QPointF(0.125, 7)), true);
    circuit.addGlobalVariable(QStringLiteral("k"), 2.5, true);
    circuit.addStringGlobalVariable(QStringLiteral("s"), QStringLiteral("text"));
    circuit.setTitle(QStringLiteral("Divider"));
    const QDomElement part = savedPart();
    EXPECT_EQ(childNames(part),
              (QStringList{"Circuit Element Information", "CircuitElement", "CircuitElement",
                           "CircuitElement", "Circuit Node Information", "CircuitNode",
                           "Global Variables Information", "GlobalVar", "GlobalVar", "Text boxes",
                           "Element Property Text Boxes", "Global Param Text boxes"}));
    EXPECT_EQ(part.attribute(QStringLiteral("Title")), QStringLiteral("Divider"));
    const QList<QDomElement> elements =
        xmlUtils.findElements(part, QStringLiteral("CircuitElement"));
    EXPECT_EQ(elements.at(1).attribute(QStringLiteral("X")), QStringLiteral("204.13"));
    EXPECT_EQ(elements.at(1).attribute(QStringLiteral("Y")), QStringLiteral("-3.00"));
    EXPECT_TRUE(elements.at(1).hasAttribute(QStringLiteral("ModelName")));
    const QDomElement node = xmlUtils.findElement(part, QStringLiteral("CircuitNode"));
    EXPECT_EQ(node.attribute(QStringLiteral("X")).toDouble(), 1.23456789);
    const QDomElement end = xmlUtils.findElements(node, QStringLiteral("ElementNode")).at(2);
    EXPECT_EQ(end.attribute(QStringLiteral("Name")), QStringLiteral("p"));
    EXPECT_EQ(end.attribute(QStringLiteral("ElementID")),
              elements.at(2).attribute(QStringLiteral("ID")));
    const QDomElement strings = xmlUtils.findElements(part, QStringLiteral("GlobalVar")).at(1);
    EXPECT_EQ(strings.attribute(QStringLiteral("IsString")), QStringLiteral("1"));

    // Numbers run on: only equality within one file means something.
    const int first = elements.at(0).attribute(QStringLiteral("ID")).toInt();
    const QDomElement again = xmlUtils.findElement(savedPart(), QStringLiteral("CircuitElement"));
    EXPECT_EQ(again.attribute(QStringLiteral("ID")).toInt(), first + 3);
}

TEST_F(Binding, ProjectPartAndCircuitFileComeBackAsTheyWere) {
    addDivider();
    QPainterPath drawn(QPointF(30, 0));
    drawn.lineTo(204, -33);
    itemOf(circuit.node(0))->addShape(drawn, true);
    const QString file = tempFile(QStringLiteral("a.ckt"));
    editor->save(file);
    editor->load(file);  // settles the two decimals
    const QByteArray before = editor->describe();
    EXPECT_EQ(circuit.elementCount(), 3);

    const QDomElement part = savedPart();
    EXPECT_TRUE(editor->loadProjectPart(document, part));
    EXPECT_EQ(editor->describe(), before);
    editor->save(file);
    editor->clear();
    editor->load(file);
    EXPECT_EQ(editor->describe(), before);
    EXPECT_EQ(itemOf(element(QStringLiteral("R2")))->pos(), QPointF(204.13, -3));  // off the grid

    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().startsWith("<!DOCTYPE VortelCircuit>"));
}

TEST_F(Binding, ResolvesControlsWhenTheWholeCircuitExists) {
    loadPart(
        "<CircuitElement ElementType='CurrentControlledVoltage.Sources' ID='4'>"
        "<Parameter Name='control' Value='R9'/></CircuitElement>"
        "<CircuitElement ElementType='Resistor.Basic' ID='5'>"
        "<Property Name='Name' Value='R9'/></CircuitElement>");
    ASSERT_EQ(circuit.elementCount(), 2);
    auto* source = qobject_cast<ControlledElement*>(element(QStringLiteral("H1")));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->controllingElement(), element(QStringLiteral("R9")));
}

TEST_F(Binding, SkipsRecordsThatCannotBeRestored) {
    const char* const r = "<CircuitElement ElementType='Resistor.Basic' ID='%'/>";
    const QByteArray pair = QByteArray(r).replace('%', "1") + QByteArray(r).replace('%', "2") +
                            QByteArray(r).replace('%', "");
    const struct {
        const char* what;
        const char* records;
        int elements;
        int nodes;
    } rows[] = {
        {"no type", "<CircuitElement ID='9'/>", 3, 0},
        {"unknown type", "<CircuitElement ElementType='Flux.Basic' ID='9'/>", 3, 0},
        {"one terminal", "<CircuitNode><ElementNode Name='p' ElementID='1'/></CircuitNode>", 3, 0},
        {"unknown number",
         "<CircuitNode><ElementNode Name='p' ElementID='1'/><ElementNode Name='p' "
         "ElementID='7'/></CircuitNode>",
         3, 0},
        {"unknown terminal",
         "<CircuitNode><ElementNode Name='p' ElementID='1'/><ElementNode Name='z' "
         "ElementID='2'/></CircuitNode>",
         3, 0},
        {"refused",
         "<CircuitNode><ElementNode Name='p' ElementID='1'/><ElementNode Name='p' "
         "ElementID='1'/></CircuitNode>",
         3, 0},
        {"no number means number 0",
         "<CircuitNode Name='a'><ElementNode Name='p' ElementID='1'/><ElementNode "
         "Name='p'/></CircuitNode>",
         3, 1}};
    for (const auto& row : rows) {
        loadPart((pair + row.records).constData());
        EXPECT_EQ(circuit.elementCount(), row.elements) << row.what;
        EXPECT_EQ(circuit.nodeCount(), row.nodes) << row.what;
        EXPECT_TRUE(invariantBreaches(*editor).isEmpty()) << row.what;
    }
}

TEST_F(Binding, AFailingLaterTerminalLeavesThePartialNode) {
    loadPart(
        "<CircuitElement ElementType='Resistor.Basic' ID='1' X='0' Y='0'/>"
        "<CircuitElement ElementType='Resistor.Basic' ID='2' X='200' Y='nan'/>"
        "<CircuitElement ElementType='Resistor.Basic' ID='3' X='400' Y='1e999'/>"
        "<CircuitNode Name='half' X='5' Y='5'><ElementNode Name='n' ElementID='1'/>"
        "<ElementNode Name='p' ElementID='2'/><ElementNode Name='p' ElementID='8'/>"
        "<ElementNode Name='n' ElementID='3'/>"
        "<Shape><ShapeElement Type='0' X='1' Y='1'/></Shape></CircuitNode>");
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(circuit.node(0)->name(), QStringLiteral("half"));
    EXPECT_EQ(circuit.node(0)->elementNodeCount(), 2);
    EXPECT_FALSE(itemOf(circuit.node(0))->isManuallyConnected());
    EXPECT_EQ(itemOf(circuit.node(0))->pos(), QPointF(0, 0));
    EXPECT_EQ(itemOf(element(QStringLiteral("R2")))->pos(), QPointF(200, 0));
    EXPECT_EQ(itemOf(element(QStringLiteral("R3")))->pos(), QPointF(400, 0));
}

TEST_F(Binding, ReadsMovesAndLinesOfAShapeAndSkipsTheRest) {
    loadPart(
        "<CircuitElement ElementType='Resistor.Basic' ID='1'/>"
        "<CircuitElement ElementType='Resistor.Basic' ID='2' X='200'/>"
        "<CircuitNode Name='a'><ElementNode Name='n' ElementID='1'/>"
        "<ElementNode Name='p' ElementID='2'/><Shape>"
        "<ShapeElement Type='0' X='30' Y='0'/><ShapeElement Type='2' X='50' Y='50'/>"
        "<ShapeElement Type='3' X='60' Y='60'/><ShapeElement Type='1' X='170.25' Y='x'/>"
        "</Shape></CircuitNode>");
    EXPECT_EQ(pathPoints(itemOf(circuit.node(0))->internalShape()),
              (std::vector<QPointF>{{30, 0}, {170.25, 0}}));
}

TEST_F(Binding, LoadKeepsTheDrawingUnlessTheFileIsWellFormed) {
    addDivider();
    const QByteArray before = editor->describe();
    const QString file = tempFile(QStringLiteral("b.ckt"));
    for (const char* text : {"", "no xml", "<VortelCircuit><CircuitElement"}) {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
        out.close();
        editor->load(file);
        EXPECT_EQ(editor->describe(), before) << text;
    }
    editor->load(tempFile(QStringLiteral("missing.ckt")));
    EXPECT_EQ(editor->describe(), before);
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write("<AnyRoot><CircuitElement ElementType='Diode.Semiconductors'/></AnyRoot>");
    out.write("\0 what follows a NUL is not read", 31);
    out.close();
    editor->load(file);
    EXPECT_EQ(circuit.elementCount(), 1);
    editor->setXmlUtils(nullptr);
    editor->load(file);
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_FALSE(editor->loadProjectPart(document, QDomElement()));
    EXPECT_EQ(circuit.elementCount(), 1);
}

TEST_F(Binding, NamesWithForbiddenCharactersDoNotSpoilTheFile) {
    addDivider();
    const QString nasty =
        QString::fromUtf8("a\x01") + QChar(0) + QChar(0xd800) + QChar(0xffff) + QStringLiteral("b");
    circuit.node(0)->setName(nasty);
    const QString file = tempFile(QStringLiteral("c.ckt"));
    editor->save(file);
    editor->load(file);
    ASSERT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(circuit.node(0)->name(), QStringLiteral("ab"));
}
