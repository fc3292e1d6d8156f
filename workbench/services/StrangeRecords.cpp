#include "StrangeRecords.h"

#include "QtSeriesXml.h"

#include <QDomDocument>
#include <QObject>
#include <QStringList>
#include <QTextStream>
#include <QVariant>

namespace {

constexpr char Kept[] = "_StrangeRecords_";
const QString KeptTag = QStringLiteral("Strangers");

/// Elsewhere, as in the clipboard, records have attributes and children of other meanings; there
/// all strangers lie in an entry of their own.
bool isInFile(const QDomElement& record) {
    const QString root = record.ownerDocument().documentElement().tagName();
    return root == QLatin1String("VortelProject") || root == QLatin1String("VortelCircuit");
}

bool isKnownAttribute(const QString& name) {
    static const QStringList known = {QStringLiteral("ElementType"), QStringLiteral("ID"),
                                      QStringLiteral("X"),           QStringLiteral("Y"),
                                      QStringLiteral("ModelName"),   QStringLiteral("Name")};
    return known.contains(name);
}

bool isKnownChild(QObject* object, const QDomElement& child, StrangeRecords::IsKnownEntry isKnown) {
    const QString tag = child.tagName();
    if (tag == QLatin1String("Property") || tag == QLatin1String("Parameter")) {
        return isKnown(object, tag, child.attribute(QStringLiteral("Name")));
    }
    return tag == QLatin1String("ElementNode") || tag == QLatin1String("Shape");
}

void copyAttributes(const QDomElement& from, QDomElement to) {
    const QDomNamedNodeMap attributes = from.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        if (!to.hasAttribute(attribute.name())) {
            to.setAttribute(attribute.name(), attribute.value());
        }
    }
}

}  // namespace

void StrangeRecords::remember(QObject* object, const QDomElement& record, IsKnownEntry isKnown) {
    QDomDocument document;
    QDomElement kept = document.createElement(KeptTag);
    if (isInFile(record)) {
        const QDomNamedNodeMap attributes = record.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            const QDomAttr attribute = attributes.item(i).toAttr();
            if (!isKnownAttribute(attribute.name())) {
                kept.setAttribute(attribute.name(), attribute.value());
            }
        }
        for (QDomElement child = record.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (!isKnownChild(object, child, isKnown)) {
                kept.appendChild(document.importNode(child, true));
            }
        }
    } else {
        const QDomElement entry = record.firstChildElement(KeptTag);
        if (!entry.isNull()) {
            kept = document.importNode(entry, true).toElement();
        }
    }
    if (kept.hasAttributes() || kept.hasChildNodes()) {
        // As text: a piece of the document would keep all of it in memory.
        QString text;
        QTextStream stream(&text);
        kept.save(stream, -1, QDomNode::EncodingFromTextStream);
        object->setProperty(Kept, text);
    }
}

void StrangeRecords::write(QObject* object, QDomElement record) {
    const QVariant text = object->property(Kept);
    QDomDocument document;
    if (!text.isValid() || !QtSeries::readXml(&document, text.toString())) {
        return;
    }
    const QDomElement kept = document.documentElement();
    if (!isInFile(record)) {
        record.appendChild(record.ownerDocument().importNode(kept, true));
        return;
    }
    copyAttributes(kept, record);
    for (QDomNode child = kept.firstChild(); !child.isNull(); child = child.nextSibling()) {
        record.appendChild(record.ownerDocument().importNode(child, true));
    }
}
