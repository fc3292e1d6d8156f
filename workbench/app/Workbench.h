#pragma once

#include "PictureFile.h"

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <memory>

class Autosave;
class ICanvas;
class ICircuit;
class ICircuitEditor;
class ProjectFile;
class ProjectManager;
class SimulationPart;

enum class DocumentFormat { Project, Circuit };

/// By the ending of the name: ".vprj" in either case of letters is a project, all else a circuit.
DocumentFormat documentFormatOf(const QString& fileName);

/// The running application without its window: all components and what the program asks of them.
/// Knows the editor by interface and by name only. Messages to the user are one sentence each and
/// begin with the name of the file that they are about.
class Workbench {
public:
    Workbench() = default;
    ~Workbench();
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    /// Loads the plug-in, makes all components and runs their start. `window` may be null; it isn't
    /// owned, and must be gone before this object is, since its widgets use the components.
    bool start(const QString& plugin, QWidget* window, QString* error);

    /// The object that bears the complete name `component.object`; null if there is none.
    QObject* object(const QString& completeName) const;
    /// One sentence for each file of the element library that can't be used.
    QStringList libraryProblems() const;
    /// A section of the GUI description that only the application knows.
    QVariant guiSection(const QString& name) const;

    QWidget* editorWidget() const;
    ICanvas* canvas() const;
    ICircuit* circuit() const;
    ProjectManager* projectManager() const;
    SimulationPart* simulation() const;

    /// Starts an empty project, which has no file yet.
    void clear();
    /// Checks the project or circuit file and loads it. On failure nothing has changed and
    /// `*message` tells why, or is empty if the user has cancelled it; on success it tells what
    /// could not be restored, or is empty.
    bool open(const QString& fileName, QString* message);
    /// As `open`, as a project that has no file yet.
    bool openCopy(const QString& fileName, QString* message);
    /// Opens another program's drawing as a project that has no file yet. On failure as `open`; on
    /// success the remarks tell, a sentence each, what has no counterpart. `open` does the same
    /// with all of them in one message.
    bool import(const QString& fileName, QStringList* remarks, QString* error);
    /// Opens what a crash has left, under the name of its project and modified. As `open`.
    bool recover(std::unique_ptr<Autosave> autosave, QString* message);
    /// Writes a project or circuit file, by the name's ending, whole or not at all.
    bool save(const QString& fileName, QString* error);
    /// What of the project a save under this name would not hold, as one sentence without the full
    /// stop; empty if all is held.
    QString lossesOnSaving(const QString& fileName) const;
    /// Writes a picture, whole or not at all; `*error` is empty if the user has cancelled it.
    bool savePicture(const PictureOutput& picture, QString* error);
    /// Writes the drawing as JSON text. False without a reason if the target hasn't taken it.
    bool describe(QIODevice* target, QString* error);
    /// Goes without what only a user needs: nobody asks a command that ends by itself what has
    /// changed, takes anything back, or points at the drawing.
    void serveCommand();

private:
    QObject* editorObject() const;
    /// The plain ones, without those that follow a value.
    QStringList drawnTexts() const;
    ICircuitEditor* editor() const;
    void collectWidgets();
    void clearTitle();
    /// `target` is the file that it will be saved to, or empty.
    bool openProject(const QString& fileName, const QString& target, QString* message);
    bool openCircuit(const QString& fileName, const QString& target, QString* message);
    /// Loads a project that has been read; `source` is where from, for messages.
    bool load(const ProjectFile& file, const QString& fileName, const QString& source,
              QString* message);
    bool saveCircuit(const QString& fileName, QString* reason);
    /// Notes what the file that was opened holds and the circuit doesn't.
    QString noteLosses(const QString& source, const QString& losses) const;

    /// What the components have handed out; those that found no place in a window are deleted here.
    QList<QPointer<QWidget>> m_widgets;
};
