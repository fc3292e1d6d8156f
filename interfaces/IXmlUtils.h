#pragma once

#include "IContainer.h"

#include <QByteArray>
#include <QDomElement>
#include <QList>
#include <QString>

/// Look-ups in XML documents.
class IXmlUtils : public virtual IContainer {
public:
    /// All direct children of `parent` with the tag, in document order.
    virtual QList<QDomElement> findElements(QDomElement parent, QString tag) = 0;
    /// The first such child, or a null element.
    virtual QDomElement findElement(QDomElement parent, QString tag) = 0;
    /// Reads the binary payload held by an element; empty if it holds none.
    virtual void loadBinaryData(QDomElement element, QByteArray& data) = 0;

protected:
    ~IXmlUtils() = default;
};

Q_DECLARE_INTERFACE(IXmlUtils, "com.tesmira.IXmlUtils/1.0")
