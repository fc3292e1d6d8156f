#pragma once

#include "FileState.h"
#include "IProjectExt.h"
#include "IProjectPart.h"
#include "ProjectFile.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

#include <functional>
#include <memory>

class Autosave;

/// Owns the project that is open: its file name, whether it has changed, its autosave, and the
/// order in which the parts of the application are called. It is a project part too, one with
/// nothing to store: whoever looks for the first part of the application to hear of project changes
/// must find this object, which is therefore listed before all others.
class ProjectManager : public QObject, public IProjectExt, public IProjectPart {
    Q_OBJECT
    Q_INTERFACES(IProjectExt IProjectPart)

public:
    explicit ProjectManager(QObject* parent = nullptr);
    /// An autosave that nobody has discarded stays.
    ~ProjectManager() override;

    /// Takes on every project part among the objects of the application.
    void collectParts();
    /// Parts are saved and loaded in the order in which they were added, but the circuit first,
    /// which others refer to. A part may die before this object.
    void addPart(IProjectPart* part);
    /// In milliseconds: how often the project is autosaved if it has changed since; 0 for never.
    void setAutosaveInterval(int interval);

    /// Whether changes are looked for that no part reports; on by default. It costs a save with
    /// each project that is opened or saved, which a program that never asks can spare itself.
    void setComparesContent(bool on) { m_comparesContent = on; }

    /// By what the parts have reported, and what the last autosave or `checkModified` has found.
    bool isModified() const { return m_modified; }
    /// Finds changes that no part has reported, too: takes about as long as a save.
    bool checkModified();
    /// An empty name means a project that has not been saved yet.
    void setProjectFileName(const QString& fileName);

    /// Closes what is open and starts a project of its own. `fill` gives it a content that comes
    /// from elsewhere, and doesn't count as a change. False if that fails or the user has stopped
    /// it: what was open is then open again, but for its undo history.
    bool newProject(const QString& fileName = {}, const std::function<bool()>& fill = {});
    /// Closes what is open and loads the project. False, with the reason, if a part refuses it,
    /// and without one if the user has stopped it; what was open is then open again, but for its
    /// undo history. `finish` sets right what parts
    /// leave undone, and doesn't count as a change.
    bool load(const ProjectFile& file, const QString& fileName, QString* reason,
              const std::function<void()>& finish = {});
    /// What the file that was opened holds and the project doesn't, in words: saving over the file
    /// would make it final. Forgotten when the project is saved or another one opened.
    QString losses() const { return m_losses; }
    void setLosses(const QString& losses) { m_losses = losses; }
    /// Another program has changed the file since the project was opened or saved.
    bool hasFileChanged() const { return m_fileState.hasChanged(); }
    /// The project as it is now, what a newer program has added to the file it came from included.
    ProjectFile content();
    /// Writes the project, whole or not at all.
    bool save(const QString& fileName, QString* reason);
    /// The project is in that file now, whoever wrote it.
    void markSaved(const QString& fileName);
    /// The project is what a crash has left: changed, and to be removed with the next save.
    void adopt(std::unique_ptr<Autosave> autosave);
    /// Closes the project and gives up what wasn't saved.
    void close();

    QObject* containerObject() override { return this; }
    QString projectFileName() override { return m_fileName; }

    QString projectPartID() override;
    bool newProjectPart() override { return true; }
    bool loadProjectPart(QDomDocument document, QDomElement element) override;
    bool initializeProjectPart() override { return true; }
    bool saveProjectPart(QDomDocument document, QDomElement element) override;
    bool closeProjectPart() override { return true; }

public slots:
    /// Puts by what wasn't saved, to be offered when the program starts again. Does nothing if that
    /// is what it did last.
    void autosave();

signals:
    void projectPartModified() override;
    void currentProjectFileNameChanged(QString fileName);
    void modifiedChanged(bool modified);
    /// One sentence.
    void autosaveFailed(QString message);

private slots:
    void markModified();
    /// A part has come to its saved state, or left it.
    void followSavedState(bool isAsSaved);

private:
    struct Part {
        QPointer<QObject> object;
        IProjectPart* part;
    };

    void setModified(bool modified);
    /// From now on the project as it is isn't modified, and there is nothing to recover. `digest`
    /// is that of its content.
    void settle(const QByteArray& digest);
    /// Of the project as it is; empty if contents aren't compared.
    QByteArray contentDigest();
    /// The bytes of `content()`, without all of its document.
    QByteArray contentBytes();
    /// Adds the parts from that one on, and what strangers have left.
    void saveParts(ProjectFile* file, int first);
    void discardAutosave();
    void closeParts();
    /// A part that the file lacks starts empty. False, with the reason, if a part refuses.
    bool loadParts(const ProjectFile& file, QString* reason);
    /// After a load that has failed. `before` is what was open.
    void bringBack(const ProjectFile& before, bool wasOpen);
    /// What is still on its way in the event loop belongs to the loading.
    void endLoading();

    QString m_fileName;
    FileState m_fileState;
    QVector<Part> m_parts;
    bool m_isOpen = false;
    bool m_isLoading = false;
    bool m_modified = false;
    bool m_comparesContent = true;
    // By what no part can take back.
    bool m_modifiedForGood = false;
    // The file that the project came from; no parts if there is none.
    ProjectFile m_origin;
    QString m_losses;
    std::unique_ptr<Autosave> m_autosave;
    // Digests of the content, as it was opened or saved last, and as the autosave holds it.
    QByteArray m_settled;
    QByteArray m_autosaved;
    QTimer m_autosaveTimer;
};
