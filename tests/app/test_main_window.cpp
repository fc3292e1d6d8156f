// The window with everything in it: the real plug-in, loaded as a file.

#include "Clipboard.h"
#include "FileState.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt2.h"
#include "IPropertyEditor.h"
#include "LongWork.h"
#include "WarningGuard.h"
#include "WindowTest.h"

#include <QAbstractButton>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTimer>
#include <QTreeWidget>

namespace {

const QString Divider = QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/divider.ckt");
const QString NoCircuit = QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/broken/wrong-root.ckt");
const QString Partly = QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/broken/partly-unknown.ckt");

}  // namespace

class MainWindowTest : public WindowTest {
protected:
    double scale() { return view()->transform().m11(); }
};

TEST_F(MainWindowTest, TheClipboardServesTheCanvas) {
    auto* editor = qobject_cast<ICircuitEditorExt2*>(workbench.editorWidget());
    auto* clipboard = qobject_cast<Clipboard*>(workbench.object("CClipboardComponent.clipboard"));
    ASSERT_NE(clipboard, nullptr);
    EXPECT_EQ(editor->clipboard(), static_cast<IClipboard*>(clipboard));
    EXPECT_NE(editor->clipboardWidget(), nullptr);
    EXPECT_EQ(clipboard->activeContext(), "CircuitEditor");
    clipboard->addData({{}, "text", "R1"});
    open(Divider);
    EXPECT_EQ(clipboard->dataCount(), 1);

    // Ctrl+C in a text field copies text.
    for (const char* id : {"cut", "copy", "paste", "pasteFromSystem", "selectAll"}) {
        EXPECT_FALSE(window->actions().contains(action(id))) << id;
        EXPECT_TRUE(workbench.editorWidget()->actions().contains(action(id))) << id;
        EXPECT_EQ(action(id)->shortcutContext(), Qt::WidgetWithChildrenShortcut) << id;
    }
    EXPECT_TRUE(action("paste")->isEnabled());
    ICircuitElement* element = circuit()->element(0);
    QGraphicsItem* item =
        qobject_cast<ICircuitEditorExt*>(workbench.editorWidget())->itemFor(element);
    for (const bool selected : {false, true, false}) {
        qobject_cast<ICircuitEditor*>(workbench.editorWidget())->unhighlight();
        item->setSelected(selected);
        QApplication::processEvents();
        for (const char* id : {"cut", "copy", "delete"}) {
            EXPECT_EQ(action(id)->isEnabled(), selected) << id;
        }
    }
}

TEST_F(MainWindowTest, LaysWiresAndOpensHelpFromTheMenu) {
    open(Divider);
    auto* manual =
        qobject_cast<QAction*>(workbench.object("CCircuitEditorComponent.manualCtorMode"));
    ASSERT_NE(manual, nullptr);
    // The canvas's own key: elsewhere it is a letter.
    EXPECT_TRUE(manual->shortcut().isEmpty());
    EXPECT_TRUE(manual->text().endsWith("\tW"));
    manual->trigger();
    EXPECT_TRUE(manual->isChecked());
    QGraphicsView* view = workbench.canvas()->graphicsView();
    QTest::keyClick(view, Qt::Key_W);
    EXPECT_FALSE(manual->isChecked());

    trigger("elementHelp");
    EXPECT_EQ(window->statusBar()->currentMessage(), "Select an element to see its help");
    for (QGraphicsItem* item : view->scene()->items()) {
        if (!item->parentItem() && item->zValue() == 1000) {
            item->setSelected(true);
            break;
        }
    }
    UrlCatcher catcher;
    trigger("elementHelp");
    ASSERT_EQ(catcher.opened.size(), 1);
    EXPECT_GT(QFileInfo(catcher.opened.first()).size(), 1000);
    EXPECT_TRUE(catcher.opened.first().endsWith(".pdf"));
}

