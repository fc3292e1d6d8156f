#pragma once

#include "IContainer.h"

#include <QDomDocument>
#include <QDomElement>

class QObject;

/// Persists the properties of an object in a document; `load` of what `save` wrote restores them.
class IQObjectLoadSave : public virtual IContainer {
public:
    /// Writes the object's properties under `element`.
    virtual void save(QObject* object, QDomDocument document, QDomElement element) = 0;
    /// Reads them back; properties that the record doesn't hold keep their values.
    virtual void load(QObject* object, QDomDocument document, QDomElement element) = 0;

protected:
    ~IQObjectLoadSave() = default;
};

Q_DECLARE_INTERFACE(IQObjectLoadSave, "com.tesmira.IQObjectLoadSave/1.0")
