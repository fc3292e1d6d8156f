// The window's ways to place, find, edit, export and read help, by real events.

#include "ElementDescription.h"
#include "ElementExplorer.h"
#include "KeysPage.h"
#include "WarningGuard.h"
#include "WindowTest.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDropEvent>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTreeView>
#include <QTreeWidget>

class WindowTools : public WindowTest {
protected:
    QString typeOf(int index) {
        return CircuitElement::from(circuit()->element(index))->description()->elementType();
    }
    bool isPlacing() {
        bool placing = false;
        QMetaObject::invokeMethod(view(), "isPlacing", Q_RETURN_ARG(bool, placing));
        return placing;
    }
    QGraphicsItem* itemOf(int index) { return items()->itemFor(circuit()->element(index)); }
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {}) {
        const QPoint start = view()->mapFromScene(from);
        const QPoint end = view()->mapFromScene(to);
        QTest::mousePress(view()->viewport(), Qt::LeftButton, modifiers, start);
        for (const QPoint& at : {(start + end) / 2, end}) {
            QMouseEvent move(QEvent::MouseMove, at, view()->viewport()->mapToGlobal(at),
                             Qt::NoButton, Qt::LeftButton, modifiers);
            QApplication::sendEvent(view()->viewport(), &move);
            QApplication::processEvents();
        }
        QTest::mouseRelease(view()->viewport(), Qt::LeftButton, modifiers, end);
        QApplication::processEvents();
    }
    QString hint() {
        QApplication::processEvents();
        return window->findChild<QLabel*>("toolHint")->text();
    }
    template <class Child>
    Child* in(const char* parent) {
        return window->findChild<QWidget*>(QLatin1String(parent))->findChild<Child*>();
    }
};

TEST_F(WindowTools, LettersPlaceWhereTheCanvasHasNoUseForThem) {
    key(Qt::Key_R);
    ASSERT_TRUE(isPlacing());
    EXPECT_TRUE(hint().startsWith("Resistor")) << qPrintable(hint());
    key(Qt::Key_R);  // turns what hangs
    click({0, 0});
    key(Qt::Key_C);  // another type in its place
    click({100, 0});
    key(Qt::Key_Escape);
    EXPECT_FALSE(isPlacing());
    ASSERT_EQ(circuit()->elementCount(), 2);
    EXPECT_EQ(circuit()->element(0)->rotation(), 1);
    EXPECT_EQ(typeOf(1), "Capacitor.Basic");
    // What is selected takes R for itself, by key and by action; other letters still place.
    click({0, 0});
    key(Qt::Key_R);
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(circuit()->element(0)->rotation(), 3);
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(circuit()->element(0)->flip(), 1);
    EXPECT_FALSE(isPlacing());
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(circuit()->elementCount(), 2) << "a copy hangs as well";
    click({0, 100});
    ASSERT_EQ(circuit()->elementCount(), 3);
    EXPECT_EQ(circuit()->element(2)->flip(), 1);
    key(Qt::Key_G);
    EXPECT_TRUE(isPlacing());
    key(Qt::Key_Escape);
    // The rest by a few letters of any of its names.
    key(Qt::Key_A);
    QTest::keyClicks(in<QLineEdit>("typeChooser"), "mosfet");
    QTest::keyClick(in<QLineEdit>("typeChooser"), Qt::Key_Down);
    QTest::keyClick(in<QLineEdit>("typeChooser"), Qt::Key_Return);
    click({200, 200});
    EXPECT_EQ(typeOf(3), "NMOS4.Semiconductors");
    key(Qt::Key_Escape);
    // In a field a letter is a letter.
    auto* filter = window->findChild<ElementExplorer*>()->findChild<QLineEdit*>();
    filter->setFocus();
    QTest::keyClicks(filter, "r");
    EXPECT_FALSE(isPlacing());
}

TEST_F(WindowTools, ThePalettePlacesByClickReturnAndDrop) {
    auto* palette = window->findChild<ElementExplorer*>();
    auto* filter = palette->findChild<QLineEdit*>();
    auto* tree = palette->findChild<QTreeWidget*>();
    QTest::keyClicks(filter, "gnd");
    QTest::keyClick(filter, Qt::Key_Return);
    ASSERT_TRUE(isPlacing());
    EXPECT_TRUE(view()->hasFocus());
    click({0, 0});
    EXPECT_EQ(typeOf(0), "Ground.Basic");
    key(Qt::Key_Escape);
    filter->clear();
    QTreeWidgetItem* diode =
        tree->findItems("Diode", Qt::MatchExactly | Qt::MatchRecursive).first();
    tree->scrollToItem(diode);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(diode).center());
    ASSERT_TRUE(isPlacing());
    key(Qt::Key_Escape);
    QMimeData data;
    data.setData(ElementExplorer::TypeMimeType, "Fuse.Basic");
    const QPoint over = view()->mapFromScene(100, 100);
    QDragEnterEvent enter(over, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view()->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(over, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view()->viewport(), &drop);
    ASSERT_EQ(circuit()->elementCount(), 2);
    EXPECT_EQ(typeOf(1), "Fuse.Basic");
    EXPECT_EQ(itemOf(1)->pos(), QPointF(100, 100));
}

