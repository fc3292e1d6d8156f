#include "ProjectManager.h"

ProjectManager::ProjectManager(QObject* parent) : QObject(parent) {}

void ProjectManager::setProjectFileName(const QString& fileName) {
    if (fileName != m_fileName) {
        m_fileName = fileName;
        emit currentProjectFileNameChanged(fileName);
    }
}

QString ProjectManager::projectPartID() {
    return QStringLiteral("VortelWorkbench");
}

bool ProjectManager::loadProjectPart(QDomDocument, QDomElement) {
    return true;
}

bool ProjectManager::saveProjectPart(QDomDocument, QDomElement) {
    return false;
}
