#include "MainWindow.h"

#include "AscImport.h"
#include "Autosave.h"
#include "CanvasAccessible.h"
#include "DarkCanvas.h"
#include "DrawingSearch.h"
#include "ElementTools.h"
#include "EmptyHint.h"
#include "FileState.h"
#include "GuiBuilder.h"
#include "HelpMenu.h"
#include "HintLabel.h"
#include "ICanvas.h"
#include "ICircuitEditorExt.h"
#include "KeyboardPointer.h"
#include "NetlistTools.h"
#include "OperatingPoint.h"
#include "PictureExport.h"
#include "PlacingTools.h"
#include "Printing.h"
#include "ProjectManager.h"
#include "Questions.h"
#include "RecentFiles.h"
#include "Settings.h"
#include "SimulationTools.h"
#include "WireMenu.h"
#include "WorkSign.h"
#include "Workbench.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>
#include <iterator>

namespace {

constexpr char ProjectFilter[] = "VORTEL Project (*.vprj)";
constexpr char CircuitFilter[] = "VORTEL Circuit (*.ckt)";
constexpr char AscFilter[] = "LTspice (*.asc)";
const QString GeometryKey = QStringLiteral("WindowGeometry");
const QString LayoutKey = QStringLiteral("WindowLayout");
/// To be raised when panels or toolbars get other names.
constexpr int LayoutVersion = 1;
constexpr char WireTool[] = "CCircuitEditorComponent.manualCtorMode";
constexpr char BothFilter[] = "VORTEL Files (*.vprj *.ckt)";

/// "&1 name", and so on; an ampersand in the name is no mark of a key.
QString recentEntry(int number, const QString& fileName) {
    QString name = fileName;
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QStringLiteral("&%1 %2").arg(QString::number(number % 10), name);
}

/// A drawing of few elements isn't blown up beyond this when it is opened.
constexpr double LargestFittingScale = 2.0;

constexpr double LargestPartOfScreen = 0.9;

}  // namespace

MainWindow::~MainWindow() {
    Settings::setTeller({});
}

MainWindow::MainWindow(Workbench* workbench) : m_workbench(workbench) {
    // With the frame it must fit on the screen, however large its fonts and icons are.
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    resize(QSize(1200, 800).boundedTo(screen * LargestPartOfScreen));
    setUnifiedTitleAndToolBarOnMac(true);
    // The panels on the right need all the height that there is.
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
}

