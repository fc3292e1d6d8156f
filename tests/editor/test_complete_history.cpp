#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorTextBox.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "DialogDriver.h"
#include "DrawingTest.h"

#include <QDomDocument>

namespace {

class WholeHistory : public DrawingTest {
protected:
    WholeHistory() { editor->setCompleteHistory(true); }
    ~WholeHistory() override { EXPECT_EQ(differences(), QString()); }

    QString differences() {
        turnEventLoop();
        return editor->completeHistory()->differences().join(QLatin1Char('\n'));
    }
    int entries() const { return editor->undoStack()->count(); }
};

}  // namespace

TEST_F(WholeHistory, BringsBackWhatAnErasedGroupWas) {
    create("Resistor.Basic", {-100, 0});
    create("Capacitor.Basic", {100, 0});
    layWire({placeOf("R1.n"), {0, 60}, placeOf("C1.p")});
    QMetaObject::invokeMethod(itemOf("R1"), "createElementPropertyTextBoxesForDisplayProperties");
    const QByteArray before = snapshot();
    const int count = entries();
    editor->selectAll();
    key(Qt::Key_Delete);
    EXPECT_EQ(circuit.elementCount(), 0);
    EXPECT_EQ(entries(), count + 1);
    EXPECT_EQ(editor->undoText(), QStringLiteral("Delete"));
    editor->undo();
    EXPECT_EQ(before, snapshot());
    while (!editor->undoText().isEmpty()) {
        editor->undo();
    }
    EXPECT_EQ(circuit.elementCount(), 0);
    for (int i = 0; i < count; ++i) {
        editor->redo();
    }
    EXPECT_EQ(before, snapshot());
}
