#include "Workbench.h"

#include "AscImport.h"
#include "Autosave.h"
#include "CanvasPalette.h"
#include "Circuit.h"
#include "CircuitFile.h"
#include "Components.h"
#include "HeldMessages.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt2.h"
#include "ICircuitTitle.h"
#include "LongWork.h"
#include "PendingFile.h"
#include "PictureWork.h"
#include "Places.h"
#include "ProjectFile.h"
#include "ProjectManager.h"
#include "SimulationPart.h"

#include <Plexa/AbstractComponent.h>
#include <Plexa/ComponentManager.h>
#include <Plexa/ObjectIterator.h>
#include <Plexa/PluginLoader.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaObject>

#include <new>

using Plexa::ComponentManager;

namespace {

constexpr char CaptionProperty[] = "CaptionNewElements";
constexpr char HistoryProperty[] = "CompleteHistory";
constexpr char IndexProperty[] = "SpatialIndex";
constexpr char EditorName[] = "CCircuitEditorComponent.circuitEditor";
constexpr char TooLarge[] = "does not fit into the memory";
constexpr char SimulationName[] = "CSimulationComponent.simulation";
constexpr char PersistenceName[] = "CServicesComponent.objectLoadSave";
constexpr char ProjectManagerName[] = "CProjectManagerComponent.projectManager";

bool readGuiDescription(QString* error) {
    QFile file(Places::data(QStringLiteral("gui.json")));
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: cannot be read: %2").arg(file.fileName(), file.errorString());
        return false;
    }
    Plexa::GuiDescription description;
    if (!description.parse(file.readAll(), error)) {
        *error = QStringLiteral("%1: %2").arg(file.fileName(), *error);
        return false;
    }
    ComponentManager::instance()->setGuiDescription(description);
    return true;
}

QString about(const QString& fileName, const QString& remark) {
    return QStringLiteral("%1: %2").arg(fileName, remark);
}

/// Why the file isn't whole, whose writer has told this much, or nothing.
QString reasonOfHalfFile(const PendingFile& file, const QString& told, const char* what) {
    const QString lack = file.lackOfRoom();
    const QString reason = lack.isEmpty() ? told : lack;
    const QString failure =
        QStringLiteral("the %1 could not be written in full").arg(QLatin1String(what));
    return reason.isEmpty() ? failure : failure + QLatin1String(": ") + reason;
}

int countOutputVariables(const ProjectFile& file) {
    const QString tag = QStringLiteral("OutputVar");
    int count = 0;
    for (QDomElement e = file.part(QStringLiteral("OutputVariables")).firstChildElement(tag);
         !e.isNull(); e = e.nextSiblingElement(tag)) {
        ++count;
    }
    return count;
}

QString cannotWrite(const QString& fileName, const QString& reason) {
    return QStringLiteral("cannot write %1: %2").arg(fileName, reason);
}

/// Loading makes each element, and reads the properties of each element and node.
int stepsOf(const CircuitRecords& records) {
    return 2 * records.elementCount + records.nodes.size();
}

}  // namespace

DocumentFormat documentFormatOf(const QString& fileName) {
    return QFileInfo(fileName).suffix().compare(QLatin1String("vprj"), Qt::CaseInsensitive) == 0
               ? DocumentFormat::Project
               : DocumentFormat::Circuit;
}

Workbench::~Workbench() {
    // The editor's drawing goes while the circuit behind it still lives.
    for (const QPointer<QWidget>& widget : qAsConst(m_widgets)) {
        if (widget && !widget->parent()) {
            delete widget;
        }
    }
    ComponentManager::instance()->shutdown();
}

