#include "XmlUtils.h"

#include <algorithm>

XmlUtils::XmlUtils(QObject* parent) : QObject(parent) {}

XmlUtils::~XmlUtils() = default;

QString XmlUtils::withoutForbidden(const QString& text) {
    // Nearly all texts are plain, and then need no copy.
    if (std::all_of(text.begin(), text.end(),
                    [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0xD800; })) {
        return text;
    }
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            result += c;
            result += text.at(++i);
            continue;
        }
        const ushort code = c.unicode();
        const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
        if (!isControl && !c.isSurrogate() && code < 0xFFFE) {
            result += c;
        }
    }
    return result;
}

void XmlUtils::storeBinaryData(QDomDocument document, QDomElement element, const QByteArray& data) {
    element.appendChild(document.createTextNode(QString::fromLatin1(data.toBase64())));
}

QList<QDomElement> XmlUtils::findElements(QDomElement parent, QString tag) {
    QList<QDomElement> result;
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag)) {
        result.append(child);
    }
    return result;
}

QDomElement XmlUtils::findElement(QDomElement parent, QString tag) {
    return parent.firstChildElement(tag);
}

void XmlUtils::loadBinaryData(QDomElement element, QByteArray& data) {
    const QByteArray text = element.text().simplified().remove(QLatin1Char(' ')).toLatin1();
    const auto decoded =
        QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    data = decoded ? *decoded : QByteArray();
}
