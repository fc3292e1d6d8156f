#include "NetlistTools.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "Components.h"
#include "ElementDescription.h"
#include "ElementLibrary.h"
#include "ICanvas.h"
#include "ICircuitEditorExt.h"
#include "ICircuitSolver.h"
#include "NetlistDialog.h"
#include "NetlistType.h"
#include "OutputVariable.h"
#include "Places.h"
#include "SimulationPart.h"
#include "Workbench.h"

#include <QDesktopServices>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPointer>
#include <QStatusBar>
#include <QUrl>

namespace {

/// The variables of the old element that the new one has, too.
void keepOutputVariables(Circuit& circuit, CircuitElement* from, CircuitElement* to) {
    const int count = circuit.outputVariableCount();
    for (int i = 0; i < count; ++i) {
        ICircuitOutputVariable* old = circuit.outputVariable(i);
        ICircuitOutputVariable* made = nullptr;
        if (old->elementNode() && old->elementNode()->element() == from) {
            ICircuitElementNode* terminal = to->elementNode(old->elementNode()->name());
            made = terminal ? circuit.addOutputVariable(to, terminal) : nullptr;
        } else if (old->element() == from &&
                   to->description()->data().outputVariables.keys().contains(
                       old->elementVarName())) {
            made = circuit.addOutputVariable(to, old->elementVarName());
        }
        if (made) {
            made->setName(old->name());
            made->setAC(old->isAC());
        }
    }
}

}  // namespace

NetlistTools::NetlistTools(const Workbench& workbench, QWidget* window)
    : QObject(window), m_workbench(workbench), m_window(window) {
    workbench.canvas()->graphicsView()->installEventFilter(this);
}

bool NetlistTools::eventFilter(QObject* watched, QEvent* event) {
    const bool isHelp = event->type() == QEvent::KeyPress &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1 &&
                        static_cast<QKeyEvent*>(event)->modifiers() == Qt::NoModifier;
    if (!isHelp || !selected()) {
        return QObject::eventFilter(watched, event);
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(
        Places::data(QStringLiteral("help/Subcircuits/Subcircuits_Netlist.pdf"))));
    return true;
}

CircuitElement* NetlistTools::selected() const {
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    for (QGraphicsItem* item : m_workbench.canvas()->graphicsScene()->selectedItems()) {
        CircuitElement* element = CircuitElement::from(items->elementFromItem(item));
        if (element && !element->description()->data().netlist.isEmpty()) {
            return element;
        }
    }
    return nullptr;
}

ElementDescription* NetlistTools::description(const QString& type) const {
    return CSimulatorComponent::instance()->library().description(type);
}

QString NetlistTools::askFor(const QString& text) {
    NetlistDialog dialog(text, m_window);
    return dialog.exec() == QDialog::Accepted ? NetlistType::nameFor(dialog.text()) : QString();
}

bool NetlistTools::isAskedFor(const QString& type) {
    return type == QLatin1String(NetlistType::Blank);
}

QString NetlistTools::chosenType(const QString& type) {
    if (!isAskedFor(type)) {
        return type;
    }
    return askFor(description(type) ? description(type)->data().netlist : QString());
}

void NetlistTools::editSelected() {
    CircuitElement* element = selected();
    if (!element) {
        if (auto* window = qobject_cast<QMainWindow*>(m_window)) {
            window->statusBar()->showMessage(tr("Select an element that is made of a netlist"));
        }
        return;
    }
    const QPointer<CircuitElement> guard(element);
    const QString type = askFor(element->description()->data().netlist);
    if (guard && !type.isEmpty() && type != element->description()->data().type) {
        replace(element, type);
    }
}

void NetlistTools::replace(CircuitElement* element, const QString& type) {
    Circuit& circuit = m_workbench.simulation()->circuit();
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    ElementDescription* description = this->description(type);
    QGraphicsItem* item = items->itemFor(element);
    if (!description || !item) {
        return;
    }
    const QPointF place = item->pos();
    const QString name = element->name();
    const QString caption = element->caption();
    CircuitElement* successor = description->createElement();
    successor->setRotation(element->rotation());
    successor->setFlip(element->flip());
    for (int i = 0; i < successor->propertyCount(); ++i) {
        const QString value = element->parameter(successor->propertyName(i));
        if (successor->propertyGroup(i) == QLatin1String("rparams") && !value.isEmpty()) {
            successor->setPropertyValue(i, value);
        }
    }
    circuit.addElement(successor);
    if (QGraphicsItem* added = items->itemFor(successor)) {
        added->setPos(place);
    }
    // While the old one still holds its nets: one that loses its last but one terminal dies.
    for (CircuitElementNode* terminal : successor->terminals()) {
        auto* old = CircuitElementNode::from(element->elementNode(terminal->name()));
        if (old && old->node()) {
            circuit.circuitSolver()->makeConnection(terminal, old->node());
        }
    }
    keepOutputVariables(circuit, element, successor);
    circuit.removeElement(element);
    successor->setName(name);
    successor->setCaption(caption);
}
