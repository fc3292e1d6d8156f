#include "Components.h"

#include "ClipboardWidget.h"
#include "ElementExplorer.h"
#include "Places.h"
#include "Plots.h"
#include "PropertyEditor.h"
#include "SimulationPanel.h"
#include "SimulationPart.h"

#include <Plexa/ComponentFactory.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>

namespace {

constexpr int DarkestPaper = 128;
constexpr int PaperCorner = 6;
constexpr char SimulatorName[] = "CSimulatorComponent";

/// The piece after the last dot of a complete name.
QString lastPiece(const QString& name) {
    return name.section(QLatin1Char('.'), -1);
}

template <class Component>
void registerComponent(const char* name) {
    Plexa::ComponentFactory::instance()->registerComponentInfo(
        QLatin1String(name), []() -> Plexa::AbstractComponent* { return new Component; },
        &Component::staticMetaObject);
}

/// The type's picture, whole and in proportion, on a ground whose size is the same for all types.
QIcon iconOf(ICircuitElementVisual& visual) {
    constexpr QSize Size(84, 60);
    QPixmap icon(Size);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // Pictures are black on white, as on the canvas.
    if (QGuiApplication::palette().base().color().lightness() < DarkestPaper) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(icon.rect(), PaperCorner, PaperCorner);
    }
    QSvgRenderer* renderer = visual.renderer();
    const QPixmap bitmap = renderer ? QPixmap() : visual.pixmap();
    const QSizeF natural = renderer ? QSizeF(renderer->defaultSize()) : QSizeF(bitmap.size());
    QRectF target(QPointF(), natural.scaled(Size, Qt::KeepAspectRatio));
    target.moveCenter(QRectF(QPointF(), Size).center());
    if (renderer) {
        renderer->render(&painter, target);
    } else {
        painter.drawPixmap(target, bitmap, QRectF(bitmap.rect()));
    }
    return QIcon(icon);
}

}  // namespace

void registerBuiltInComponents() {
    registerComponent<CProjectManagerComponent>("CProjectManagerComponent");
    registerComponent<CSimulatorComponent>(SimulatorName);
    registerComponent<CSimulationComponent>("CSimulationComponent");
    registerComponent<CServicesComponent>("CServicesComponent");
    registerComponent<CElementExplorerComponent>("CElementExplorerComponent");
    registerComponent<CPropertyEditorComponent>("CPropertyEditorComponent");
    registerComponent<CClipboardComponent>("CClipboardComponent");
}

QObject* CProjectManagerComponent::fetchObject(const QString& name) const {
    return lastPiece(name) == QLatin1String("projectManager") ? &m_manager : nullptr;
}

CSimulatorComponent::CSimulatorComponent() {
    m_library.load(Places::data(QStringLiteral("library")));
}

CSimulatorComponent* CSimulatorComponent::instance() {
    return static_cast<CSimulatorComponent*>(
        Plexa::ComponentFactory::instance()->createComponent(QLatin1String(SimulatorName)));
}

QObject* CSimulatorComponent::fetchObject(const QString& name) const {
    const QString piece = lastPiece(name);
    if (piece == QLatin1String("solver")) {
        return &m_solver;
    }
    return piece == QLatin1String("circuit") ? &m_circuit : nullptr;
}

CSimulationComponent::CSimulationComponent()
    : m_simulation(std::make_unique<SimulationPart>(CSimulatorComponent::instance()->circuit())) {
    addDependency(CSimulatorComponent::instance(), this);
    QString reason;
    const QString models = Places::data(QStringLiteral("library/models.lib"));
    if (!m_simulation->models().load(models, &reason)) {
        qWarning("%s: %s", qPrintable(models), qPrintable(reason));
    }
}

CSimulationComponent::~CSimulationComponent() = default;

QObject* CSimulationComponent::fetchObject(const QString& name) const {
    return lastPiece(name) == QLatin1String("simulation") ? m_simulation.get() : nullptr;
}

QWidget* CSimulationComponent::fetchWidget(const QString& name) const {
    const QString piece = lastPiece(name);
    if (piece == QLatin1String("simulationPanel")) {
        if (!m_panel) {
            m_panel = new SimulationPanel(m_simulation.get());
        }
        return m_panel;
    }
    if (piece != QLatin1String("plotPanel")) {
        return nullptr;
    }
    if (!m_plot) {
        m_plot = Plots::makePanel(m_simulation.get());
    }
    return m_plot;
}

CServicesComponent::CServicesComponent()
    : m_elementFactory(CSimulatorComponent::instance()->library()) {
    addDependency(CSimulatorComponent::instance(), this);
}

QObject* CServicesComponent::fetchObject(const QString& name) const {
    const QString piece = lastPiece(name);
    if (piece == QLatin1String("elementFactory")) {
        return &m_elementFactory;
    }
    if (piece == QLatin1String("xmlUtils")) {
        return &m_xmlUtils;
    }
    if (piece == QLatin1String("objectLoadSave")) {
        return &m_objectLoadSave;
    }
    return piece == QLatin1String("mathUtils") ? &m_mathUtils : nullptr;
}

QWidget* CElementExplorerComponent::fetchWidget(const QString& name) const {
    if (lastPiece(name) != QLatin1String("elementExplorer")) {
        return nullptr;
    }
    if (!m_explorer) {
        m_explorer = new ElementExplorer;
    }
    return m_explorer;
}

void CElementExplorerComponent::creationAnnounced() {
    // Nobody looks at the palette, and at its pictures, in an application without a window.
    if (!m_explorer || !mainWindow()) {
        return;
    }
    const ElementLibrary& library = CSimulatorComponent::instance()->library();
    QVector<ElementExplorer::Entry> entries;
    for (const QString& type : library.types()) {
        ElementDescription* description = library.description(type);
        entries.append({type, description->label(), lastPiece(type),
                        description->data().description, iconOf(*description->visual()),
                        description->data().keywords, description->data().shortcut});
    }
    // The library sorts by element name; the palette goes by library.
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.library < b.library; });
    m_explorer->setEntries(entries);
}

QWidget* CPropertyEditorComponent::fetchWidget(const QString& name) const {
    if (lastPiece(name) != QLatin1String("propertyEditor")) {
        return nullptr;
    }
    if (!m_editor) {
        m_editor = new PropertyEditor;
    }
    return m_editor;
}

QWidget* CPropertyEditorComponent::createWidget(const QString& name) const {
    return lastPiece(name) == QLatin1String("propertyEditor") ? new PropertyEditor : nullptr;
}

QObject* CClipboardComponent::fetchObject(const QString& name) const {
    return lastPiece(name) == QLatin1String("clipboard") ? &m_clipboard : nullptr;
}

QWidget* CClipboardComponent::fetchWidget(const QString& name) const {
    if (lastPiece(name) != QLatin1String("clipboardWidget")) {
        return nullptr;
    }
    if (!m_panel) {
        m_panel = new ClipboardWidget;
        m_panel->setClipboard(&m_clipboard);
    }
    return m_panel;
}
