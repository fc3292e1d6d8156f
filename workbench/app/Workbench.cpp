#include "Workbench.h"

#include "CircuitFile.h"
#include "Components.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt2.h"
#include "IProjectPart.h"
#include "PendingFile.h"
#include "ProjectManager.h"

#include <Plexa/AbstractComponent.h>
#include <Plexa/ComponentManager.h>
#include <Plexa/ObjectIterator.h>
#include <Plexa/PluginLoader.h>

#include <QFile>
#include <QMetaObject>

using Plexa::ComponentManager;

namespace {

constexpr char EditorName[] = "CCircuitEditorComponent.circuitEditor";
constexpr char ProjectManagerName[] = "CProjectManagerComponent.projectManager";

bool readGuiDescription(QString* error) {
    QFile file(QStringLiteral(VORTEL_DATA_DIR "/gui.json"));
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

QString cannotWrite(const QString& fileName, const QString& reason) {
    return QStringLiteral("cannot write %1: %2").arg(fileName, reason);
}

}  // namespace

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
    if (!manager->createComponents(error)) {
        return false;
    }
    collectWidgets();
    if (QObject* controller = object(QStringLiteral("CCircuitEditorComponent.controller"))) {
        controller->setProperty("ElementDocumentationPath", QStringLiteral(VORTEL_HELP_DIR));
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

void Workbench::clear() {
    if (auto* part = qobject_cast<IProjectPart*>(editorObject())) {
        part->newProjectPart();
    }
    projectManager()->setProjectFileName({});
}

bool Workbench::open(const QString& fileName, QString* message) {
    QString reason;
    const std::optional<CircuitRecords> records = readCircuitFile(fileName, &reason);
    if (!records) {
        *message = QStringLiteral("%1: %2").arg(fileName, reason);
        return false;
    }
    clear();
    editor()->load(fileName);
    projectManager()->setProjectFileName(fileName);
    const QString losses = lossesOf(*records, *circuit());
    *message = losses.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(fileName, losses);
    return true;
}

bool Workbench::save(const QString& fileName, QString* error) {
    PendingFile file(fileName);
    QString reason = file.obstacle();
    if (reason.isEmpty()) {
        // The editor doesn't report a failure; the file tells.
        editor()->save(file.temporaryName());
        const std::optional<CircuitRecords> written =
            readCircuitFile(file.temporaryName(), &reason);
        if (!written || written->elementCount != circuit()->elementCount() ||
            written->nodes.size() != circuit()->nodeCount()) {
            reason = QStringLiteral("the file could not be written in full");
        } else if (file.commit(&reason)) {
            return true;
        }
    }
    *error = cannotWrite(fileName, reason);
    return false;
}

bool Workbench::savePicture(const PictureOutput& picture, QString* error) {
    PendingFile file(picture.fileName);
    QString reason = file.obstacle();
    if (reason.isEmpty()) {
        bool written = false;
        if (!QMetaObject::invokeMethod(editorObject(), "captureToFile", Qt::DirectConnection,
                                       Q_RETURN_ARG(bool, written),
                                       Q_ARG(int, static_cast<int>(picture.format)),
                                       Q_ARG(QString, file.temporaryName()))) {
            reason = QStringLiteral("the plug-in writes no pictures");
        } else if (!written && circuit()->elementCount() == 0) {
            reason = QStringLiteral("the drawing is empty");
        } else if (!written || !isWholePicture(picture.format, file.temporaryName())) {
            reason = QStringLiteral("the picture could not be written in full");
        } else if (file.commit(&reason)) {
            return true;
        }
    }
    *error = cannotWrite(picture.fileName, reason);
    return false;
}

QByteArray Workbench::describe(QString* error) {
    QByteArray text;
    if (!QMetaObject::invokeMethod(editorObject(), "describe", Qt::DirectConnection,
                                   Q_RETURN_ARG(QByteArray, text)) ||
        text.isEmpty()) {
        *error = QStringLiteral("the plug-in describes no drawings");
    }
    return text;
}
