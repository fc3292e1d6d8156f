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

namespace {

int number(const char* variable, int usual) {
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue(variable, &isSet);
    return isSet ? value : usual;
}

QString text(const QVector<UserStep>& steps) {
    QString result;
    for (const UserStep& step : steps) {
        result += QStringLiteral("%1:%2 ").arg(step.kind).arg(step.seed);
    }
    return result.trimmed();
}

/// The steps that a failed run has printed, to do them again.
QVector<UserStep> replayed() {
    QVector<UserStep> steps;
    for (const QByteArray& step : qgetenv("VORTEL_REPLAY").simplified().split(' ')) {
        const QList<QByteArray> fields = step.split(':');
        if (fields.size() == 2) {
            steps.append({fields.first().toInt(), fields.last().toUInt()});
        }
    }
    return steps;
}

}  // namespace

// VORTEL_SEQUENCES, VORTEL_STEPS and VORTEL_SEED make it a longer or another run.
TEST_F(HistoryUser, TakesBackAndRedoesWhateverWasDone) {
    const int sequences = number("VORTEL_SEQUENCES", 8);
    const int length = number("VORTEL_STEPS", 50);
    const int seed = number("VORTEL_SEED", 1);
    for (int sequence = 0; sequence < sequences; ++sequence) {
        QRandomGenerator random(seed + sequence);
        QVector<UserStep> steps;
        // Every other one leaves the properties on, so that all can be taken back.
        const int kinds = sequence % 2 ? StepKinds : SteadyKinds;
        for (int i = 0; i < length; ++i) {
            steps.append({random.bounded(kinds), random.generate()});
        }
        if (!replayed().isEmpty()) {
            const QString mistake = mistakeIn(replayed());
            EXPECT_TRUE(mistake.isEmpty()) << qPrintable(mistake);
            return;
        }
        QString mistake = mistakeInChild(steps);
        if (mistake.isEmpty()) {
            continue;
        }
        // As few steps as show the same.
        for (int chunk = steps.size() / 2; chunk > 0; chunk /= 2) {
            for (int at = 0; at + chunk <= steps.size();) {
                QVector<UserStep> fewer = steps;
                fewer.remove(at, chunk);
                const QString same = mistakeInChild(fewer);
                if (same.isEmpty()) {
                    at += chunk;
                } else {
                    steps = fewer;
                    mistake = same;
                }
            }
        }
        FAIL() << "seed " << seed + sequence << ", " << qPrintable(mistake) << "\nVORTEL_REPLAY=\""
               << qPrintable(text(steps)) << '"';
    }
}