bool Workbench::start(const QString& plugin, QWidget* window, QString* error) {
    ComponentManager* manager = ComponentManager::instance();
    registerBuiltInComponents();
    if (!readGuiDescription(error)) {
        return false;
    }
    if (Plexa::loadPlugin(plugin, error).isEmpty()) {
        return false;
    }
    manager->setMainWindow(window);
    CanvasPalette::prepare();
    if (!manager->createComponents(error)) {
        return false;
    }
    collectWidgets();
    if (QObject* controller = object(QStringLiteral("CCircuitEditorComponent.controller"))) {
        controller->setProperty("ElementDocumentationPath", Places::data(QStringLiteral("help")));
    }
    if (!manager->configureObjects(error)) {
        return false;
    }
    manager->announceComponents();
    manager->initializeComponents();
    if (!editor() || !canvas() || !circuit()) {
        *error = QStringLiteral("the plug-in %1 offers no circuit editor").arg(plugin);
        return false;
    }
    CanvasPalette::apply(canvas());
    simulation()->setTexts([this] { return drawnTexts(); });
    if (!window) {
        // Commands tell what is in the file, and no more.
        editorObject()->setProperty(CaptionProperty, false);
    }
    projectManager()->collectParts();
    clear();
    return true;
}

void Workbench::collectWidgets() {
    const Plexa::ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (auto* widget = qobject_cast<QWidget*>(object)) {
            m_widgets.append(widget);
        }
    }
}

QObject* Workbench::object(const QString& completeName) const {
    ComponentManager* manager = ComponentManager::instance();
    return manager->object(manager->component(completeName.section(QLatin1Char('.'), 0, 0)),
                           completeName.section(QLatin1Char('.'), 1));
}

QStringList Workbench::libraryProblems() const {
    return CSimulatorComponent::instance()->library().problems();
}

QVariant Workbench::guiSection(const QString& name) const {
    return ComponentManager::instance()->guiDescription().root().value(name);
}

QObject* Workbench::editorObject() const {
    return object(QLatin1String(EditorName));
}

QWidget* Workbench::editorWidget() const {
    return qobject_cast<QWidget*>(editorObject());
}

ICircuitEditor* Workbench::editor() const {
    return qobject_cast<ICircuitEditor*>(editorObject());
}

ICanvas* Workbench::canvas() const {
    return qobject_cast<ICanvas*>(editorObject());
}

ICircuit* Workbench::circuit() const {
    auto* access = qobject_cast<ICircuitEditorExt2*>(editorObject());
    return access ? access->circuit() : nullptr;
}

ProjectManager* Workbench::projectManager() const {
    return qobject_cast<ProjectManager*>(object(QLatin1String(ProjectManagerName)));
}

SimulationPart* Workbench::simulation() const {
    return qobject_cast<SimulationPart*>(object(QLatin1String(SimulationName)));
}

void Workbench::clear() {
    projectManager()->newProject({}, [this] {
        clearTitle();
        return true;
    });
}

void Workbench::clearTitle() {
    // The one thing that stays with a circuit that is cleared.
    if (auto* title = qobject_cast<ICircuitTitle*>(circuit()->containerObject())) {
        title->setTitle({});
    }
}

QStringList Workbench::drawnTexts() const {
    QByteArray text;
    QMetaObject::invokeMethod(editorObject(), "describe", Qt::DirectConnection,
                              Q_RETURN_ARG(QByteArray, text));
    QStringList texts;
    for (const QJsonValue& box :
         QJsonDocument::fromJson(text).object().value(QLatin1String("textBoxes")).toArray()) {
        const QJsonObject record = box.toObject();
        if (record.value(QLatin1String("kind")).toString() == QLatin1String("text")) {
            texts.append(record.value(QLatin1String("text"))
                             .toString()
                             .replace(QLatin1String("{|?|}"), QLatin1String("\n")));
        }
    }
    return texts;
}

bool Workbench::import(const QString& fileName, QStringList* remarks, QString* error) {
    QString reason;
    const std::optional<ImportedProject> imported = importAsc(
        fileName, CSimulatorComponent::instance()->library(), simulation()->models(), &reason);
    if (!imported) {
        *error = about(fileName, reason);
        return false;
    }
    // What can't be restored is told once, here, and is no loss of a project's file.
    if (!load(imported->project, {}, fileName, error)) {
        return false;
    }
    *remarks = imported->remarks;
    if (!error->isEmpty()) {
        remarks->append(*error);
        error->clear();
        projectManager()->setLosses({});
    }
    const QVariant captions = editorObject()->property(CaptionProperty);
    editorObject()->setProperty(CaptionProperty, true);
    QMetaObject::invokeMethod(editorObject(), "captionElements", Qt::DirectConnection);
    editorObject()->setProperty(CaptionProperty, captions);
    return true;
}

