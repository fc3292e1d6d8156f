#pragma once

#include "IContainer.h"

#include <QString>
#include <QVariant>

/// The user-editable properties of an element or a node, in display order.
class IEditableProperties : public virtual IContainer {
public:
    virtual int propertyCount() = 0;
    virtual QString propertyName(int index) = 0;
    /// Group of the property, such as "Nodes" (one per terminal: the net's name) or "rparams".
    virtual QString propertyGroup(int index) = 0;
    virtual QVariant propertyValue(int index) = 0;
    virtual void setPropertyValue(int index, QVariant value) = 0;
    /// The value as display text.
    virtual QString propertyValueString(int index) = 0;

protected:
    ~IEditableProperties() = default;
};

Q_DECLARE_INTERFACE(IEditableProperties, "com.tesmira.IEditableProperties/1.0")
