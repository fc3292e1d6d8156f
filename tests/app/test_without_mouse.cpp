// The window for who uses no mouse, no screen, or paper.

#include "Circuit.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "Printing.h"
#include "SimulationPart.h"
#include "WindowTest.h"

#include <QAccessible>
#include <QDockWidget>
#include <QImage>
#include <QPrinter>
#include <QProcess>
#include <QTabBar>

class WithoutMouse : public WindowTest {
protected:
    ICircuitNode* nodeOf(ICircuitElementNode* terminal) {
        for (int i = 0; i < circuit()->nodeCount(); ++i) {
            for (int k = 0; k < circuit()->node(i)->elementNodeCount(); ++k) {
                if (circuit()->node(i)->elementNode(k) == terminal) {
                    return circuit()->node(i);
                }
            }
        }
        return nullptr;
    }
};

TEST_F(WithoutMouse, SmallCircuitIsDrawnWithKeysAlone) {
    // A source with a resistor across it: placed by letters and arrow keys.
    for (const Qt::Key letter : {Qt::Key_V, Qt::Key_R}) {
        key(letter);
        for (int i = 0; i < 12; ++i) {
            key(letter == Qt::Key_V ? Qt::Key_Left : Qt::Key_Right);
        }
        key(Qt::Key_Return);
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);  // what is selected would take the next letter
    }
    ASSERT_EQ(circuit()->elementCount(), 2);
    // Terminals come in turn: V1.p, V1.n, R1.p, R1.n. One wire straight, one with a corner.
    key(Qt::Key_W);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    key(Qt::Key_Backtab);
    key(Qt::Key_Space);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Return);
    key(Qt::Key_Backtab);
    key(Qt::Key_Backtab);
    key(Qt::Key_Return);
    key(Qt::Key_Escape);
    key(Qt::Key_Escape);
    ASSERT_EQ(circuit()->nodeCount(), 2);
    const auto end = [this](int element, const char* name) {
        return circuit()->element(element)->elementNode(name);
    };
    EXPECT_NE(nodeOf(end(0, "p")), nullptr);
    EXPECT_EQ(nodeOf(end(0, "p")), nodeOf(end(1, "p")));
    EXPECT_EQ(nodeOf(end(0, "n")), nodeOf(end(1, "n")));

    // The second terminal of the first element, and a quantity of the element itself.
    trigger("addVariable");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    trigger("addVariable");
    key(Qt::Key_Tab);
    {
        DialogDriver dialogs;
        dialogs.chooseEntry("i");
        key(Qt::Key_Return);
    }
    Circuit& model = workbench.simulation()->circuit();
    ASSERT_EQ(model.outputVariableCount(), 2);
    EXPECT_EQ(model.outputVariable(0)->elementNode(), end(0, "n"));
    EXPECT_EQ(model.outputVariable(1)->element(), circuit()->element(0));
    EXPECT_EQ(model.outputVariable(1)->elementVarName(), "i");
    key(Qt::Key_Escape);

    // A screen reader is told what Tab selects, and what is there.
    key(Qt::Key_Tab);
    QAccessibleInterface* drawing = QAccessible::queryAccessibleInterface(view());
    ASSERT_NE(drawing->focusChild(), nullptr);
    EXPECT_EQ(drawing->focusChild()->text(QAccessible::Name), "V1, DC voltage source");
    EXPECT_EQ(drawing->focusChild()->text(QAccessible::Description),
              QStringLiteral("V = 5 V; terminal p on net %1, terminal n on net %2")
                  .arg(nodeOf(end(0, "p"))->name(), nodeOf(end(0, "n"))->name()));
    EXPECT_TRUE(drawing->focusChild()->state().selected);
    QStringList names;
    for (int i = 0; i < drawing->childCount(); ++i) {
        EXPECT_EQ(drawing->indexOfChild(drawing->child(i)), i);
        names.append(drawing->child(i)->text(QAccessible::Name));
    }
    EXPECT_TRUE(names.contains("R1, Resistor"));
    EXPECT_TRUE(names.contains(nodeOf(end(0, "p"))->name() + ", net"));
}

TEST_F(WithoutMouse, EveryWidgetThatTakesTheFocusHasAName) {
    for (QDockWidget* dock : window->findChildren<QDockWidget*>()) {
        dock->show();
    }
    QApplication::processEvents();
    window->openExample(QStringLiteral(VORTEL_SOURCE_DIR "/examples/opamp-741.vprj"));
    QAccessibleInterface* drawing = QAccessible::queryAccessibleInterface(view());
    const QString last = drawing->child(drawing->childCount() - 1)->text(QAccessible::Name);
    EXPECT_TRUE(last.startsWith("text ")) << qPrintable(last);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
        const auto* tabs = qobject_cast<QTabBar*>(widget);
        if (tabs && tabs->count() == 0) {
            continue;  // left from a layout that was taken back
        }
        if (widget->focusPolicy() & Qt::TabFocus && interface && widget->isEnabled() &&
            !widget->isHidden() && !widget->objectName().startsWith(QLatin1String("qt_"))) {
            EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
                << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName())
                << " in " << widget->parentWidget()->metaObject()->className();
        }
    }
}

TEST_F(WithoutMouse, PageIsPrintedWithItsTitle) {
    window->openExample(QStringLiteral(VORTEL_SOURCE_DIR "/examples/rc-lowpass.vprj"));
    Printing printing(&workbench, window.get());
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath("page.pdf"));
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape,
                                      QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
    QString error;
    ASSERT_TRUE(printing.paint(&printer, &error)) << qPrintable(error);
    QProcess words;
    words.start("pdftotext", {folder.filePath("page.pdf"), "-"});
    ASSERT_TRUE(words.waitForFinished());
    EXPECT_TRUE(words.readAllStandardOutput().contains("RC low-pass"));
    QProcess picture;
    picture.start("pdftoppm",
                  {"-png", "-r", "50", folder.filePath("page.pdf"), folder.filePath("page")});
    ASSERT_TRUE(picture.waitForFinished());
    const QImage page(folder.filePath("page-1.png"));
    EXPECT_NEAR(page.width(), 413, 1);  // 210 mm at 50 dpi
    EXPECT_NEAR(page.height(), 291, 1);
    // Nothing lies on the margins of 10 mm, and something in between.
    QRect ink;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x) {
            ink |= qGray(page.pixel(x, y)) < 200 ? QRect(x, y, 1, 1) : QRect();
        }
    }
    EXPECT_TRUE(QRect(19, 19, 375, 253).contains(ink)) << ink.x() << ' ' << ink.right();
    EXPECT_GT(ink.width(), 150);

    trigger("new");
    EXPECT_FALSE(printing.paint(&printer, &error));
    EXPECT_TRUE(error.contains("the drawing is empty")) << qPrintable(error);
}
