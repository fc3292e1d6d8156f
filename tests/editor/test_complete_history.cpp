#include "CCircuitEditorElementItem.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "DrawingTest.h"
#include "HistoryUser.h"

#include <QApplication>
#include <QKeyEvent>

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

TEST_F(WholeHistory, AHeldKeyIsOneStep) {
    create("Resistor.Basic", {0, 0});
    itemOf("R1")->setSelected(true);
    const int count = entries();
    const QPointF start = itemOf("R1")->pos();
    for (int i = 0; i < 6; ++i) {
        // Held, let go of, and held again.
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), i % 3 != 0);
        QApplication::sendEvent(editor, &press);
        turnEventLoop();
    }
    EXPECT_EQ(entries(), count + 2);
    editor->undo();
    EXPECT_EQ(itemOf("R1")->pos(), start + QPointF(30, 0));
    editor->redo();
    EXPECT_EQ(itemOf("R1")->pos(), start + QPointF(60, 0));
}

// VORTEL_SEQUENCES, VORTEL_STEPS and VORTEL_SEED make it a longer or another run, VORTEL_REPLAY one
// of the steps that a failed run has printed.
TEST_F(HistoryUser, TakesBackAndRedoesWhateverWasDone) {
    const QVector<UserStep> replayed = HistoryUser::steps(qgetenv("VORTEL_REPLAY"));
    if (!replayed.isEmpty()) {
        const QString mistake = mistakeIn(replayed);
        EXPECT_TRUE(mistake.isEmpty()) << qPrintable(mistake);
        return;
    }
    const int sequences = numberIn("VORTEL_SEQUENCES", 8);
    const int length = numberIn("VORTEL_STEPS", 50);
    const int seed = numberIn("VORTEL_SEED", 1);
    for (int sequence = 0; sequence < sequences; ++sequence) {
        QRandomGenerator random(seed + sequence);
        QVector<UserStep> steps;
        // Every other one leaves the properties on, so that all can be taken back.
        const int kinds = sequence % 2 ? StepKinds : SteadyKinds;
        for (int i = 0; i < length; ++i) {
            steps.append({random.bounded(kinds), random.generate()});
        }
        QString mistake = mistakeInChild(steps);
        if (mistake.isEmpty()) {
            continue;
        }
        cutDown(&steps, &mistake);
        FAIL() << "seed " << seed + sequence << ", " << qPrintable(mistake) << "\nVORTEL_REPLAY=\""
               << qPrintable(text(steps)) << '"';
    }
}
