// The output variables panel: picking on the canvas, the list, its storage.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorScene.h"
#include "COutputVariablesWidget.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "ICircuitOutputVariable.h"

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QContextMenuEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

namespace {

class NodeStub : public QObject, public ICircuitNode {
public:
    QObject* containerObject() override { return this; }
    ICircuit* circuit() override { return nullptr; }
    int elementNodeCount() override { return 0; }
    ICircuitElementNode* elementNode(int) override { return nullptr; }
    void setName(QString) override {}
    QString name() override { return QStringLiteral("n1"); }
    int wireClearance() override { return 0; }
    QString type() override { return letter; }

    QString letter;
};

class VariableStub : public QObject, public ICircuitOutputVariable {
public:
    QObject* containerObject() override { return this; }
    QString name() override { return QStringLiteral("out"); }
    void setName(QString) override {}
    void setAC(bool on) override { ac = on; }
    bool isAC() override { return ac; }
    int type() override { return kind; }
    ICircuitElement* element() override { return nullptr; }
    ICircuitElementNode* elementNode() override { return nullptr; }
    ICircuitNode* node() override { return &net; }
    QString elementVarName() override { return {}; }

    int kind = NodeVariable;
    bool ac = false;
    NodeStub net;
};

class KeyCounter : public QWidget {
public:
    int pressed = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++pressed; }
};

}  // namespace

/// Two resistors, joined by R1.n and R2.p, and the panel beside the canvas.
class OutputVariables : public DrawingTest {
protected:
    OutputVariables() {
        create("Resistor.Basic", {0, 0});
        create("Resistor.Basic", {200, 0});
        solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
        outVars = framework.component->outputVariablesWidget();
        outVars->show();
        outVars->activateWindow();
        connect(&circuit, &Circuit::outputVariableEdited, [this] { ++edits; });
        connect(outVars, &COutputVariablesWidget::projectPartModified, [this] { ++modified; });
    }

    template <class Source, class Signal, class Slot>
    void connect(Source* source, Signal signal, Slot slot) {
        QObject::connect(source, signal, outVars, slot);
    }
    template <class Widget>
    Widget* child(const char* name) {
        return outVars->findChild<Widget*>(QLatin1String(name));
    }
    QTreeWidget* list() { return child<QTreeWidget>("outVarsList"); }
    QTreeWidgetItem* row(int index) { return list()->topLevelItem(index); }
    void clickOn(const char* button, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(child<QAbstractButton>(button), Qt::LeftButton, modifiers);
    }
    /// The rows' texts in their order; those of AC variables are marked.
    QStringList texts() {
        QStringList result;
        const QJsonDocument drawing = QJsonDocument::fromJson(editor->describe());
        for (const QJsonValue& value : drawing.object()["outputVariables"].toArray()) {
            result << value["text"].toString() + (value["ac"].toBool() ? "*" : "");
        }
        EXPECT_EQ(list()->topLevelItemCount(), result.size());
        return result;
    }
    QString arrows() {
        return QString(child<QToolButton>("cmdUp")->isEnabled() ? "up" : "") +
               (child<QToolButton>("cmdDown")->isEnabled() ? "down" : "");
    }
    /// One variable of each kind: out1 of the net, out2 of R1.p, out3 of R2.
    void addThree() {
        circuit.addOutputVariable(CircuitNode::from(circuit.node(0)));
        circuit.addOutputVariable(element("R1"), terminal("R1.p"));
        circuit.addOutputVariable(element("R2"), "i");
    }
    QLineEdit* openNameEditor(int index) {
        turnEventLoop();  // an earlier one
        list()->setCurrentItem(row(index));
        QTest::keyClick(list(), Qt::Key_F2);
        auto* line = list()->viewport()->findChild<QLineEdit*>();
        EXPECT_NE(line, nullptr);
        return line;
    }
    bool isNameEditorOpen() {
        turnEventLoop();
        return list()->viewport()->findChild<QLineEdit*>() != nullptr;
    }
    void openRowMenu(int index) {
        const QPoint place = list()->visualItemRect(row(index)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                list()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list()->viewport(), &event);
    }
    QMimeData* dataOf(const QModelIndexList& rows) { return list()->model()->mimeData(rows); }
    /// Drags the selected rows with the mouse to the upper edge of a row.
    void dragSelectionTo(int target) {
        QWidget* viewport = list()->viewport();
        QWindow* surface = outVars->windowHandle();
        const QPoint from = list()->visualItemRect(list()->selectedItems().first()).center();
        const QPoint to = list()->visualItemRect(row(target)).topLeft() + QPoint(30, 1);
        // The drag runs an event loop of its own, which sees what goes to the window.
        QTimer::singleShot(0, viewport, [=] {
            const QPoint place = viewport->mapTo(outVars, to);
            QTest::mouseMove(surface, place);
            QTest::mouseRelease(surface, Qt::LeftButton, {}, place);
        });
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 2; ++step) {
            const QPoint place = from + QPoint(20 * step, 0);
            QMouseEvent move(QEvent::MouseMove, place, viewport->mapToGlobal(place), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(viewport, &move);
        }
    }
    bool drop(const QMimeData* data, int index) {
        return list()->model()->dropMimeData(data, Qt::MoveAction, index, 0, {});
    }

