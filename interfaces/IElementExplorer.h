#pragma once

#include "IContainer.h"

#include <QString>

/// The application's palette of element types. Its object emits
/// `elementRightClicked(QString,QMenu*)` with the type's name and a menu that listeners may add to.
class IElementExplorer : public virtual IContainer {
public:
    /// Complete type name of the chosen entry, empty if none is chosen.
    virtual QString selectedElementName() = 0;

protected:
    ~IElementExplorer() = default;
};

Q_DECLARE_INTERFACE(IElementExplorer, "com.tesmira.IElementExplorer/1.0")
