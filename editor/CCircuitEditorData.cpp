#include "CCircuitEditorData.h"

#include "CCanvasGestures.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitEditorTextBox.h"
#include "CManualConnectorLineItem.h"
#include "CPlacementTool.h"
#include "CSelectionRectangleItem.h"
#include "CircuitGeometry.h"
#include "CompleteHistory.h"
#include "ConnectedDrag.h"
#include "ICircuitElement.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QGraphicsLineItem>
#include <QLabel>

#include <utility>

CCircuitEditorData::CCircuitEditorData(CCircuitEditor* editor, QObject* sceneParent)
    : scene(new CCircuitEditorScene(sceneParent)),
      circuitEditor(editor),
      gridColor(230, 230, 230),
      backgroundColor(Qt::white),
      defaultPSPath(QDir::homePath()),
      selection(std::make_unique<CCircuitEditorSelection>(editor)),
      placement(std::make_unique<CPlacementTool>(editor)),
      gestures(std::make_unique<CCanvasGestures>(editor, this)) {}

CCircuitEditorData::~CCircuitEditorData() {
    if (statusLabel && !statusLabel->parent()) {
        delete statusLabel;
    }
}

QGraphicsLineItem* CCircuitEditorData::conItem() {
    if (!connectorLineItem) {
        connectorLineItem = new QGraphicsLineItem;
        scene->addItem(connectorLineItem);
        connectorLineItem->setZValue(10000);
        connectorLineItem->setPen(
            QPen(Qt::blue, 2.0, Qt::DashDotDotLine, Qt::SquareCap, Qt::BevelJoin));
    }
    return connectorLineItem;
}

namespace {

// Single-precision constants, widened: a stored zoom level means what it always meant.
constexpr double ViewportShare = 0.949999988079071;
constexpr double ScalePerLevel = 0.30000001192092896;

/// The longer side of the drawing area, and the viewport's extent along it.
struct Extent {
    double drawing;
    double viewport;
};

Extent longerSide(const QRectF& sceneRect, const QWidget* viewport) {
    if (sceneRect.height() < sceneRect.width()) {
        return {sceneRect.width(), double(viewport->width())};
    }
    return {sceneRect.height(), double(viewport->height())};
}

}  // namespace

double CCircuitEditorData::calculateScaleFor(int level) const {
    if (level >= 0) {
        return level * ScalePerLevel + 1;
    }
    const Extent extent = longerSide(scene->sceneRect(), circuitEditor->viewport());
    return level * (1 - (extent.viewport * ViewportShare * 0.33) / extent.drawing) / 10 + 1;
}

int CCircuitEditorData::calculateZoomLevelFor(double scale) const {
    if (scale >= 1) {
        return CircuitGeometry::truncatedInt((scale - 1) / ScalePerLevel);
    }
    const Extent extent = longerSide(scene->sceneRect(), circuitEditor->viewport());
    return CircuitGeometry::truncatedInt(((scale - 1) * 10) /
                                         (1 - (extent.viewport * ViewportShare) / extent.drawing));
}

QPointF CCircuitEditorData::gridPoint(const QPointF& point) const {
    return CircuitGeometry::snapped(point, gridSize);
}

QRectF CCircuitEditorData::visibleItemsBoundingRect() const {
    QRectF bounds;
    for (const QGraphicsItem* item : scene->items()) {
        if (item->isVisible()) {
            bounds |= item->sceneBoundingRect();
        }
    }
    return bounds;
}

CCircuitEditorData::RoutingHold::RoutingHold(CCircuitEditorData* data) : m_data(data) {
    ++data->m_routingHolds;
}

CCircuitEditorData::RoutingHold::~RoutingHold() {
    if (--m_data->m_routingHolds > 0) {
        return;
    }
    // One by one: what listens to a route may take other wires away, and they leave the set then.
    while (!m_data->m_heldWires.isEmpty()) {
        CCircuitEditorNodeItem* wire = *m_data->m_heldWires.cbegin();
        m_data->m_heldWires.erase(m_data->m_heldWires.begin());
        wire->updateNode();
    }
}

bool CCircuitEditorData::holdsRouting(CCircuitEditorNodeItem* wire) {
    if (m_routingHolds == 0) {
        return false;
    }
    m_heldWires.insert(wire);
    return true;
}

void CCircuitEditorData::forgetItem(QGraphicsItem* item) {
    if (scene && scene->highlightedItem() == item) {
        scene->setHighlightedItem(nullptr);
    }
    if (scene && scene->mouseGrabberItem() == item) {
        scene->forgetDrag();
    }
    selection->forgetItem(item);
    gestures->forgetItem(item);
    if (item == manualConnectorItem) {
        manualConnectorItem = nullptr;
    } else if (item == selectionRectItem) {
        selectionRectItem = nullptr;
        selecting = false;
        emit circuitEditor->selectionStateChanged();
    } else if (selectionRectItem) {
        selectionRectItem->forgetItem(item);
    }
    if (connectedDrag) {
        connectedDrag->forgetItem(item);
    }
    if (item == connectionStartItem || item == connectionEndItem) {
        hideConnectionLine();
        dropConnection();
    }
    // Only its own entry: the map may know another item of the same object by now.
    const auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
    auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
    m_heldWires.remove(wire);
    if (element && elementItemMap.value(element->element()) == element) {
        elementItemMap.remove(element->element());
    } else if (wire && nodeItemMap.value(wire->circuitNode()) == wire) {
        nodeItemMap.remove(wire->circuitNode());
    }
}

void CCircuitEditorData::deleteItems() {
    placement->stop();
    if (!scene) {
        return;
    }
    // The scene searches its list of new items for each one that goes; what it has put off until
    // the event loop runs empties that list.
    QCoreApplication::sendPostedEvents(scene, QEvent::MetaCall);
    connectorLineItem = nullptr;
    connectionStartItem = nullptr;
    connectionEndItem = nullptr;
    // Each is taken out before it goes, for it looks itself up then, and may take others along.
    // Wires first: an element routes the wires anew that it still has when it goes.
    while (!nodeItemMap.isEmpty()) {
        delete nodeItemMap.take(nodeItemMap.firstKey());
    }
    // Their property boxes go with them.
    while (!elementItemMap.isEmpty()) {
        delete elementItemMap.take(elementItemMap.firstKey());
    }
    while (!textBoxes.isEmpty()) {
        delete textBoxes.takeLast();
    }
    while (!globalParamTextBoxes.isEmpty()) {
        delete globalParamTextBoxes.takeLast();
    }
    // Deleting one item may delete others, so the scene is asked again each time.
    for (QList<QGraphicsItem*> left = scene->items(); !left.isEmpty(); left = scene->items()) {
        delete left.first()->topLevelItem();
    }
}