TEST_F(MainWindowTest, TheUndoEntryTellsWhat) {
    open(Divider);
    EXPECT_EQ(action("undo")->text(), "&Undo");
    QObject* element = circuit()->element(0)->containerObject();
    const QVariant caption = element->property("Caption");
    element->setProperty("Caption", "b");
    EXPECT_TRUE(window->isWindowModified());
    // The panel reports the edit, which ends the step.
    QObject* panel = workbench.object("CPropertyEditorComponent.propertyEditor");
    QMetaObject::invokeMethod(panel, "propertyValueChanged", Q_ARG(QObject*, element),
                              Q_ARG(QString, "Caption"), Q_ARG(QVariant, "a"),
                              Q_ARG(QVariant, "b"));
    const QString change = "Change Caption of " + element->objectName();
    EXPECT_EQ(action("undo")->text(), "&Undo " + change);
    announceLog("Undo: ");
    announceLog("Redo: ");
    // Back to what was opened, the project is unmodified, whatever reports come late.
    trigger("undo");
    QApplication::processEvents();
    EXPECT_EQ(element->property("Caption"), caption);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(action("undo")->text(), "&Undo");
    EXPECT_EQ(action("redo")->text(), "&Redo " + change);
    trigger("redo");
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(MainWindowTest, OpensThroughTheDialog) {
    DialogDriver dialogs;
    dialogs.chooseFile(Divider);
    trigger("open");
    EXPECT_EQ(window->windowTitle(), "divider.ckt[*] - Vortel Workbench");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(workbench.projectManager()->projectFileName(), Divider);
    EXPECT_EQ(circuit()->elementCount(), 4);

    // What can't be opened leaves what is open, and says why.
    const QByteArray before = drawing();
    dialogs.chooseFile(NoCircuit);
    dialogs.accept();
    trigger("open");
    EXPECT_EQ(dialogs.titles.last(), "Cannot open");
    EXPECT_TRUE(dialogs.texts.last().startsWith(NoCircuit + ": is not a circuit file"));
    EXPECT_EQ(window->windowTitle(), "divider.ckt[*] - Vortel Workbench");
    EXPECT_EQ(drawing(), before);

    // What comes in part is shown, and told in the status bar.
    dialogs.chooseFile(Partly);
    trigger("open");
    EXPECT_EQ(circuit()->elementCount(), 3);
    EXPECT_TRUE(window->statusBar()->currentMessage().endsWith("could not be restored"));
    dialogs.reject();
    trigger("open");
    EXPECT_EQ(circuit()->elementCount(), 3);
}

TEST_F(MainWindowTest, SavesWhereItShould) {
    const QString file = folder.filePath("mine.vprj");
    DialogDriver dialogs;
    addResistor();
    EXPECT_TRUE(window->isWindowModified());
    dialogs.reject();
    trigger("save");  // no name yet: it must ask
    EXPECT_TRUE(window->isWindowModified());
    dialogs.chooseFile(folder.filePath("mine"));
    trigger("saveAs");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(window->windowTitle(), "mine.vprj[*] - Vortel Workbench");
    EXPECT_TRUE(QFile::exists(file));

    // From now on it knows its file.
    const int asked = dialogs.titles.size();
    addResistor();
    trigger("save");
    EXPECT_FALSE(window->isWindowModified());
    const QByteArray saved = drawing();
    open(Divider);
    open(file);
    EXPECT_EQ(drawing(), saved);
    EXPECT_EQ(dialogs.titles.size(), asked);

    ASSERT_TRUE(QFile::remove(file) && folder.remove());
    addResistor();
    dialogs.accept();
    trigger("save");
    EXPECT_EQ(dialogs.titles.last(), "Cannot save");
    EXPECT_TRUE(dialogs.texts.last().startsWith("cannot write " + file + ": there is no folder"));
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(MainWindowTest, SavesByTheEnding) {
    DialogDriver dialogs;
    addResistor();
    circuit()->addGlobalVariable("gain", 3, true);
    dialogs.chooseFile(folder.filePath("x.txt"));
    dialogs.accept();
    trigger("saveAs");
    EXPECT_EQ(dialogs.texts.last(),
              "cannot write " + folder.filePath("x.txt") + ": its name must end in .vprj or .ckt");

    // What a circuit file can't hold is said before it is written.
    const QString circuitFile = folder.filePath("x.ckt");
    const QString loss = circuitFile + ": a circuit file cannot hold 1 parameter. Save the rest?";
    dialogs.chooseFile(circuitFile);
    answer(dialogs, "Cancel");
    trigger("saveAs");
    EXPECT_EQ(dialogs.texts.last(), loss);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_FALSE(QFile::exists(circuitFile));
    dialogs.chooseFile(circuitFile);
    answer(dialogs, "Save");
    trigger("saveAs");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(QFile::exists(circuitFile));

    const QString project = folder.filePath("x.vprj");
    dialogs.chooseFile(project);
    trigger("saveAs");
    trigger("new");
    EXPECT_EQ(circuit()->globalVariableCount(), 0);
    open(project);
    EXPECT_EQ(circuit()->globalVariableCount(), 1);
    EXPECT_FALSE(window->isWindowModified());
    QFile file(project);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    trigger("save");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_F(MainWindowTest, SavingDoesNotMakeLossesFinalUnasked) {
    const QString file = folder.filePath("partly.ckt");
    ASSERT_TRUE(QFile::copy(Partly, file));
    QString message;
    EXPECT_TRUE(window->openFile(file, &message));
    DialogDriver dialogs;
    answer(dialogs, "Cancel");
    trigger("save");
    EXPECT_TRUE(dialogs.texts.last().contains("could not be restored. Save the rest?"));
    answer(dialogs, "Save");
    trigger("save");
    trigger("save");  // there is nothing left to lose
}

TEST_F(MainWindowTest, CancelledOpeningLeavesWhatWasOpen) {
    open(Divider);
    addResistor();
    const QByteArray before = drawing();
    auto* cancel = window->findChild<QAbstractButton*>("cancelWork");
    auto* progress = window->findChild<QWidget*>("workProgress");
    ASSERT_TRUE(cancel && progress);
    LongWork::setPatience(0);
    bool isShown = false;
    QTimer::singleShot(0, window.get(), [&] {
        isShown = progress->isVisible() && cancel->isVisible() && QApplication::overrideCursor();
        // What isn't meant for the button reaches nobody.
        QTest::keyClick(workbench.editorWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::mouseClick(cancel, Qt::LeftButton);
    });
    QString message;
    EXPECT_FALSE(window->openFile(Partly, &message));
    LongWork::setPatience(500);
    EXPECT_TRUE(isShown);
    EXPECT_EQ(message, QString());
    EXPECT_EQ(drawing(), before);
    EXPECT_EQ(workbench.projectManager()->projectFileName(), Divider);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(progress->isHidden() && cancel->isHidden() && !QApplication::overrideCursor());
    EXPECT_TRUE(workbench.editorWidget()->updatesEnabled());
}

TEST_F(MainWindowTest, CancelledExportLeavesNoFileAndTheDrawing) {
    open(Divider);
    const QByteArray before = drawing();
    auto* cancel = window->findChild<QAbstractButton*>("cancelWork");
    const QString file = folder.filePath("divider.png");
    LongWork::setPatience(0);
    QTimer::singleShot(0, cancel, &QAbstractButton::click);
    QString error = QStringLiteral("not asked");
    EXPECT_FALSE(workbench.savePicture({PictureFormat::PNG, file}, &error));
    EXPECT_EQ(error, QString());
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(cancel->isHidden() && workbench.editorWidget()->updatesEnabled());
    EXPECT_EQ(drawing(), before);
    // What is to be painted on the screen meanwhile must wait.
    addResistor();
    EXPECT_TRUE(workbench.savePicture({PictureFormat::PDF, file}, &error)) << qPrintable(error);
    LongWork::setPatience(500);
}

TEST_F(MainWindowTest, CaptionsCircuitFilesAndLosesNothingBySavingThem) {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("divider.ckt"));
    ASSERT_TRUE(QFile::copy(Divider, file));
    open(file);
    EXPECT_GT(drawing().count("\"kind\": \"property\""), circuit()->elementCount());
    QApplication::processEvents();
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(workbench.lossesOnSaving(file), QString());
}

TEST_F(MainWindowTest, KeepsWhatCrashesHaveLeftUntilAsked) {
    const QString file = folder.filePath("x.ckt");
    const QString beside = folder.filePath(".x.ckt.autosave");
    const QString aside = folder.filePath("aside");
    const QDir home(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QFile newer(home.filePath("autosave/newer.autosave"));
    ASSERT_TRUE(QFile::copy(Partly, file) && home.mkpath("autosave"));
    QString message;
    EXPECT_TRUE(window->openFile(file, &message));
    addResistor();
    workbench.projectManager()->autosave();
    // As two programs leave them.
    ASSERT_TRUE(QFile::copy(beside, newer.fileName()) && QFile::rename(beside, aside));
    workbench.clear();
    ASSERT_TRUE(QFile::rename(aside, beside) && newer.open(QIODevice::Append));
    newer.setFileTime(QDateTime::currentDateTime().addSecs(9), QFile::FileModificationTime);

    DialogDriver dialogs;
    answer(dialogs, "Recover");
    EXPECT_TRUE(window->openFile(file, &message));
    answer(dialogs, "Save");
    trigger("save");
    EXPECT_TRUE(dialogs.texts.last().contains("could not be restored. Save the rest?"));
    EXPECT_FALSE(newer.exists());
    EXPECT_TRUE(QFile::exists(beside));
    trigger("new");
    dialogs.chooseFile(file);
    trigger("saveAs");
    EXPECT_FALSE(QFile::exists(beside));
}

TEST_F(MainWindowTest, TwoWindowsDoNotOverwriteEachOther) {
    const QString fileName = folder.filePath("x.ckt");
    ASSERT_TRUE(QFile::copy(Divider, fileName));
    open(fileName);
    open(fileName);  // itself is no other window
    const OpenMark other(fileName);
    EXPECT_TRUE(other.isOpenElsewhere());
    addResistor();
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("<!-- other -->");
    file.close();
    DialogDriver dialogs;
    answer(dialogs, "Cancel");
    trigger("save");
    EXPECT_TRUE(window->isWindowModified());
    answer(dialogs, "Replace");
    trigger("save");
    EXPECT_FALSE(window->isWindowModified());
    addResistor();
    trigger("save");
    answer(dialogs, "Discard");
    addResistor();
    trigger("new");
    const OpenMark now(fileName);
    EXPECT_FALSE(now.isOpenElsewhere());
    QString message;
    EXPECT_TRUE(window->openFile(fileName, &message));
    EXPECT_EQ(message, fileName + ": is open in another window, too");
}

TEST_F(MainWindowTest, OpensRecentFiles) {
    auto* menu = window->findChild<QMenu*>("openRecent");
    ASSERT_NE(menu, nullptr);
    QStringList files;
    for (int i = 0; i < 12; ++i) {
        files.prepend(folder.filePath(QString("%1 & co.ckt").arg(i)));
        ASSERT_TRUE(QFile::copy(Divider, files.first()));
        open(files.first());
    }
    open(files.at(3));
    files.move(3, 0);
    ASSERT_TRUE(QFile::remove(files.at(1)));
    emit menu->aboutToShow();
    QStringList entries;
    for (QAction* entry : menu->actions()) {
        entries.append(entry->text().mid(3).replace("&&", "&"));
    }
    files.removeAt(1);
    EXPECT_EQ(entries, files.mid(0, 9));  // ten are kept, and one is gone

    DialogDriver dialogs;
    addResistor();
    answer(dialogs, "Discard");
    menu->actions().at(1)->trigger();
    EXPECT_EQ(workbench.projectManager()->projectFileName(), files.at(1));
    // One that goes while the menu is open.
    ASSERT_TRUE(QFile::remove(files.at(2)));
    dialogs.accept();
    menu->actions().at(2)->trigger();
    EXPECT_EQ(dialogs.texts.last(), files.at(2) + ": does not exist");
    EXPECT_EQ(circuit()->elementCount(), 4);
}

TEST_F(MainWindowTest, AsksBeforeWorkIsLost) {
    DialogDriver dialogs;
    const auto answer = [&dialogs](const char* button) { MainWindowTest::answer(dialogs, button); };
    QFile file(folder.filePath("x.vprj"));
    for (const char* content :
         {"<ProjectPart ID='VortelCircuit' Title='T'>"
          "<CircuitElement ElementType='Resistor.Basic' ID='7' X='0.3'/><TextBox X='9'>t</TextBox>"
          "<EPTextBox Width='9' ElementIndex='0' Property='R'/></ProjectPart>",
          ""}) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("<VortelProject Format='1'>") + content + "</VortelProject>");
        file.close();
        open(file.fileName());
        QMetaObject::invokeMethod(workbench.editorWidget(), "selectAll");
        QApplication::processEvents();
        trigger("zoomIn");
        EXPECT_FALSE(workbench.projectManager()->checkModified()) << content;
    }
    EXPECT_EQ(circuit()->containerObject()->property("Title"), "");
    trigger("new");
    EXPECT_EQ(dialogs.titles, QStringList());  // nothing to lose

    // What is being typed counts.
    open(Divider);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QObject* element = circuit()->element(0)->containerObject();
    QObject* panel = workbench.object("CPropertyEditorComponent.propertyEditor");
    qobject_cast<IPropertyEditor*>(panel)->setObject(element, false);
    auto* tree = panel->findChild<QTreeWidget*>();
    tree->setCurrentItem(tree->findItems("Caption", Qt::MatchRecursive).value(0), 1);
    QTest::keyClick(tree, Qt::Key_F2);
    QTest::keyClicks(tree->viewport()->findChild<QLineEdit*>(), "typed");
    answer("Cancel");
    EXPECT_FALSE(window->close());
    EXPECT_EQ(element->property("Caption"), "typed");
    workbench.clear();

    addResistor();
    answer("Cancel");
    trigger("new");
    EXPECT_EQ(circuit()->elementCount(), 1);
    answer("Cancel");
    trigger("open");
    answer("Cancel");
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());

    // Saving is offered; giving up on the name keeps everything.
    answer("Save");
    dialogs.reject();
    trigger("quit");
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isWindowModified());

    answer("Discard");
    trigger("new");
    EXPECT_EQ(circuit()->elementCount(), 0);
    EXPECT_EQ(window->windowTitle(), "Untitled[*] - Vortel Workbench");
    EXPECT_TRUE(window->close());
    EXPECT_EQ(dialogs.titles.count("Unsaved changes"), 6);
}

TEST_F(MainWindowTest, EditorHearsOfWindowAndProject) {
    // The project manager gets the folder of the file from the editor, which listens to it.
    open(Divider);
    EXPECT_EQ(workbench.projectManager()->property("DefaultProjectPath").toString(),
              QStringLiteral(VORTEL_SOURCE_DIR "/tests/data"));
    QSignalSpy activated(window.get(), SIGNAL(workspaceWidgetActivated(QWidget*)));
    window->hide();
    window->show();
    EXPECT_EQ(activated.count(), 1);

    DialogDriver dialogs;
    dialogs.accept();
    trigger("projectHelp");
    EXPECT_EQ(dialogs.titles, QStringList("Project help not found"));
}
