// Capture, cut, erase and paste, on the canvas and on its documents.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CSelectionRectangleItem.h"
#include "CUndoRedo.h"
#include "ClipboardWidget.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QClipboard>
#include <QDomDocument>
#include <QFile>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <ctime>
#include <set>

namespace {

class ClipboardTest : public DrawingTest {
protected:
    ClipboardTest() {
        QApplication::clipboard()->clear();
        editor->setRouteEmptyShapes(true);
    }

    CSelectionRectangleItem* rectangle() const {
        for (QGraphicsItem* item : editor->scene()->items()) {
            if (editor->isSelectionRectangle(item)) {
                return static_cast<CSelectionRectangleItem*>(item);
            }
        }
        return nullptr;
    }

    /// The last copy as a document.
    QDomElement copied() {
        QDomDocument document;
        EXPECT_TRUE(document.setContent(clipboard.data(0).data.toString()));
        EXPECT_EQ(document.doctype().name(), QStringLiteral("VortelGUICircuitEditor"));
        m_copied = document;
        return document.documentElement();
    }

    void pasteText(const QString& text, QPointF point = {}) {
        clipboard.addData({{}, text, {}});
        editor->paste(point);
    }

    QPointF positionOf(const char* name) { return itemOf(name)->pos(); }

    /// R1 at the left, R2 at the right, joined by an automatic wire, with a text box below.
    void drawStage() {
        create("Resistor.Basic", {-100, 0});
        create("Resistor.Basic", {100, 0});
        solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
        editor->addTextBox(QRectF(-50, 40, 80, 30))->setText(QStringLiteral("stage{|?|}one"));
    }

    QDomDocument m_copied;
};

QStringList childTags(const QDomElement& parent) {
    QStringList tags;
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        tags << child.tagName();
    }
    return tags;
}

/// What a drawing says of its circuit without names and places: one line for each element, net and
/// text, elements being known by where they stand in relation to one another.
QStringList essence(const QByteArray& description) {
    const QJsonObject drawing = QJsonDocument::fromJson(description).object();
    const QJsonArray elements = drawing["elements"].toArray();
    QPointF corner(1e9, 1e9);
    for (const QJsonValue& element : elements) {
        corner.setX(std::min(corner.x(), element["x"].toDouble()));
        corner.setY(std::min(corner.y(), element["y"].toDouble()));
    }
    QStringList lines;
    QHash<QString, QString> places;
    for (const QJsonValue& element : elements) {
        const QString place = QStringLiteral("%1,%2")
                                  .arg(element["x"].toDouble() - corner.x())
                                  .arg(element["y"].toDouble() - corner.y());
        places.insert(element["name"].toString(), place);
        const QJsonArray rest{element["type"], element["model"], element["rotation"],
                              element["flip"], element["parameters"]};
        lines << place + QString::fromUtf8(QJsonDocument(rest).toJson(QJsonDocument::Compact));
    }
    for (const QJsonValue& node : drawing["nodes"].toArray()) {
        QStringList ends;
        for (const QJsonValue& end : node["terminals"].toArray()) {
            ends << places.value(end["element"].toString()) + end["terminal"].toString();
        }
        ends.sort();
        lines << ends.join(QLatin1Char(' ')) + (node["manual"].toBool() ? "manual" : "automatic");
    }
    for (const QJsonValue& box : drawing["textBoxes"].toArray()) {
        const bool isText = box["kind"].toString() != QLatin1String("property");
        lines << (isText ? box["text"].toString() : box["property"].toString());
    }
    lines.sort();
    return lines;
}

}  // namespace