bool MainWindow::build(QString* error) {
    makeTools();
    const auto exportAs = [this](PictureFormat format) {
        return [this, format] { m_pictures->exportAs(format); };
    };
    const GuiBuilder::Handlers handlers = {
        {QStringLiteral("new"), [this] { newProject(); }},
        {QStringLiteral("open"), [this] { open(); }},
        {QStringLiteral("import"), [this] { importFile(); }},
        {QStringLiteral("save"), [this] { save(); }},
        {QStringLiteral("saveAs"), [this] { saveAs(); }},
        {QStringLiteral("quit"), [this] { close(); }},
        {QStringLiteral("paste"), [this] { paste("paste"); }},
        {QStringLiteral("pasteFromSystem"), [this] { paste("pasteFromClipboard"); }},
        {QStringLiteral("exportSvg"), exportAs(PictureFormat::SVG)},
        {QStringLiteral("exportPdf"), exportAs(PictureFormat::PDF)},
        {QStringLiteral("exportPs"), exportAs(PictureFormat::PS)},
        {QStringLiteral("exportPng"), exportAs(PictureFormat::PNG)},
        {QStringLiteral("exportJpg"), exportAs(PictureFormat::JPG)},
        {QStringLiteral("exportMargin"), [] {}},
        {QStringLiteral("darkCanvas"), [] {}},
        {QStringLiteral("exportValues"), [] {}},
        {QStringLiteral("showValues"), [] {}},
        {QStringLiteral("addVariable"), [] {}},
        {QStringLiteral("editNetlist"), [this] { m_netlists->editSelected(); }},
        {QStringLiteral("pageSetup"), [this] { m_printing->setUpPage(); }},
        {QStringLiteral("printPreview"), [this] { m_printing->preview(); }},
        {QStringLiteral("print"), [this] { m_printing->print(); }},
        {QStringLiteral("find"), [this] { m_search->open(); }},
        {QStringLiteral("placeAny"), [this] { m_placing->choose(); }},
        {QStringLiteral("properties"), [this] { m_elements->editProperties(); }},
        {QStringLiteral("userGuide"), [this] { m_help->showUserGuide(); }},
        {QStringLiteral("keys"), [this] { m_help->showKeys(); }},
        {QStringLiteral("about"), [this] { m_help->showAbout(); }},
        {QStringLiteral("elementHelp"), [this] { helpElement(); }}};
    if (!GuiBuilder(this, *m_workbench, handlers).build(error)) {
        return false;
    }
    finishMenus();
    if ((m_recentMenu = findChild<QMenu*>(QStringLiteral("openRecent")))) {
        connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    }
    ProjectManager* manager = m_workbench->projectManager();
    connect(manager, &ProjectManager::modifiedChanged, this, &MainWindow::setWindowModified);
    connect(manager, &ProjectManager::autosaveFailed, statusBar(),
            [this](const QString& message) { statusBar()->showMessage(message); });
    // Later, for what opens a file has a message of its own at its end.
    Settings::setTeller([this](const QString& message) {
        QTimer::singleShot(0, statusBar(), [this, message] { statusBar()->showMessage(message); });
    });
    new WorkSign(statusBar(), m_workbench->editorWidget());
    new WireMenu(m_workbench->editorWidget(), this);
    auto* accessible = new CanvasAccessible(*m_workbench, this);
    if (auto* wireTool = qobject_cast<QAction*>(m_workbench->object(QLatin1String(WireTool)))) {
        auto* pointer = new KeyboardPointer(*m_workbench, wireTool, this);
        connect(pointer, &KeyboardPointer::reached, accessible, &CanvasAccessible::announce);
        connect(findChild<QAction*>(QStringLiteral("addVariable")), &QAction::triggered, pointer,
                &KeyboardPointer::pickVariable);
    }
    new SimulationTools(*m_workbench, this);
    if (auto* dark = findChild<QAction*>(QStringLiteral("darkCanvas"))) {
        DarkCanvas::follow(dark, m_workbench->canvas()->graphicsView()->viewport());
    }
    new EmptyHint(*m_workbench);
    restoreLayout();
    m_workbench->editorWidget()->setFocus();
    showDocument();
    return true;
}

void MainWindow::makeTools() {
    m_netlists = new NetlistTools(*m_workbench, this);
    m_placing = new PlacingTools(*m_workbench, m_netlists, this);
    m_search = new DrawingSearch(*m_workbench, this);
    m_elements = new ElementTools(*m_workbench, this);
    m_pictures = new PictureExport(m_workbench, this);
    m_help = new HelpMenu(*m_workbench, this);
    m_printing = new Printing(m_workbench, this);
}

void MainWindow::finishMenus() {
    QStringList taken;
    for (const QAction* action : findChildren<QAction*>()) {
        for (const QKeySequence& keys : action->shortcuts()) {
            taken.append(keys.toString());
        }
        taken.append(action->text().section(QLatin1Char('\t'), 1));
    }
    // While something is selected these turn and flip it; the canvas takes them first.
    taken.removeAll(QStringLiteral("R"));
    taken.removeAll(QStringLiteral("F"));
    if (auto* menu = findChild<QMenu*>(QStringLiteral("place"))) {
        m_placing->fillMenu(menu, taken);
    }
    if (auto* menu = findChild<QMenu*>(QStringLiteral("examples"))) {
        m_help->fillExamples(menu);
    }
    QList<QAction*> entries;
    for (const QString& name :
         m_workbench->guiSection(QStringLiteral("elementMenu")).toStringList()) {
        entries.append(findChild<QAction*>(name));
    }
    m_elements->setMenuActions(entries);
    if (auto* margin = findChild<QAction*>(QStringLiteral("exportMargin"))) {
        m_pictures->followMargin(margin);
    }
    m_pictures->followValues(findChild<QAction*>(QStringLiteral("exportValues")));
    if (auto* show = findChild<QAction*>(QStringLiteral("showValues"))) {
        auto* values = new OperatingPoint(*m_workbench, show, this);
        connect(values, &OperatingPoint::failed, statusBar(),
                [this](const QString& reason) { statusBar()->showMessage(reason); });
    }
    auto* hint = new HintLabel(this);
    hint->setObjectName(QStringLiteral("toolHint"));
    statusBar()->insertPermanentWidget(0, hint);
    connect(m_workbench->editorWidget(), SIGNAL(toolHintChanged(QString)), hint,
            SLOT(setText(QString)));
}

