#pragma once

#include "GuiDescription.h"
#include "PlexaExport.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QPointer>
#include <QString>

class QWidget;

namespace Plexa {

class AbstractComponent;

/// The life cycle of all components, on the host's side: create, configure, announce, initialise,
/// and at the end tear down, dependents first. Owns the components; not the widgets that they hand
/// out, nor the main window.
class PLEXA_EXPORT ComponentManager {
public:
    static ComponentManager* instance();

    void setGuiDescription(const GuiDescription& description);
    const GuiDescription& guiDescription() const { return m_description; }

    void setMainWindow(QWidget* window);
    QWidget* mainWindow() const;

    /// Makes every component of the GUI description, in its order. False, with one sentence in
    /// `*error`, at the first one that can't be made.
    bool createComponents(QString* error);
    /// Sets the properties and makes the calls that the GUI description asks for. False, with one
    /// sentence in `*error`, at the first that the object doesn't have.
    bool configureObjects(QString* error);
    void announceComponents();
    void initializeComponents();
    /// Finalises all components, then destroys them, each after those that depend on it and
    /// otherwise in reverse order of creation; those left are told before each destruction.
    void shutdown();

    /// In order of creation.
    QList<AbstractComponent*> components() const;
    AbstractComponent* component(const QString& name) const;
    QString nameOf(const AbstractComponent* component) const;

    /// A named object of a component, asked for once and then remembered while it lives: objects
    /// first, then widgets, then actions. Null if the component has none of that name.
    QObject* object(AbstractComponent* component, const QString& name);

    void adopt(const QString& name, AbstractComponent* component);
    void forget(const AbstractComponent* component);
    void addDependency(AbstractComponent* needed, AbstractComponent* dependent);

private:
    struct Entry {
        QString name;
        AbstractComponent* component = nullptr;
    };

    AbstractComponent* nextToDestroy() const;

    GuiDescription m_description;
    QList<Entry> m_entries;
    QList<QPair<AbstractComponent*, AbstractComponent*>> m_dependencies;
    QHash<QString, QPointer<QObject>> m_objects;
    QPointer<QWidget> m_mainWindow;
};

}  // namespace Plexa
