#pragma once

#include "ComponentGui.h"
#include "PlexaExport.h"

#include <QObject>

class QAction;
class QWidget;

namespace Plexa {

/// One component of an application. The framework creates it, announces it when all components
/// exist, initialises it, and then asks it for objects, widgets and actions by name. Names are
/// complete names of the form `component.object`.
class PLEXA_EXPORT AbstractComponent : public QObject {
    Q_OBJECT

public:
    explicit AbstractComponent(QObject* parent = nullptr);
    ~AbstractComponent() override;

    /// Null for a name that the component doesn't know; the base class knows none.
    virtual QAction* fetchAction(const QString& name) const;
    virtual QObject* fetchObject(const QString& name) const;
    virtual QWidget* fetchWidget(const QString& name) const;
    /// Places `child`, a widget of another component, in `parent`, a widget of this one.
    virtual void addChildWidget(QWidget* parent, QWidget* child, const QString& hint);
    /// Another component is about to be destroyed.
    virtual void componentDestroyed(AbstractComponent* component);
    /// All components exist: the moment to look for collaborators.
    virtual void creationAnnounced();
    virtual void initializeComponent();
    virtual void finalizeComponent();
    /// A further, independent widget of the named kind, which the caller owns; null if there is
    /// none.
    virtual QWidget* createWidget(const QString& name) const;

    /// The name it was registered under; empty before the factory has made it known.
    QString componentName() const;

    /// The first object of the application that offers the interface with the short name, such as
    /// "IPropertyEditor"; null if there is none. Tells its complete name and its owner.
    QObject* findObject(const QString& interfaceName, QString& completeName,
                        AbstractComponent** component) const;
    AbstractComponent* findComponent(const QString& name) const;

    /// `needed` is torn down after `dependent`.
    void addDependency(AbstractComponent* needed, AbstractComponent* dependent);

    /// Null in an application that runs without a window.
    QWidget* mainWindow() const;
    ComponentGui componentGui() const;

    void setActive(bool active);
    bool isActive() const;

private:
    bool m_active = false;
};

}  // namespace Plexa
