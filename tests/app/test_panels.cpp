// The application's panels, used by keyboard and mouse, on the real model.

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitSolver.h"
#include "Components.h"
#include "ElementExplorer.h"
#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "ICircuitNode.h"
#include "ProjectManager.h"
#include "PropertyEditor.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

#include <memory>

namespace {

QTreeWidgetItem* itemWithText(QWidget& panel, const QString& text) {
    const QList<QTreeWidgetItem*> found =
        panel.findChild<QTreeWidget*>()->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

/// The lines that a user sees, groups included.
QStringList visibleTexts(QWidget& panel) {
    QStringList texts;
    for (QTreeWidgetItemIterator it(panel.findChild<QTreeWidget*>(),
                                    QTreeWidgetItemIterator::NotHidden);
         *it; ++it) {
        texts.append((*it)->text(0));
    }
    return texts;
}

}  // namespace

class ElementExplorerTest : public testing::Test {
protected:
    ElementExplorerTest() {
        QPixmap picture(8, 8);
        picture.fill(Qt::black);
        explorer.setEntries({{"Diode.Semi", "Diode", "Semi", "Lets through one way.", picture},
                             {"Resistor.Basic", "Resistor", "Basic", "Resists.", picture},
                             {"Zener.Semi", "Zener diode", "Semi", "Breaks down.", picture}});
        explorer.show();
        explorer.activateWindow();
        // Fades in and out by itself, for longer than a test takes.
        filter()->setClearButtonEnabled(false);
    }

    QLineEdit* filter() { return explorer.findChild<QLineEdit*>(); }
    QTreeWidget* tree() { return explorer.findChild<QTreeWidget*>(); }
    QPoint centreOf(const QString& label) {
        return tree()->visualItemRect(itemWithText(explorer, label)).center();
    }
    void rightClick(const QPoint& position) { emit tree()->customContextMenuRequested(position); }

    ElementExplorer explorer;
};

TEST_F(ElementExplorerTest, FilterChoosesTheFirstMatch) {
    QTest::keyClicks(filter(), "DIO");
    EXPECT_EQ(visibleTexts(explorer), QStringList({"Semi", "Diode", "Zener diode"}));
    EXPECT_EQ(explorer.selectedElementName(), "Diode.Semi");
    QTest::keyClick(filter(), Qt::Key_Down);
    EXPECT_EQ(explorer.selectedElementName(), "Zener.Semi");

    // What is chosen stays chosen as long as it can be seen.
    filter()->setText("diode");
    EXPECT_EQ(explorer.selectedElementName(), "Zener.Semi");
    filter()->setText(" basic ");
    EXPECT_EQ(explorer.selectedElementName(), "Resistor.Basic");
    filter()->setText("triode");
    EXPECT_EQ(visibleTexts(explorer), QStringList());
    EXPECT_EQ(explorer.selectedElementName(), "");
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_EQ(visibleTexts(explorer).size(), 5);
}

TEST_F(ElementExplorerTest, WhatFitsBestComesFirstByAnyOfItsNames) {
    explorer.setEntries(
        {{"Fuse.Basic", "Fuse", "Basic", "", {}, {"protection"}},
         {"DC.Sources", "Voltage source", "Sources", "", {}, {"vdc", "battery"}},
         {"Ref.Sources", "Reference of voltage", "Sources", "", {}, {}},
         {"Bat.Parts", "Battery holder with a long name that wraps", "Parts", "", {}, {}}});
    const auto first = [this](const char* text) {
        filter()->setText(text);
        return explorer.selectedElementName();
    };
    EXPECT_EQ(first("vdc"), "DC.Sources");
    EXPECT_EQ(first("batt"), "Bat.Parts") << "a label that begins so, before a keyword";
    EXPECT_EQ(first("battery"), "Bat.Parts");
    EXPECT_EQ(first("vol"), "DC.Sources");
    EXPECT_EQ(first("source volt"), "DC.Sources") << "all words, in any order";
    auto* nothing = explorer.findChild<QLabel*>();
    EXPECT_FALSE(nothing->isVisible());
    EXPECT_EQ(first("triode"), "");
    EXPECT_TRUE(nothing->isVisible());
    EXPECT_TRUE(nothing->text().contains("triode"));
    filter()->clear();
    const QModelIndex wrapped = tree()
                                    ->model()
                                    ->match(tree()->model()->index(0, 0), Qt::DisplayRole,
                                            "Battery", 1, Qt::MatchStartsWith | Qt::MatchRecursive)
                                    .first();
    explorer.resize(160, 400);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return tree()->visualRect(wrapped).height() > 2 * tree()->fontMetrics().height(); }));
}

