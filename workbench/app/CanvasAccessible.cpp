#include "CanvasAccessible.h"

#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditorExt.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "IEditableProperties.h"
#include "Workbench.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>

namespace {

const Workbench* theWorkbench = nullptr;

QString tr(const char* text) {
    return QCoreApplication::translate("CanvasAccessible", text);
}

/// Null for an object that isn't drawn.
QGraphicsItem* itemOf(QObject* object) {
    auto* items = qobject_cast<ICircuitEditorExt*>(theWorkbench->editorWidget());
    if (auto* element = qobject_cast<ICircuitElement*>(object)) {
        return items->itemFor(element);
    }
    if (auto* terminal = qobject_cast<ICircuitElementNode*>(object)) {
        return items->itemFor(terminal);
    }
    if (auto* node = qobject_cast<ICircuitNode*>(object)) {
        return items->itemFor(node);
    }
    return qobject_cast<QGraphicsTextItem*>(object);
}

/// "R = 1 kΩ, ...", without the nets of the terminals.
QString valuesOf(ICircuitElement* element) {
    auto* properties = qobject_cast<IEditableProperties*>(element->containerObject());
    QStringList values;
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyGroup(i) == QLatin1String("rparams")) {
            values.append(QStringLiteral("%1 = %2").arg(properties->propertyName(i),
                                                        properties->propertyValueString(i)));
        }
    }
    return values.join(QLatin1String(", "));
}

ICircuitNode* netOf(ICircuitElementNode* terminal) {
    ICircuit* circuit = theWorkbench->circuit();
    for (int i = 0; i < circuit->nodeCount(); ++i) {
        ICircuitNode* node = circuit->node(i);
        for (int k = 0; k < node->elementNodeCount(); ++k) {
            if (node->elementNode(k) == terminal) {
                return node;
            }
        }
    }
    return nullptr;
}

QString connectionOf(ICircuitElementNode* terminal) {
    ICircuitNode* net = netOf(terminal);
    return net ? tr("terminal %1 on net %2").arg(terminal->name(), net->name())
               : tr("terminal %1 not connected").arg(terminal->name());
}

QString connectionsOf(ICircuitElement* element) {
    QStringList connections;
    for (const QString& name : element->elementNodeNames()) {
        connections.append(connectionOf(element->elementNode(name)));
    }
    return connections.join(QLatin1String(", "));
}

QString membersOf(ICircuitNode* node) {
    QStringList members;
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        members.append(tr("terminal %1 of %2").arg(terminal->name(), terminal->element()->name()));
    }
    return tr("joins %1").arg(members.join(QLatin1String(", ")));
}

QString nameOf(QObject* object) {
    if (auto* element = qobject_cast<ICircuitElement*>(object)) {
        return tr("%1, %2").arg(element->name(), element->desc()->label());
    }
    if (auto* terminal = qobject_cast<ICircuitElementNode*>(object)) {
        return tr("%1, terminal %2").arg(terminal->element()->name(), terminal->name());
    }
    if (auto* node = qobject_cast<ICircuitNode*>(object)) {
        return tr("%1, net").arg(node->name());
    }
    auto* text = qobject_cast<QGraphicsTextItem*>(object);
    return text ? tr("text %1").arg(text->toPlainText().simplified()) : QString();
}

QString descriptionOf(QObject* object) {
    if (auto* element = qobject_cast<ICircuitElement*>(object)) {
        const QString values = valuesOf(element);
        const QString connections = connectionsOf(element);
        return values.isEmpty() ? connections : values + QLatin1String("; ") + connections;
    }
    if (auto* terminal = qobject_cast<ICircuitElementNode*>(object)) {
        return connectionOf(terminal);
    }
    auto* node = qobject_cast<ICircuitNode*>(object);
    return node ? membersOf(node) : QString();
}