void MainWindow::openExample(const QString& fileName) {
    if (!mayDiscard()) {
        return;
    }
    QString message;
    if (!m_workbench->openCopy(fileName, &message)) {
        QMessageBox::information(this, tr("Cannot open"), message);
        return;
    }
    showDocument();
    fitDrawing();
    statusBar()->showMessage(message);
}

bool MainWindow::openFile(const QString& fileName, QString* message) {
    bool recovered = false;
    if (!recoverFirst(Autosave::abandoned(fileName), &recovered, message)) {
        return false;
    }
    if (!recovered && !m_workbench->open(fileName, message)) {
        return false;
    }
    if (QFileInfo::exists(fileName) && !isForeignFile(fileName)) {
        RecentFiles::add(fileName);
    }
    if (!markAsOpen()) {
        const QString remark =
            tr("%1: is open in another window, too").arg(QDir::toNativeSeparators(fileName));
        *message = message->isEmpty() ? remark : *message + QLatin1String("; ") + remark;
    }
    showDocument();
    fitDrawing();
    statusBar()->showMessage(*message);
    return true;
}

bool MainWindow::markAsOpen() {
    // The old one first: it may be of the same file.
    m_openMark.reset();
    const QString fileName = m_workbench->projectManager()->projectFileName();
    if (!fileName.isEmpty()) {
        m_openMark = std::make_unique<OpenMark>(fileName);
    }
    return !m_openMark || !m_openMark->isOpenElsewhere();
}

void MainWindow::tellCannotOpen(const QString& message) {
    QMessageBox::information(this, tr("Cannot open"), message);
}

void MainWindow::offerRecovery(bool ofFiles) {
    // What has just been recovered comes first; the next start asks again.
    if (m_workbench->projectManager()->checkModified()) {
        return;
    }
    std::vector<std::unique_ptr<Autosave>> abandoned = Autosave::abandoned({});
    if (ofFiles) {
        // Those that were found are locked, and so not found once more.
        for (const QString& file : RecentFiles::list()) {
            auto further = Autosave::abandoned(file);
            std::move(further.begin(), further.end(), std::back_inserter(abandoned));
        }
    } else {
        const auto hasFile = [](const auto& autosave) {
            return !autosave->projectFile().isEmpty();
        };
        abandoned.erase(std::remove_if(abandoned.begin(), abandoned.end(), hasFile),
                        abandoned.end());
    }
    bool recovered = false;
    QString message;
    if (!recoverFirst(std::move(abandoned), &recovered, &message)) {
        if (!message.isEmpty()) {
            QMessageBox::information(this, tr("Cannot recover"), message);
        }
    } else if (recovered) {
        markAsOpen();
        showDocument();
        fitDrawing();
        statusBar()->showMessage(message);
    }
}

bool MainWindow::recoverFirst(std::vector<std::unique_ptr<Autosave>> abandoned, bool* recovered,
                              QString* message) {
    for (std::unique_ptr<Autosave>& autosave : abandoned) {
        switch (askToRecover(this, *autosave)) {
            case RecoverAnswer::Recover:
                *recovered = m_workbench->recover(std::move(autosave), message);
                return *recovered;
            case RecoverAnswer::Discard:
                autosave->discard();
                break;
            case RecoverAnswer::Cancel:
                return false;
        }
    }
    return true;
}

