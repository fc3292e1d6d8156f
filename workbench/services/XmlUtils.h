#pragma once

#include "IXmlUtils.h"

#include <QObject>

/// Look-ups among the direct children of an element, and binary payloads as base64 text.
class XmlUtils : public QObject, public IXmlUtils {
    Q_OBJECT
    Q_INTERFACES(IXmlUtils)

public:
    explicit XmlUtils(QObject* parent = nullptr);
    ~XmlUtils() override;

    /// The text without the characters that XML can't hold in any form: most control characters,
    /// lone surrogates, U+FFFE and U+FFFF. A file that holds one may be refused as a whole.
    static QString withoutForbidden(const QString& text);
    /// Writes what `loadBinaryData` reads.
    static void storeBinaryData(QDomDocument document, QDomElement element, const QByteArray& data);

    // IContainer
    QObject* containerObject() override { return this; }

    // IXmlUtils
    QList<QDomElement> findElements(QDomElement parent, QString tag) override;
    QDomElement findElement(QDomElement parent, QString tag) override;
    /// Blanks and line ends in the text don't matter; a text that isn't base64 holds no payload.
    void loadBinaryData(QDomElement element, QByteArray& data) override;
};
