// A user of the window who does anything: every action and key, with any answer to what opens.

#include "RandomAnswers.h"
#include "SimulationPart.h"
#include "WarningGuard.h"
#include "WindowTest.h"

#include <QRandomGenerator>

#include <cmath>

namespace {

class RestlessWindow : public WindowTest {
protected:
    QPointF place() { return {random.bounded(-12, 13) * 20.0, random.bounded(-9, 10) * 20.0}; }

    void act() {
        QList<QAction*> enabled;
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->isEnabled() && action->isVisible() && !action->isSeparator() &&
                !action->menu() && action->objectName() != QLatin1String("quit")) {
                enabled.append(action);
            }
        }
        enabled.at(random.bounded(enabled.size()))->trigger();
    }

    void useCanvas() {
        const Qt::Key keys[] = {Qt::Key_R,      Qt::Key_C,      Qt::Key_G,   Qt::Key_W, Qt::Key_F,
                                Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Up};
        switch (random.bounded(6)) {
            case 0:
                doubleClick(place());
                break;
            case 1:
                rightClick(view()->mapFromScene(place()));
                break;
            case 2:
                QTest::mousePress(view()->viewport(), Qt::LeftButton,
                                  random.bounded(2) ? Qt::ControlModifier : Qt::NoModifier,
                                  view()->mapFromScene(place()));
                QTest::mouseMove(view()->viewport(), view()->mapFromScene(place()));
                QTest::mouseRelease(view()->viewport(), Qt::LeftButton, {},
                                    view()->mapFromScene(place()));
                break;
            default:
                key(keys[random.bounded(9)]);
                click(place());
                break;
        }
    }

    /// Of the drawing. What turns and moves add up to may be a rounding error beside what a file
    /// holds.
    QList<QByteArray> lines() {
        QList<QByteArray> result = drawing().split('\n');
        for (QByteArray& line : result) {
            const int from = line.lastIndexOf(' ') + 1;
            const int length = line.size() - from - (line.endsWith(',') ? 1 : 0);
            bool isNumber = false;
            const double value = line.mid(from, length).toDouble(&isNumber);
            if (isNumber) {
                // Added to nothing, what is nothing loses its sign.
                const double rounded = std::round(value * 1e6) / 1e6 + 0.0;
                line.replace(from, length, QByteArray::number(rounded, 'f', 6));
            }
        }
        return result;
    }

    /// What is there survives a file.
    void saveAndOpen() {
        const QString file = folder.filePath(QStringLiteral("all.vprj"));
        key(Qt::Key_Escape);
        QString message;
        ASSERT_TRUE(workbench.save(file, &message)) << qPrintable(message);
        const QList<QByteArray> then = lines();
        ASSERT_TRUE(workbench.open(file, &message)) << qPrintable(message);
        const QList<QByteArray> now = lines();
        for (int i = 0; i < then.size() && !HasFailure(); ++i) {
            EXPECT_EQ(now.value(i).toStdString(), then.at(i).toStdString())
                << then.mid(qMax(0, i - 12), 24).join('\n').toStdString();
        }
        EXPECT_EQ(now.size(), then.size());
    }

    QRandomGenerator random;
    RandomAnswers answers{&random};
    UrlCatcher browser;
};

}  // namespace

// VORTEL_SEQUENCES and VORTEL_SEED make it a longer or another run.
TEST_F(RestlessWindow, SurvivesAnyAction) {
    for (const char* text : {"Undo: ", "Redo: ", "on_fontSize_valueChanged"}) {
        announceLog(QLatin1String(text));
    }
    for (const char* name : {"a.vprj", "b.ckt", "c.svg", "d.csv", "no/e.vprj"}) {
        answers.files.append(folder.filePath(QLatin1String(name)));
    }
    const int seed = numberIn("VORTEL_SEED", 1);
    for (int sequence = 0; sequence < numberIn("VORTEL_SEQUENCES", 2); ++sequence) {
        random.seed(seed + sequence);
        for (int i = 0; i < 50; ++i) {
            random.bounded(2) ? act() : useCanvas();
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            ASSERT_FALSE(HasFailure()) << "seed " << seed + sequence << ", step " << i;
        }
        workbench.simulation()->simulator().cancel();
        saveAndOpen();
        ASSERT_FALSE(HasFailure()) << "seed " << seed + sequence;
        for (QWidget* other : QApplication::topLevelWidgets()) {
            if (other != window.get() && other->isVisible()) {
                other->close();
            }
        }
    }
    workbench.clear();
}
