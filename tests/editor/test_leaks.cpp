// Nothing grows by what has come and gone.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorTextBox.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QDomDocument>

#include <malloc.h>

// There if the program is built with the sanitizers, which have an allocator of their own.
extern "C" __attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();

namespace {

class Leaks : public DrawingTest {
protected:
    /// Bytes that each of so many rounds leaves behind, after some that fill caches.
    template <class Round>
    double leftBy(int rounds, Round round) {
        const auto inUse = [] {
            turnEventLoop();
            QApplication::processEvents();
            return __sanitizer_get_current_allocated_bytes
                       ? double(__sanitizer_get_current_allocated_bytes())
                       : double(mallinfo2().uordblks);
        };
        for (int i = 0; i < 3; ++i) {
            round();
        }
        const double before = inUse();
        for (int i = 0; i < rounds; ++i) {
            round();
        }
        return (inUse() - before) / rounds;
    }

    void drawThings(int count) {
        for (int i = 0; i < count; ++i) {
            ICircuitElement* made = factory.createElement("Resistor.Basic");
            circuit.addElement(made);
            QMetaObject::invokeMethod(editor->elementItem(made),
                                      "createElementPropertyTextBoxesForDisplayProperties");
            if (i % 2) {
                solver.makeConnection(circuit.element(i - 1)->elementNode("n"),
                                      made->elementNode("p"));
            }
            editor->addTextBox(QPointF(0, 0))->setText("a");
        }
    }
};

}  // namespace

TEST_F(Leaks, ProjectsElementsAndEditorsLeaveNothing) {
    editor->setCompleteHistory(true);
    EXPECT_LT(leftBy(20,
                     [this] {
                         drawThings(50);
                         QApplication::processEvents();
                         editor->closeProjectPart();
                         turnEventLoop();
                     }),
              10000);  // a hundred bytes for each thing
    drawThings(20);
    QDomDocument document;
    QDomElement part = document.createElement("Part");
    ASSERT_TRUE(editor->saveProjectPart(document, part));
    EXPECT_LT(leftBy(100,
                     [&] {
                         editor->closeProjectPart();
                         EXPECT_TRUE(editor->loadProjectPart(document, part));
                         turnEventLoop();
                     }),
              500);
    EXPECT_LT(leftBy(10,
                     [this] {
                         const std::unique_ptr<QWidget> further(
                             framework.component->createWidget("circuitEditor"));
                         EXPECT_NE(further, nullptr);
                     }),
              500);
}
