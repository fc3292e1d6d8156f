// Boxes that make themselves, looks that last, and pastes that hang at the pointer.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "WarningGuard.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QDomDocument>
#include <QGraphicsScene>
#include <QPushButton>
#include <QSpinBox>
#include <QTextEdit>

namespace {

class TextLooks : public DrawingTest {
protected:
    TextLooks() {
        editor->setCaptionNewElements(true);
        editor->setKeepTextStyles(true);
        editor->setPlacePastedItems(true);
    }

    QRectF placeOfBox(const CCircuitElementPropertyTextBox* box) {
        return box->mapToScene(box->boundingRect()).boundingRect();
    }

    /// Saves and loads the drawing.
    void reopen() {
        QDomDocument document;
        QDomElement part = document.createElement(QStringLiteral("ProjectPart"));
        document.appendChild(part);
        ASSERT_TRUE(editor->saveProjectPart(document, part));
        ASSERT_TRUE(editor->loadProjectPart(document, part));
        turnEventLoop();
    }
};

}  // namespace

TEST_F(TextLooks, NewElementsAreCaptionedWhereThereIsRoom) {
    create("Resistor.Basic", {0, 0});
    EXPECT_EQ(panel.shown, element("R1"));
    create("Capacitor.Basic", {0, 90});
    create("OpAmp.Analog", {200, 0});
    turnEventLoop();
    QList<QRectF> boxes;
    for (const char* name : {"R1", "C1"}) {
        EXPECT_EQ(itemOf(name)->propertyTextBoxes().size(), 2) << name;
    }
    for (int i = 0; i < editor->elementPropertyTextBoxCount(); ++i) {
        const CCircuitElementPropertyTextBox* box = editor->elementPropertyTextBox(i);
        EXPECT_EQ(box->backgroundColor().alpha(), 0);
        const QRectF place = placeOfBox(box);
        for (const QRectF& other : boxes) {
            EXPECT_FALSE(place.intersects(other)) << i;
        }
        for (int k = 0; k < circuit.elementCount(); ++k) {
            const QGraphicsItem* item = editor->elementItem(circuit.element(k));
            EXPECT_FALSE(place.intersects(item->mapToScene(item->boundingRect()).boundingRect()))
                << i << " on " << k;
        }
        boxes.append(place);
    }
    // Asking for them again adds nothing and moves nothing.
    const QByteArray before = snapshot();
    DialogDriver driver;
    driver.chooseEntry(QStringLiteral("Add default property text boxes"));
    rightClick({0, 0});
    EXPECT_EQ(snapshot(), before);
}

TEST_F(TextLooks, SizeAndGroundLastThroughFilesAndCopies) {
    create("Resistor.Basic", {0, 0});
    CCircuitEditorTextBox* text = editor->addTextBox(QRectF(100, 100, 80, 40));
    QFont font = text->defaultFont();
    font.setPointSize(17);
    text->setDefaultFont(font);
    text->setText(QStringLiteral("note"));
    itemOf("R1")->propertyTextBoxes().first()->setBackgroundColor(Qt::yellow);
    const int captionSize = itemOf("R1")->propertyTextBoxes().last()->font().pixelSize();
    turnEventLoop();
    reopen();
    EXPECT_EQ(editor->textBox(0)->defaultFont().pixelSize(), 17);
    const auto boxes = itemOf("R1")->propertyTextBoxes();
    EXPECT_EQ(boxes.first()->backgroundColor(), QColor(Qt::yellow));
    EXPECT_EQ(boxes.last()->backgroundColor().alpha(), 0);
    EXPECT_EQ(boxes.last()->font().pixelSize(), captionSize);
    click(itemOf("R1")->pos());
    editor->copy();
    editor->paste(QPointF(0, 200));
    moveTo({0, 200});
    click({0, 200});
    turnEventLoop();
    ASSERT_NE(itemOf("R2"), nullptr);
    EXPECT_EQ(itemOf("R2")->propertyTextBoxes().last()->font().pixelSize(), captionSize);
    EXPECT_EQ(itemOf("R2")->propertyTextBoxes().first()->backgroundColor(), QColor(Qt::yellow));
}

TEST_F(TextLooks, BoxesAreAsLargeAsWhenTheyComeBack) {
    create("Resistor.Basic", {0, 0});
    QMetaObject::invokeMethod(itemOf("R1"), "createElementPropertyTextBoxForCaptionProperty");
    DialogDriver driver;
    driver.accept();
    itemOf("R1")->propertyTextBoxes().first()->showSelectElementDialog();
    turnEventLoop();
    const QByteArray before = snapshot();
    reopen();
    EXPECT_EQ(snapshot(), before);
}

TEST_F(TextLooks, TheTextDialogKnowsTheSizeAndCanBeCancelled) {
    announceLog(QStringLiteral("on_fontSize_valueChanged"));
    CCircuitEditorTextBox* text = editor->addTextBox(QRectF(100, 100, 80, 40));
    QFont font = text->defaultFont();
    font.setPointSize(13);
    text->setDefaultFont(font);
    text->setText(QStringLiteral("a{|b|}c"));
    DialogDriver driver;
    driver.queue([](QWidget* dialog) {
        EXPECT_EQ(dialog->findChild<QSpinBox*>()->value(), 13);
        dialog->findChild<QTextEdit*>()->setPlainText(QStringLiteral("lost"));
        dialog->findChild<QSpinBox*>()->setValue(40);
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
    });
    text->editText();
    EXPECT_EQ(text->text(), QStringLiteral("a{|b|}c"));
    EXPECT_EQ(text->defaultFont().pixelSize(), 13);
}

TEST_F(TextLooks, PastesHangUntilPutDownAndAreDeletedAlone) {
    create("Resistor.Basic", {0, 0});
    click({0, 0});
    editor->copy();
    const QByteArray before = snapshot();
    editor->paste(QPointF(0, 0));
    moveTo({50, 50});
    key(Qt::Key_Escape);
    EXPECT_EQ(snapshot(), before);
    editor->paste(QPointF(0, 0));
    moveTo({100, 100});
    EXPECT_EQ(circuit.elementCount(), 1);
    // Right upon what is there already.
    moveTo({0, 0});
    click({0, 0});
    ASSERT_EQ(circuit.elementCount(), 2);
    EXPECT_EQ(itemOf("R2")->pos(), itemOf("R1")->pos());
    key(Qt::Key_Delete);
    turnEventLoop();
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_NE(element("R1"), nullptr);
}
