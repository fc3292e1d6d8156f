#pragma once

#include <QList>
#include <QMap>
#include <QPixmap>
#include <QPointF>

class CCircuitEditor;
class CCircuitEditorElementNodeItem;
class CCircuitEditorNodeItem;
class CCircuitElementPropertyTextBox;
class ICircuitElement;
class QSvgRenderer;

/// Private data of an element item, shared by the item's sources.
class CCircuitEditorElementItemData {
public:
    CCircuitEditor* circuitEditor = nullptr;
    ICircuitElement* element = nullptr;
    QSvgRenderer* renderer = nullptr;
    QPixmap pixmap;
    QMap<QString, CCircuitEditorElementNodeItem*> elementNodeItemMap;
    QList<CCircuitEditorNodeItem*> circuitNodeItems;
    // The item has changed position since the last finished drag.
    bool moved = false;
    // Start and end of the drag, in scene coordinates.
    QPointF oldPos;
    QPointF newPos;
    bool internalMoveMode = false;
    // Kept by the boxes.
    QList<CCircuitElementPropertyTextBox*> propertyTextBoxes;
    // The boxes are new or fewer, and their formats follow from the event loop.
    bool formatsPending = false;
};
