// The canvas's own keys and its menu.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CSelectionRectangleItem.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "ItemTypes.h"
#include "WarningGuard.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGraphicsScene>
#include <QMenu>

#include <set>

namespace {

const QString CanvasMenu = QStringLiteral(
    "Add Global Parameters|Edit/Remove Global Parameters|Insert Global Parameter Text Boxes|-|"
    "Add Text Box|Add Element-Property Text Box|-|Paste|Paste From System Clipboard");

class Keys : public DrawingTest {
protected:
    QList<QGraphicsItem*> selected() const { return editor->scene()->selectedItems(); }

    void selectOnly(const QList<QGraphicsItem*>& items) {
        editor->unhighlight();
        for (QGraphicsItem* item : items) {
            item->setSelected(true);
        }
    }

    QAction* manualAction() {
        return framework.component->fetchAction(
            QStringLiteral("CCircuitEditorComponent.manualCtorMode"));
    }
};

}  // namespace

TEST_F(Keys, TabGoesThroughAllItems) {
    create("Resistor.Basic", {-100, 0});
    create("Resistor.Basic", {100, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    editor->addTextBox(QRectF(0, 100, 50, 30))->setText(QStringLiteral("x"));
    editor->unhighlight();
    key(Qt::Key_Tab);
    EXPECT_TRUE(selected().isEmpty());  // from nothing it goes nowhere
    itemOf("R1")->setSelected(true);
    std::multiset<int> kinds;
    for (int i = 0; i < 8; ++i) {
        key(Qt::Key_Tab);
        ASSERT_EQ(selected().size(), 1);
        kinds.insert(selected().first()->type());
    }
    EXPECT_EQ(kinds, (std::multiset<int>{ElementItemType, ElementItemType, ElementNodeItemType,
                                         ElementNodeItemType, ElementNodeItemType,
                                         ElementNodeItemType, NodeItemType, TextBoxItemType}));
    // On the way the capture grows: what is cut is all of it, though the text tells of the last.
    editor->unhighlight();
    itemOf("R1")->setSelected(true);
    while (selected().first() != itemOf("R2")) {
        key(Qt::Key_Tab);
    }
    editor->cut();
    EXPECT_EQ(circuit.elementCount(), 0);
    EXPECT_EQ(clipboard.data(0).data.toString().count("<CircuitElement "), 1);
}

TEST_F(Keys, EscapeLeavesManualModeAndNothingElse) {
    create("Resistor.Basic", {-100, 0});
    click({-100, 0});
    key(Qt::Key_Escape);
    EXPECT_EQ(selected().size(), 1);

    key(Qt::Key_W);
    EXPECT_TRUE(manualAction()->isChecked());
    framework.component->setManualConnectionMode(true);  // what the host ties to the action
    click(placeOf("R1.p"));
    moveTo({-200, 0});
    int modes = 0;
    QObject::connect(editor, &CCircuitEditor::editorModeChanged, [&modes] { ++modes; });
    key(Qt::Key_Escape);
    EXPECT_EQ(editor->mode(), CCircuitEditor::EditMode);
    EXPECT_EQ(modes, 1);
    EXPECT_FALSE(manualAction()->isChecked());
    click({-200, 0});
    EXPECT_EQ(circuit.nodeCount(), 0);
}

TEST_F(Keys, DeleteTakesTheGroupOrGoesToTheItem) {
    create("Resistor.Basic", {-100, 0});
    create("Resistor.Basic", {100, 0});
    click({-100, 0});
    key(Qt::Key_Delete);
    EXPECT_EQ(circuit.elementCount(), 1);
    // The capture is dropped by a change of the model; the rectangle finds its own again.
    drag({50, -50}, {150, 50}, Qt::ControlModifier);
    editor->unhighlight();
    key(Qt::Key_Delete);
    EXPECT_EQ(circuit.elementCount(), 0);
    key(Qt::Key_Delete);
}

TEST_F(Keys, ReadersAndPickersHaveNoKeysAndNoMenu) {
    create("Resistor.Basic", {-100, 0});
    itemOf("R1")->setSelected(true);
    for (int pass = 0; pass < 2; ++pass) {
        editor->setReadOnly(pass == 0);
        editor->setMode(pass == 0 ? CCircuitEditor::EditMode : CCircuitEditor::OutVarSelectionMode);
        for (const Qt::Key each : {Qt::Key_Delete, Qt::Key_W, Qt::Key_R, Qt::Key_Tab}) {
            key(each);
        }
        rightClick({200, 200});
        rightClick({-100, 0});
        EXPECT_EQ(circuit.elementCount(), 1);
        EXPECT_EQ(element("R1")->rotation(), 0);
        EXPECT_FALSE(manualAction()->isChecked());
    }
    editor->setReadOnly(false);
    editor->setMode(CCircuitEditor::ManualConnectionMode);
    rightClick({200, 200});
    editor->setMode(CCircuitEditor::EditMode);
}

TEST_F(Keys, TheCanvasMenuWorksAtThePointClicked) {
    create("Resistor.Basic", {-100, 0});
    click({-100, 0});
    editor->copy();
    QApplication::clipboard()->setText("<CircuitElement Name='Capacitor.Basic' X='0' Y='0'/>");
    announceLog(QStringLiteral("QMetaObject::connectSlotsByName: Connecting slot on_fontSize"));
    DialogDriver driver;
    int own = 0;
    QObject::connect(editor, &CCircuitEditor::canvasContextMenuEvent,
                     [&own](ICanvas*, QMenu* menu, Qt::KeyboardModifiers) {
                         menu->addAction(QStringLiteral("Own"), [&own] { ++own; });
                     });
    driver.chooseEntry(QStringLiteral("Paste"));
    rightClick({50, 100});
    EXPECT_EQ(driver.texts.last(), CanvasMenu + QStringLiteral("|Own"));
    EXPECT_EQ(itemOf("R2")->pos(), QPointF(50, 100));
    driver.chooseEntry(QStringLiteral("Paste From System Clipboard"));
    rightClick({50, 200});
    EXPECT_EQ(itemOf("C1")->pos(), QPointF(50, 200));
    driver.chooseEntry(QStringLiteral("Own"));
    rightClick({200, -200});
    EXPECT_EQ(own, 1);
    // Text boxes stand there, too, and go again if nothing comes of them.
    driver.chooseEntry(QStringLiteral("Add Text Box"));
    driver.queue([this](QWidget* dialog) {
        EXPECT_EQ(editor->textBox(0)->pos(), QPointF(200, -200));
        dialog->close();
    });
    rightClick({200, -200});
    turnEventLoop();
    driver.chooseEntry(QStringLiteral("Add Element-Property Text Box"));
    driver.reject();
    rightClick({200, -200});
    turnEventLoop();
    EXPECT_EQ(editor->textBoxCount() + editor->elementPropertyTextBoxCount(), 0);
}

TEST_F(Keys, DismissingTheDisconnectMenuDisconnects) {
    create("Resistor.Basic", {-100, 0});
    create("Resistor.Basic", {100, 0});
    create("Resistor.Basic", {0, 200});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    QGraphicsItem* wire = wireAt("R1.n");
    DialogDriver driver;
    // The entry does nothing: it is to stay so.
    selectOnly({itemOf("R1"), itemOf("R2")});
    driver.chooseEntry(QStringLiteral("Disconnect"));
    rightClick({300, 300});
    EXPECT_EQ(circuit.nodeCount(), 1);
    EXPECT_EQ(selected().size(), 2);
    // Nor does a pair with a wire.
    selectOnly({itemOf("R1"), wire});
    driver.closeMenu();
    rightClick({300, 300});
    EXPECT_EQ(circuit.nodeCount(), 1);
    // One item, or two wires, leave the canvas its menu.
    selectOnly({itemOf("R1")});
    driver.closeMenu();
    rightClick({300, 300});
    EXPECT_EQ(driver.texts.last(), CanvasMenu);
    // Of three, two are left.
    selectOnly({itemOf("R1"), itemOf("R2"), itemOf("R3")});
    driver.closeMenu();
    rightClick({300, 300});
    EXPECT_EQ(driver.texts.last(), "Disconnect");
    if (circuit.nodeCount() == 1) {  // R3 was one of the two
        selectOnly({itemOf("R1"), itemOf("R2")});
        driver.closeMenu();
        rightClick({300, 300});
    }
    EXPECT_EQ(circuit.nodeCount(), 0);
}