    COutputVariablesWidget* outVars = nullptr;
    int edits = 0;
    int modified = 0;
};

TEST_F(OutputVariables, APlainClickTakesOnePickAndAControlClickMany) {
    QPushButton* add = child<QPushButton>("cmdAddVariable");
    clickOn("cmdAddVariable");
    EXPECT_EQ(editor->mode(), CCircuitEditor::OutVarSelectionMode);
    click(placeOf("R1.n"));
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    EXPECT_FALSE(add->isChecked());
    EXPECT_EQ(modified, 1);
    click(placeOf("R2.n"));  // no pick any more
    EXPECT_EQ(texts(), QStringList{"out1=nodev_of_n1"});

    clickOn("cmdAddVariable", Qt::ControlModifier);
    DialogDriver driver;
    click(placeOf("R2.n"));
    click((placeOf("R1.n") + placeOf("R2.p")) / 2);
    driver.chooseEntry("v");
    click({0, 0});
    EXPECT_EQ(texts(), (QStringList{"out1=nodev_of_n1", "out2=nodev_of_", "out3=nodev_of_n1",
                                    "out4=v_of_R1"}));
    EXPECT_TRUE(add->isChecked());
    EXPECT_EQ(driver.texts, QStringList{"|i|p|v||i_ac|v_ac||R"});
    outVars->on_circuitEditor_outvarSelected(element("R1"), QString());
    EXPECT_EQ(list()->topLevelItemCount(), 4);

    // The key is swallowed wherever the focus is, and only while it means this.
    KeyCounter elsewhere;
    for (QWidget* focused : {static_cast<QWidget*>(&elsewhere), static_cast<QWidget*>(editor),
                             static_cast<QWidget*>(list())}) {
        add->setChecked(true);
        QTest::keyClick(focused, Qt::Key_Escape);
        EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
        EXPECT_FALSE(add->isChecked());
    }
    EXPECT_EQ(elsewhere.pressed, 0);
    QTest::keyClick(&elsewhere, Qt::Key_Escape);
    EXPECT_EQ(elsewhere.pressed, 1);

    // The button shows a mode that was set elsewhere.
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    EXPECT_TRUE(add->isChecked());
    editor->setMode(CCircuitEditor::ManualConnectionMode);
    EXPECT_FALSE(add->isChecked());
    EXPECT_EQ(editor->mode(), CCircuitEditor::ManualConnectionMode);
}

