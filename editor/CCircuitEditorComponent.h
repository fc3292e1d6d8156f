#pragma once

#include "IAboutData.h"

#include <Plexa/AbstractComponent.h>

#include <QVariantMap>

#include <memory>

class CCircuitEditor;
class CCircuitEditorComponentData;
class COutputVariablesWidget;
class QMenu;

/// Name of the editor's context in the application clipboard.
extern const QString CircuitEditorClipboardContext;

/// The plug-in's one component. It makes the main editor and the output variables panel, finds
/// every collaborator by interface name, hands them to the two, serves the framework's requests by
/// name, and opens help files. The widgets that it makes belong to whoever places them.
class CCircuitEditorComponent : public Plexa::AbstractComponent, public virtual IAboutData {
    Q_OBJECT
    Q_INTERFACES(IAboutData)
    Q_PROPERTY(QString CircuitFilesPath READ circuitFilesPath WRITE setCircuitFilesPath)
    Q_PROPERTY(QString ElementDocumentationPath READ elementDocumentationPath WRITE
                   setElementDocumentationPath)
    Q_PROPERTY(bool UseOpenGL READ isUseOpenGL WRITE setUseOpenGL)

public:
    ~CCircuitEditorComponent() override;

    /// The one component; null only where the framework can't make it.
    static CCircuitEditorComponent* instance();
    /// Makes the component once; the same object on every later call.
    static Plexa::AbstractComponent* CreateInstance();

    /// The main editor; null once its owner has deleted it.
    CCircuitEditor* circuitEditor() const;
    /// The output variables panel; null once its owner has deleted it.
    COutputVariablesWidget* outputVariablesWidget() const;
    /// Palette of the colour menus: "Border", "Fill" and "Text", each a map of names to colours.
    QVariantMap textBoxColors() const;
    /// Path of the help file of a complete type name; empty if there is none.
    QString helpFileForElement(const QString& elementName) const;

    /// Starting directory of the file dialogs.
    QString circuitFilesPath() const;
    void setCircuitFilesPath(QString path);
    /// Root directory of the element help files.
    QString elementDocumentationPath() const;
    void setElementDocumentationPath(const QString& path);
    /// True from the start, though a GL viewport comes only after it has been false.
    bool isUseOpenGL() const;
    void setUseOpenGL(bool on);

    // Plexa::AbstractComponent
    QAction* fetchAction(const QString& name) const override;
    QObject* fetchObject(const QString& name) const override;
    QWidget* fetchWidget(const QString& name) const override;
    void addChildWidget(QWidget* parent, QWidget* child, const QString& hint) override;
    void componentDestroyed(Plexa::AbstractComponent* component) override;
    void creationAnnounced() override;
    void initializeComponent() override;
    void finalizeComponent() override;
    QWidget* createWidget(const QString& name) const override;

    // IContainer
    QObject* containerObject() override { return this; }

    // IAboutData
    QString productName() const override;
    QString organization() const override;
    QImage programLogo() const override;
    QString version() const override;
    QString shortDescription() const override;
    QString homepage() const override;
    QString bugAddress() const override;
    QList<Plexa::AboutPerson> authors() const override;
    QList<Plexa::AboutPerson> credits() const override;
    QString license() const override;
    QString copyrightStatement() const override;

public slots:
    void newCircuit();
    void saveCircuit();
    void loadCircuit();
    void saveCircuit(QString fileName);
    void loadCircuit(QString fileName);
    void setManualConnectionMode(bool val);
    void showCurrentProjectHelpFile();

protected slots:
    void on_circuitEditor_editorModeChanged();
    void slotElementExplorerElementRightClicked(QString name, QMenu* menu);
    void slotElementExplorerActionTriggered();
    void on_workspaceWidgetActivated(QWidget* widget);
    void onCurrentProjectChanged(QString projectFileName);

private:
    CCircuitEditorComponent();

    template <class Interface>
    Interface* findCollaborator(const char* name, Plexa::AbstractComponent** owner = nullptr) const;
    void announceEditorServices();
    void announceClipboard();

    std::unique_ptr<CCircuitEditorComponentData> d;
};
