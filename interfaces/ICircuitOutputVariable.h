#pragma once

#include "IContainer.h"

#include <QString>

class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;

/// One chosen output of the simulation.
class ICircuitOutputVariable : public virtual IContainer {
public:
    enum Type { NodeVariable = 0, TerminalVariable = 1, ElementVariable = 2 };

    virtual QString name() = 0;
    virtual void setName(QString name) = 0;
    virtual void setAC(bool ac) = 0;
    virtual bool isAC() = 0;
    /// A value of `Type`.
    virtual int type() = 0;
    virtual ICircuitElement* element() = 0;
    virtual ICircuitElementNode* elementNode() = 0;
    virtual ICircuitNode* node() = 0;
    /// Name of the element variable; may be empty.
    virtual QString elementVarName() = 0;

protected:
    ~ICircuitOutputVariable() = default;
};

Q_DECLARE_INTERFACE(ICircuitOutputVariable, "com.tesmira.ICircuitOutputVariable/1.0")
