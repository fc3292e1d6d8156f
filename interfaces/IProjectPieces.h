#pragma once

#include "IContainer.h"

#include <QDomDocument>
#include <QDomElement>

#include <functional>

/// Optional ability of a project part, for one that may be large: it can be saved piece by piece,
/// so that nobody has to hold the document of all of it.
class IProjectPieces : public virtual IContainer {
public:
    /// As `saveProjectPart`. Calls `written` each time that it has added children to `element`,
    /// whose attributes are complete then; these children may be taken out.
    virtual bool saveProjectPieces(QDomDocument document, QDomElement element,
                                   const std::function<void()>& written) = 0;

protected:
    ~IProjectPieces() = default;
};

Q_DECLARE_INTERFACE(IProjectPieces, "com.tesmira.IProjectPieces/1.0")
