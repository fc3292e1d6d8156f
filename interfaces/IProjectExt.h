#pragma once

#include "IContainer.h"

#include <QString>

/// The project manager. Its object emits `currentProjectFileNameChanged(QString)`.
class IProjectExt : public virtual IContainer {
public:
    /// File name of the current project; a file that doesn't exist means an unsaved project.
    virtual QString projectFileName() = 0;

protected:
    ~IProjectExt() = default;
};

Q_DECLARE_INTERFACE(IProjectExt, "com.tesmira.IProjectExt/1.0")
