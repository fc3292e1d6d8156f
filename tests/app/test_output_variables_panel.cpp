// The output variables panel and the menu of a wire, in the window with the real plug-in.

#include "DialogDriver.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditorExt.h"
#include "ICircuitNode.h"
#include "IProjectPart.h"
#include "MainWindow.h"
#include "Workbench.h"

#include <Plexa/ObjectIterator.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <memory>

class OutputPanelTest : public testing::Test {
protected:
    void SetUp() override {
        QString error;
        QString message;
        ASSERT_TRUE(workbench.start(QStringLiteral(VORTEL_BIN_DIR "/libcircuiteditor.so"),
                                    window.get(), &error))
            << qPrintable(error);
        ASSERT_TRUE(window->build(&error)) << qPrintable(error);
        window->show();
        ASSERT_TRUE(window->openFile(QStringLiteral(VORTEL_SOURCE_DIR "/examples/rectifier.ckt"),
                                     &message));
        view = workbench.canvas()->graphicsView();
        panel = qobject_cast<QWidget*>(workbench.object("CCircuitEditorComponent.outVarsWidget"));
        ASSERT_NE(panel, nullptr);
        QApplication::processEvents();
    }

    ICircuit* circuit() {
        return qobject_cast<ICircuit*>(workbench.object("CSimulatorComponent.circuit"));
    }
    /// A place on the canvas where a click hits the item, and nothing above it.
    QPoint placeOn(QGraphicsItem* item) {
        const QRect bounds = view->mapFromScene(item->sceneBoundingRect()).boundingRect();
        for (int x = bounds.left(); x <= bounds.right(); ++x) {
            for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
                if (view->itemAt(x, y) == item &&
                    item->contains(item->mapFromScene(view->mapToScene(x, y)))) {
                    return {x, y};
                }
            }
        }
        ADD_FAILURE() << "the item can't be hit";
        return {};
    }
    QGraphicsItem* wireOf(ICircuitNode* node) {
        return qobject_cast<ICircuitEditorExt*>(workbench.editorWidget())->itemFor(node);
    }
    ICircuitNode* largestNet() {
        ICircuitNode* largest = circuit()->node(0);
        for (int i = 1; i < circuit()->nodeCount(); ++i) {
            if (circuit()->node(i)->elementNodeCount() > largest->elementNodeCount()) {
                largest = circuit()->node(i);
            }
        }
        return largest;
    }

    Workbench workbench;
    // Dies first, as its widgets use the components.
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(&workbench);
    QGraphicsView* view = nullptr;
    QWidget* panel = nullptr;
};

TEST_F(OutputPanelTest, IsDockedAndAProjectPart) {
    auto* dock = window->findChild<QDockWidget*>("showOutputVariables");
    ASSERT_NE(dock, nullptr);
    EXPECT_EQ(dock->windowTitle(), "Output Variables");
    EXPECT_EQ(dock->widget(), panel);
    // Records of the list name what is in the circuit: the editor's part comes first.
    QStringList parts;
    const Plexa::ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (auto* part = qobject_cast<IProjectPart*>(object)) {
            parts << part->projectPartID();
        }
    }
    EXPECT_EQ(parts.mid(1), (QStringList{"Simulation", "VortelCircuit", "OutputVariables"}));
}

TEST_F(OutputPanelTest, PicksAfterLayingWiresByHand) {
    auto* manual =
        qobject_cast<QAction*>(workbench.object("CCircuitEditorComponent.manualCtorMode"));
    auto* add = panel->findChild<QPushButton*>("cmdAddVariable");
    manual->trigger();
    EXPECT_TRUE(manual->isChecked());
    // Straight from one mode to the other: the first pops out and doesn't end the second.
    QTest::mouseClick(add, Qt::LeftButton);
    EXPECT_TRUE(add->isChecked());
    EXPECT_FALSE(manual->isChecked());
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::CrossCursor);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, placeOn(wireOf(largestNet())));
    EXPECT_FALSE(add->isChecked());
    EXPECT_EQ(panel->findChild<QTreeWidget*>()->topLevelItemCount(), 1);
    QString error;
    EXPECT_TRUE(workbench.describe(&error).contains("\"text\": \"out1=nodev_of_" +
                                                    largestNet()->name().toUtf8() + '"'));

    // And back, which the action still does.
    add->click();
    manual->trigger();
    EXPECT_TRUE(manual->isChecked());
    EXPECT_FALSE(add->isChecked());
    manual->setChecked(false);
    EXPECT_NE(view->viewport()->cursor().shape(), Qt::CrossCursor);
}

TEST_F(OutputPanelTest, AWiresMenuTakesTerminalsOut) {
    ICircuitNode* net = largestNet();
    const int terminals = net->elementNodeCount();
    ASSERT_GT(terminals, 3);
    const auto openMenu = [&] {
        const QPoint place = placeOn(wireOf(net));
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                view->viewport()->mapToGlobal(place));
        QApplication::sendEvent(view->viewport(), &event);
    };
    DialogDriver driver;
    driver.chooseEntry("Delete Parts of Node...");
    driver.queue([](QWidget* dialog) {
        auto* list = dialog->findChild<QListWidget*>("listWidget");
        list->item(0)->setCheckState(Qt::Unchecked);
        list->item(1)->setCheckState(Qt::Checked);
        list->item(2)->setCheckState(Qt::Checked);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    openMenu();
    QApplication::processEvents();
    EXPECT_EQ(net->elementNodeCount(), terminals - 2);
    EXPECT_TRUE(window->isWindowModified());

    // The net may go between the choice and the dialog.
    driver.chooseEntry("Delete Parts of Node...");
    openMenu();
    circuit()->clear();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    EXPECT_EQ(driver.titles.size(), 3);
}
