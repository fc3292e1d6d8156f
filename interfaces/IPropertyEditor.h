#pragma once

#include "IContainer.h"

class QObject;

/// The application's property panel. Its object emits
/// `propertyValueChanged(QObject*,QString,QVariant,QVariant)` (object, property name, old value,
/// new value) after the model has taken an edit.
class IPropertyEditor : public virtual IContainer {
public:
    /// Shows the object's properties; null shows none. `forceReload` rebuilds the rows even for the
    /// object that is already shown.
    virtual void setObject(QObject* object, bool forceReload) = 0;
    /// The object now shown, or null.
    virtual QObject* object() = 0;

protected:
    ~IPropertyEditor() = default;
};

Q_DECLARE_INTERFACE(IPropertyEditor, "com.tesmira.IPropertyEditor/1.0")
