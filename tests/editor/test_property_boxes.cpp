// Boxes that show a property of an element: their text, how they are handled, how they are made.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CCircuitView.h"
#include "CElementPropertySelectionDialog.h"
#include "CircuitGeometry.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "ElementDescription.h"
#include "StudyElementContextMenuHandler.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>

#include <cstring>

namespace {

using Box = CCircuitElementPropertyTextBox;

class PropertyBoxes : public DrawingTest {
protected:
    /// A box on R1's resistance with its top left at the point, 60 by 30.
    Box* boxOnResistance(QPointF point) {
        Box* box = editor->addElementPropertyTextBox(point);
        box->setElementProperty(element("R1"), QStringLiteral("R"));
        // What is put off until then measures the box anew.
        QApplication::processEvents();
        box->setRect(QRectF(point, QSizeF(60, 30)));
        return box;
    }

    void chooseInMenuAt(QPointF point, const char* entry) {
        DialogDriver driver;
        driver.chooseEntry(QString::fromLatin1(entry));
        rightClick(point);
    }

    /// The pointer passes over the point with no button down.
    void hover(QPointF point) {
        QMouseEvent event(QEvent::MouseMove, at(point), editor->viewport()->mapToGlobal(at(point)),
                          Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(editor->viewport(), &event);
    }

    QRectF outlineOf(const char* name) {
        return itemOf(name)->mapToScene(itemOf(name)->boundingRect()).boundingRect();
    }
};

/// Presses on an element in the miniature of a selection dialog.
void pressIn(QWidget* dialog, const QGraphicsItem* item) {
    auto* view = dialog->findChild<CCircuitView*>();
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, view->mapFromScene(item->scenePos()));
}

/// The element whose inside is a circuit of its own.
class SubCircuit : public CircuitElement {
public:
    using CircuitElement::CircuitElement;
    void* qt_metacast(const char* name) override {
        return std::strcmp(name, "com.tesmira.ICircuit/1.0") == 0
                   ? static_cast<ICircuit*>(&inside)
                   : CircuitElement::qt_metacast(name);
    }

    Circuit inside;
};

class PanelWidget : public QWidget, public IPropertyEditor {
    Q_OBJECT
    Q_INTERFACES(IPropertyEditor)

public:
    QObject* containerObject() override { return this; }
    void setObject(QObject*, bool) override {}
    QObject* object() override { return nullptr; }

signals:
    void propertyValueChanged(QObject* object, QString name, QVariant oldValue, QVariant newValue);
};

}  // namespace

TEST_F(PropertyBoxes, ShowTheirPropertyAndFollowIt) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    const QString net = circuit.node(0)->name();
    Box* box = editor->addElementPropertyTextBox(QPointF(0, 50));
    EXPECT_EQ(box->rect(), QRectF(0, 50, 60, 21));
    EXPECT_EQ(box->backgroundColor(), QColor("#ff0000"));
    const struct {
        const char* name;
        const char* group;
        QString both;
        QString value;
    } rows[] = {
        {"R", "rparams", "R=1 kΩ", "1 kΩ"}, {"n", "Nodes", net, net}, {"Caption", "", "R1", "R1"},
        {"Name", "", "Name=R1", "R1"},      {"nothing", "", "", ""},  {"", "", "", ""},
    };
    for (const auto& row : rows) {
        box->setElementProperty(element("R1"), QString::fromLatin1(row.name));
        box->setTextFormat(Box::NameAndValue);
        EXPECT_EQ(box->propertyText(), row.both) << row.name;
        EXPECT_EQ(box->propertyGroup(), row.group) << row.name;
        const double width = box->rect().width();
        box->setTextFormat(Box::ValueOnly);
        EXPECT_EQ(box->propertyText(), row.value) << row.name;
        EXPECT_EQ(box->rect().width() < width, row.value != row.both) << row.name;
    }
    // What is measured may be under the least size.
    EXPECT_LT(box->rect().width(), 21);
    box->setElementProperty(element("R1"), QStringLiteral("R"));
    QApplication::processEvents();
    const QSignalSpy modified(editor, &CCircuitEditor::projectPartModified);
    box->setElementProperty(element("R1"), QStringLiteral("R"));
    QApplication::processEvents();
    EXPECT_EQ(modified.count(), 0);
    // A move is announced twice, from the event loop.
    box->setPos(100, 100);
    EXPECT_EQ(modified.count(), 0);
    QApplication::processEvents();
    EXPECT_EQ(modified.count(), 2);
    // The box keeps its size when the value outgrows it, and its connections with another name.
    const QRectF rect = box->rect();
    element("R1")->setPropertyValue(0, QStringLiteral("123456k"));
    EXPECT_EQ(box->propertyText(), "123456 kΩ");
    EXPECT_EQ(box->rect(), rect);
    box->setElementProperty(element("R1"), QStringLiteral("Caption"));
    element("R1")->setCaption(QStringLiteral("Load"));
    EXPECT_EQ(box->propertyText(), "Load");
    // It leaves the old element for the new one.
    box->setElementProperty(element("R2"), QStringLiteral("Caption"));
    element("R1")->setCaption(QStringLiteral("Other"));
    EXPECT_EQ(box->propertyText(), "R2");
    EXPECT_TRUE(itemOf("R1")->propertyTextBoxList().isEmpty());
    EXPECT_EQ(itemOf("R2")->propertyTextBoxList(), QList<Box*>{box});
}