TEST_F(OutputVariables, TheKindOfNetGivesTheWordAndTheMenu) {
    const struct {
        const char* letter;
        const char* text;
        const char* acText;
        bool hasMenu;
    } cases[] = {{"e", "out=nodev_of_n1", "out=nodev_ac_of_n1", true},
                 {"d", "out=dvar_of_n1", "out=dvar_of_n1", false},
                 {"t", "out=tmpr_of_n1", "out=tmpr_of_n1", false},
                 {"p", "out=pwr_of_n1", "out=pwr_of_n1", false},
                 {"g", "out=var_of_n1", "out=var_ac_of_n1", true},
                 {"x", "out=xvar_of_n1", "out=xvar_ac_of_n1", true},
                 {"?", "out=_of_n1", "out=_of_n1", false}};
    for (const auto& expected : cases) {
        VariableStub variable;
        variable.net.letter = expected.letter;
        outVars->on_outputVariableAdded(&variable);
        EXPECT_EQ(outVars->outvarText(&variable), expected.text);
        DialogDriver driver;
        if (expected.hasMenu) {
            driver.chooseEntry("AC");
        }
        openRowMenu(0);
        EXPECT_EQ(variable.ac, expected.hasMenu) << expected.letter;
        if (expected.hasMenu) {
            driver.closeMenu();
            openRowMenu(0);
            EXPECT_TRUE(variable.ac);
            driver.chooseEntry("AC");
            openRowMenu(0);
            EXPECT_FALSE(variable.ac);
        }
        variable.ac = true;
        EXPECT_EQ(outVars->outvarText(&variable), expected.acText);
        variable.kind = 3;
        EXPECT_EQ(outVars->outvarText(&variable), "");
        outVars->on_outputVariableRemoved(&variable);
    }
    // The variable may go while its menu is open.
    addThree();
    DialogDriver driver;
    driver.queue([this](QWidget* menu) {
        circuit.removeElement(element("R1"));
        turnEventLoop();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    openRowMenu(1);
    EXPECT_EQ(texts(), QStringList{"out3=i_of_R2"});
}

TEST_F(OutputVariables, ANameIsEditedInPlace) {
    addThree();
    QLineEdit* line = openNameEditor(1);
    EXPECT_EQ(line->text(), "out2");
    QTest::keyClicks(line, "volt");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_FALSE(isNameEditorOpen());
    EXPECT_EQ(edits, 0);

    // The same for an Escape that the list gets.
    QTest::keyClicks(openNameEditor(1), "volt");
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    EXPECT_TRUE(list()->itemDelegate()->editorEvent(&escape, list()->model(), {}, {}));
    EXPECT_FALSE(isNameEditorOpen());
    EXPECT_EQ(edits, 0);

    line = openNameEditor(1);
    QTest::keyClicks(line, "volt");
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_FALSE(isNameEditorOpen());
    EXPECT_EQ(edits, 1);
    EXPECT_EQ(texts().at(1), "volt=nodev_of_");

    QTest::keyClicks(openNameEditor(0), "net");
    child<QPushButton>("cmdDeleteVariable")->setFocus();
    EXPECT_FALSE(isNameEditorOpen());
    EXPECT_EQ(texts().at(0), "net=nodev_of_n1");

    // What is being edited may go.
    const int before = edits;
    QTest::keyClicks(openNameEditor(2), "gone");
    circuit.removeElement(element("R2"));
    EXPECT_FALSE(isNameEditorOpen());
    EXPECT_EQ(edits, before);
    EXPECT_EQ(texts(), QStringList{"volt=nodev_of_"});
}

TEST_F(OutputVariables, RowsMoveUpAndDown) {
    EXPECT_EQ(arrows(), "");
    addThree();
    list()->setCurrentItem(row(0));
    EXPECT_EQ(arrows(), "down");
    clickOn("cmdDown");
    EXPECT_EQ(arrows(), "updown");
    clickOn("cmdDown");
    EXPECT_EQ(arrows(), "up");
    EXPECT_EQ(texts(), (QStringList{"out2=nodev_of_", "out3=i_of_R2", "out1=nodev_of_n1"}));
    EXPECT_EQ(circuit.outputVariable(2)->name(), "out1");
    clickOn("cmdUp");
    EXPECT_EQ(circuit.outputVariable(1)->name(), "out1");
    EXPECT_EQ(list()->currentItem(), row(1));
    EXPECT_EQ(modified, 3) << "the order is no change of the circuit";

    // The neighbours may come and go.
    circuit.removeOutputVariable(circuit.outputVariable(0));
    EXPECT_EQ(arrows(), "down");
    circuit.removeOutputVariable(circuit.outputVariable(1));
    EXPECT_EQ(arrows(), "");
    addThree();
    EXPECT_EQ(arrows(), "down");
}

TEST_F(OutputVariables, TheCurrentRowIsShownOnTheDiagram) {
    addThree();
    const auto* scene = static_cast<CCircuitEditorScene*>(editor->scene());
    QGraphicsItem* const shown[] = {editor->itemFor(circuit.node(0)),
                                    editor->itemFor(terminal("R1.p")),
                                    editor->itemFor(element("R2"))};
    for (int i = 0; i < 3; ++i) {
        list()->setCurrentItem(row(i));
        EXPECT_EQ(scene->highlightedItem(), shown[i]) << i;
    }
}

TEST_F(OutputVariables, RowsGoWithWhatTheyName) {
    addThree();
    list()->setCurrentItem(row(0));
    solver.breakConnection(circuit.node(0));
    EXPECT_EQ(texts(), (QStringList{"out2=nodev_of_", "out3=i_of_R2"}));
    EXPECT_EQ(list()->currentItem(), row(0));
    click({0, 0});
    key(Qt::Key_Delete);
    turnEventLoop();
    EXPECT_EQ(texts(), QStringList{"out3=i_of_R2"});
    clickOn("cmdDeleteVariable");
    clickOn("cmdDeleteVariable");
    EXPECT_EQ(texts(), QStringList());
    EXPECT_EQ(modified, 6);

    create("Resistor.Basic", {0, 100});
    for (int i = 0; i < 5; ++i) {
        circuit.addOutputVariable(element("R2"), terminal("R2.p"));
        circuit.addOutputVariable(element("R1"), "v");
    }
    list()->setCurrentItem(row(3));
    framework.component->newCircuit();
    turnEventLoop();
    EXPECT_EQ(texts(), QStringList());
}

TEST_F(OutputVariables, DraggedRowsLandWhereTheyAreDropped) {
    addThree();
    const QAbstractItemModel* rows = list()->model();
    // One row; the view takes the source away after a move.
    std::unique_ptr<QMimeData> data(dataOf({rows->index(0, 0)}));
    EXPECT_EQ(data->formats().size(), 1);
    EXPECT_TRUE(drop(data.get(), 2));
    delete row(0);
    EXPECT_EQ(texts(), (QStringList{"out2=nodev_of_", "out1=nodev_of_n1", "out3=i_of_R2"}));
    // Several, in reverse order; no place means the end.
    data.reset(dataOf({rows->index(0, 0), rows->index(1, 0)}));
    EXPECT_TRUE(drop(data.get(), -1));
    delete row(0);
    delete row(0);
    EXPECT_EQ(texts(), (QStringList{"out3=i_of_R2", "out1=nodev_of_n1", "out2=nodev_of_"}));
    EXPECT_EQ(row(2)->flags(), Qt::ItemFlags(0x27));
    EXPECT_EQ(circuit.outputVariable(0)->name(), "out1");
    EXPECT_EQ(modified, 3);

    // Of two rows of one variable the first goes with it, and the other forgets it.
    drop(data.get(), 0);
    EXPECT_EQ(list()->topLevelItemCount(), 5);
    circuit.removeOutputVariable(circuit.outputVariable(0));
    EXPECT_EQ(modified, 4);
    EXPECT_EQ(list()->topLevelItemCount(), 4);
    EXPECT_FALSE(outVars->outputVariables().contains(nullptr));
    list()->selectAll();
    list()->setCurrentItem(row(0), 0, QItemSelectionModel::NoUpdate);
    clickOn("cmdDeleteVariable");
    EXPECT_EQ(texts(), QStringList());
}

TEST_F(OutputVariables, RowsAreDraggedWithTheMouse) {
    if (QGuiApplication::platformName() == "offscreen") {
        GTEST_SKIP() << "this platform ends each drag at its start";
    }
    addThree();
    list()->setCurrentItem(row(1));
    row(2)->setSelected(true);
    dragSelectionTo(0);
    EXPECT_EQ(texts(), (QStringList{"out3=i_of_R2", "out2=nodev_of_", "out1=nodev_of_n1"}));
    EXPECT_EQ(list()->currentItem(), row(1));
    clickOn("cmdDeleteVariable");
    EXPECT_EQ(texts(), QStringList{"out1=nodev_of_n1"});
}

TEST_F(OutputVariables, SavedAndLoadedWithOrderNamesAndMarks) {
    addThree();
    circuit.outputVariable(0)->setAC(true);
    circuit.outputVariable(2)->setName("cur <&>");
    list()->insertTopLevelItem(0, list()->takeTopLevelItem(2));
    const QStringList before = texts();
    EXPECT_EQ(before, (QStringList{"cur <&>=i_of_R2", "out1=nodev_ac_of_n1*", "out2=nodev_of_"}));
    QDomDocument document;
    QDomElement part = document.createElement("ProjectPart");
    document.appendChild(part);
    EXPECT_EQ(outVars->projectPartID(), "OutputVariables");
    EXPECT_TRUE(outVars->saveProjectPart(document, part));
    const auto addRecord = [&](std::initializer_list<std::pair<const char*, const char*>> values) {
        QDomElement record = document.createElement("OutputVar");
        for (const auto& value : values) {
            record.setAttribute(value.first, value.second);
        }
        part.appendChild(record);
    };
    addRecord({{"Type", "3"}, {"Name", "a"}, {"Node", "n1"}});
    addRecord({{"Type", "0"}, {"Name", "a"}, {"Node", "n7"}});
    addRecord({{"Type", "1"}, {"Name", "a"}, {"Element", "R1"}, {"ElementNode", "x"}});
    addRecord({{"Type", "2"}, {"Name", "a"}, {"Element", "R7"}, {"ElementVarName", "i"}});
    addRecord({{"Name", "typeless"}, {"ACType", "yes"}, {"Node", "n1"}});
    while (circuit.outputVariableCount() > 0) {
        circuit.removeOutputVariable(circuit.outputVariable(0));
    }
    QDomDocument read;
    ASSERT_TRUE(read.setContent(document.toString()));
    EXPECT_TRUE(outVars->loadProjectPart(read, read.documentElement()));
    EXPECT_EQ(texts(), before + QStringList{"typeless=nodev_of_n1"});
    EXPECT_FALSE(COutputVariablesWidget().loadProjectPart(read, read.documentElement()));
}

TEST(OutputVariablesPanel, OutlivesEditorAndCircuit) {
    class : public Circuit {
    public:
        using Circuit::addOutputVariable;
        ICircuitOutputVariable* addOutputVariable(ICircuitNode* node) override {
            unresolved += node ? 0 : 1;
            return Circuit::addOutputVariable(node);
        }
        int unresolved = 0;
    } kept;
    COutputVariablesWidget panel;
    panel.show();
    ElementFactory factory(shippedLibrary());
    CircuitSolver keptSolver(&kept);
    CCircuitEditor keptEditor;
    keptEditor.setCircuitSolver(&keptSolver);
    panel.setCircuitEditor(&keptEditor);
    kept.addElement(factory.createElement("Resistor.Basic"));
    kept.addOutputVariable(kept.element(0), "i");
    // Nodes that aren't found are the circuit's to judge.
    XmlUtils xmlUtils;
    panel.setXmlUtils(&xmlUtils);
    QDomDocument stored;
    stored.setContent(QStringLiteral("<P><OutputVar Type='0' Node='n7'/></P>"));
    EXPECT_TRUE(panel.loadProjectPart(stored, stored.documentElement()));
    EXPECT_EQ(kept.unresolved, 1);
    {
        Circuit circuit;
        CircuitSolver solver(&circuit);
        CCircuitEditor editor;
        editor.setCircuitSolver(&solver);
        panel.setCircuitEditor(&editor);
        circuit.addElement(factory.createElement("Resistor.Basic"));
        circuit.addOutputVariable(circuit.element(0), "i");
        EXPECT_EQ(panel.outputVariables().size(), 2);
    }
    // Those of the circuit that lives stay.
    EXPECT_EQ(panel.outputVariables(), QList<ICircuitOutputVariable*>{kept.outputVariable(0)});
    QApplication::processEvents();
    panel.findChild<QPushButton*>("cmdAddVariable")->click();
    QDomDocument document;
    EXPECT_FALSE(panel.loadProjectPart(document, document.createElement("ProjectPart")));
}
