#pragma once

#include "IContainer.h"

#include <QString>

class ICircuit;
class ICircuitElementNode;

/// A circuit node: one electrical net. Signals of its object: `nodeChanged()`,
/// `elementNodeAdded(ICircuitElementNode*)`, `elementNodeRemoved(ICircuitElementNode*)`.
class ICircuitNode : public virtual IContainer {
public:
    virtual ICircuit* circuit() = 0;
    virtual int elementNodeCount() = 0;
    virtual ICircuitElementNode* elementNode(int index) = 0;
    virtual void setName(QString name) = 0;
    virtual QString name() = 0;
    /// Distance in scene units by which a routed wire stands off from its element.
    virtual int wireClearance() = 0;
    /// One letter, as for a terminal.
    virtual QString type() = 0;

protected:
    ~ICircuitNode() = default;
};

Q_DECLARE_INTERFACE(ICircuitNode, "com.tesmira.ICircuitNode/1.0")