TEST_F(PropertyBoxes, MoveWithTheirElementAndKeepTheirDistance) {
    create("Resistor.Basic", {0, 0});
    Box* box = boxOnResistance({-30, 40});
    drag({0, 12}, {50, 32});
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(50, 20));
    EXPECT_EQ(box->pos(), QPointF(20, 60));
    editor->undo();
    EXPECT_EQ(box->pos(), QPointF(-30, 40));
    drag({-20, 50}, {-13, 57});
    EXPECT_EQ(box->pos(), QPointF(-23, 47));
    EXPECT_EQ(itemOf("R1")->pos(), QPointF(0, 0));
    drag({0, 12}, {30, 12});
    EXPECT_EQ(box->pos(), QPointF(7, 47));
}

TEST_F(PropertyBoxes, TheDialogPicksAnElementAndAProperty) {
    create("Resistor.Basic", {0, 0});
    create("Capacitor.Basic", {200, 100});
    const QPointer<Box> box(boxOnResistance({0, 40}));
    const auto textOf = [](QWidget* dialog) { return dialog->findChild<QLabel*>()->text(); };
    {
        DialogDriver driver;
        driver.queue([&](QWidget* dialog) {
            EXPECT_FALSE(box->isVisible());
            EXPECT_EQ(dialog->size(), QSize(640, 480));
            EXPECT_EQ(textOf(dialog), "R1 - R");
            driver.chooseEntry(QStringLiteral("Caption"));
            pressIn(dialog, itemOf("C1"));
            EXPECT_EQ(textOf(dialog), "C1 - Caption");
            EXPECT_EQ(driver.texts.last(), "C|V0|p|n|-|Name|Caption|Rotation|Flip|ModelName");
            // The miniature is no editor: the drawing hears nothing of its clicks and keys.
            auto* view = dialog->findChild<CCircuitView*>();
            itemOf("C1")->setSelected(true);
            QTest::keyClick(view, Qt::Key_Delete);
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {},
                               view->mapFromScene(itemOf("R1")->pos()));
            EXPECT_EQ(circuit.elementCount(), 2);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        doubleClick({10, 50});
    }
    EXPECT_EQ(box->element(), element("C1"));
    EXPECT_EQ(box->propertyText(), "C1");
    EXPECT_GE(box->rect().width(), 21);
    EXPECT_GE(box->rect().height(), 21);
    {
        // Left without a choice, the menu takes the element back; cancelled, the dialog changes
        // nothing.
        DialogDriver driver;
        driver.queue([&](QWidget* dialog) {
            driver.closeMenu();
            pressIn(dialog, itemOf("R1"));
            EXPECT_EQ(textOf(dialog), "No element selected");
            QMetaObject::invokeMethod(dialog, "reject");
        });
        box->showSelectElementDialog();
        EXPECT_EQ(box->propertyName(), "Caption");
        driver.accept();
        Box* unbound = editor->addElementPropertyTextBox(QPointF());
        unbound->showSelectElementDialog();
        turnEventLoop();
        EXPECT_EQ(editor->elementPropertyTextBoxCount(), 1);
    }
    // Everything may go while the dialog is open.
    DialogDriver driver;
    driver.queue([&](QWidget* dialog) {
        driver.queue([this](QWidget*) {
            circuit.removeElement(element("R1"));
            turnEventLoop();
        });
        pressIn(dialog, itemOf("R1"));
        circuit.removeElement(element("C1"));
        turnEventLoop();
        QMetaObject::invokeMethod(dialog, "accept");
    });
    box->showSelectElementDialog();
    EXPECT_TRUE(box.isNull());
}

TEST_F(PropertyBoxes, TheElementMenuAddsTheDefaultProperties) {
    create("SignalVoltage.Sources", {0, 0});
    const char* name = "V1";
    for (int turn = 0; turn < 2; ++turn) {
        // Twice gives no new boxes, but puts the old ones back.
        chooseInMenuAt(itemOf(name)->mapToScene(0, 9), "Add default property text boxes");
        const QList<Box*> boxes = itemOf(name)->propertyTextBoxList();
        ASSERT_EQ(boxes.size(), 2);
        const QRectF outline = outlineOf(name);
        ASSERT_LE(outline.width(), outline.height()) << "beside the element";
        const double total = boxes[0]->rect().height() + boxes[1]->rect().height() + 5;
        const double y = CircuitGeometry::truncatedInt(outline.center().y() - total / 2);
        const double x = CircuitGeometry::truncatedInt(outline.right() + 5);
        EXPECT_EQ(boxes[0]->pos(), QPointF(x, y));
        EXPECT_EQ(boxes[1]->pos(), QPointF(x, y + int(boxes[0]->rect().height() + 5)));
        EXPECT_EQ(boxes[0]->backgroundColor(), Qt::transparent);
        EXPECT_EQ(boxes[0]->fontPointSize(), -1);
        boxes[0]->setPos(500, 500);
        boxes[1]->setPos(500, 550);
        turnEventLoop();
    }
    // Two of the group show their names; one that is left alone needs none.
    const QList<Box*> boxes = itemOf(name)->propertyTextBoxList();
    EXPECT_EQ(boxes[0]->textFormat(), Box::NameAndValue);
    EXPECT_EQ(boxes[1]->textFormat(), Box::NameAndValue);
    delete boxes[1];
    EXPECT_EQ(boxes[0]->textFormat(), Box::NameAndValue);
    turnEventLoop();
    EXPECT_EQ(boxes[0]->textFormat(), Box::ValueOnly);
    // Hovering shows which boxes are an element's.
    hover(itemOf(name)->mapToScene(0, 9));
    EXPECT_EQ(boxes[0]->backgroundColor(), QColor("lightsteelblue"));
    hover({300, 300});
    EXPECT_EQ(boxes[0]->backgroundColor(), Qt::transparent);
}

TEST_F(PropertyBoxes, CaptionsStandBelowWideAndBesideTallElements) {
    create("Resistor.Basic", {0, 0});
    for (const int rotation : {0, 1}) {
        element("R1")->setRotation(rotation);
        chooseInMenuAt({0, 7}, "Add Caption");
        const Box* box = itemOf("R1")->propertyTextBoxList().last();
        EXPECT_EQ(box->propertyText(), "R1");
        const QRectF outline = outlineOf("R1");
        const QPointF place = rotation == 0
                                  ? QPointF(-box->rect().width() / 2, outline.bottom() + 5)
                                  : QPointF(outline.right() + 5, 0);
        EXPECT_EQ(box->pos(), place) << rotation;
    }
    EXPECT_EQ(editor->elementPropertyTextBoxCount(), 2);
}

TEST_F(PropertyBoxes, TheTerminalMenuAddsTheNameOfTheNet) {
    create("Resistor.Basic", {0, 0});
    create("Resistor.Basic", {200, 0});
    solver.makeConnection(terminal("R1.n"), terminal("R2.p"));
    DialogDriver driver;
    driver.chooseEntry(QStringLiteral("Add node name text box"));
    const QPointF place = placeOf("R1.n") - QPointF(3, 0);
    rightClick(place);
    EXPECT_EQ(driver.texts, QStringList{"Add node name text box"});
    ASSERT_EQ(editor->elementPropertyTextBoxCount(), 1);
    const Box* box = editor->elementPropertyTextBox(0);
    EXPECT_EQ(box->pos(), place + QPointF(5, 5));
    EXPECT_EQ(box->propertyText(), circuit.node(0)->name());
    circuit.node(0)->setName(QStringLiteral("out"));
    EXPECT_EQ(box->propertyText(), "out");
    // Without a choice the menu of the element below comes next.
    driver.closeMenu();
    driver.closeMenu();
    rightClick(place);
    EXPECT_TRUE(driver.texts.last().startsWith("Output Variables|"));
    driver.queue([this](QWidget*) { circuit.removeElement(element("R1")); });
    rightClick(place);
    EXPECT_EQ(editor->elementPropertyTextBoxCount(), 0);
}

TEST_F(PropertyBoxes, ASubCircuitIsStudiedInAWindowOfItsOwn) {
    ElementTypeData data =
        CircuitElement::from(create("Resistor.Basic", {0, 0}))->description()->data();
    data.category = ICircuitElementDesc::SubCircuitCategory;
    ElementDescription description(data);
    auto* sub = new SubCircuit(&description);
    circuit.addElement(sub);
    sub->setCaption(QStringLiteral("Filter"));
    itemOf("R2")->setPos(200, 0);
    const auto study = [this](const char* name) {
        QMetaObject::invokeMethod(itemOf(name), "studySubCircuit", Qt::DirectConnection);
    };
    // Nothing to show the properties in: nothing happens.
    study("R2");
    framework.offerWidgets(QStringLiteral("panel"), [] { return new PanelWidget; });
    study("R1");
    DialogDriver driver;
    driver.chooseEntry(QStringLiteral("Study Element"));
    driver.queue([](QWidget* dialog) {
        EXPECT_EQ(dialog->size(), QSize(800, 480));
        auto* splitter = dialog->findChild<QSplitter*>();
        const auto* view = qobject_cast<CCircuitEditor*>(splitter->widget(0));
        ASSERT_NE(view, nullptr);
        EXPECT_TRUE(view->isReadOnly());
        EXPECT_EQ(view->propertyEditor(), dynamic_cast<PanelWidget*>(splitter->widget(1)));
        EXPECT_TRUE(splitter->widget(1)->property("ReadOnly").toBool());
    });
    rightClick({200, 7});
    EXPECT_EQ(driver.titles.last(), "Studying Filter (Resistor) element");
    // In the window a sub-circuit offers the same, and the event goes on.
    StudyElementContextMenuHandler handler(editor);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at({200, 7}), QPoint());
    driver.chooseEntry(QStringLiteral("Study Element"));
    EXPECT_FALSE(handler.eventFilter(editor->viewport(), &event));
    EXPECT_EQ(driver.texts.last(), "Study Element");
    driver.reject();
    turnEventLoop();
    EXPECT_EQ(driver.titles.last(), "Studying Filter (Resistor) element");
    // The window ends with the element that it shows.
    driver.queue([this](QWidget* dialog) {
        circuit.removeElement(element("R2"));
        EXPECT_FALSE(dialog->isVisible());
    });
    study("R2");
    turnEventLoop();
}

#include "test_property_boxes.moc"