TEST_F(ElementExplorerTest, ListenersFillTheMenuOfAType) {
    qRegisterMetaType<QMenu*>("QMenu*");
    QSignalSpy spy(&explorer, SIGNAL(elementRightClicked(QString, QMenu*)));
    rightClick(centreOf("Basic"));
    EXPECT_EQ(spy.count(), 0);
    // Nobody has added an entry: no menu opens.
    rightClick(centreOf("Diode"));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.first().first().toString(), "Diode.Semi");

    QObject::connect(&explorer, &ElementExplorer::elementRightClicked, &explorer,
                     [](const QString& name, QMenu* menu) { menu->addAction(name + " Help"); });
    QString shown;
    QTimer::singleShot(0, &explorer, [&shown] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        shown = menu->actions().first()->text();
        menu->close();
    });
    rightClick(centreOf("Zener diode"));
    EXPECT_EQ(shown, "Zener.Semi Help");
}

class PropertyEditorTest : public testing::Test {
protected:
    PropertyEditorTest() {
        library.load(QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library"));
        r1 = add("Resistor.Basic");
        r2 = add("Resistor.Basic");
        node = solver.makeConnection(r1->elementNode("n"), r2->elementNode("p"));
        panel.show();
        panel.activateWindow();
    }

    ICircuitElement* add(const QString& type) {
        ICircuitElement* element = ElementFactory(library).createElement(type);
        circuit.addElement(element);
        return element;
    }
    QTreeWidget* tree() { return panel.findChild<QTreeWidget*>(); }
    QString shown(const QString& property) {
        QApplication::processEvents();
        QTreeWidgetItem* item = itemWithText(panel, property);
        return item ? item->text(1) : QStringLiteral("no such line");
    }
    /// The in-place editor of a property, opened as a user does; null if it doesn't open.
    template <class Editor>
    Editor* openEditor(const QString& property) {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // an earlier one
        tree()->setCurrentItem(itemWithText(panel, property), 1);
        QTest::keyClick(tree(), Qt::Key_F2);
        return tree()->viewport()->findChild<Editor*>();
    }
    void type(const QString& property, const QString& text) {
        auto* line = openEditor<QLineEdit>(property);
        ASSERT_NE(line, nullptr) << qPrintable(property);
        line->selectAll();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
        QApplication::processEvents();
    }

    ElementLibrary library;
    Circuit circuit;
    CircuitSolver solver{&circuit};
    ICircuitElement* r1 = nullptr;
    ICircuitElement* r2 = nullptr;
    ICircuitNode* node = nullptr;
    PropertyEditor panel;
    QSignalSpy changes{&panel, SIGNAL(propertyValueChanged(QObject*, QString, QVariant, QVariant))};
};

TEST_F(PropertyEditorTest, ShowsAllPropertiesByGroup) {
    EXPECT_EQ(panel.findChild<QLabel*>()->text(), "Nothing selected");
    panel.setObject(r1->containerObject(), false);
    EXPECT_EQ(panel.object(), r1->containerObject());
    EXPECT_EQ(panel.findChild<QLabel*>()->text(), "R1 (Resistor)");
    EXPECT_EQ(visibleTexts(panel),
              QStringList({"General", "Name", "Caption", "Rotation", "Flip", "ModelName",
                           "Parameters", "R", "Nodes", "p", "n"}));
    EXPECT_EQ(shown("Name"), "R1");
    EXPECT_EQ(shown("R"), QString::fromUtf8("1 k\u03a9"));
    EXPECT_EQ(shown("Flip"), "none");
    EXPECT_EQ(shown("n"), "n1");
    panel.setObject(nullptr, false);
    EXPECT_EQ(visibleTexts(panel), QStringList());
}

TEST_F(PropertyEditorTest, EditGoesToTheModelAndIsThenReported) {
    QObject* object = r1->containerObject();
    panel.setObject(object, false);
    QString nameAtSignal;
    QObject::connect(&panel, &PropertyEditor::propertyValueChanged, &panel,
                     [&] { nameAtSignal = r1->name(); });
    type("Name", "Rx");
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.first(), QVariantList({QVariant::fromValue(object), "Name", "R1", "Rx"}));
    EXPECT_EQ(nameAtSignal, "Rx");
    EXPECT_EQ(shown("Caption"), "Rx");
    EXPECT_EQ(panel.findChild<QLabel*>()->text(), "Rx (Resistor)");