TEST_F(WindowTools, ADayOnTheAmplifierIsTakenBackAndRedone) {
    announceLog(QStringLiteral("Undo: "));
    announceLog(QStringLiteral("Redo: "));
    announceLog(QStringLiteral("on_fontSize_valueChanged"));
    QString message;
    ASSERT_TRUE(
        window->openFile(QStringLiteral(VORTEL_SOURCE_DIR "/examples/opamp-741.vprj"), &message));
    view()->setTransform(QTransform::fromScale(0.25, 0.25));
    view()->centerOn(0, 0);
    const auto settledDrawing = [this] {
        QApplication::processEvents();
        return drawing();
    };
    auto* undo = window->findChild<QAction*>("undo");
    const QByteArray first = settledDrawing();
    const QString bottom = undo->text();
    QStringList steps;
    const auto done = [&] {
        QApplication::processEvents();
        steps << undo->text().section(QLatin1Char(' '), 1);
    };
    const QPointF q16 = itemOf(16)->scenePos();
    drag(q16, q16 + QPointF(40, 0));
    done();
    drag(q16 + QPointF(40, 0), q16 + QPointF(60, 80), Qt::AltModifier);
    done();
    key(Qt::Key_R);
    done();
    // The input stage with what loads it.
    const auto chooseGroup = [this] { drag({-740, -350}, {-120, 300}, Qt::ControlModifier); };
    const QPointF within(-470, -240);
    chooseGroup();
    drag(within, within + QPointF(0, -60));
    done();
    drag(within, within + QPointF(-40, -60), Qt::AltModifier);
    done();
    trigger("copy");
    key(Qt::Key_R);
    done();
    trigger("delete");
    done();
    trigger("paste");
    click({-100, 600});
    done();
    {
        DialogDriver driver;
        driver.queue([](QWidget* dialog) {
            QTest::keyClicks(dialog->findChild<QTextEdit*>(), "a follower");
            qobject_cast<QDialog*>(dialog)->accept();
        });
        doubleClick({-840, -400});
        done();
        driver.chooseEntry(QStringLiteral("Edit/Remove Global Parameters"));
        driver.queue([](QWidget* dialog) {
            auto* table = dialog->findChild<QTreeView*>();
            table->model()->setData(table->model()->index(0, 0), "Rlast");
            qobject_cast<QDialog*>(dialog)->reject();
        });
        const QPoint empty = view()->mapFromScene(QPointF(0, -600));
        QContextMenuEvent menu(QContextMenuEvent::Mouse, empty,
                               view()->viewport()->mapToGlobal(empty));
        QApplication::sendEvent(view()->viewport(), &menu);
        done();
    }
    auto* rows = in<QTreeWidget>("showOutputVariables");
    rows->setCurrentItem(rows->topLevelItem(0));
    window->findChild<QAbstractButton*>("cmdDeleteVariable")->click();
    done();
    trigger("selectAll");
    trigger("delete");
    done();
    EXPECT_EQ(circuit()->elementCount(), 0);
    EXPECT_EQ(steps.join('|').toStdString(),
              "Move Q16|Move Q16|Rotate Q16|Move 10 elements|Move 10 elements|Rotate group|Delete|"
              "Paste|Edit text|Rename Rlast|Delete output variable output|Delete");

    const QByteArray last = settledDrawing();
    const QTransform seen = view()->transform();
    for (int i = 0; i < steps.size(); ++i) {
        trigger("undo");
    }
    EXPECT_EQ(settledDrawing(), first);
    EXPECT_EQ(undo->text().toStdString(), bottom.toStdString())
        << "a gesture made no step, or more than one";
    EXPECT_EQ(view()->transform(), seen);
    for (int i = 0; i < steps.size(); ++i) {
        trigger("redo");
    }
    EXPECT_EQ(settledDrawing(), last);
}

