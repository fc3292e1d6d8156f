#include "ProjectManager.h"

#include "Autosave.h"
#include "IProjectPieces.h"
#include "IProjectSavedState.h"
#include "LongWork.h"
#include "PendingFile.h"
#include "ProjectWriter.h"
#include "Settings.h"

#include <Plexa/ObjectIterator.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QEvent>

#include <algorithm>
#include <new>

namespace {

constexpr double DefaultAutosaveSeconds = 30;

QByteArray digestOf(const QByteArray& content) {
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

}  // namespace

ProjectManager::ProjectManager(QObject* parent) : QObject(parent) {
    connect(&m_autosaveTimer, &QTimer::timeout, this, &ProjectManager::autosave);
    const double seconds =
        Settings().value(QStringLiteral("AutosaveSeconds"), DefaultAutosaveSeconds).toDouble();
    setAutosaveInterval(static_cast<int>(qBound(0.0, seconds, 1e6) * 1000));
}

ProjectManager::~ProjectManager() = default;

void ProjectManager::collectParts() {
    const Plexa::ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        auto* part = qobject_cast<IProjectPart*>(object);
        if (part && object != this) {
            addPart(part);
        }
    }
}

void ProjectManager::addPart(IProjectPart* part) {
    QObject* object = part->containerObject();
    const bool isKnown = std::any_of(m_parts.begin(), m_parts.end(),
                                     [part](const Part& known) { return known.part == part; });
    if (isKnown) {
        return;
    }
    const bool isCircuit = part->projectPartID() == QLatin1String(ProjectFile::CircuitPart);
    m_parts.insert(isCircuit ? 0 : m_parts.size(), {object, part});
    connect(object, SIGNAL(projectPartModified()), this, SLOT(markModified()));
    if (qobject_cast<IProjectSavedState*>(object)) {
        connect(object, SIGNAL(savedStateChanged(bool)), this, SLOT(followSavedState(bool)));
    }
}

void ProjectManager::setAutosaveInterval(int interval) {
    m_autosaveTimer.stop();
    if (interval > 0) {
        m_autosaveTimer.start(interval);
    }
}

void ProjectManager::setProjectFileName(const QString& fileName) {
    m_fileState = FileState(fileName);
    if (fileName != m_fileName) {
        m_fileName = fileName;
        emit currentProjectFileNameChanged(fileName);
    }
}

void ProjectManager::markModified() {
    if (m_isLoading) {
        return;
    }
    auto* part = qobject_cast<IProjectSavedState*>(sender());
    // A report may come late, from the event loop, when what it tells of has been undone.
    if (!part || !part->isAsSaved()) {
        m_modifiedForGood = m_modifiedForGood || !part;
        setModified(true);
    }
}

void ProjectManager::followSavedState(bool isAsSaved) {
    if (m_isLoading) {
        return;
    }
    if (!isAsSaved) {
        setModified(true);
    } else if (m_modified && !m_modifiedForGood) {
        discardAutosave();
        setModified(false);
    }
}

bool ProjectManager::checkModified() {
    if (!m_modified && m_isOpen && contentDigest() != m_settled) {
        m_modifiedForGood = true;
        setModified(true);
    }
    return m_modified;
}

void ProjectManager::setModified(bool modified) {
    if (modified != m_modified) {
        m_modified = modified;
        emit modifiedChanged(modified);
    }
}

QByteArray ProjectManager::contentDigest() {
    return m_comparesContent ? digestOf(contentBytes()) : QByteArray();
}

void ProjectManager::settle(const QByteArray& digest) {
    discardAutosave();
    m_settled = digest;
    m_modifiedForGood = false;
    for (const Part& part : qAsConst(m_parts)) {
        if (auto* state = qobject_cast<IProjectSavedState*>(part.object)) {
            state->markSaved();
        }
    }
    setModified(false);
}

bool ProjectManager::newProject(const QString& fileName, const std::function<bool()>& fill) {
    const bool wasOpen = m_isOpen;
    const ProjectFile before = fill ? content() : ProjectFile();
    closeParts();
    m_isLoading = true;
    for (const Part& part : qAsConst(m_parts)) {
        if (part.object) {
            part.part->newProjectPart();
        }
    }
    const bool isFilled = !fill || fill();
    if (LongWork::takeStop() || !isFilled) {
        m_isOpen = true;
        bringBack(before, wasOpen);
        return false;
    }
    for (const Part& part : qAsConst(m_parts)) {
        if (part.object) {
            part.part->initializeProjectPart();
        }
    }
    m_isOpen = true;
    endLoading();
    m_origin = ProjectFile();
    m_losses.clear();
    settle(contentDigest());
    setProjectFileName(fileName);
    return true;
}

void ProjectManager::bringBack(const ProjectFile& before, bool wasOpen) {
    LongWork::forbidStop();
    closeParts();
    if (wasOpen) {
        QString ignored;
        loadParts(before, &ignored);
    }
    endLoading();
    for (const Part& part : qAsConst(m_parts)) {
        if (auto* state = qobject_cast<IProjectSavedState*>(part.object)) {
            m_modified ? state->forgetSaved() : state->markSaved();
        }
    }
}

