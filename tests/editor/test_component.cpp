// The plug-in's component in the framework.

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "Circuit.h"
#include "CircuitSolver.h"
#include "DialogDriver.h"
#include "DrawingTest.h"
#include "IProjectExt.h"
#include "WarningGuard.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>

namespace {

class ProjectStub : public QObject, public IProjectExt, public IProjectPart {
    Q_OBJECT
    Q_INTERFACES(IProjectExt IProjectPart)

public:
    QObject* containerObject() override { return this; }
    QString projectFileName() override { return fileName; }
    QString projectPartID() override { return {}; }
    bool newProjectPart() override { return true; }
    bool loadProjectPart(QDomDocument, QDomElement) override { return true; }
    bool initializeProjectPart() override { return true; }
    bool saveProjectPart(QDomDocument, QDomElement) override { return true; }
    bool closeProjectPart() override { return true; }

    QString fileName;

signals:
    void projectPartModified() override;
    void currentProjectFileNameChanged(QString fileName);
};

class Window : public QWidget {
    Q_OBJECT

signals:
    void workspaceWidgetActivated(QWidget* widget);
};

class HelpOpener : public QObject {
    Q_OBJECT

public:
    HelpOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~HelpOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QStringList opened;

public slots:
    void open(const QUrl& url) { opened << url.toLocalFile(); }
};

class Component : public testing::Test {
protected:
    void start(const QHash<QString, QObject*>& offered) {
        framework.start(offered, &window);
        component = framework.component;
    }

    Window window;
    FrameworkRun framework;
    CCircuitEditorComponent* component = nullptr;
    QTemporaryDir folder;
};

}  // namespace

TEST_F(Component, WorksWithoutAnyCollaborator) {
    start({});
    component->newCircuit();
    component->saveCircuit(folder.filePath(QStringLiteral("a.ckt")));
    component->loadCircuit(folder.filePath(QStringLiteral("a.ckt")));
    component->showCurrentProjectHelpFile();
    emit window.workspaceWidgetActivated(component->circuitEditor());
    EXPECT_TRUE(component->isActive());
    emit window.workspaceWidgetActivated(&window);
    EXPECT_FALSE(component->isActive());
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("a.ckt"))));
}

TEST_F(Component, ServesByTheLastPieceOfAName) {
    start({});
    CCircuitEditor* editor = component->circuitEditor();
    const QWidget* viewport = editor->viewport();
    EXPECT_EQ(component->fetchWidget(QStringLiteral("any.circuitEditorGL")), editor);
    EXPECT_EQ(editor->viewport(), viewport);
    EXPECT_EQ(component->fetchWidget(QStringLiteral("x.y.circuitEditor")), editor);
    EXPECT_NE(editor->viewport(), viewport);
    EXPECT_EQ(component->fetchWidget(QStringLiteral("statusLabel")), editor->statusLabel());
    EXPECT_EQ(component->fetchWidget(QStringLiteral("circuitEditor.other")), nullptr);
    EXPECT_EQ(component->fetchObject(QStringLiteral("a.controller")), component);
    EXPECT_EQ(component->fetchObject(QStringLiteral("circuitEditor")), nullptr);

    const QString name = QStringLiteral("CCircuitEditorComponent.manualCtorMode");
    QAction* action = component->fetchAction(name);
    EXPECT_EQ(action->objectName(), name);
    EXPECT_EQ(component->fetchAction(name), action);
    EXPECT_EQ(component->fetchAction(QStringLiteral("other")), nullptr);
    component->setManualConnectionMode(true);
    EXPECT_TRUE(action->isChecked());
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    EXPECT_FALSE(action->isChecked());

    QWidget child(&window);
    component->addChildWidget(&window, &child, QString());
    EXPECT_EQ(child.parent(), nullptr);
}

TEST_F(Component, AGlViewportComesOnlyAfterTheSwitchHasBeenOff) {
    start({});
    QWidget* viewport = component->circuitEditor()->viewport();
    EXPECT_TRUE(component->isUseOpenGL());
    component->setUseOpenGL(true);
    EXPECT_EQ(component->circuitEditor()->viewport(), viewport);
    component->setUseOpenGL(false);
    EXPECT_NE(component->circuitEditor()->viewport(), viewport);
    viewport = component->circuitEditor()->viewport();
    component->setUseOpenGL(true);  // this platform has no GL: the plain one stays
    EXPECT_EQ(component->circuitEditor()->viewport(), viewport);
}