TEST_F(WindowTools, FindShowsElementsNetsAndTexts) {
    open(QStringLiteral(VORTEL_SOURCE_DIR "/examples/opamp-741.vprj"));
    trigger("find");
    auto* field = in<QLineEdit>("find");
    auto* list = in<QListWidget>("find");
    const auto lines = [list] {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i) {
            texts << list->item(i)->text();
        }
        return texts;
    };
    QTest::keyClicks(field, "q16");
    EXPECT_EQ(lines().value(0), "Q16  NPN transistor");
    QList<QGraphicsItem*> selected = view()->scene()->selectedItems();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_TRUE(view()->viewport()->rect().contains(
        view()->mapFromScene(selected.first()->sceneBoundingRect().center())));
    field->clear();
    QTest::keyClicks(field, "vcc");
    EXPECT_TRUE(lines().join('|').contains("net")) << qPrintable(lines().join('|'));
    field->clear();
    QTest::keyClicks(field, "no such thing");
    EXPECT_EQ(lines(), QStringList());
    EXPECT_TRUE(view()->scene()->selectedItems().size() > 0) << "the last hit stays";
    field->setText("q16");
    circuit()->removeElement(circuit()->element(0));  // nothing found may be held
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_FALSE(field->isVisible());
    EXPECT_TRUE(view()->hasFocus());
}

TEST_F(WindowTools, ADoubleClickLeadsToTheValueAndReturnBack) {
    key(Qt::Key_R);
    click({0, 0});
    key(Qt::Key_Escape);
    doubleClick({0, 0});
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr) << "the value is being edited";
    EXPECT_EQ(field->text(), "1k");
    QTest::keyClicks(field, "4k7");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return view()->hasFocus(); }));
    EXPECT_EQ(CircuitElement::from(circuit()->element(0))->parameter("R"), "4k7");

    DialogDriver dialogs;
    dialogs.chooseEntry("&Copy");
    rightClick(view()->mapFromScene(0, 0));
    for (const char* entry : {"P&roperties", "&Copy", "&Rotate\tR", "&Mirror\tF"}) {
        EXPECT_TRUE(dialogs.texts.first().split('|').contains(entry)) << entry;
    }
    trigger("paste");
    click({200, 0});
    EXPECT_EQ(circuit()->elementCount(), 2);
}

TEST_F(WindowTools, PicturesGoBesideTheProjectWithAMarginIfWanted) {
    const QString project = folder.filePath("my amp.ckt");
    QFile::copy(QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/divider.ckt"), project);
    open(project);
    auto* margin = window->findChild<QAction*>("exportMargin");
    margin->setChecked(false);
    DialogDriver dialogs;
    const auto acceptAsProposed = [&dialogs] {
        dialogs.queue([](QWidget* dialog) { QMetaObject::invokeMethod(dialog, "accept"); });
    };
    acceptAsProposed();
    trigger("exportPng");
    const QString picture = folder.filePath("my amp.png");
    const QSize plain = QImage(picture).size();
    ASSERT_FALSE(plain.isEmpty());
    QFile::remove(picture);
    margin->setChecked(true);
    acceptAsProposed();
    trigger("exportPng");
    EXPECT_EQ(QImage(picture).size(), plain + QSize(120, 120))
        << "20 units each side, 3 pixels each";
    margin->setChecked(false);
    // A picture that can't be written is told of.
    dialogs.chooseFile("/proc/no/such/picture.svg");
    dialogs.accept();
    trigger("exportSvg");
    EXPECT_EQ(dialogs.titles.last(), "Cannot export");
}

TEST_F(WindowTools, HelpTellsEveryKeyAndOpensCopiesOfExamples) {
    const QString page = keysPage(*window->menuBar(), workbench.guiSection("gestures").toList());
    QStringList letters;
    for (const QAction* action : window->findChildren<QAction*>()) {
        for (const QKeySequence& keys : action->shortcuts()) {
            EXPECT_TRUE(page.contains(keys.toString(QKeySequence::NativeText).toHtmlEscaped()))
                << qPrintable(action->text());
            letters << keys.toString();
        }
    }
    EXPECT_EQ(letters.removeDuplicates(), 0);
    EXPECT_TRUE(page.contains(">W<") && page.contains("Backspace") && page.contains("Any Element"));

    trigger("keys");
    EXPECT_TRUE(in<QTextBrowser>("keysWindow")->toPlainText().contains("Ctrl+Shift+S"));
    trigger("userGuide");
    auto* guide = in<QTextBrowser>("guideWindow");
    EXPECT_TRUE(guide->toPlainText().contains("How to draw a circuit"));
    emit guide->anchorClicked(QUrl("../workbench/library/README.md"));
    EXPECT_TRUE(
        guide->parent()->findChild<QDialog*>()->findChild<QTextBrowser*>()->toPlainText().contains(
            "Element library"));
    DialogDriver dialogs;
    dialogs.accept();
    trigger("about");
    EXPECT_EQ(dialogs.titles.last(), "About");

    auto* examples = window->findChild<QMenu*>("examples");
    ASSERT_GT(examples->actions().size(), 3);
    examples->actions().first()->trigger();
    EXPECT_GT(circuit()->elementCount(), 0);
    EXPECT_EQ(workbench.projectManager()->projectFileName(), QString());
    EXPECT_FALSE(window->isWindowModified());
}
