// The component's life cycle and what it serves by name.

#include "CCircuitEditorComponent.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorCmds.h"
#include "CCircuitEditorComponentData.h"
#include "COutputVariablesWidget.h"
#include "GlViewport.h"
#include "ICircuitElementFactory.h"
#include "ICircuitSolver.h"
#include "IClipboard.h"
#include "IClipboardWidget.h"
#include "IElementExplorer.h"
#include "IMathUtils.h"
#include "IPropertyEditor.h"
#include "IQObjectLoadSave.h"
#include "IXmlUtils.h"

#include <JSON/JSON.h>
#include <Plexa/ComponentFactory.h>
#include <Plexa/ObjectIterator.h>

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QWidget>

using Plexa::ObjectIterator;

const QString CircuitEditorClipboardContext = QStringLiteral("CircuitEditor");

namespace {

const QString ComponentName = QStringLiteral("CCircuitEditorComponent");

// Known from the moment of construction: items ask for it while the factory is still making it.
QPointer<CCircuitEditorComponent> theComponent;

QString lastPiece(const QString& completeName) {
    return completeName.section(QLatin1Char('.'), -1);
}

/// The first object of the application that offers the interface, or null.
template <class Interface>
Interface* firstObjectWith() {
    const ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (auto* found = qobject_cast<Interface*>(object)) {
            return found;
        }
    }
    return nullptr;
}

bool hasSignal(const QObject* object, const char* signature) {
    return object->metaObject()->indexOfSignal(signature) >= 0;
}

}  // namespace

CCircuitEditorComponent::CCircuitEditorComponent()
    : d(std::make_unique<CCircuitEditorComponentData>()) {
    theComponent = this;
    d->circuitEditor = new CCircuitEditor;
    d->outputVariablesWidget = new COutputVariablesWidget;
    connect(d->circuitEditor, SIGNAL(editorModeChanged(Mode)), this,
            SLOT(on_circuitEditor_editorModeChanged()));
    connect(d->circuitEditor, SIGNAL(editorModeChanged(Mode)), d->outputVariablesWidget,
            SLOT(slotEditorModeChanged()));
}

CCircuitEditorComponent::~CCircuitEditorComponent() = default;

Plexa::AbstractComponent* CCircuitEditorComponent::CreateInstance() {
    return theComponent ? theComponent.data() : new CCircuitEditorComponent;
}

CCircuitEditorComponent* CCircuitEditorComponent::instance() {
    if (theComponent) {
        return theComponent;
    }
    return qobject_cast<CCircuitEditorComponent*>(
        Plexa::ComponentFactory::instance()->createComponent(ComponentName));
}

CCircuitEditor* CCircuitEditorComponent::circuitEditor() const {
    return d->circuitEditor;
}

COutputVariablesWidget* CCircuitEditorComponent::outputVariablesWidget() const {
    return d->outputVariablesWidget;
}

QVariantMap CCircuitEditorComponent::textBoxColors() const {
    return d->textBoxColors;
}

QString CCircuitEditorComponent::circuitFilesPath() const {
    return d->circuitFilesPath;
}

void CCircuitEditorComponent::setCircuitFilesPath(QString path) {
    d->circuitFilesPath = path;
}

QString CCircuitEditorComponent::elementDocumentationPath() const {
    return d->elementDocumentationPath;
}

void CCircuitEditorComponent::setElementDocumentationPath(const QString& path) {
    d->elementDocumentationPath = path;
}

bool CCircuitEditorComponent::isUseOpenGL() const {
    return d->useOpenGL;
}

void CCircuitEditorComponent::setUseOpenGL(bool on) {
    if (on == d->useOpenGL) {
        return;
    }
    d->useOpenGL = on;
    if (!d->circuitEditor) {
        return;
    }
    QWidget* gl = on ? makeGlViewport(d->circuitEditor) : nullptr;
    if (gl || !on) {
        d->circuitEditor->setViewport(gl);
    }
}

QAction* CCircuitEditorComponent::fetchAction(const QString& name) const {
    if (lastPiece(name) != QLatin1String("manualCtorMode")) {
        return AbstractComponent::fetchAction(name);
    }
    if (!d->manualCtorModeAction) {
        d->manualCtorModeAction = new QAction(const_cast<CCircuitEditorComponent*>(this));
        d->manualCtorModeAction->setCheckable(true);
    }
    d->manualCtorModeAction->setObjectName(name);
    return d->manualCtorModeAction;
}

