#pragma once

#include "IContainer.h"

#include <QString>

/// Optional ability of a circuit: it bears a title.
class ICircuitTitle : public virtual IContainer {
public:
    virtual void setTitle(QString title) = 0;
    virtual QString title() = 0;

protected:
    ~ICircuitTitle() = default;
};

Q_DECLARE_INTERFACE(ICircuitTitle, "com.tesmira.ICircuitTitle/1.0")
