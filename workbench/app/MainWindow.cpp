#include "MainWindow.h"

#include "GuiBuilder.h"
#include "ICanvas.h"
#include "ICircuitEditorExt.h"
#include "ProjectManager.h"
#include "Workbench.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMessageBox>
#include <QStatusBar>

#include <algorithm>

namespace {

constexpr char FileFilter[] = "VORTEL Circuit (*.ckt)";

/// A drawing of few elements isn't blown up beyond this when it is opened.
constexpr double LargestFittingScale = 2.0;

}  // namespace

MainWindow::MainWindow(Workbench* workbench) : m_workbench(workbench) {
    resize(1200, 800);
    setUnifiedTitleAndToolBarOnMac(true);
}

bool MainWindow::build(QString* error) {
    const GuiBuilder::Handlers handlers = {
        {QStringLiteral("new"), [this] { newCircuit(); }},
        {QStringLiteral("open"), [this] { open(); }},
        {QStringLiteral("save"), [this] { save(); }},
        {QStringLiteral("saveAs"), [this] { saveAs(); }},
        {QStringLiteral("quit"), [this] { close(); }},
        {QStringLiteral("paste"), [this] { paste(); }},
        {QStringLiteral("elementHelp"), [this] { helpElement(); }}};
    if (!GuiBuilder(this, *m_workbench, handlers).build(error)) {
        return false;
    }
    connect(m_workbench->editorWidget(), SIGNAL(projectPartModified()), this, SLOT(markModified()));
    m_workbench->editorWidget()->setFocus();
    showDocument();
    return true;
}

bool MainWindow::openFile(const QString& fileName, QString* message) {
    if (!m_workbench->open(fileName, message)) {
        return false;
    }
    showDocument();
    ICanvas* canvas = m_workbench->canvas();
    canvas->zoomFit();
    if (canvas->graphicsView()->transform().m11() > LargestFittingScale) {
        canvas->zoomOne();
        canvas->graphicsView()->centerOn(canvas->graphicsScene()->itemsBoundingRect().center());
    }
    statusBar()->showMessage(*message);
    return true;
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    emit workspaceWidgetActivated(m_workbench->editorWidget());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(mayDiscard());
}

void MainWindow::markModified() {
    setWindowModified(true);
}

void MainWindow::newCircuit() {
    if (mayDiscard()) {
        m_workbench->clear();
        m_workbench->canvas()->zoomOne();
        showDocument();
    }
}

void MainWindow::open() {
    if (!mayDiscard()) {
        return;
    }
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Open circuit"), startFolder(),
                                                          QLatin1String(FileFilter));
    QString message;
    if (!fileName.isEmpty() && !openFile(fileName, &message)) {
        QMessageBox::information(this, tr("Cannot open"), message);
    }
}

bool MainWindow::save() {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    return fileName.isEmpty() ? saveAs() : saveTo(fileName);
}

bool MainWindow::saveAs() {
    QFileDialog dialog(this, tr("Save circuit"), startFolder(), QLatin1String(FileFilter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The dialog's to add, so that its question before overwriting is about the right file.
    dialog.setDefaultSuffix(QStringLiteral("ckt"));
    return dialog.exec() == QDialog::Accepted && saveTo(dialog.selectedFiles().first());
}

bool MainWindow::saveTo(const QString& fileName) {
    QString error;
    if (!m_workbench->save(fileName, &error)) {
        QMessageBox::information(this, tr("Cannot save"), error);
        return false;
    }
    m_workbench->projectManager()->setProjectFileName(fileName);
    showDocument();
    return true;
}

bool MainWindow::mayDiscard() {
    if (!isWindowModified()) {
        return true;
    }
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, tr("Unsaved changes"), tr("The circuit has changed. Save it?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

void MainWindow::showDocument() {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    const QString name = fileName.isEmpty() ? tr("Untitled") : QFileInfo(fileName).fileName();
    setWindowTitle(tr("%1[*] - Vortel Workbench").arg(name));
    setWindowFilePath(fileName);
    setWindowModified(false);
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

void MainWindow::paste() {
    // From the toolbar, or over a panel, the pointer would put it where nobody sees it.
    ICanvas* canvas = m_workbench->canvas();
    const QWidget* page = canvas->graphicsView()->viewport();
    if (page->rect().contains(page->mapFromGlobal(QCursor::pos()))) {
        canvas->paste();
    } else {
        canvas->paste(canvas->graphicsView()->mapToScene(page->rect().center()));
    }
}

QString MainWindow::startFolder() const {
    const QString fileName = m_workbench->projectManager()->projectFileName();
    return fileName.isEmpty() ? QDir::homePath() : QFileInfo(fileName).absolutePath();
}
