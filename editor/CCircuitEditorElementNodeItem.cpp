#include "CCircuitEditorElementNodeItem.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CircuitGeometry.h"
#include "ElementCaptions.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "NetJunctions.h"
#include "PropertyLookup.h"
#include "QtSeries.h"

#include <QBrush>
#include <QCursor>
#include <QGraphicsSceneContextMenuEvent>
#include <QHash>
#include <QMenu>
#include <QPainter>
#include <QPen>
#include <QPointer>

#include <optional>

namespace {

// From the pointer to the box that names the terminal, in item coordinates.
const QPointF NameBoxOffset(5.0, 5.0);
constexpr int NameBoxPointSize = 8;

struct Look {
    QBrush brush;
    QPen pen;
};

/// One for all terminals of a colour, of which there are many: they share its data.
Look lookOf(const QColor& color) {
    static QHash<QRgb, Look> looks;
    Look& look = looks[color.rgba()];
    if (look.brush.color() != color || look.brush.style() == Qt::NoBrush) {
        QColor veil = color;
        veil.setAlpha(1);
        look = {QBrush(color, Qt::SolidPattern), QtSeries::hairline(veil)};
    }
    return look;
}

}  // namespace

class CCircuitEditorElementNodeItemData {
public:
    CCircuitEditorElementItem* elementItem = nullptr;
    ICircuitElementNode* elementNode = nullptr;
    // Whether it is on no net, as soon as that was asked for.
    std::optional<bool> isOpen;

    QString elementNodeNameProperty() const;
};

QString CCircuitEditorElementNodeItemData::elementNodeNameProperty() const {
    // A terminal may have a property of its name on its element: the name of its net.
    const QString name = elementNode->name();
    QString value;
    auto* props = qobject_cast<IEditableProperties*>(elementNode->element()->containerObject());
    const int index = indexOfProperty(props, name);
    if (index >= 0) {
        value = props->propertyValue(index).toString();
    }
    return QStringLiteral("%1 (%2)").arg(value, name);
}

CCircuitEditorElementNodeItem::CCircuitEditorElementNodeItem(CCircuitEditorElementItem* parent)
    : QGraphicsRectItem(parent), d(std::make_unique<CCircuitEditorElementNodeItemData>()) {
    d->elementItem = parent;
    static const QPen sharedPen = QtSeries::hairline();
    setPen(sharedPen);
    setFlags(ItemIsSelectable);
    setZValue(1000);
}

CCircuitEditorElementNodeItem::~CCircuitEditorElementNodeItem() {
    if (CCircuitEditor* editor = d->elementItem->circuitEditor()) {
        editor->forgetItem(this);
    }
}

ICircuitElementNode* CCircuitEditorElementNodeItem::elementNode() const {
    return d->elementNode;
}

CCircuitEditorElementItem* CCircuitEditorElementNodeItem::elementItem() const {
    return d->elementItem;
}

void CCircuitEditorElementNodeItem::setElementNode(ICircuitElementNode* node) {
    if (node == d->elementNode) {
        return;
    }
    if (d->elementNode) {
        setPos(0, 0);
        setBrush(QBrush());
        setToolTip(QString());
    }
    d->elementNode = node;
    reloadNode();
}

void CCircuitEditorElementNodeItem::reloadNode() {
    if (!d->elementNode) {
        return;
    }
    setPos(d->elementNode->position());
    const Look look = lookOf(d->elementNode->color());
    setBrush(look.brush);
    setPen(look.pen);
    setToolTip(d->elementNodeNameProperty());
    const int g = CircuitGeometry::gridStep(d->elementItem->circuitEditor()->gridSize());
    setRect(-(g >> 1), -(g >> 1), g, g);
    setVisible(true);
}

bool CCircuitEditorElementNodeItem::isOpen() {
    if (!d->elementItem->circuitEditor()->showsJunctions()) {
        return false;
    }
    if (!d->isOpen) {
        d->isOpen = true;
        for (int i = 0; i < d->elementItem->circuitNodeItemCount(); ++i) {
            ICircuitNode* node = d->elementItem->circuitNodeItem(i)->circuitNode();
            for (int k = 0; *d->isOpen && k < node->elementNodeCount(); ++k) {
                d->isOpen = node->elementNode(k) != d->elementNode;
            }
        }
    }
    return *d->isOpen;
}

void CCircuitEditorElementNodeItem::forgetNets() {
    d->isOpen.reset();
    update();
}

void CCircuitEditorElementNodeItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*,
                                          QWidget* widget) {
    if (!d->elementNode) {
        return;
    }
    const QRectF r = boundingRect();
    const QPen oldPen = painter->pen();
    const QBrush oldBrush = painter->brush();
    painter->setPen(pen());
    painter->setBrush(brush());
    painter->drawEllipse(
        QRectF(r.x() + r.width() * 0.5 - 2.0, r.y() + r.height() * 0.5 - 2.0, 4.0, 4.0));
    // In a picture there is no widget, and no mark of what is still to be done.
    if (widget && isOpen()) {
        NetJunctions::paintOpenEnd(painter, brush().color(), r.center());
    }
    painter->setPen(oldPen);
    painter->setBrush(oldBrush);
}

void CCircuitEditorElementNodeItem::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
    const QPointer<CCircuitEditorElementItem> owner(d->elementItem);
    const QString name = d->elementNode ? d->elementNode->name() : QString();
    QMenu menu;
    const QAction* addBox = menu.addAction(QStringLiteral("Add node name text box"));
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: this item may be gone.
    if (!owner || owner->nodeItem(name) != this) {
        return;
    }
    if (chosen != addBox) {
        QGraphicsRectItem::contextMenuEvent(event);
        return;
    }
    if (owner->circuitEditor()->captionsNewElements() && ElementCaptions::has(*owner, name)) {
        return;  // once is enough
    }
    auto* box =
        owner->circuitEditor()->addElementPropertyTextBox(mapToScene(event->pos() + NameBoxOffset));
    QFont font = box->font();
    font.setPointSize(NameBoxPointSize);
    box->setFont(font);
    box->setElementProperty(owner->element(), name);
}
