#include "ObjectLoadSave.h"

#include "IEditableProperties.h"
#include "LongWork.h"
#include "QtSeries.h"
#include "StrangeRecords.h"
#include "XmlUtils.h"

#include <QMetaProperty>

namespace {

void append(QDomDocument document, QDomElement element, const QString& tag, const QString& name,
            const QString& value) {
    QDomElement child = document.createElement(tag);
    child.setAttribute(QStringLiteral("Name"), name);
    child.setAttribute(QStringLiteral("Value"), XmlUtils::withoutForbidden(value));
    element.appendChild(child);
}

bool isPersistent(const QMetaProperty& property, const QObject* object) {
    return property.isReadable() && property.isWritable() && QtSeries::isStored(property, object);
}

QStringList recordAttributes(const QMetaObject* meta, const QDomElement& element) {
    const int index = meta->indexOfClassInfo("RecordAttributes");
    QStringList names;
    for (const QString& name : QString::fromLatin1(meta->classInfo(index).value()).split(' ')) {
        if (element.hasAttribute(name)) {
            names.append(name);
        }
    }
    return names;
}

int parameterIndex(IEditableProperties* properties, const QString& name) {
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyGroup(i) == QLatin1String("rparams") &&
            properties->propertyName(i) == name) {
            return i;
        }
    }
    return -1;
}

bool isKnownEntry(QObject* object, const QString& tag, const QString& name) {
    return tag == QLatin1String("Property")
               ? object->metaObject()->indexOfProperty(name.toUtf8()) >= 0
               : parameterIndex(qobject_cast<IEditableProperties*>(object), name) >= 0;
}

/// False if the object has such a property and hasn't taken the value.
bool loadProperty(QObject* object, const QString& name, const QString& text) {
    const QMetaObject* meta = object->metaObject();
    const int index = meta->indexOfProperty(name.toUtf8());
    if (index < QObject::staticMetaObject.propertyCount()) {
        return true;
    }
    const QMetaProperty property = meta->property(index);
    QVariant value(text);
    if (!isPersistent(property, object)) {
        return true;
    }
    return QtSeries::convert(&value, property.userType()) && property.write(object, value) &&
           property.read(object) == value;
}

bool loadParameter(IEditableProperties* properties, const QString& name, const QString& text) {
    const int index = parameterIndex(properties, name);
    if (index < 0) {
        return true;
    }
    properties->setPropertyValue(index, text);
    return properties->propertyValue(index).toString() == text.trimmed();
}

}  // namespace

ObjectLoadSave::ObjectLoadSave(QObject* parent) : QObject(parent) {}

ObjectLoadSave::~ObjectLoadSave() = default;

void ObjectLoadSave::save(QObject* object, QDomDocument document, QDomElement element) {
    LongWork::step(LongWork::Stop::Impossible);
    if (!object) {
        return;
    }
    const QMetaObject* meta = object->metaObject();
    const QStringList written = recordAttributes(meta, element);
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QVariant value = property.read(object);
        const QString name = QString::fromUtf8(property.name());
        if (isPersistent(property, object) && value.canConvert<QString>() &&
            !written.contains(name)) {
            append(document, element, QStringLiteral("Property"), name, value.toString());
        }
    }
    if (auto* properties = qobject_cast<IEditableProperties*>(object)) {
        for (int i = 0; i < properties->propertyCount(); ++i) {
            if (properties->propertyGroup(i) == QLatin1String("rparams")) {
                append(document, element, QStringLiteral("Parameter"), properties->propertyName(i),
                       properties->propertyValue(i).toString());
            }
        }
    }
    StrangeRecords::write(object, element);
}

QStringList ObjectLoadSave::takeRefusedValues() {
    QStringList refused;
    refused.swap(m_refused);
    return refused;
}

void ObjectLoadSave::note(bool taken, const QObject* object, const QString& name,
                          const QString& text) {
    if (!taken) {
        m_refused.append(
            QStringLiteral("\"%1\" of %2 in %3").arg(text, name, object->objectName()));
    }
}

void ObjectLoadSave::load(QObject* object, QDomDocument, QDomElement element) {
    LongWork::step();
    if (!object) {
        return;
    }
    XmlUtils xml;
    const QList<QDomElement> records = xml.findElements(element, QStringLiteral("Property"));
    StrangeRecords::remember(object, element, isKnownEntry);
    const auto read = [this, object, &records](bool names) {
        for (const QDomElement& record : records) {
            const QString name = record.attribute(QStringLiteral("Name"));
            if ((name == QLatin1String("Name")) == names) {
                const QString value = record.attribute(QStringLiteral("Value"));
                note(loadProperty(object, name, value), object, name, value);
            }
        }
    };
    // Other properties may follow the name, as an element's caption does, so it goes first.
    read(true);
    read(false);
    for (const QString& name : recordAttributes(object->metaObject(), element)) {
        loadProperty(object, name, element.attribute(name));
    }
    if (auto* properties = qobject_cast<IEditableProperties*>(object)) {
        for (const QDomElement& record : xml.findElements(element, QStringLiteral("Parameter"))) {
            const QString name = record.attribute(QStringLiteral("Name"));
            const QString value = record.attribute(QStringLiteral("Value"));
            note(loadParameter(properties, name, value), object, name, value);
        }
    }
}
