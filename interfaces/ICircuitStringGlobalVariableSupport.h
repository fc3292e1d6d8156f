#pragma once

#include "IContainer.h"

#include <QString>

/// Optional ability of a circuit: global parameters that hold text.
class ICircuitStringGlobalVariableSupport : public virtual IContainer {
public:
    virtual void addStringGlobalVariable(QString name, QString value) = 0;
    virtual bool isStringGlobalVariable(int index) = 0;

protected:
    ~ICircuitStringGlobalVariableSupport() = default;
};

Q_DECLARE_INTERFACE(ICircuitStringGlobalVariableSupport,
                    "com.tesmira.ICircuitStringGlobalVariableSupport/1.0")
