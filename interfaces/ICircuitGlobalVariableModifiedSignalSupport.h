#pragma once

#include "IContainer.h"

/// Optional ability of a circuit: its object reports edits of global parameters with the signals
/// `globalVariableNameModified(QString,QString)` (old and new name) and
/// `globalVariableValueModified(QString,QString)` (name and new value).
class ICircuitGlobalVariableModifiedSignalSupport : public virtual IContainer {
protected:
    ~ICircuitGlobalVariableModifiedSignalSupport() = default;
};

Q_DECLARE_INTERFACE(ICircuitGlobalVariableModifiedSignalSupport,
                    "com.tesmira.ICircuitGlobalVariableModifiedSignalSupport/1.0")
