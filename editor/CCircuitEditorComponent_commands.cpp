// The component's commands: circuit files, manual connections, help; and its about data.

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CCircuitEditorComponentData.h"
#include "ICircuit.h"
#include "IProjectExt.h"

#include <Plexa/AboutPerson.h>

#include <QAction>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QUrl>

namespace {

const QString CircuitFilter = QStringLiteral("VORTEL Circuit (*.ckt)");
constexpr char ElementNameProperty[] = "_ElementName_";

void openLocalFile(const QString& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace

void CCircuitEditorComponent::newCircuit() {
    if (!d->circuitEditor) {
        return;
    }
    if (ICircuit* circuit = d->circuitEditor->circuit()) {
        circuit->clear();
    }
    d->circuitEditor->clear();
}

void CCircuitEditorComponent::saveCircuit() {
    const QString fileName = QFileDialog::getSaveFileName(
        mainWindow(), QStringLiteral("Choose a file name to save into"), d->circuitFilesPath,
        CircuitFilter);
    if (!fileName.isEmpty()) {
        saveCircuit(fileName);
    }
}

void CCircuitEditorComponent::loadCircuit() {
    const QString fileName =
        QFileDialog::getOpenFileName(mainWindow(), QStringLiteral("Choose a file name to load"),
                                     d->circuitFilesPath, CircuitFilter);
    if (!fileName.isEmpty()) {
        loadCircuit(fileName);
    }
}

void CCircuitEditorComponent::saveCircuit(QString fileName) {
    if (d->circuitEditor) {
        d->circuitEditor->save(fileName);
    }
}

void CCircuitEditorComponent::loadCircuit(QString fileName) {
    if (d->circuitEditor) {
        d->circuitEditor->load(fileName);
    }
}

void CCircuitEditorComponent::setManualConnectionMode(bool val) {
    // A host ties the action's state to this. From wires by hand straight to another mode the
    // action pops out, which must not end that other mode.
    if (!d->circuitEditor || d->showingMode) {
        return;
    }
    d->circuitEditor->setMode(val ? CCircuitEditor::ManualConnectionMode
                                  : CCircuitEditor::EditMode);
}

void CCircuitEditorComponent::on_circuitEditor_editorModeChanged() {
    if (d->manualCtorModeAction && d->circuitEditor) {
        d->showingMode = true;
        d->manualCtorModeAction->setChecked(d->circuitEditor->mode() ==
                                            CCircuitEditor::ManualConnectionMode);
        d->showingMode = false;
    }
}

void CCircuitEditorComponent::showCurrentProjectHelpFile() {
    QString completeName;
    Plexa::AbstractComponent* owner = nullptr;
    auto* project =
        qobject_cast<IProjectExt*>(findObject(QStringLiteral("IProjectExt"), completeName, &owner));
    if (!project) {
        return;
    }
    const QFileInfo file(project->projectFileName());
    if (!file.exists()) {
        QMessageBox::information(mainWindow(), QStringLiteral("Project not saved"),
                                 QStringLiteral("Cannot look for help file in an unsaved project"),
                                 QMessageBox::Ok);
        return;
    }
    const QString path = QStringLiteral("%1/%2.pdf").arg(file.absolutePath(), file.baseName());
    if (!QFileInfo::exists(path)) {
        QMessageBox::information(mainWindow(), QStringLiteral("Project help not found"),
                                 QStringLiteral("Cannot find help file for this project."),
                                 QMessageBox::Ok);
        return;
    }
    openLocalFile(path);
}

QString CCircuitEditorComponent::helpFileForElement(const QString& elementName) const {
    const QStringList pieces = elementName.split(QLatin1Char('.'));
    if (elementName.isEmpty() || pieces.size() != 2) {
        return {};
    }
    // Multi-argument form: a per cent sign in a path is no place holder.
    const QString path = QStringLiteral("%1/%2/%2_%3.pdf")
                             .arg(d->elementDocumentationPath, pieces.last(), pieces.first());
    qDebug("helpfilePath = %s", path.toLocal8Bit().constData());
    return QFileInfo::exists(path) ? path : QString();
}

void CCircuitEditorComponent::slotElementExplorerElementRightClicked(QString name, QMenu* menu) {
    QAction* action = menu->addAction(QStringLiteral("%1 Help").arg(name));
    action->setProperty(ElementNameProperty, name);
    connect(action, SIGNAL(triggered()), this, SLOT(slotElementExplorerActionTriggered()));
}

void CCircuitEditorComponent::slotElementExplorerActionTriggered() {
    if (!sender()) {
        return;
    }
    const QString name = sender()->property(ElementNameProperty).toString();
    const QString path = helpFileForElement(name);
    if (path.isEmpty()) {
        QMessageBox::information(mainWindow(), QStringLiteral("Help not found"),
                                 QStringLiteral("Help file for \"%1\" not found").arg(name),
                                 QMessageBox::Ok);
        return;
    }
    openLocalFile(path);
}

QString CCircuitEditorComponent::productName() const {
    return QStringLiteral("Circuit Editor");
}

QString CCircuitEditorComponent::organization() const {
    return QStringLiteral("The Vortel Workbench Makers");
}

QImage CCircuitEditorComponent::programLogo() const {
    return {};
}

QString CCircuitEditorComponent::version() const {
    return QStringLiteral("2.0");
}

QString CCircuitEditorComponent::shortDescription() const {
    return QStringLiteral("Provides a canvas for editor Vortel circuits");
}

QString CCircuitEditorComponent::homepage() const {
    return QStringLiteral("https://vortel.example/");
}

QString CCircuitEditorComponent::bugAddress() const {
    return QStringLiteral("bugs@vortel.example");
}

QList<Plexa::AboutPerson> CCircuitEditorComponent::authors() const {
    static const QList<Plexa::AboutPerson> people{
        {QStringLiteral("Vortel Founders"), QStringLiteral("founders@vortel.example"), homepage(),
         QStringLiteral("Founder, Vision, Design, Development")},
        {QStringLiteral("Vortel GUI Team"), QStringLiteral("gui@vortel.example"), homepage(),
         QStringLiteral("Design and Development of GUI")}};
    return people;
}

QList<Plexa::AboutPerson> CCircuitEditorComponent::credits() const {
    static const QList<Plexa::AboutPerson> people;
    return people;
}

QString CCircuitEditorComponent::license() const {
    return QStringLiteral("Vortel/VortelGUI License");
}

QString CCircuitEditorComponent::copyrightStatement() const {
    return {};
}
