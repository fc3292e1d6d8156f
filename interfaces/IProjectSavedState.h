#pragma once

#include "IContainer.h"

/// Optional ability of a project part: it knows whether its present state is the one that was saved
/// last, also after undo. Its object tells by the signal `savedStateChanged(bool isAsSaved)` when a
/// step of the user has ended, or was undone or redone.
class IProjectSavedState : public virtual IContainer {
public:
    /// The present state is the saved one.
    virtual void markSaved() = 0;
    /// No state that can be reached again is the saved one.
    virtual void forgetSaved() = 0;
    /// False as well for a part that doesn't know at present.
    virtual bool isAsSaved() = 0;

protected:
    ~IProjectSavedState() = default;
};

Q_DECLARE_INTERFACE(IProjectSavedState, "com.tesmira.IProjectSavedState/1.0")
