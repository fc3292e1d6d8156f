#pragma once

#include "IProjectExt.h"
#include "IProjectPart.h"

#include <QObject>

/// Knows the file that is open, and tells when another one is. It is a project part too, one with
/// nothing to store: whoever looks for the first part of the application to hear of project changes
/// must find this object, which is therefore listed before all others.
class ProjectManager : public QObject, public IProjectExt, public IProjectPart {
    Q_OBJECT
    Q_INTERFACES(IProjectExt IProjectPart)

public:
    explicit ProjectManager(QObject* parent = nullptr);

    /// An empty name means a project that has not been saved yet.
    void setProjectFileName(const QString& fileName);

    QObject* containerObject() override { return this; }
    QString projectFileName() override { return m_fileName; }

    QString projectPartID() override;
    bool newProjectPart() override { return true; }
    bool loadProjectPart(QDomDocument document, QDomElement element) override;
    bool initializeProjectPart() override { return true; }
    bool saveProjectPart(QDomDocument document, QDomElement element) override;
    bool closeProjectPart() override { return true; }

signals:
    void projectPartModified() override;
    void currentProjectFileNameChanged(QString fileName);

private:
    QString m_fileName;
};