QObject* CCircuitEditorComponent::fetchObject(const QString& name) const {
    return lastPiece(name) == QLatin1String("controller")
               ? const_cast<CCircuitEditorComponent*>(this)
               : nullptr;
}

QWidget* CCircuitEditorComponent::fetchWidget(const QString& name) const {
    const QString piece = lastPiece(name);
    if (piece == QLatin1String("outVarsWidget")) {
        return d->outputVariablesWidget;
    }
    if (!d->circuitEditor) {
        return nullptr;
    }
    if (piece == QLatin1String("circuitEditorGL")) {
        return d->circuitEditor;
    }
    if (piece == QLatin1String("circuitEditor")) {
        d->circuitEditor->setViewport(nullptr);
        return d->circuitEditor;
    }
    if (piece == QLatin1String("statusLabel")) {
        return d->circuitEditor->statusLabel();
    }
    return nullptr;
}

void CCircuitEditorComponent::addChildWidget(QWidget*, QWidget* child, const QString&) {
    // No other component's widget has a place in the canvas.
    child->setParent(nullptr);
}

void CCircuitEditorComponent::componentDestroyed(Plexa::AbstractComponent* component) {
    if (component == d->propertyEditorComponent) {
        d->propertyEditorComponent = nullptr;
    }
    if (component == d->elementExplorerComponent) {
        d->elementExplorerComponent = nullptr;
    }
}

template <class Interface>
Interface* CCircuitEditorComponent::findCollaborator(const char* name,
                                                     Plexa::AbstractComponent** owner) const {
    QString completeName;
    Plexa::AbstractComponent* component = nullptr;
    QObject* object = findObject(QString::fromLatin1(name), completeName, &component);
    if (owner) {
        *owner = component;
    }
    return qobject_cast<Interface*>(object);
}

void CCircuitEditorComponent::creationAnnounced() {
    if (!d->circuitEditor) {
        return;
    }
    announceEditorServices();
    announceClipboard();
    d->elementExplorerComponent = findComponent(QStringLiteral("CElementExplorerComponent"));
    d->propertyEditorComponent = findComponent(QStringLiteral("CPropertyEditorComponent"));
    CCircuitEditorCmds::CircuitEditor = d->circuitEditor;
    CCircuitEditorCmds::Circuit = d->circuitEditor->circuit();
    if (d->outputVariablesWidget) {
        d->outputVariablesWidget->setCircuitEditor(d->circuitEditor);
    }
    d->textBoxColors = JSON::parse(componentGui()[QStringLiteral("TextBoxColors")].toString());
}

void CCircuitEditorComponent::announceEditorServices() {
    CCircuitEditor* editor = d->circuitEditor;
    auto* propertyEditor = findCollaborator<IPropertyEditor>("IPropertyEditor");
    if (propertyEditor) {
        editor->setPropertyEditor(propertyEditor);
        if (d->outputVariablesWidget) {
            d->outputVariablesWidget->setPropertyEditor(propertyEditor);
        }
    }
    CCircuitEditorCmds::PropertyEditor = propertyEditor;
    if (auto* explorer = findCollaborator<IElementExplorer>("IElementExplorer")) {
        editor->setElementExplorer(explorer);
        connect(explorer->containerObject(), SIGNAL(elementRightClicked(QString, QMenu*)), this,
                SLOT(slotElementExplorerElementRightClicked(QString, QMenu*)));
    }
    auto* solver = findCollaborator<ICircuitSolver>("ICircuitSolver");
    if (solver) {
        editor->setCircuitSolver(solver);
    }
    CCircuitEditorCmds::CircuitSolver = solver;
    auto* factory = findCollaborator<ICircuitElementFactory>("ICircuitElementFactory");
    if (factory) {
        editor->setCircuitElementFactory(factory);
    }
    CCircuitEditorCmds::CircuitElementFactory = factory;
    auto* xmlUtils = findCollaborator<IXmlUtils>("IXmlUtils");
    if (xmlUtils) {
        editor->setXmlUtils(xmlUtils);
        if (d->outputVariablesWidget) {
            d->outputVariablesWidget->setXmlUtils(xmlUtils);
        }
    }
    CCircuitEditorCmds::XmlUtils = xmlUtils;
    auto* loadSave = findCollaborator<IQObjectLoadSave>("IQObjectLoadSave");
    if (loadSave) {
        editor->setQObjectLoadSave(loadSave);
    }
    CCircuitEditorCmds::QObjectLoadSave = loadSave;
    if (auto* mathUtils = findCollaborator<IMathUtils>("IMathUtils")) {
        editor->setMathUtils(mathUtils);
    }
}

