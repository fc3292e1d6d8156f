#include "CircuitFileText.h"

#include <QDomDocument>
#include <QXmlStreamReader>

namespace {

/// Of a record in its file: more is no record of ours, and documents recurse.
constexpr int DeepestNesting = 100;

const QLatin1String ElementTag("CircuitElement");
const QLatin1String NodeTag("CircuitNode");

/// Whether the text has nothing that streams and documents might take differently, faults aside.
bool hasPlainMarkup(const QString& text) {
    QChar quote;
    bool isInTag = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!isInTag) {
            if (c == QLatin1Char('<')) {
                isInTag = true;
                const QChar next = i + 1 < text.size() ? text.at(i + 1) : QChar();
                const bool isDeclaration =
                    next == QLatin1Char('!') &&
                    !QStringView(text).mid(i).startsWith(QLatin1String("<!DOCTYPE "));
                if (next == QLatin1Char('?') || isDeclaration) {
                    return false;
                }
            }
        } else if (!quote.isNull()) {
            if (c == quote) {
                quote = QChar();
            } else if (c.unicode() < 0x20) {
                return false;
            }
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('>')) {
            isInTag = false;
        } else if (c == QLatin1Char('[') || c.unicode() >= 0x80) {
            return false;
        }
    }
    return true;
}

void prepare(QXmlStreamReader* reader) {
    // As the documents do it: a prefix is a part of the name.
    reader->setNamespaceProcessing(false);
}

/// The element that the reader has come to, read to its end.
QDomElement readElement(QXmlStreamReader* reader, QDomDocument document) {
    QDomElement element = document.createElement(reader->qualifiedName().toString());
    for (const QXmlStreamAttribute& attribute : reader->attributes()) {
        element.setAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
    }
    while (reader->readNext() != QXmlStreamReader::EndElement && !reader->hasError()) {
        if (reader->isStartElement()) {
            element.appendChild(readElement(reader, document));
        } else if (reader->isCharacters() && !reader->isWhitespace()) {
            element.appendChild(document.createTextNode(reader->text().toString()));
        }
    }
    return element;
}

}  // namespace

CircuitFileText::CircuitFileText(const QString& text) : m_text(text) {
    m_isPlain = hasPlainMarkup(text) && isWellFormed();
}

bool CircuitFileText::isWellFormed() {
    QXmlStreamReader reader(m_text);
    prepare(&reader);
    int depth = 0;
    bool hasNode = false;
    while (!reader.atEnd() && depth <= DeepestNesting) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement && ++depth == 2) {
            hasNode = hasNode || reader.qualifiedName() == NodeTag;
            m_elementsComeFirst &= !hasNode || reader.qualifiedName() != ElementTag;
        }
    }
    return depth == 0 && !reader.hasError();
}

void CircuitFileText::forEachRecord(const Use& useElement, const Use& useNode) const {
    if (m_elementsComeFirst) {
        readRecords(useElement, useNode);
    } else {
        readRecords(useElement, {});
        readRecords({}, useNode);
    }
}

void CircuitFileText::readRecords(const Use& useElement, const Use& useNode) const {
    QXmlStreamReader reader(m_text);
    prepare(&reader);
    reader.readNextStartElement();
    QDomDocument document;
    QDomElement root = document.createElement(reader.qualifiedName().toString());
    document.appendChild(root);
    while (reader.readNextStartElement()) {
        const bool isElement = reader.qualifiedName() == ElementTag;
        const bool isNode = reader.qualifiedName() == NodeTag;
        if ((isElement && useElement) || (isNode && useNode)) {
            const QDomElement record = readElement(&reader, document);
            root.appendChild(record);
            (isElement ? useElement : useNode)(record);
            root.removeChild(record);
        } else {
            reader.skipCurrentElement();
        }
    }
}