TEST_F(ClipboardTest, AStageIsCopiedThreeTimesWithWiresAndTexts) {
    drawStage();
    element("R1")->setProperty("R", QStringLiteral("4.7k"));
    auto* caption = new CCircuitElementPropertyTextBox(editor);
    caption->setElementProperty(element("R1"), QStringLiteral("Caption"));
    caption->setPos(-110, 30);
    drag({-200, -60}, {200, 120}, Qt::ControlModifier);
    ASSERT_TRUE(editor->hasSelection());
    editor->copy();

    EXPECT_EQ(clipboard.data(0).description, "Group of 3 elements");
    EXPECT_EQ(QApplication::clipboard()->text(), clipboard.data(0).data.toString());

    const int commands = editor->undoStack()->count();
    for (int i = 0; i < 3; ++i) {
        editor->paste(QPointF(-200, 300 + 100 * i));
        ASSERT_NE(rectangle(), nullptr);
        EXPECT_EQ(rectangle()->itemList().size(), 4);  // two elements, wire, text box
        EXPECT_EQ(rectangle()->rect().bottomLeft(), QPointF(-200, 300 + 100 * i));
    }
    EXPECT_EQ(editor->undoStack()->count(), commands);
    EXPECT_FALSE(editor->hasSelection());
    ASSERT_EQ(circuit.elementCount(), 8);
    EXPECT_EQ(editor->elementPropertyTextBoxCount(), 4);
    const QByteArray pasted = snapshot();
    // Arrows move the last copy, wires and captions along, and nothing else.
    const QPointF before = editor->elementPropertyTextBox(3)->pos();
    key(Qt::Key_Right);
    EXPECT_EQ(editor->elementPropertyTextBox(3)->pos(), before + QPointF(10, 0));
    EXPECT_EQ(positionOf("R1"), QPointF(-100, 0));
    key(Qt::Key_Left);
    EXPECT_EQ(snapshot(), pasted);
    // Erased, the drawing is as it was before the last copy.
    key(Qt::Key_Delete);
    EXPECT_EQ(rectangle(), nullptr);
    EXPECT_EQ(circuit.elementCount(), 6);
    EXPECT_EQ(editor->textBoxCount() + editor->elementPropertyTextBoxCount(), 3 + 3);
}

TEST_F(ClipboardTest, OneElementTravelsWithoutItsIdentity) {
    create("Resistor.Basic", {-100, 0});
    element("R1")->setCaption(QStringLiteral("Load"));
    click({-100, 0});
    EXPECT_TRUE(editor->hasSelection());
    editor->copy();
    const QDomElement root = copied();
    EXPECT_EQ(root.tagName(), "CircuitElement");
    EXPECT_EQ(root.attribute("Name"), "Resistor.Basic");
    EXPECT_EQ(root.attribute("X"), "-100");
    EXPECT_FALSE(root.hasAttribute("ID"));
    EXPECT_EQ(clipboard.data(0).icon.isNull(), false);

    editor->paste(QPointF(52, 98));
    ASSERT_EQ(circuit.elementCount(), 2);
    EXPECT_EQ(positionOf("R2"), QPointF(50, 100));
    EXPECT_NE(element("R2")->caption(), "Load");

    // Cut takes it away; the copy in the history is still there to be chosen.
    click({300, 300});  // takes the rectangle away, which lies over it
    click({50, 100});
    editor->cut();
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_FALSE(editor->hasSelection());
    EXPECT_EQ(clipboard.dataCount(), 2);
    editor->paste(QPointF(0, 200));
    EXPECT_EQ(positionOf("R2"), QPointF(0, 200));
    editor->selectAll();
    editor->cut();
    EXPECT_FALSE(rectangle()->isVisible());
}

TEST_F(ClipboardTest, TheModelGoesAlongAndIsStoredOnce) {
    create("Resistor.Basic", {0, 0});
    element("R1")->setModelName(QStringLiteral("thin film"));
    click({0, 0});
    editor->copy();
    editor->paste(QPointF(200, 0));
    EXPECT_EQ(element("R2")->modelName(), "thin film");
    click({300, 300});
    click({0, 0});
    editor->cut();
    editor->paste(QPointF(0, 0));
    EXPECT_EQ(element("R1")->modelName(), "thin film");
    click({300, 300});
    click({0, 0});
    key(Qt::Key_Delete);
    editor->undo();
    EXPECT_EQ(element("R1")->modelName(), "thin film");
    QDomDocument file;
    editor->saveProjectPart(file, file.appendChild(file.createElement("Part")).toElement());
    EXPECT_EQ(file.toString().count(QStringLiteral("thin film")), 2);
}

TEST_F(ClipboardTest, TextBoxesKeepSizeFontAndColours) {
    CCircuitEditorTextBox* box = editor->addTextBox(QRectF(0, 0, 120, 40));
    box->setDefaultFont(QFont("DejaVu Sans", 14));
    box->setText(QStringLiteral("U{|W|} = 5 <&> V"));
    box->setFillColor(QColor("#123456"));
    click({20, 20});
    editor->copy();
    EXPECT_EQ(copied().tagName(), "TextBox");
    EXPECT_EQ(copied().text(), box->text());
    editor->paste(QPointF(100, 200));
    ASSERT_EQ(editor->textBoxCount(), 2);
    const CCircuitEditorTextBox* copy = editor->textBox(1);
    EXPECT_EQ(copy->rect(), QRectF(100, 200, 120, 40));
    EXPECT_EQ(copy->text(), box->text());
    EXPECT_EQ(copy->fillColor(), box->fillColor());
    // Unlike loading, pasting honours the size.
    EXPECT_EQ(copy->defaultFont().pixelSize(), 14);
    pasteText("<TextBox X='0' Y='0' Width='50' Height='30' FontSize='21'>big</TextBox>");
    EXPECT_EQ(editor->textBox(2)->defaultFont().pixelSize(), 21);
    // A frame is a box with nothing but blanks.
    box->setText(QStringLiteral("  "));
    click({300, 300});
    click({100, 20});
    editor->cut();
    editor->paste(QPointF(0, 0));
    EXPECT_EQ(editor->textBox(2)->text(), QStringLiteral("  "));
    // A text box without a text is listed, and leaves when it dies.
    pasteText("<TextBox X='0' Y='0' Width='50' Height='30'/>", {300, 0});
    EXPECT_EQ(rectangle()->itemList().size(), 1);
    turnEventLoop();
    EXPECT_TRUE(rectangle()->itemList().isEmpty());
    key(Qt::Key_Right);
}

