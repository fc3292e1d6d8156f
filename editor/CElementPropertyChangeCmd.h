#pragma once

#include "CUndoRedo.h"

#include <QPointer>
#include <QString>
#include <QVariant>

/// A property of an element or a node was edited. Edits of one property in a row are one step.
class CElementPropertyChangeCmd : public CUndoRedoCmdBase {
public:
    CElementPropertyChangeCmd(QObject* object, QString name, QVariant oldValue, QVariant newValue);

    // Not const, and so not the id that the stack compares.
    using CUndoRedoCmdBase::id;
    int id() { return 2; }

    bool mergeWith(const QUndoCommand* other) override;
    void undo() override;
    void redo() override;
    void referenceObjectDestroyed(QObject* object) override;
    void referenceObjectChanged(QObject* old, QObject* now) override;

private:
    void cachePropertyInfo();
    void setPropertyValue(const QVariant& value);

    QPointer<QObject> m_object;
    // Still the key of the object when it is dead.
    QObject* m_objectKey = nullptr;
    QString m_propertyName;
    QVariant m_oldValue;
    QVariant m_newValue;
    // Row in IEditableProperties; -1 for a property of the meta-object.
    int m_propertyIndex = -1;
};
