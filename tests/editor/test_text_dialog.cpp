// The dialog that edits the text of a text box, and its palette of symbols.

#include "CCircuitEditorTextBox.h"
#include "CTextEditorDialog.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "SymbolWidget.h"
#include "WarningGuard.h"

#include <QDialogButtonBox>
#include <QFontComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

namespace {

class TextDialog : public DrawingTest {
protected:
    TextDialog() : box(editor->addTextBox(QRectF(0, 0, 100, 60))) {
        // Two signals fit a slot without an argument.
        announceLog(QStringLiteral("Connecting slot on_fontSize_valueChanged()"));
        box->setText(QStringLiteral("R{|a|}"));
        turnEventLoop();
        QObject::connect(editor, &CCircuitEditor::projectPartModified, [this] { ++reports; });
    }

    /// Opens the box's dialog, lets it be used and closes it.
    void edit(const std::function<void()>& use, Qt::Key end = Qt::Key_Escape) {
        driver.queue([&](QWidget* opened) {
            dialog = opened;
            text = part<QTextEdit>("textEdit");
            ASSERT_NE(text, nullptr);
            use();
            QTest::keyClick(opened, end);
        });
        doubleClick({20, 20});
    }
    template <class Widget>
    Widget* part(const char* name) {
        return dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    QTextCharFormat formatAt(int position) {
        QTextCursor cursor(text->document());
        cursor.setPosition(position);
        return cursor.charFormat();
    }

    DialogDriver driver;
    QPointer<CCircuitEditorTextBox> box;
    QWidget* dialog = nullptr;
    QTextEdit* text = nullptr;
    int reports = 0;
};

}  // namespace

TEST(SymbolPalette, FillsItsAreaWithTheLetters) {
    SymbolWidget palette;
    palette.show();
    auto* table = palette.findChild<QTableWidget*>();
    QString letters;
    for (int i = 0; i < 26; ++i) {
        letters += table->item(i / 13, i % 13)->text();
    }
    EXPECT_EQ(letters, QStringLiteral("abcdefghijklmnopqrstuWwxyz"));
    for (const QSize size : {QSize(390, 80), QSize(641, 97), QSize(200, 40)}) {
        palette.resize(size);
        QCoreApplication::processEvents();
        const QSize area = table->viewport()->size();
        EXPECT_EQ(table->columnWidth(0), area.width() / 13);
        EXPECT_EQ(table->columnWidth(12), area.width() - 12 * (area.width() / 13));
        EXPECT_EQ(table->rowHeight(0) + table->rowHeight(1), area.height());
    }
    QString told;
    table->setCurrentItem(nullptr);
    QObject::connect(&palette, &SymbolWidget::currentSymbolChanged,
                     [&](QChar now, QChar before) { told += now + QString("<%1 ").arg(before); });
    QObject::connect(&palette, &SymbolWidget::symbolClicked, [&](QChar c) { told += c; });
    palette.setCurrentSymbol('b');
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(1, 8)).center());
    EXPECT_EQ(told, QString("W<%1 W").arg(QChar()));
}

TEST_F(TextDialog, LooksAsRequired) {
    edit([&] {
        QStringList texts{dialog->windowTitle(), dialog->toolTip()};
        for (const char* name : {"label", "label_2", "label_3"}) {
            texts << part<QLabel>(name)->text();
        }
        for (const char* name : {"superScriptButton", "subScriptButton", "normalScriptButton"}) {
            const auto* button = part<QToolButton>(name);
            texts << button->text() << button->toolTip();
            EXPECT_TRUE(button->isCheckable() && button->autoExclusive());
        }
        EXPECT_EQ(texts.join('|'),
                  QStringLiteral("Edit Text|Change to super script|Font|Font Size|Align text|"
                                 "Super||Sub|Change to sub script|Normal|Change to normal script"));
        EXPECT_EQ(part<QDialogButtonBox>("buttonBox")->standardButtons(), QDialogButtonBox::Ok);
        EXPECT_EQ(part<SymbolWidget>("symbolWidget")->size(), QSize(390, 80));
        EXPECT_EQ(dialog->parentWidget(), &window);
        EXPECT_EQ(dialog->focusWidget(), text);
    });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}"));
}