TEST_F(Component, OpensHelpForElements) {
    ExplorerStub explorer;
    start({{QStringLiteral("explorer"), &explorer}});
    component->setElementDocumentationPath(folder.path());
    EXPECT_TRUE(component->helpFileForElement(QString()).isEmpty());
    EXPECT_TRUE(component->helpFileForElement(QStringLiteral("Resistor")).isEmpty());
    EXPECT_TRUE(component->helpFileForElement(QStringLiteral("a.b.c")).isEmpty());
    EXPECT_EQ(loggedCount(QStringLiteral("helpfilePath")), 0);
    const QString path = folder.filePath(QStringLiteral("Basic/Basic_Resistor.pdf"));
    QDir(folder.path()).mkdir(QStringLiteral("Basic"));
    HelpOpener opener;
    QMenu menu;
    emit explorer.elementRightClicked(QStringLiteral("Resistor.Basic"), &menu);
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_EQ(menu.actions().first()->text(), QStringLiteral("Resistor.Basic Help"));
    {
        DialogDriver driver;
        driver.accept();
        menu.actions().first()->trigger();
        EXPECT_EQ(driver.titles, QStringList{"Help not found"});
        EXPECT_EQ(driver.texts, QStringList{"Help file for \"Resistor.Basic\" not found"});
    }
    EXPECT_EQ(loggedCount(QStringLiteral("helpfilePath = ") + path), 1);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    menu.actions().first()->trigger();
    EXPECT_EQ(opener.opened, QStringList{path});
}

TEST_F(Component, OpensHelpForTheProjectAndFollowsIt) {
    ProjectStub project;
    start({{QStringLiteral("project"), &project}});
    HelpOpener opener;
    const auto answered = [this] {
        DialogDriver driver;
        driver.accept();
        component->showCurrentProjectHelpFile();
        return driver.titles + driver.texts;
    };
    EXPECT_EQ(answered(), (QStringList{"Project not saved",
                                       "Cannot look for help file in an unsaved project"}));
    project.fileName = folder.filePath(QStringLiteral("my.amp.vprj"));
    QFile file(project.fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(answered(),
              (QStringList{"Project help not found", "Cannot find help file for this project."}));
    QFile help(folder.filePath(QStringLiteral("my.pdf")));
    ASSERT_TRUE(help.open(QIODevice::WriteOnly));
    component->showCurrentProjectHelpFile();
    EXPECT_EQ(opener.opened, QStringList{help.fileName()});

    emit project.currentProjectFileNameChanged(project.fileName);
    EXPECT_EQ(project.property("DefaultProjectPath").toString(), folder.path());
    emit project.currentProjectFileNameChanged(QString());
    EXPECT_EQ(project.property("DefaultProjectPath").toString(), folder.path());
}

TEST_F(Component, AsksForCircuitFiles) {
    Circuit circuit;
    CircuitSolver solver(&circuit);
    ElementFactory factory(shippedLibrary());
    XmlUtils xmlUtils;
    start({{QStringLiteral("solver"), &solver},
           {QStringLiteral("factory"), &factory},
           {QStringLiteral("xml"), &xmlUtils}});
    circuit.addElement(factory.createElement(QStringLiteral("Resistor.Basic")));
    component->setCircuitFilesPath(folder.path());
    const QString file = folder.filePath(QStringLiteral("a.ckt"));
    DialogDriver driver;
    driver.reject();
    component->saveCircuit();
    driver.chooseFile(file);
    component->saveCircuit();
    EXPECT_TRUE(QFile::exists(file));
    circuit.clear();
    driver.reject();
    component->loadCircuit();
    EXPECT_EQ(circuit.elementCount(), 0);
    driver.chooseFile(file);
    component->loadCircuit();
    EXPECT_EQ(circuit.elementCount(), 1);
    EXPECT_EQ(driver.titles.first(), QStringLiteral("Choose a file name to save into"));
    EXPECT_EQ(driver.titles.last(), QStringLiteral("Choose a file name to load"));
}

#include "test_component.moc"
