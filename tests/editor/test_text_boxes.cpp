// Text boxes: the encoding of their text, and what the user does to one.

#include "CCircuitEditorTextBox.h"
#include "ColorAction.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "TextBoxText.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QTextCursor>
#include <QTextDocument>

namespace {

class TextBoxes : public DrawingTest {
protected:
    TextBoxes() : box(editor->addTextBox(QRectF(0, 0, 100, 60))) {
        box->setText(QStringLiteral("note"));
        turnEventLoop();
        QObject::connect(editor, &CCircuitEditor::projectPartModified, [this] { ++reports; });
    }

    /// The pointer without a button.
    void hover(QPointF point) {
        QMouseEvent event(QEvent::MouseMove, at(point), editor->viewport()->mapToGlobal(at(point)),
                          Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(editor->viewport(), &event);
    }
    int takeReports() {
        turnEventLoop();
        return std::exchange(reports, 0);
    }
    QString paintedColor(QPoint point) {
        QImage image(120, 80, QImage::Format_RGB32);
        QPainter painter(&image);
        QStyleOptionGraphicsItem option;
        option.rect = QRect(0, 0, 100, 60);
        box->paint(&painter, &option, nullptr);
        return QColor(image.pixel(point)).name();
    }

    QPointer<CCircuitEditorTextBox> box;
    int reports = 0;
};

}  // namespace

TEST(TextEncoding, ComesBackFromTheDocument) {
    const QString guard(TextBoxText::Guard);
    const QString lost = QChar(QChar::ParagraphSeparator) + QStringLiteral("{|%1|}%1").arg(guard);
    const QString marks = QString::fromUtf8("\u00e4\x01 \U0001F600{|\u0301|}\u0301");
    const struct {
        QString encoded;
        QString result;
        int blocks;
    } rows[] = {
        {"a{|?|}b", "a{|?|}b", 2},
        {"a{|?|}", "a{|?|}", 2},
        {"{|?|}{|?|}", "{|?|}{|?|}", 3},
        {"{|a|}", "{|a|}", 1},
        {"{|a|}{|b|}{|?|}x{|{|}{|||}", "{|a|}{|b|}{|?|}x{|{|}{|||}", 2},
        {marks, marks, 1},
        // Five characters are skipped, whatever they are.
        {"a{|xyzb{|", "a{|x|}b{|" + guard + "|}", 1},
        // A symbol that opens a later block is lost.
        {"a{|?|}{|x|}b", "a{|?|}" + lost + "b", 2},
        {"a{|?|}{|?|}{|x|}{|y|}", "a{|?|}{|?|}" + lost + "{|y|}", 3},
    };
    for (const auto& row : rows) {
        QTextDocument document;
        TextBoxText::fill(&document, row.encoded, QFont());
        EXPECT_EQ(document.blockCount(), row.blocks) << qPrintable(row.encoded);
        EXPECT_EQ(TextBoxText::encodedText(document), row.result) << qPrintable(row.encoded);
        TextBoxText::fillFromPlainText(&document, document.toPlainText(), QFont());
        EXPECT_EQ(TextBoxText::encodedText(document), row.result) << qPrintable(row.encoded);
    }
}

TEST(TextEncoding, SymbolsThatWereTornApartAreMended) {
    const struct {
        int position;
        const char* typed;
        int removed;
        const char* result;
    } rows[] = {
        {2, "x", 0, "ax{|W|}b"},     {3, "x", 0, "a{|W|}xb"}, {1, "", 1, "a{|W|}b"},
        {3, "", 1, "a{|W|}b"},       {2, "", 1, "ab"},        {1, "\n", 0, "a{|?|}\u200b{|W|}b"},
        {3, "\n", 0, "a{|W|}{|?|}b"}};
    for (const auto& row : rows) {
        QTextDocument document;
        TextBoxText::fill(&document, QStringLiteral("a{|W|}b"), QFont());
        QTextCursor cursor(&document);
        cursor.setPosition(row.position);
        cursor.setPosition(row.position + row.removed, QTextCursor::KeepAnchor);
        cursor.insertText(QString::fromLatin1(row.typed));
        TextBoxText::repair(&document, QFont());
        EXPECT_EQ(TextBoxText::encodedText(document), QString::fromUtf8(row.result))
            << row.position << row.typed;
    }
}

TEST_F(TextBoxes, AreResizedByTheirCorner) {
    press({96, 56});
    EXPECT_EQ(box->cursor().shape(), Qt::SizeFDiagCursor);
    EXPECT_FALSE(box->isSelected());
    moveTo({116, 66});
    EXPECT_EQ(takeReports(), 1);
    EXPECT_EQ(box->rect(), QRectF(0, 0, 120, 70));
    EXPECT_EQ(box->textWidth(), 120);
    moveTo({-4, -14});
    EXPECT_EQ(box->rect(), QRectF(0, 0, 21, 21));
    // The corner runs ahead of the pointer.
    moveTo({6, -4});
    release({6, -4});
    EXPECT_EQ(box->rect(), QRectF(0, 0, 31, 31));
    panel.setObject(&circuit, false);
    drag({5, 5}, {25, 5});
    EXPECT_TRUE(box->isSelected());
    EXPECT_TRUE(panel.shown.isNull());
    EXPECT_EQ(box->cursor().shape(), Qt::OpenHandCursor);
    EXPECT_EQ(box->rect(), QRectF(20, 0, 31, 31));
}

TEST_F(TextBoxes, ObeyKeysWhileSelected) {
    editor->scene()->setFocusItem(box);
    key(Qt::Key_Right);
    EXPECT_EQ(box->pos(), QPointF());
    click({20, 20});
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, QPointF> rows[] = {
        {Qt::Key_Right, Qt::NoModifier, {10, 0}},
        {Qt::Key_Down, Qt::ControlModifier, {10, 1}},
        {Qt::Key_Left, Qt::ControlModifier, {9, 1}},
        {Qt::Key_Up, Qt::NoModifier, {9, -9}}};
    for (const auto& [arrow, modifiers, position] : rows) {
        key(arrow, modifiers);
        EXPECT_EQ(takeReports(), 1);
        EXPECT_EQ(box->pos(), position);
    }
    key(Qt::Key_Delete);
    EXPECT_EQ(takeReports(), 0);
    EXPECT_TRUE(box.isNull());
}

TEST_F(TextBoxes, ShowThePointer) {
    const QPoint inside(90, 30);
    const QPoint edge(50, 0);
    const QPoint grip(95, 55);
    box->setBorderColor(Qt::blue);
    EXPECT_EQ(paintedColor(inside), QStringLiteral("#ff0000"));
    EXPECT_EQ(paintedColor(edge), QStringLiteral("#0000ff"));
    EXPECT_EQ(paintedColor(grip), QStringLiteral("#ff0000"));
    hover(grip);
    EXPECT_EQ(box->cursor().shape(), Qt::SizeFDiagCursor);
    EXPECT_EQ(paintedColor(inside), QStringLiteral("#ffc8c8"));
    EXPECT_EQ(paintedColor(edge), QStringLiteral("#000000"));
    EXPECT_NE(paintedColor(grip), paintedColor(inside));
    hover(inside);
    EXPECT_EQ(box->cursor().shape(), Qt::OpenHandCursor);
    hover(grip);
    hover({300, 300});
    EXPECT_EQ(box->cursor().shape(), Qt::SizeFDiagCursor);
    EXPECT_EQ(paintedColor(inside), QStringLiteral("#ff0000"));
}

TEST_F(TextBoxes, OfferAMenu) {
    DialogDriver driver;
    box->setFillColor(Qt::white);
    driver.queue([](QWidget* menu) {
        // No colours, no submenu: that of the fill stands alone.
        menu->actions().at(2)->menu()->actions().constFirst()->trigger();
    });
    rightClick({20, 20});
    EXPECT_EQ(driver.texts, QStringList(QStringLiteral("Edit Text|-|Fill|-|Delete")));
    EXPECT_EQ(box->fillColor(), QColor(255, 0, 0));
    driver.chooseEntry(QStringLiteral("Delete"));
    rightClick({20, 20});
    EXPECT_EQ(takeReports(), 0);
    EXPECT_TRUE(box.isNull());
    box = editor->addTextBox(QRectF(0, 0, 100, 60));
    driver.queue([this](QWidget*) { delete box; });
    rightClick({20, 20});
    EXPECT_EQ(editor->textBoxCount(), 0);
}