TEST_F(ClipboardTest, WiresAreCapturedWholeAndRoundedDown) {
    drawStage();
    CCircuitEditorNodeItem* wire = wireAt("R1.n");
    QPainterPath path(QPointF(-60, 0));
    path.lineTo(10.7, -3.2);
    path.lineTo(60, 0);
    wire->addShape(path, true);
    // One end alone: the element without the wire.
    drag({-200, -60}, {-65, 30}, Qt::ControlModifier);
    editor->copy();
    EXPECT_EQ(childTags(copied().firstChildElement("CircuitElements")).size(), 1);
    EXPECT_TRUE(childTags(copied().firstChildElement("CircuitNodes")).isEmpty());

    drag({-200, -60}, {200, 30}, Qt::ControlModifier);
    editor->copy();
    const QDomElement node = copied().firstChildElement("CircuitNodes").firstChildElement();
    const QDomElement corner =
        node.firstChildElement("Shape").firstChildElement().nextSiblingElement();
    EXPECT_EQ(corner.attribute("X") + "," + corner.attribute("Y"), "10,-4");
    editor->paste(QPointF(-200, 300));
    const CCircuitEditorNodeItem* copy = editor->nodeItem(circuit.node(1));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->isManuallyConnected());
    EXPECT_EQ(pathPoints(copy->internalShape())[1], QPointF(10, -4));
    EXPECT_EQ(copy->mapToScene(copy->internalShape()).elementAt(0).y,
              editor->itemFor(circuit.element(2)->elementNode("n"))->scenePos().y());

    // A band over nothing captures nothing, and copies just that.
    drag({-400, -300}, {-350, -250}, Qt::ControlModifier);
    EXPECT_FALSE(editor->hasSelection());
    editor->copy();
    EXPECT_EQ(clipboard.data(0).data.toString(), QString());
}

TEST_F(ClipboardTest, AnEmptyPathIsTakenAtItsWordUnlessTold) {
    drawStage();
    drag({-200, -60}, {200, 120}, Qt::ControlModifier);
    editor->copy();
    for (const bool route : {false, true}) {
        editor->setRouteEmptyShapes(route);
        editor->paste(QPointF(-200, route ? 400 : 250));
        const CCircuitEditorNodeItem* wire =
            editor->nodeItem(circuit.node(circuit.nodeCount() - 1));
        EXPECT_EQ(wire->isManuallyConnected(), !route);
        EXPECT_EQ(wire->internalShape().isEmpty(), !route);
    }
}

TEST_F(ClipboardTest, AGroupHasItsPictureInItsSize) {
    CCircuitEditorSelection selection(editor);
    drawStage();
    selection.initFromSelectionRect(QRectF(-1000, -60, 2000, 120));
    EXPECT_EQ(selection.clipboardIcon().availableSizes(), QList<QSize>{QSize(2000, 120)});
}

TEST_F(ClipboardTest, TheChosenEntryIsPasted) {
    ClipboardWidget history;
    history.setClipboard(&clipboard);
    editor->setClipboardWidget(&history);
    create("Resistor.Basic", {0, 0});
    create("Capacitor.Basic", {100, 0});
    click({0, 0});
    editor->copy();
    click({100, 0});
    editor->copy();
    const auto pastedType = [this] {
        editor->paste(QPointF(0, 100));
        return circuit.element(circuit.elementCount() - 1)->desc()->elementType();
    };
    EXPECT_EQ(pastedType(), "Capacitor.Basic");
    emit history.dataClicked("CircuitEditor", {}, 1);
    EXPECT_EQ(pastedType(), "Resistor.Basic");
    emit history.dataClicked("Elsewhere", {}, 0);
    EXPECT_EQ(pastedType(), "Resistor.Basic");
    emit history.dataClicked("CircuitEditor", {}, 99);
    EXPECT_EQ(pastedType(), "Capacitor.Basic");

    // The system's own, for the one call; an entry without a text falls back on it, too.
    QApplication::clipboard()->setText("<CircuitElement Name='Inductor.Basic' X='0' Y='0'/>");
    emit history.dataClicked("CircuitEditor", {}, 1);
    editor->pasteFromClipboard();
    EXPECT_EQ(circuit.element(circuit.elementCount() - 1)->desc()->elementType(), "Inductor.Basic");
    EXPECT_EQ(pastedType(), "Resistor.Basic");
    clipboard.addData({});
    emit history.dataClicked("CircuitEditor", {}, 0);
    EXPECT_EQ(pastedType(), "Inductor.Basic");
    editor->setClipboardWidget(nullptr);
}

