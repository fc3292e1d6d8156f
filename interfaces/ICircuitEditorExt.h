#pragma once

#include "IContainer.h"

class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;
class QGraphicsItem;

/// The way between the items of a drawing and the objects of the model.
class ICircuitEditorExt : public virtual IContainer {
public:
    /// 1 element, 2 terminal, 3 node, 0 for null and for any other item.
    virtual int typeOfItem(QGraphicsItem* item) const = 0;
    /// Null unless the item is of the kind asked for.
    virtual ICircuitElement* elementFromItem(QGraphicsItem* item) const = 0;
    virtual ICircuitElementNode* elementNodeFromItem(QGraphicsItem* item) const = 0;
    virtual ICircuitNode* circuitNodeFromItem(QGraphicsItem* item) const = 0;
    /// Null for an object that has no item here.
    virtual QGraphicsItem* itemFor(ICircuitElement* element) = 0;
    virtual QGraphicsItem* itemFor(ICircuitElementNode* elementNode) = 0;
    virtual QGraphicsItem* itemFor(ICircuitNode* node) = 0;

protected:
    ~ICircuitEditorExt() = default;
};

Q_DECLARE_INTERFACE(ICircuitEditorExt, "com.tesmira.ICircuitEditorExt/1.0")
