#pragma once

#include "Circuit.h"
#include "CircuitSolver.h"
#include "Clipboard.h"
#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "MathUtils.h"
#include "ObjectLoadSave.h"
#include "ProjectManager.h"
#include "XmlUtils.h"

#include <Plexa/AbstractComponent.h>

#include <QPointer>
#include <QWidget>

#include <memory>

class ClipboardWidget;
class ElementExplorer;
class PropertyEditor;
class SimulationPanel;
class SimulationPart;

/// Makes the application's own components known to the factory.
void registerBuiltInComponents();

/// Serves "projectManager".
class CProjectManagerComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    QObject* fetchObject(const QString& name) const override;

private:
    mutable ProjectManager m_manager;
};

/// The circuit model: serves "solver" and "circuit". Owns the element library, because elements
/// refer to their types until the circuit is gone.
class CSimulatorComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    CSimulatorComponent();
    static CSimulatorComponent* instance();

    const ElementLibrary& library() const { return m_library; }
    Circuit* circuit() const { return &m_circuit; }
    QObject* fetchObject(const QString& name) const override;

private:
    // The order matters: the solver goes first, the library last.
    ElementLibrary m_library;
    mutable Circuit m_circuit;
    mutable CircuitSolver m_solver{&m_circuit};
};

/// Serves "simulation", and the widgets "simulationPanel" and, unless the program is built without
/// curves, "plotPanel".
class CSimulationComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    CSimulationComponent();
    ~CSimulationComponent() override;
    QObject* fetchObject(const QString& name) const override;
    QWidget* fetchWidget(const QString& name) const override;

private:
    std::unique_ptr<SimulationPart> m_simulation;
    /// Owned by whoever fetched them, as all widgets of components.
    mutable QPointer<SimulationPanel> m_panel;
    mutable QPointer<QWidget> m_plot;
};

/// Serves "elementFactory", "xmlUtils", "objectLoadSave" and "mathUtils".
class CServicesComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    CServicesComponent();
    QObject* fetchObject(const QString& name) const override;

private:
    mutable ElementFactory m_elementFactory;
    mutable XmlUtils m_xmlUtils;
    mutable ObjectLoadSave m_objectLoadSave;
    mutable MathUtils m_mathUtils;
};

/// Serves the widget "elementExplorer".
class CElementExplorerComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    QWidget* fetchWidget(const QString& name) const override;
    void creationAnnounced() override;

private:
    /// Owned by whoever fetched it, as all widgets of components.
    mutable QPointer<ElementExplorer> m_explorer;
};

/// Serves the widget "propertyEditor", and further independent ones.
class CPropertyEditorComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    QWidget* fetchWidget(const QString& name) const override;
    QWidget* createWidget(const QString& name) const override;

private:
    /// Owned by whoever fetched it, as all widgets of components.
    mutable QPointer<PropertyEditor> m_editor;
};

/// Serves "clipboard" and its panel, the widget "clipboardWidget".
class CClipboardComponent : public Plexa::AbstractComponent {
    Q_OBJECT

public:
    QObject* fetchObject(const QString& name) const override;
    QWidget* fetchWidget(const QString& name) const override;

private:
    mutable Clipboard m_clipboard;
    /// Owned by whoever fetched it, as all widgets of components.
    mutable QPointer<ClipboardWidget> m_panel;
};
