#pragma once

#include "CircuitElement.h"
#include "DialogDriver.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditorExt.h"
#include "MainWindow.h"
#include "ProjectManager.h"
#include "Workbench.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

/// Takes what would be opened in another program.
class UrlCatcher : public QObject {
    Q_OBJECT

public:
    UrlCatcher();
    ~UrlCatcher() override;
    QStringList opened;

public slots:
    void open(const QUrl& url) { opened << url.toLocalFile(); }
};

/// The whole window, shown and active, with the real plug-in loaded as a file. Places are scene
/// units.
class WindowTest : public testing::Test {
protected:
    void SetUp() override;

    QAction* action(const char* id);
    void trigger(const char* id) { action(id)->trigger(); }
    /// Opens what can be opened without a remark.
    void open(const QString& file);
    QByteArray drawing();

    ICircuit* circuit() { return workbench.circuit(); }
    QGraphicsView* view() { return workbench.canvas()->graphicsView(); }
    ICircuitEditorExt* items() { return qobject_cast<ICircuitEditorExt*>(view()); }
    /// Null if there is none.
    CircuitElement* element(const char* name);
    /// As a user would do it, but for the pointer.
    void addResistor();

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void click(QPointF place);
    /// As a double click on the canvas is made by two clicks.
    void doubleClick(QPointF place);
    void rightClick(const QPoint& viewportPlace);
    /// The next message box: the button with this text.
    static void answer(DialogDriver& dialogs, const char* button);

    Workbench workbench;
    // Dies first, as its widgets use the components.
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(&workbench);
    QTemporaryDir folder;
};
