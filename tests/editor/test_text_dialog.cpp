// The dialog that edits the text of a text box, and its palette of symbols.

#include "CCircuitEditorTextBox.h"
#include "CTextEditorDialog.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "QtSeries.h"
#include "SymbolWidget.h"
#include "TextBoxText.h"
#include "WarningGuard.h"

#include <QApplication>
#include <QClipboard>
#include <QFontComboBox>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

#include <random>

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
    /// What the text holds, as a box writes it; a guard that belongs to no symbol stands alone.
    QStringList tokens(int from = 0, int to = -1) {
        QStringList result;
        const QString plain = text->document()->toPlainText();
        for (int i = from; i < (to < 0 ? plain.size() : to); ++i) {
            const bool isSymbol = plain.at(i) == TextBoxText::Guard &&
                                  QStringView(plain).mid(i + 2).startsWith(TextBoxText::Guard) &&
                                  formatAt(i + 1).hasProperty(TextBoxText::MarkerProperty) &&
                                  QtSeries::fontFamily(formatAt(i + 2)) == QLatin1String("Symbol");
            result << (isSymbol              ? QStringLiteral("{|%1|}").arg(plain.at(i + 1))
                       : plain.at(i) == '\n' ? QStringLiteral("{|?|}")
                                             : QString(plain.at(i)));
            i += isSymbol ? 2 : 0;
        }
        return result;
    }
    /// Does the edit and expects these in the place of the selection, and all else as it was.
    void expectReplaced(const QStringList& inserted, const std::function<void()>& use) {
        const QTextCursor cursor = text->textCursor();
        const QStringList expected =
            tokens(0, cursor.selectionStart()) + inserted + tokens(cursor.selectionEnd());
        use();
        EXPECT_EQ(tokens(), expected);
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

TEST_F(TextDialog, ChangesNothingByItself) {
    edit([&] {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Edit Text"));
        // Kept on the dialog, where it shows wherever no child has a tip of its own.
        EXPECT_EQ(dialog->toolTip(), QStringLiteral("Change to super script"));
        EXPECT_EQ(dialog->parentWidget(), &window);
        EXPECT_EQ(dialog->focusWidget(), text);
    });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}"));
}

TEST_F(TextDialog, InsertsASymbolWithADoubleClick) {
    edit([&] {
        text->moveCursor(QTextCursor::End);
        auto* table = dialog->findChild<QTableWidget*>();
        const QPoint place = table->visualItemRect(table->item(1, 8)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        EXPECT_EQ(dialog->focusWidget(), text);
    });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}{|W|}"));
    EXPECT_EQ(reports, 0);
    // What was there before the dialog can't be undone away.
    edit([&] { QTest::keyClick(text, Qt::Key_Z, Qt::ControlModifier); });
    EXPECT_EQ(box->text(), QStringLiteral("R{|a|}{|W|}"));
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
            EXPECT_EQ(QtSeries::fontFamily(formatAt(1)), family);
            EXPECT_EQ(QtSeries::fontFamily(formatAt(3)), QStringLiteral("Symbol"));
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

TEST_F(TextDialog, RandomEditsKeepSymbolsWholeAndAllThatIsTyped) {
    std::mt19937 random(11);
    const auto below = [&random](unsigned count) { return static_cast<int>(random() % count); };
    const QList<Qt::Key> moves{Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                               Qt::Key_End,  Qt::Key_Up,    Qt::Key_Down};
    const auto step = [&] {
        const int kind = below(14);
        const Qt::KeyboardModifiers control(below(4) ? Qt::NoModifier : Qt::ControlModifier);
        const Qt::KeyboardModifiers shift(below(3) ? Qt::NoModifier : Qt::ShiftModifier);
        if (kind < 4) {
            QTest::keyClick(text, moves.at(below(6)), control | shift);
        } else if (kind < 6) {
            QTest::mouseClick(text->viewport(), Qt::LeftButton, shift, {below(120), 4 + below(40)});
        } else if (kind < 8) {
            const char letter = static_cast<char>('a' + below(26));
            expectReplaced({QString(letter)}, [&] { QTest::keyClick(text, letter); });
        } else if (kind == 8) {
            expectReplaced({"{|?|}"}, [&] { QTest::keyClick(text, Qt::Key_Return); });
        } else if (kind < 11) {
            expectReplaced({"{|W|}"}, [&] {
                emit part<SymbolWidget>("symbolWidget")->symbolDoubleClicked('W');
            });
        } else if (kind == 11) {
            const QStringList before = tokens();
            QTest::keyClick(text, below(2) ? Qt::Key_Backspace : Qt::Key_Delete, control);
            EXPECT_LE(tokens().size(), before.size());
        } else if (kind == 12 && text->textCursor().hasSelection()) {
            const QTextCursor cursor = text->textCursor();
            const QStringList copied = tokens(cursor.selectionStart(), cursor.selectionEnd());
            QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
            QTest::keyClick(text, Qt::Key_Right);
            expectReplaced(copied, [&] { QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier); });
        } else {
            QTest::keyClick(text, below(2) ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
        }
        EXPECT_FALSE(tokens().contains(QString(TextBoxText::Guard)));
    };
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        QString typed;
        edit([&] {
            text->moveCursor(QTextCursor::End);
            for (int i = 0; i < 80 && !HasFailure(); ++i) {
                step();
            }
            QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
            QTest::keyClick(text, Qt::Key_E);
            typed = tokens().join(QString());
        });
        QString kept = box->text();
        EXPECT_EQ(QString(kept).remove(TextBoxText::Shield), typed);
        // What was saved is read as it is.
        box->setText(kept);
        EXPECT_EQ(box->text(), kept);
    }
}