bool Workbench::open(const QString& fileName, QString* message) {
    try {
        if (isForeignFile(fileName)) {
            QStringList remarks;
            const bool imported = import(fileName, &remarks, message);
            if (!remarks.isEmpty()) {
                *message = about(fileName, remarks.join(QLatin1String("; ")));
            }
            return imported;
        }
        return documentFormatOf(fileName) == DocumentFormat::Project
                   ? openProject(fileName, fileName, message)
                   : openCircuit(fileName, fileName, message);
    } catch (const std::bad_alloc&) {
        *message = about(fileName, QLatin1String(TooLarge));
        return false;
    }
}

bool Workbench::openCopy(const QString& fileName, QString* message) {
    return documentFormatOf(fileName) == DocumentFormat::Project
               ? openProject(fileName, {}, message)
               : openCircuit(fileName, {}, message);
}

bool Workbench::openProject(const QString& fileName, const QString& target, QString* message) {
    QString reason;
    const std::optional<ProjectFile> file = ProjectFile::read(fileName, &reason);
    if (!file) {
        *message = about(fileName, reason);
        return false;
    }
    return load(*file, target, fileName, message);
}

bool Workbench::load(const ProjectFile& file, const QString& fileName, const QString& source,
                     QString* message) {
    QString reason;
    // Of an autosave: what its project had lost before.
    const QString earlier = file.root().attribute(QLatin1String(Autosave::LossesAttribute));
    const QDomElement circuitPart = file.part(QLatin1String(ProjectFile::CircuitPart));
    QStringList losses = {earlier};
    const CircuitRecords records = circuitRecords(circuitPart);
    FurtherLosses further;
    ProjectFile usable = file;
    const ElementLibrary& library = CSimulatorComponent::instance()->library();
    further.textBoxes = dropUnknownElements(
        &usable, [&library](const QString& type) { return library.description(type); });
    further.strangers = file.strangersThatGo();
    auto* persistence = qobject_cast<ObjectLoadSave*>(object(QLatin1String(PersistenceName)));
    persistence->takeRefusedValues();
    // Before anything is saved, which numbers the elements anew.
    const auto finish = [&] {
        if (circuitPart.isNull()) {
            clearTitle();
        }
        const auto* model = qobject_cast<Circuit*>(circuit()->containerObject());
        further.outputVariables =
            countOutputVariables(file) - (model ? model->outputVariableCount() : 0);
        further.values = persistence->takeRefusedValues();
        losses.append(lossesOf(records, *circuit(), further));
    };
    const LongWork work(stepsOf(records), LongWork::Stop::Possible);
    if (!projectManager()->load(usable, fileName, &reason, finish)) {
        if (!reason.isEmpty()) {
            *message = about(source, reason);
        }
        return false;
    }
    losses.removeAll(QString());
    *message = noteLosses(source, losses.join(QLatin1String(", and ")));
    return true;
}

bool Workbench::openCircuit(const QString& fileName, const QString& target, QString* message) {
    QString reason;
    const std::optional<CircuitRecords> records = readCircuitFile(fileName, &reason);
    if (!records) {
        *message = about(fileName, reason);
        return false;
    }
    QString losses;
    const LongWork work(stepsOf(*records), LongWork::Stop::Possible);
    const auto fill = [&] {
        try {
            clearTitle();
            auto* persistence =
                qobject_cast<ObjectLoadSave*>(object(QLatin1String(PersistenceName)));
            persistence->takeRefusedValues();
            editor()->load(fileName);
            FurtherLosses further;
            further.values = persistence->takeRefusedValues();
            losses = lossesOf(*records, *circuit(), further);
        } catch (const std::bad_alloc&) {
            *message = about(fileName, QLatin1String(TooLarge));
            return false;
        }
        return true;
    };
    if (!projectManager()->newProject(target, fill)) {
        return false;
    }
    *message = noteLosses(fileName, losses);
    return true;
}

QString Workbench::noteLosses(const QString& source, const QString& losses) const {
    projectManager()->setLosses(losses);
    return losses.isEmpty() ? QString() : about(source, losses);
}