void CCircuitEditorComponent::announceClipboard() {
    Plexa::AbstractComponent* owner = nullptr;
    if (auto* clipboard = findCollaborator<IClipboard>("IClipboard", &owner)) {
        clipboard->addContext(CircuitEditorClipboardContext);
        d->circuitEditor->setClipboard(clipboard);
        addDependency(owner, this);
    }
    if (auto* widget = findCollaborator<IClipboardWidget>("IClipboardWidget", &owner)) {
        d->circuitEditor->setClipboardWidget(widget);
        addDependency(owner, this);
    }
}

void CCircuitEditorComponent::initializeComponent() {
    if (mainWindow() && hasSignal(mainWindow(), "workspaceWidgetActivated(QWidget*)")) {
        connect(mainWindow(), SIGNAL(workspaceWidgetActivated(QWidget*)), this,
                SLOT(on_workspaceWidgetActivated(QWidget*)));
    }
    // The first project part is taken for the project manager; a part that is none of that kind
    // has no such signal.
    auto* part = firstObjectWith<IProjectPart>();
    if (part && hasSignal(part->containerObject(), "currentProjectFileNameChanged(QString)")) {
        connect(part->containerObject(), SIGNAL(currentProjectFileNameChanged(QString)), this,
                SLOT(onCurrentProjectChanged(QString)));
    }
}

void CCircuitEditorComponent::finalizeComponent() {}

QWidget* CCircuitEditorComponent::createWidget(const QString& name) const {
    const QString piece = lastPiece(name);
    const bool isPlain = piece == QLatin1String("circuitEditor");
    if (!isPlain && piece != QLatin1String("circuitEditorGL")) {
        return nullptr;
    }
    auto* editor = new CCircuitEditor;
    editor->setQObjectLoadSave(firstObjectWith<IQObjectLoadSave>());
    editor->setMathUtils(firstObjectWith<IMathUtils>());
    editor->setClipboard(firstObjectWith<IClipboard>());
    editor->setClipboardWidget(firstObjectWith<IClipboardWidget>());
    editor->setPropertyEditor(firstObjectWith<IPropertyEditor>());
    editor->setCircuitElementFactory(firstObjectWith<ICircuitElementFactory>());
    editor->setElementExplorer(firstObjectWith<IElementExplorer>());
    editor->setXmlUtils(firstObjectWith<IXmlUtils>());
    editor->setRouteEmptyShapes(d->circuitEditor && d->circuitEditor->isRouteEmptyShapes());
    if (isPlain) {
        editor->setViewport(nullptr);
    }
    return editor;
}

void CCircuitEditorComponent::on_workspaceWidgetActivated(QWidget* widget) {
    setActive(widget && widget == d->circuitEditor);
    for (Plexa::AbstractComponent* component :
         {d->elementExplorerComponent, d->propertyEditorComponent}) {
        if (component && isActive()) {
            component->setActive(false);
            component->setActive(true);
        }
    }
    IClipboard* clipboard = d->circuitEditor ? d->circuitEditor->clipboard() : nullptr;
    if (clipboard && isActive()) {
        clipboard->setActiveContext(CircuitEditorClipboardContext);
    }
}

void CCircuitEditorComponent::onCurrentProjectChanged(QString projectFileName) {
    if (projectFileName.isEmpty()) {
        return;
    }
    const QString path = QFileInfo(projectFileName).path();
    auto* part = firstObjectWith<IProjectPart>();
    if (part && !path.isEmpty()) {
        part->containerObject()->setProperty("DefaultProjectPath", path);
    }
}
