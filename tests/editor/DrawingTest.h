#pragma once

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "Clipboard.h"
#include "EditorTest.h"
#include "IElementExplorer.h"
#include "IPropertyEditor.h"

#include <QHash>
#include <QStringList>

#include <functional>

/// A palette whose choice the test makes.
class ExplorerStub : public QObject, public IElementExplorer {
    Q_OBJECT
    Q_INTERFACES(IElementExplorer)

public:
    QObject* containerObject() override { return this; }
    QString selectedElementName() override { return selected; }

    QString selected;

signals:
    void elementRightClicked(QString name, QMenu* menu);
};

/// A panel without a face, which edits as the real one does: the model first, then the report.
class PanelStub : public QObject, public IPropertyEditor {
    Q_OBJECT
    Q_INTERFACES(IPropertyEditor)

public:
    QObject* containerObject() override { return this; }
    void setObject(QObject* object, bool forceReload) override;
    QObject* object() override { return shown; }

    /// Edits a property of the object that is shown.
    void edit(const QString& name, const QVariant& value);

    QPointer<QObject> shown;
    int calls = 0;

signals:
    void propertyValueChanged(QObject* object, QString name, QVariant oldValue, QVariant newValue);
};

/// Runs the component in the framework, among objects that a test offers by name.
class FrameworkRun {
public:
    FrameworkRun();
    /// Deletes the main editor and its panel, then the components.
    ~FrameworkRun();

    void start(const QHash<QString, QObject*>& offered, QWidget* window);
    /// Lets the component that offers the object of that name make further widgets of the kind.
    void offerWidgets(const QString& name, const std::function<QWidget*()>& make);

    CCircuitEditorComponent* component = nullptr;
};

/// The main editor of a running component, shown, with the pointer and the keys in the test's
/// hands. Positions are scene units. After each test the editor's invariants are checked.
class DrawingTest : public testing::Test {
protected:
    DrawingTest();
    ~DrawingTest() override;

    QPoint at(QPointF scenePoint) const { return editor->mapFromScene(scenePoint); }
    void press(QPointF point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void moveTo(QPointF point);
    void release(QPointF point, Qt::MouseButton button = Qt::LeftButton);
    void click(QPointF point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void doubleClick(QPointF point);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Opens the context menu of what is at the point.
    void rightClick(QPointF point);

    /// Double clicks with the type chosen in the palette.
    CircuitElement* create(const char* type, QPointF point);
    /// Lays a wire through the points in manual mode; the first and the last are its ends.
    void layWire(const std::vector<QPointF>& points);

    CircuitElement* element(const char* name);
    ICircuitElementNode* terminal(const char* name);
    QPointF placeOf(const char* terminalName);
    CCircuitEditorElementItem* itemOf(const char* elementName);
    CCircuitEditorNodeItem* wireAt(const char* terminalName);

    /// The whole drawing, after a turn of the event loop and a check of the invariants.
    QByteArray snapshot();

    Circuit circuit;
    CircuitSolver solver{&circuit};
    ElementFactory factory{shippedLibrary()};
    XmlUtils xmlUtils;
    ObjectLoadSave loadSave;
    ExplorerStub explorer;
    PanelStub panel;
    Clipboard clipboard;
    QWidget window;
    FrameworkRun framework;
    CCircuitEditor* editor = nullptr;
};

/// Runs what was posted, deletions included.
void turnEventLoop();