bool Workbench::recover(std::unique_ptr<Autosave> autosave, QString* message) {
    QString reason;
    const std::optional<ProjectFile> file = ProjectFile::read(autosave->fileName(), &reason);
    if (!file) {
        *message = about(autosave->fileName(), reason);
        return false;
    }
    if (!load(*file, autosave->projectFile(), autosave->fileName(), message)) {
        return false;
    }
    projectManager()->adopt(std::move(autosave));
    return true;
}

bool Workbench::save(const QString& fileName, QString* error) {
    const LongWork work(circuit()->elementCount() + circuit()->nodeCount());
    QString reason;
    const bool isProject = documentFormatOf(fileName) == DocumentFormat::Project;
    if (isProject ? projectManager()->save(fileName, &reason) : saveCircuit(fileName, &reason)) {
        return true;
    }
    *error = cannotWrite(fileName, reason);
    return false;
}

bool Workbench::saveCircuit(const QString& fileName, QString* reason) {
    PendingFile file(fileName);
    *reason = file.obstacle();
    if (!reason->isEmpty()) {
        return false;
    }
    // The editor doesn't report a failure; the file tells.
    editor()->save(file.temporaryName());
    const std::optional<CircuitRecords> written = readCircuitFile(file.temporaryName(), reason);
    if (!written || written->elementCount != circuit()->elementCount() ||
        written->nodes.size() != circuit()->nodeCount()) {
        *reason = reasonOfHalfFile(file, {}, "file");
        return false;
    }
    if (!file.commit(reason)) {
        return false;
    }
    projectManager()->markSaved(fileName);
    return true;
}

QString Workbench::lossesOnSaving(const QString& fileName) const {
    const QString losses = projectManager()->losses();
    if (!losses.isEmpty() &&
        QFileInfo(fileName) == QFileInfo(projectManager()->projectFileName())) {
        return about(fileName, losses);
    }
    if (documentFormatOf(fileName) == DocumentFormat::Project) {
        return {};
    }
    const bool isCaptioned = editorObject()->property(CaptionProperty).toBool();
    const QString beyond =
        beyondCircuitFile(projectManager()->content(), isCaptioned ? circuit() : nullptr);
    return beyond.isEmpty()
               ? QString()
               : about(fileName, QStringLiteral("a circuit file cannot hold %1").arg(beyond));
}

bool Workbench::savePicture(const PictureOutput& picture, QString* error) {
    PendingFile file(picture.fileName);
    QString reason = file.obstacle();
    if (reason.isEmpty()) {
        bool written = false;
        const LongWork work(circuit()->elementCount() + circuit()->nodeCount(),
                            LongWork::Stop::Possible);
        const PictureWork steps(editorObject());
        // The paint devices tell in the log what went wrong.
        const HeldMessages messages;
        if (!QMetaObject::invokeMethod(editorObject(), "captureToFile", Qt::DirectConnection,
                                       Q_RETURN_ARG(bool, written),
                                       Q_ARG(int, static_cast<int>(picture.format)),
                                       Q_ARG(QString, file.temporaryName()))) {
            reason = QStringLiteral("the plug-in writes no pictures");
        } else if (LongWork::takeStop()) {
            error->clear();
            return false;
        } else if (!written && circuit()->elementCount() == 0) {
            reason = QStringLiteral("the drawing is empty");
        } else if (!written || !isWholePicture(picture.format, file.temporaryName())) {
            reason = reasonOfHalfFile(file, messages.first(), "picture");
        } else if (file.commit(&reason)) {
            return true;
        }
    }
    *error = cannotWrite(picture.fileName, reason);
    return false;
}

void Workbench::serveCommand() {
    projectManager()->setComparesContent(false);
    editorObject()->setProperty(HistoryProperty, false);
    editorObject()->setProperty(IndexProperty, false);
}

bool Workbench::describe(QIODevice* target, QString* error) {
    bool isWhole = false;
    if (!QMetaObject::invokeMethod(editorObject(), "describeTo", Qt::DirectConnection,
                                   Q_RETURN_ARG(bool, isWhole), Q_ARG(QIODevice*, target))) {
        *error = QStringLiteral("the plug-in describes no drawings");
    }
    return isWhole;
}
