// The output variables panel and the menu of a wire, in the window with the real plug-in.

#include "ICircuitNode.h"
#include "WindowTest.h"

#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>

class OutputPanelTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        open(QStringLiteral(VORTEL_SOURCE_DIR "/examples/rectifier.ckt"));
        panel = qobject_cast<QWidget*>(workbench.object("CCircuitEditorComponent.outVarsWidget"));
        ASSERT_NE(panel, nullptr);
        QApplication::processEvents();
    }

    /// A place on the canvas where a click hits the item, and nothing above it.
    QPoint placeOn(QGraphicsItem* item) {
        const QRect bounds = view()->mapFromScene(item->sceneBoundingRect()).boundingRect();
        for (int x = bounds.left(); x <= bounds.right(); ++x) {
            for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
                if (view()->itemAt(x, y) == item &&
                    item->contains(item->mapFromScene(view()->mapToScene(x, y)))) {
                    return {x, y};
                }
            }
        }
        ADD_FAILURE() << "the item can't be hit";
        return {};
    }
    QGraphicsItem* wireOf(ICircuitNode* node) { return items()->itemFor(node); }
    ICircuitNode* largestNet() {
        ICircuitNode* largest = circuit()->node(0);
        for (int i = 1; i < circuit()->nodeCount(); ++i) {
            if (circuit()->node(i)->elementNodeCount() > largest->elementNodeCount()) {
                largest = circuit()->node(i);
            }
        }
        return largest;
    }

    QWidget* panel = nullptr;
};

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
    EXPECT_EQ(view()->viewport()->cursor().shape(), Qt::CrossCursor);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, placeOn(wireOf(largestNet())));
    EXPECT_FALSE(add->isChecked());
    EXPECT_EQ(panel->findChild<QTreeWidget*>()->topLevelItemCount(), 1);
    EXPECT_TRUE(
        drawing().contains("\"text\": \"out1=nodev_of_" + largestNet()->name().toUtf8() + '"'));

    // And back, which the action still does.
    add->click();
    manual->trigger();
    EXPECT_TRUE(manual->isChecked());
    EXPECT_FALSE(add->isChecked());
    manual->setChecked(false);
    EXPECT_NE(view()->viewport()->cursor().shape(), Qt::CrossCursor);
}

TEST_F(OutputPanelTest, AWiresMenuTakesTerminalsOut) {
    ICircuitNode* net = largestNet();
    const int terminals = net->elementNodeCount();
    ASSERT_GT(terminals, 3);
    const auto openMenu = [&] { rightClick(placeOn(wireOf(net))); };
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