/// One thing on the canvas.
class ThingInterface : public QAccessibleObject {
public:
    using QAccessibleObject::QAccessibleObject;

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(theWorkbench->editorWidget());
    }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override {
        return qobject_cast<QGraphicsTextItem*>(object()) ? QAccessible::StaticText
                                                          : QAccessible::Graphic;
    }
    QString text(QAccessible::Text kind) const override {
        switch (kind) {
            case QAccessible::Name:
                return nameOf(object());
            case QAccessible::Description:
                return descriptionOf(object());
            default:
                return {};
        }
    }
    QRect rect() const override {
        QGraphicsItem* item = itemOf(object());
        const QGraphicsView* view = theWorkbench->canvas()->graphicsView();
        if (!item) {
            return {};
        }
        const QRect shown = view->mapFromScene(item->sceneBoundingRect()).boundingRect();
        return {view->viewport()->mapToGlobal(shown.topLeft()), shown.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        const QGraphicsItem* item = itemOf(object());
        state.selectable = true;
        state.focusable = true;
        state.selected = item && item->isSelected();
        state.focused = state.selected && theWorkbench->editorWidget()->hasFocus();
        state.invisible = !item || !item->isVisible();
        return state;
    }
};

/// The canvas, whose children are elements, nets and texts, in this order.
class CanvasInterface : public QAccessibleWidget {
public:
    explicit CanvasInterface(QWidget* canvas)
        : QAccessibleWidget(canvas, QAccessible::Canvas, tr("Drawing")) {}

    QString text(QAccessible::Text kind) const override {
        ICircuit* circuit = theWorkbench->circuit();
        return kind == QAccessible::Description ? tr("%1 elements, %2 nets")
                                                      .arg(circuit->elementCount())
                                                      .arg(circuit->nodeCount())
                                                : QAccessibleWidget::text(kind);
    }
    int childCount() const override { return things().size(); }
    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(things().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child ? things().indexOf(child->object()) : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = childCount() - 1; i >= 0; --i) {
            QAccessibleInterface* one = child(i);
            if (one && one->rect().contains(x, y)) {
                return one;
            }
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        for (QObject* thing : things()) {
            const QGraphicsItem* item = itemOf(thing);
            if (item && item->isSelected()) {
                return QAccessible::queryAccessibleInterface(thing);
            }
        }
        return nullptr;
    }

private:
    static QVector<QObject*> things() {
        QVector<QObject*> all;
        ICircuit* circuit = theWorkbench->circuit();
        for (int i = 0; i < circuit->elementCount(); ++i) {
            all.append(circuit->element(i)->containerObject());
        }
        for (int i = 0; i < circuit->nodeCount(); ++i) {
            all.append(circuit->node(i)->containerObject());
        }
        for (QGraphicsItem* item :
             theWorkbench->canvas()->graphicsScene()->items(Qt::AscendingOrder)) {
            if (auto* text = dynamic_cast<QGraphicsTextItem*>(item)) {
                all.append(text);
            }
        }
        return all;
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (!theWorkbench || !object) {
        return nullptr;
    }
    if (object == theWorkbench->editorWidget()) {
        return new CanvasInterface(static_cast<QWidget*>(object));
    }
    return nameOf(object).isEmpty() ? nullptr : new ThingInterface(object);
}

}  // namespace

CanvasAccessible::CanvasAccessible(const Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    theWorkbench = &workbench;
    workbench.canvas()->graphicsView()->viewport()->setAccessibleName(tr("Drawing"));
    QAccessible::installFactory(makeInterface);
    connect(workbench.canvas()->graphicsScene(), &QGraphicsScene::selectionChanged, this,
            &CanvasAccessible::announceSelection, Qt::QueuedConnection);
}

CanvasAccessible::~CanvasAccessible() {
    QAccessible::removeFactory(makeInterface);
    theWorkbench = nullptr;
}

void CanvasAccessible::announceSelection() {
    const QList<QGraphicsItem*> selected = m_workbench.canvas()->graphicsScene()->selectedItems();
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    if (selected.size() != 1 || !items) {
        m_announced = nullptr;
        return;
    }
    QGraphicsItem* item = selected.first();
    if (ICircuitElement* element = items->elementFromItem(item)) {
        announce(element->containerObject());
    } else if (ICircuitNode* node = items->circuitNodeFromItem(item)) {
        announce(node->containerObject());
    } else {
        announce(dynamic_cast<QGraphicsTextItem*>(item));
    }
}

void CanvasAccessible::announce(QObject* object) {
    if (object && object != m_announced) {
        QAccessibleEvent event(object, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
    m_announced = object;
}