void MainWindow::fitDrawing() {
    ICanvas* canvas = m_workbench->canvas();
    canvas->zoomFit();
    if (canvas->graphicsView()->transform().m11() > LargestFittingScale) {
        canvas->zoomOne();
        canvas->graphicsView()->centerOn(canvas->graphicsScene()->itemsBoundingRect().center());
    }
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    emit workspaceWidgetActivated(m_workbench->editorWidget());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(mayDiscard());
    if (event->isAccepted()) {
        // Nobody could read it in a window that goes.
        Settings::setTeller({});
        Settings settings;
        settings.setValue(GeometryKey, saveGeometry());
        settings.setValue(LayoutKey, saveState(LayoutVersion));
        m_workbench->projectManager()->close();
    }
}

void MainWindow::restoreLayout() {
    const Settings settings;
    if (restoreGeometry(settings.value(GeometryKey).toByteArray())) {
        // The screen may be a smaller one by now.
        const QScreen* screen = QGuiApplication::screenAt(geometry().center());
        resize(size().boundedTo(
            (screen ? screen : QGuiApplication::primaryScreen())->availableSize()));
        restoreState(settings.value(LayoutKey).toByteArray(), LayoutVersion);
    }
}

void MainWindow::newProject() {
    if (mayDiscard()) {
        m_workbench->clear();
        markAsOpen();
        m_workbench->canvas()->zoomOne();
        showDocument();
    }
}

void MainWindow::open() {
    if (!mayDiscard()) {
        return;
    }
    const QStringList filters = {QLatin1String(BothFilter), QLatin1String(ProjectFilter),
                                 QLatin1String(CircuitFilter)};
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Open project"), startFolder(),
                                                          filters.join(QLatin1String(";;")));
    if (!fileName.isEmpty()) {
        openAndTell(fileName);
    }
}

void MainWindow::importFile() {
    if (!mayDiscard()) {
        return;
    }
    const QString fileName =
        QFileDialog::getOpenFileName(this, tr("Import"), startFolder(), QLatin1String(AscFilter));
    if (fileName.isEmpty()) {
        return;
    }
    QStringList remarks;
    QString message;
    if (!m_workbench->import(fileName, &remarks, &message)) {
        if (!message.isEmpty()) {
            tellCannotOpen(message);
        }
        return;
    }
    markAsOpen();
    showDocument();
    fitDrawing();
    if (!remarks.isEmpty()) {
        tellRemarks(this, QFileInfo(fileName).fileName(), remarks);
    }
}

void MainWindow::openAndTell(const QString& fileName) {
    QString message;
    if (!openFile(fileName, &message) && !message.isEmpty()) {
        tellCannotOpen(message);
    }
}

void MainWindow::fillRecentMenu() {
    m_recentMenu->clear();
    const QStringList files = RecentFiles::list();
    for (int i = 0; i < files.size(); ++i) {
        QAction* entry = m_recentMenu->addAction(recentEntry(i + 1, files.at(i)));
        connect(entry, &QAction::triggered, this, [this, file = files.at(i)] {
            if (mayDiscard()) {
                openAndTell(file);
            }
        });
    }
    if (files.isEmpty()) {
        m_recentMenu->addAction(tr("No Recent Files"))->setEnabled(false);
    }
}

bool MainWindow::save() {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    return fileName.isEmpty() ? saveAs() : saveTo(fileName);
}