    // The editor holds the bare value, the line shows it with its unit.
    EXPECT_EQ(openEditor<QLineEdit>("R")->text(), "1k");
    type("R", "4.7k");
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes.last().mid(1), QVariantList({"R", "1k", "4.7k"}));
    EXPECT_EQ(shown("R"), QString::fromUtf8("4.7 k\u03a9"));

    // A terminal's property is the name of its net.
    type("n", "out");
    EXPECT_EQ(node->name(), "out");
    ASSERT_EQ(changes.count(), 3);
    EXPECT_EQ(changes.last().mid(1), QVariantList({"n", "n1", "out"}));
}

TEST_F(PropertyEditorTest, NamedValuesAreChosenFromAList) {
    panel.setObject(r1->containerObject(), false);
    auto* box = openEditor<QComboBox>("Rotation");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->count(), 4);
    box->setCurrentIndex(3);
    emit box->activated(3);
    EXPECT_EQ(r1->rotation(), 3);
    EXPECT_EQ(shown("Rotation"), QString::fromUtf8("270\u00b0"));
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.first().mid(1), QVariantList({"Rotation", 0, 3}));
}

TEST_F(PropertyEditorTest, ModelsAndChoicesOfATypeAreChosenFromAList) {
    const struct {
        const char* type;
        const char* property;
        const char* value;
        int count;
    } table[] = {{"NPN.Semiconductors", "ModelName", "BC547", 3},
                 {"Switch.Basic", "state", "closed", 2}};
    for (const auto& row : table) {
        CircuitElement* element = library.description(row.type)->createElement();
        circuit.addElement(element);
        panel.setObject(element, false);
        auto* box = openEditor<QComboBox>(row.property);
        ASSERT_NE(box, nullptr) << row.property;
        EXPECT_EQ(box->count(), row.count);
        box->setCurrentText(row.value);
        emit box->activated(box->currentIndex());
        EXPECT_EQ(shown(row.property), row.value);
        EXPECT_EQ(changes.last().last(), row.value);
    }
}

TEST_F(PropertyEditorTest, RefusedEditIsNotReported) {
    panel.setObject(r1->containerObject(), false);
    type("Name", "R2");
    QApplication::processEvents();
    EXPECT_EQ(QToolTip::text(), "Name does not take \"R2\"");
    type("R", "plenty");
    QApplication::processEvents();
    EXPECT_EQ(QToolTip::text(), "R does not take \"plenty\"");
    type("R", "1k");
    type("p", "x");  // not connected: there is no net to name
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(shown("Name"), "R1");
    EXPECT_EQ(shown("R"), QString::fromUtf8("1 k\u03a9"));

    openEditor<QLineEdit>("Name")->setText("typed");
    panel.setProperty("ReadOnly", true);
    EXPECT_EQ(r1->name(), "R1");
    EXPECT_EQ(openEditor<QLineEdit>("Name"), nullptr);
    EXPECT_EQ(openEditor<QComboBox>("Rotation"), nullptr);
    panel.setProperty("ReadOnly", false);
    EXPECT_NE(openEditor<QLineEdit>("Name"), nullptr);
}

