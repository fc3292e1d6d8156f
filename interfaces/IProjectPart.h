#pragma once

#include "IContainer.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>

/// A share of a project document. The project manager calls `newProjectPart` or `loadProjectPart`,
/// then `initializeProjectPart`, any number of `saveProjectPart`, and `closeProjectPart`.
class IProjectPart : public virtual IContainer {
public:
    /// Names the part's record in the document.
    virtual QString projectPartID() = 0;
    virtual bool newProjectPart() = 0;
    /// Reads the part from `element`; false if a service that it needs is missing.
    virtual bool loadProjectPart(QDomDocument document, QDomElement element) = 0;
    virtual bool initializeProjectPart() = 0;
    /// Writes the part under `element`; false, with nothing written, if there is nothing to save.
    virtual bool saveProjectPart(QDomDocument document, QDomElement element) = 0;
    virtual bool closeProjectPart() = 0;

    /// Signal: there is something to save.
    virtual void projectPartModified() = 0;

protected:
    ~IProjectPart() = default;
};

Q_DECLARE_INTERFACE(IProjectPart, "com.tesmira.IProjectPart/1.0")