bool MainWindow::saveAs() {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    const bool isProject =
        fileName.isEmpty() || documentFormatOf(fileName) == DocumentFormat::Project;
    QFileDialog dialog(this, tr("Save project"), startFolder());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({QLatin1String(ProjectFilter), QLatin1String(CircuitFilter)});
    // The ending is the dialog's to add, so that its question before overwriting is about the right
    // file.
    const auto followFilter = [&dialog](const QString& filter) {
        const bool isCircuit = filter == QLatin1String(CircuitFilter);
        dialog.setDefaultSuffix(isCircuit ? QStringLiteral("ckt") : QStringLiteral("vprj"));
    };
    connect(&dialog, &QFileDialog::filterSelected, &dialog, followFilter);
    dialog.selectNameFilter(QLatin1String(isProject ? ProjectFilter : CircuitFilter));
    followFilter(dialog.selectedNameFilter());
    if (!fileName.isEmpty()) {
        dialog.selectFile(QFileInfo(fileName).fileName());
    }
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    const QString chosen = dialog.selectedFiles().first();
    const QString suffix = QFileInfo(chosen).suffix().toLower();
    if (suffix != QLatin1String("vprj") && suffix != QLatin1String("ckt")) {
        QMessageBox::information(
            this, tr("Cannot save"),
            tr("cannot write %1: its name must end in .vprj or .ckt").arg(chosen));
        return false;
    }
    return saveTo(chosen);
}

bool MainWindow::saveTo(const QString& fileName) {
    finishEditing();
    const QString losses = m_workbench->lossesOnSaving(fileName);
    if (!losses.isEmpty() && !askToSaveDespite(this, losses)) {
        return false;
    }
    const QFileInfo target(fileName);
    ProjectManager* manager = m_workbench->projectManager();
    const bool isOwn = target == QFileInfo(manager->projectFileName());
    const bool replacesAnother = target.exists() && !isOwn;
    if (isOwn && manager->hasFileChanged() && !askToReplaceChanged(this, fileName)) {
        return false;
    }
    QString error;
    if (!m_workbench->save(fileName, &error)) {
        QMessageBox::information(this, tr("Cannot save"), error);
        return false;
    }
    // The user has given up that file, and so what a crash has left of it.
    if (replacesAnother) {
        for (const auto& autosave : Autosave::abandoned(fileName)) {
            autosave->discard();
        }
    }
    RecentFiles::add(fileName);
    markAsOpen();
    showDocument();
    return true;
}

void MainWindow::finishEditing() {
    // An editor in a panel takes its value over when it loses the focus.
    m_workbench->editorWidget()->setFocus();
}

bool MainWindow::mayDiscard() {
    finishEditing();
    if (!m_workbench->projectManager()->checkModified()) {
        return true;
    }
    switch (askToSave(this, documentName())) {
        case SaveAnswer::Save:
            return save();
        case SaveAnswer::Discard:
            return true;
        default:
            return false;
    }
}

QString MainWindow::documentName() const {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    return fileName.isEmpty() ? tr("Untitled") : QFileInfo(fileName).fileName();
}

void MainWindow::showDocument() {
    ProjectManager* manager = m_workbench->projectManager();
    setWindowTitle(tr("%1[*] - Vortel Workbench").arg(documentName()));
    setWindowFilePath(manager->projectFileName());
    setWindowModified(manager->isModified());
    statusBar()->clearMessage();
}

void MainWindow::helpElement() {
    // The canvas knows what is selected, and how to find its help.
    QGraphicsView* view = m_workbench->canvas()->graphicsView();
    const auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench->editorWidget());
    const QList<QGraphicsItem*> selected = view->scene()->selectedItems();
    const auto isElement = [items](QGraphicsItem* item) { return items->typeOfItem(item) == 1; };
    if (!items || std::none_of(selected.begin(), selected.end(), isElement)) {
        statusBar()->showMessage(tr("Select an element to see its help"));
        return;
    }
    QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(view, &key);
}

void MainWindow::paste(const char* method) {
    // From the toolbar, or over a panel, the pointer would put it where nobody sees it.
    QGraphicsView* view = m_workbench->canvas()->graphicsView();
    const QRect page = view->viewport()->rect();
    QPoint place = view->viewport()->mapFromGlobal(QCursor::pos());
    if (!page.contains(place)) {
        place = page.center();
    }
    const LongWork work(0);
    QMetaObject::invokeMethod(view, method, Q_ARG(QPointF, view->mapToScene(place)));
}

QString MainWindow::startFolder() const {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    return fileName.isEmpty() ? QDir::homePath() : QFileInfo(fileName).absolutePath();
}