TEST_F(ClipboardTest, ForeignAndHostileTextsPasteWhatTheyCan) {
    QString deep;
    for (int i = 0; i < 200000; ++i) {
        deep += QLatin1String("<TextBox>");
    }
    const struct {
        QString text;
        int elements;
        int nodes;
    } cases[] = {
        {"not XML", 0, 0},
        {"<html><body>CircuitElement</body></html>", 0, 0},
        {"<CircuitElement Name='No.Such'/>", 0, 0},
        {"<CircuitElement/>", 0, 0},
        {deep, 0, 0},
        // Trees too deep to free, behind what a reader of streams stops at.
        {"<x:a><CircuitElement/>" + QString(deep).replace("TextBox", "b"), 0, 0},
        {"<a b='1' b='2'><CircuitElement/>" + QString(deep).replace("TextBox", "b"), 0, 0},
        {"<CircuitElementGroup><CircuitElements><CircuitElement Name='Resistor.Basic'/><Circ", 1,
         0},
        // What stands before an error is read, and what is forbidden left out.
        {"<Any><CircuitElements><CircuitElement Name='Resistor.Basic' Caption='a\x01'/>"
         "<CircuitElement Name='Resistor.Basic'/>\x02</CircuitElements></Other>",
         2, 0},
        {"<!DOCTYPE a [<!ENTITY b 'x'>]><TextBox>&b;</TextBox>", 0, 0},
        {"<CircuitElement Name='Resistor.Basic' X='1e300' Y='nan' R='-inf' Rotation='77'/>", 1, 0},
        {"<Any><CircuitElements><CircuitElement Name='Resistor.Basic' Caption='A'/>"
         "<CircuitElement Name='Resistor.Basic' Caption='B'><EPTextBox Width='-1e99'/>"
         "</CircuitElement></CircuitElements><CircuitNodes><CircuitNode>"
         "<ElementNode ParentElement='A' Name='p'/><ElementNode ParentElement='C' Name='p'/>"
         "</CircuitNode><CircuitNode><ElementNode/><ElementNode/></CircuitNode></CircuitNodes>"
         "<TextBoxes><TextBox FontSize='-4' FillColor='none'>t</TextBox></TextBoxes></Any>",
         2, 0},
    };
    for (const auto& example : cases) {
        editor->clear();
        pasteText(example.text);
        EXPECT_EQ(circuit.elementCount(), example.elements) << qPrintable(example.text.left(80));
        EXPECT_EQ(circuit.nodeCount(), example.nodes) << qPrintable(example.text.left(80));
        ASSERT_NE(rectangle(), nullptr);
        turnEventLoop();
        EXPECT_LT(editor->scene()->itemsBoundingRect().width(), 1e7);
        key(Qt::Key_Right);
    }
    // A web page of 50 MB, on the system's clipboard.
    const std::clock_t start = std::clock();
    pasteText(QString(50 * 1000 * 1000, QLatin1Char('<')));
    // Of the process's own time, however busy the machine is.
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 20);
}

TEST_F(ClipboardTest, AnAnnotatedAmplifierSurvivesItsCopy) {
    QFile file(QStringLiteral(VORTEL_SOURCE_DIR "/examples/opamp-741.vprj"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QDomDocument project;
    ASSERT_TRUE(project.setContent(&file));
    ASSERT_TRUE(editor->loadProjectPart(
        project, project.documentElement().firstChildElement("ProjectPart")));
    turnEventLoop();
    const QStringList before = essence(editor->describe());
    EXPECT_GT(before.size(), 100);
    for (int round = 0; round < 2; ++round) {
        editor->selectAll();
        editor->copy();
        editor->clear();
        editor->paste(QPointF(0, 0));
        turnEventLoop();
        EXPECT_EQ(essence(editor->describe()), before);
    }
}
