#include "CElementPropertyChangeCmd.h"

#include "CCircuitEditorCmds.h"
#include "PropertyLookup.h"

#include <QMetaObject>

CElementPropertyChangeCmd::CElementPropertyChangeCmd(QObject* object, QString name,
                                                     QVariant oldValue, QVariant newValue)
    : m_object(object),
      m_objectKey(object),
      m_propertyName(std::move(name)),
      m_oldValue(std::move(oldValue)),
      m_newValue(std::move(newValue)) {
    setText(QStringLiteral("%1 Property Change").arg(object->objectName()));
    referenceObjects.append(object);
    cachePropertyInfo();
}

void CElementPropertyChangeCmd::cachePropertyInfo() {
    m_propertyIndex = -1;
    if (m_object->metaObject()->indexOfProperty(m_propertyName.toLocal8Bit().constData()) >= 0) {
        return;
    }
    m_propertyIndex =
        indexOfProperty(qobject_cast<IEditableProperties*>(m_object.data()), m_propertyName);
}

void CElementPropertyChangeCmd::setPropertyValue(const QVariant& value) {
    if (!m_object) {
        return;
    }
    auto* properties =
        m_propertyIndex >= 0 ? qobject_cast<IEditableProperties*>(m_object.data()) : nullptr;
    if (properties) {
        properties->setPropertyValue(m_propertyIndex, value);
    } else {
        m_object->setProperty(m_propertyName.toLocal8Bit().constData(), value);
    }
    IPropertyEditor* panel = CCircuitEditorCmds::PropertyEditor;
    if (panel && m_object && panel->object() == m_object) {
        panel->setObject(nullptr, false);
        panel->setObject(m_object, false);
    }
}

bool CElementPropertyChangeCmd::mergeWith(const QUndoCommand* other) {
    const auto* change = dynamic_cast<const CElementPropertyChangeCmd*>(other);
    if (!change || change->m_object != m_object || change->m_propertyName != m_propertyName) {
        return false;
    }
    m_newValue = change->m_newValue;
    return true;
}

void CElementPropertyChangeCmd::undo() {
    setPropertyValue(m_oldValue);
}

void CElementPropertyChangeCmd::redo() {
    setPropertyValue(m_newValue);
}

void CElementPropertyChangeCmd::referenceObjectDestroyed(QObject* object) {
    if (object == m_objectKey) {
        m_object = nullptr;
    }
}

void CElementPropertyChangeCmd::referenceObjectChanged(QObject* old, QObject* now) {
    if (m_object || old != m_objectKey || !now) {
        return;
    }
    m_object = now;
    m_objectKey = now;
    cachePropertyInfo();
}