TEST_F(PropertyEditorTest, TellsOfParametersThatAreNotThere) {
    panel.setObject(r1->containerObject(), false);
    type("R", "{2*Rload + 1k}");
    const auto isMarked = [this] {
        QApplication::processEvents();
        return itemWithText(panel, "R")->data(1, Qt::ForegroundRole).isValid();
    };
    const auto tip = [this] { return itemWithText(panel, "R")->toolTip(1); };
    EXPECT_TRUE(isMarked());
    EXPECT_EQ(tip(), "{2*Rload + 1k}: there is no parameter \"Rload\"");
    circuit.addGlobalVariable("Rload", "2k", true);
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(tip(), "{2*Rload + 1k} = 5k");
    circuit.setGlobalVariableValue(0, 3000.0);
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(tip(), "{2*Rload + 1k} = 7k");
    // What refers to a parameter follows its name, as far as it can be written.
    circuit.addGlobalVariable("half", "{Rload/2}", true);
    EXPECT_TRUE(circuit.changeGlobalVariableName(0, "Rl"));
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(shown("R"), "{2*Rl + 1k}");
    EXPECT_EQ(circuit.globalVariableValue(1), QVariant("{Rl/2}"));
    EXPECT_TRUE(circuit.changeGlobalVariableName(0, "load resistance"));
    EXPECT_TRUE(isMarked());
    EXPECT_EQ(shown("R"), "{2*Rl + 1k}");
    EXPECT_TRUE(circuit.changeGlobalVariableName(0, "Rl"));
    EXPECT_FALSE(isMarked());
    // Their own values are edited where the circuit is shown.
    panel.setObject(&circuit, false);
    type("Rl", "4k");
    EXPECT_EQ(circuit.globalVariableValue(0), QVariant("4k"));
    QApplication::processEvents();
    EXPECT_EQ(itemWithText(panel, "half")->toolTip(1), "{Rl/2} = 2k");
    panel.setObject(r1->containerObject(), false);
    EXPECT_EQ(tip(), "{2*Rl + 1k} = 9k");
    circuit.removeGlobalVariable("Rl");
    EXPECT_TRUE(isMarked());
    type("R", "{1/0}");
    EXPECT_TRUE(isMarked() && tip().contains("division by zero"));
    type("R", "1k");
    EXPECT_FALSE(isMarked());
    // Text in braces that is no number refers to nothing.
    type("Caption", "{Rload}");
    EXPECT_EQ(shown("Caption"), "{Rload}");
    EXPECT_EQ(itemWithText(panel, "Caption")->toolTip(1), "{Rload}");
    EXPECT_FALSE(itemWithText(panel, "Caption")->data(1, Qt::ForegroundRole).isValid());
}

TEST_F(PropertyEditorTest, FollowsTheModel) {
    panel.setObject(r1->containerObject(), false);
    r1->containerObject()->setProperty("Name", "Ra");
    node->setName("mid");
    EXPECT_EQ(shown("Name"), "Ra");
    EXPECT_EQ(shown("n"), "mid");
    // What is being typed stays when another value changes.
    auto* line = openEditor<QLineEdit>("R");
    line->setText("33");
    r1->setCaption("load");
    EXPECT_EQ(shown("Caption"), "load");
    EXPECT_EQ(line->text(), "33");

    // A node and the circuit itself can be shown, too.
    panel.setObject(node->containerObject(), false);
    EXPECT_EQ(panel.findChild<QLabel*>()->text(), "Node mid");
    EXPECT_EQ(shown("WireClearance"), "20");
    auto* number = openEditor<QSpinBox>("WireClearance");
    ASSERT_NE(number, nullptr);
    number->setValue(40);
    QTest::keyClick(number, Qt::Key_Return);
    QApplication::processEvents();  // an edit ends in the event loop
    EXPECT_EQ(node->wireClearance(), 40);
    panel.setObject(&circuit, false);
    type("Title", "Divider");
    EXPECT_EQ(circuit.title(), "Divider");
}

TEST_F(PropertyEditorTest, ObjectMayDieWhileItIsShown) {
    panel.setObject(r1->containerObject(), false);
    ASSERT_NE(openEditor<QLineEdit>("R"), nullptr);
    circuit.removeElement(r1);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    EXPECT_EQ(panel.object(), nullptr);
    EXPECT_EQ(visibleTexts(panel), QStringList());

    // It may even die of the edit itself; then there is nothing to report.
    auto* dying = CircuitElement::from(r2);
    panel.setObject(dying, false);
    QObject::connect(dying, &CircuitElement::propertyChanged, &panel, [dying] { delete dying; });
    type("R", "1");
    EXPECT_EQ(circuit.elementCount(), 0);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return visibleTexts(panel).isEmpty(); }));
}