TEST_F(TextDialog, InsertsSymbolsAndKeepsWhatWasTyped) {
    edit([&] {
        text->moveCursor(QTextCursor::End);
        auto* table = dialog->findChild<QTableWidget*>();
        const QPoint place = table->visualItemRect(table->item(1, 8)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        EXPECT_EQ(dialog->focusWidget(), text);
        QTest::keyClicks(text, QStringLiteral("x"));
        QTest::keyClick(text, Qt::Key_Return);
        QTest::keyClicks(text, QStringLiteral("{|"));
    });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}{|W|}x{|?|}{|"));
    EXPECT_EQ(box->textWidth(), 100);
    EXPECT_EQ(reports, 0);
    // What was there before the dialog can't be undone away.
    edit([&] { QTest::keyClick(text, Qt::Key_Z, Qt::ControlModifier); });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}{|W|}x{|?|}{|"));
}

TEST_F(TextDialog, SwallowsTheReleaseThatTheBoxWaitsFor) {
    driver.accept();
    click({20, 20});
    QTest::mouseDClick(editor->viewport(), Qt::LeftButton, Qt::NoModifier, at({20, 20}));
    EXPECT_EQ(editor->scene()->mouseGrabberItem(), nullptr);
}

TEST_F(TextDialog, SetsFontSizeAndAlignment) {
    const QString family = QStringLiteral("DejaVu Serif");
    edit(
        [&] {
            part<QFontComboBox>("fontComboBox")->setCurrentFont(QFont(family));
            EXPECT_EQ(formatAt(1).fontFamily(), family);
            EXPECT_EQ(formatAt(3).fontFamily(), QStringLiteral("Symbol"));
            part<QSpinBox>("fontSize")->setValue(30);
            EXPECT_EQ(formatAt(1).fontPointSize(), 30);
            EXPECT_EQ(formatAt(3).fontPointSize(), 30);
            EXPECT_EQ(text->textCursor().selectedText().size(), 4);
            text->moveCursor(QTextCursor::End);
            part<QToolButton>("superScriptButton")->click();
            QTest::keyClicks(text, QStringLiteral("2"));
            EXPECT_EQ(formatAt(5).verticalAlignment(), QTextCharFormat::AlignSuperScript);
            part<QToolButton>("subScriptButton")->click();
            QTest::keyClicks(text, QStringLiteral("i"));
            EXPECT_EQ(formatAt(6).verticalAlignment(), QTextCharFormat::AlignSubScript);
            QTest::keyClick(text, Qt::Key_Home);
            EXPECT_TRUE(part<QToolButton>("normalScriptButton")->isChecked());
        },
        Qt::Key_Return);
    EXPECT_EQ(box->defaultFont().family(), family);
    EXPECT_EQ(box->defaultFont().pixelSize(), 30);
    EXPECT_EQ(box->font(), box->defaultFont());
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}2i"));
    // A number of pixels is no size in points: the smallest is offered.
    edit([&] {
        EXPECT_EQ(part<QSpinBox>("fontSize")->value(), 4);
        EXPECT_EQ(formatAt(5).verticalAlignment(), QTextCharFormat::AlignNormal);
    });
    EXPECT_EQ(box->defaultFont().pixelSize(), 4);
}

TEST_F(TextDialog, LeftWithoutTextDeletesTheBox) {
    edit([&] { text->clear(); });
    EXPECT_EQ(reports, 1);
    driver.accept();
    editor->interactiveAddTextBox();
    turnEventLoop();
    EXPECT_TRUE(box.isNull());
    EXPECT_EQ(editor->textBoxCount(), 0);
}

TEST_F(TextDialog, ClosesWhenTheBoxGoes) {
    click({20, 20});
    driver.queue([this](QWidget*) {
        delete box;
        turnEventLoop();
    });
    key(Qt::Key_F2);
    box = editor->addTextBox(QRectF(0, 0, 100, 60));
    driver.queue([this](QWidget*) {
        box->editText();  // there is one already
        editor->clear();
        turnEventLoop();
    });
    box->editText();
    EXPECT_TRUE(box.isNull());
    EXPECT_EQ(editor->textBoxCount(), 0);
}

TEST_F(TextDialog, ASymbolIsDeletedWholeAndLeavesItsNeighboursAlone) {
    const struct {
        const char* before;
        int position;
        QList<Qt::Key> keys;
        const char* after;
    } cases[] = {
        {"a{|W|}bc", 4, {Qt::Key_Backspace}, "abc"},
        {"a{|W|}bc", 3, {Qt::Key_Backspace}, "abc"},
        {"a{|W|}bc", 1, {Qt::Key_Delete}, "abc"},
        {"a{|W|}bc", 4, {Qt::Key_Backspace, Qt::Key_Backspace}, "bc"},
        {"a{|W|}{|x|}", 7, {Qt::Key_Backspace}, "a{|W|}"},
        {"{|W|}b", 0, {Qt::Key_R}, "r{|W|}b"},
        {"a{|W|}b", 1, {Qt::Key_R}, "ar{|W|}b"},
    };
    for (const auto& example : cases) {
        box->setText(QString::fromLatin1(example.before));
        edit([&] {
            QTextCursor cursor = text->textCursor();
            cursor.setPosition(example.position);
            text->setTextCursor(cursor);
            for (Qt::Key key : example.keys) {
                QTest::keyClick(text, key);
            }
        });
        EXPECT_EQ(box->text(), QString::fromLatin1(example.after)) << example.before;
    }
    // What was pasted without its fellows doesn't stay either, and alignment spares the symbols.
    box->setText(QStringLiteral("x{|W|}y"));
    edit([this] {
        QTextCursor cursor = text->textCursor();
        cursor.clearSelection();
        cursor.insertText(QString(QChar::ObjectReplacementCharacter) + "z");
        text->selectAll();
        part<QToolButton>("superScriptButton")->click();
    });
    EXPECT_EQ(box->text().remove(QLatin1Char('z')), QStringLiteral("x{|W|}y"));
}