bool ProjectManager::load(const ProjectFile& file, const QString& fileName, QString* reason,
                          const std::function<void()>& finish) {
    const ProjectFile before = content();
    const bool wasOpen = m_isOpen;
    closeParts();
    m_isLoading = true;
    bool isLoaded = false;
    try {
        isLoaded = loadParts(file, reason);
    } catch (const std::bad_alloc&) {
        *reason = QStringLiteral("does not fit into the memory");
    }
    if (LongWork::takeStop() || !isLoaded) {
        bringBack(before, wasOpen);
        return false;
    }
    if (finish) {
        finish();
    }
    endLoading();
    m_origin = file;
    m_origin.root().removeAttribute(QLatin1String(Autosave::ProjectAttribute));
    m_origin.root().removeAttribute(QLatin1String(Autosave::LossesAttribute));
    m_losses.clear();
    settle(contentDigest());
    setProjectFileName(fileName);
    return true;
}

bool ProjectManager::loadParts(const ProjectFile& file, QString* reason) {
    m_isOpen = true;
    for (const Part& part : qAsConst(m_parts)) {
        if (!part.object) {
            continue;
        }
        const QDomElement element = file.part(part.part->projectPartID());
        if (element.isNull()) {
            part.part->newProjectPart();
        } else if (!part.part->loadProjectPart(file.document(), element)) {
            *reason =
                QStringLiteral("its part \"%1\" cannot be loaded").arg(part.part->projectPartID());
            return false;
        }
    }
    for (const Part& part : qAsConst(m_parts)) {
        if (part.object) {
            part.part->initializeProjectPart();
        }
    }
    return true;
}

void ProjectManager::endLoading() {
    // Parts report some of the changes by queued calls: these must not count as changes of the
    // project that has just been loaded.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    m_isLoading = false;
}

void ProjectManager::closeParts() {
    if (!m_isOpen) {
        return;
    }
    m_isOpen = false;
    const bool wasLoading = m_isLoading;
    m_isLoading = true;
    for (auto part = m_parts.rbegin(); part != m_parts.rend(); ++part) {
        if (part->object) {
            part->part->closeProjectPart();
        }
    }
    m_isLoading = wasLoading;
}

ProjectFile ProjectManager::content() {
    ProjectFile file;
    saveParts(&file, 0);
    return file;
}

void ProjectManager::saveParts(ProjectFile* file, int first) {
    for (const Part& part : m_parts.mid(first)) {
        if (!part.object) {
            continue;
        }
        const QDomElement element = file->addPart(part.part->projectPartID());
        if (!part.part->saveProjectPart(file->document(), element)) {
            file->root().removeChild(element);
        }
    }
    file->keepStrangers(m_origin);
}

QByteArray ProjectManager::contentBytes() {
    QObject* first = m_parts.isEmpty() ? nullptr : m_parts.first().object.data();
    auto* pieces = qobject_cast<IProjectPieces*>(first);
    const QString circuitId = QLatin1String(ProjectFile::CircuitPart);
    if (!pieces || m_parts.first().part->projectPartID() != circuitId) {
        return content().toBytes();
    }
    ProjectFile file;
    const QDomElement circuit = file.addPart(circuitId);
    file.keepStrangeAttributes(m_origin);
    ProjectWriter writer(file);
    if (!pieces->saveProjectPieces(file.document(), circuit, [&writer] { writer.takePiece(); })) {
        return content().toBytes();
    }
    saveParts(&file, 1);
    return writer.finish();
}

bool ProjectManager::save(const QString& fileName, QString* reason) {
    const QByteArray bytes = contentBytes();
    QString mistake;
    // Whatever a part wrote: a file that can't be opened again must not replace one that can.
    if (!ProjectFile::isReadable(bytes, &mistake)) {
        *reason = QStringLiteral("what would be written %1").arg(mistake);
        return false;
    }
    if (!PendingFile::write(fileName, bytes, reason)) {
        return false;
    }
    m_losses.clear();
    settle(m_comparesContent ? digestOf(bytes) : QByteArray());
    setProjectFileName(fileName);
    return true;
}

void ProjectManager::markSaved(const QString& fileName) {
    m_losses.clear();
    settle(contentDigest());
    setProjectFileName(fileName);
}

void ProjectManager::adopt(std::unique_ptr<Autosave> autosave) {
    discardAutosave();
    m_autosave = std::move(autosave);
    m_autosaved = m_settled;
    for (const Part& part : qAsConst(m_parts)) {
        if (auto* state = qobject_cast<IProjectSavedState*>(part.object)) {
            state->forgetSaved();
        }
    }
    setModified(true);
}

void ProjectManager::close() {
    closeParts();
    discardAutosave();
    setModified(false);
}

void ProjectManager::autosave() {
    if (!m_isOpen || m_isLoading) {
        return;
    }
    const ProjectFile file = content();
    const QByteArray digest = digestOf(file.toBytes());
    if (m_comparesContent && digest != m_settled) {
        setModified(true);
    }
    if (!m_modified || digest == m_autosaved) {
        return;
    }
    if (!m_autosave) {
        m_autosave = std::make_unique<Autosave>(m_fileName);
    }
    file.root().setAttribute(QLatin1String(Autosave::ProjectAttribute), m_autosave->projectFile());
    if (!m_losses.isEmpty()) {
        file.root().setAttribute(QLatin1String(Autosave::LossesAttribute), m_losses);
    }
    QString reason;
    if (m_autosave->write(file.toBytes(), &reason)) {
        m_autosaved = digest;
    } else {
        emit autosaveFailed(QStringLiteral("the changes could not be autosaved: %1").arg(reason));
    }
}

void ProjectManager::discardAutosave() {
    if (m_autosave) {
        m_autosave->discard();
        m_autosave.reset();
    }
    m_autosaved.clear();
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
