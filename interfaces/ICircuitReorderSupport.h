#pragma once

#include "IContainer.h"

/// Optional ability of a circuit: what it lists can be given another place in its list. Whoever
/// makes something anew puts it where its predecessor was. Indices out of range change nothing, and
/// nothing is reported.
class ICircuitReorderSupport : public virtual IContainer {
public:
    virtual void moveElement(int from, int to) = 0;
    virtual void moveNode(int from, int to) = 0;
    virtual void moveGlobalVariable(int from, int to) = 0;

protected:
    ~ICircuitReorderSupport() = default;
};

Q_DECLARE_INTERFACE(ICircuitReorderSupport, "com.tesmira.ICircuitReorderSupport/1.0")
