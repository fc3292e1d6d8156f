// The clipboard's panel, used by keyboard and mouse.

#include "Clipboard.h"
#include "ClipboardWidget.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QTest>

#include <memory>

class ClipboardPanel : public testing::Test {
protected:
    ClipboardPanel() {
        clipboard.addContext("Drawing");
        panel.setClipboard(&clipboard);
        QObject::connect(
            &panel, &ClipboardWidget::dataClicked,
            [this](const QString& context, const ClipboardData& data, int index) {
                log << QString("%1 %2 %3").arg(context, data.data.toString()).arg(index);
            });
        panel.show();
        panel.activateWindow();
    }
    void copy(const QString& text, const QString& description) {
        QPixmap picture(8, 8);
        picture.fill(Qt::red);
        clipboard.addData({picture, text, description});
    }
    QListWidget* list() { return panel.findChild<QListWidget*>(); }
    void click(int row) {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualItemRect(list()->item(row)).center());
    }
    /// The rows, the highlighted ones marked.
    QStringList rows() {
        QStringList result;
        for (int i = 0; i < list()->count(); ++i) {
            const QModelIndex index = list()->model()->index(i, 0);
            result << (list()->selectionModel()->isSelected(index) ? "*" : "") +
                          list()->item(i)->text();
        }
        return result;
    }

    Clipboard clipboard;
    ClipboardWidget panel;
    QStringList log;
};

TEST_F(ClipboardPanel, AClickHoldsUntilTheNextCopy) {
    copy("<r1/>", "Resistor");
    copy("<g/>", "Group of <b>3</b>\nelements");
    copy("<t/>", "");
    EXPECT_EQ(rows(), QStringList({"(no description)", "Group of <b>3</b> elements", "Resistor"}));
    EXPECT_TRUE(list()->item(1)->toolTip().contains("&lt;b&gt;3"));
    EXPECT_FALSE(list()->item(2)->icon().isNull());

    click(2);
    EXPECT_EQ(rows().last(), "*Resistor");
    click(1);
    EXPECT_EQ(rows().filter("*"), QStringList("*Group of <b>3</b> elements"));
    // Keys move without choosing; Return chooses.
    QTest::keyClick(list(), Qt::Key_Up);
    EXPECT_EQ(panel.chosenIndex(), 1);
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_EQ(panel.chosenIndex(), 0);
    EXPECT_EQ(log, QStringList({"Drawing <r1/> 2", "Drawing <g/> 1", "Drawing <t/> 0"}));

    log.clear();
    copy("<r2/>", "Capacitor");
    EXPECT_EQ(rows().filter("*"), QStringList());
    EXPECT_EQ(log, QStringList("Drawing  -1"));
    copy("<r3/>", "Diode");
    EXPECT_EQ(log.size(), 1);  // there was no choice left to drop
}

TEST_F(ClipboardPanel, FollowsTheServiceAndClearsIt) {
    QAction* clear = list()->actions().value(0);
    ASSERT_NE(clear, nullptr);
    EXPECT_FALSE(clear->isEnabled());
    QTest::keyClick(list(), Qt::Key_Return);
    copy("<r1/>", "Resistor");
    click(0);
    clipboard.setActiveContext("Text");
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(panel.chosenIndex(), -1);
    copy("abc", "Three letters");
    clipboard.setActiveContext("Drawing");
    EXPECT_EQ(rows(), QStringList("*Resistor"));
    clear->trigger();
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(log, QStringList({"Drawing <r1/> 0", "Drawing  -1"}));
    clipboard.setActiveContext("Text");
    EXPECT_EQ(rows(), QStringList("Three letters"));

    auto other = std::make_unique<Clipboard>();
    panel.setClipboard(other.get());
    EXPECT_EQ(rows(), QStringList());
    other->addContext("Sound");
    other->addData({{}, 1, "Beep"});
    EXPECT_EQ(rows(), QStringList("Beep"));
    other.reset();
    EXPECT_EQ(rows(), QStringList());
    clear->trigger();
}
