#include "CircuitFileText.h"

#include <QBuffer>
#include <QDomDocument>
#include <QXmlStreamReader>

#include <utility>

namespace {

/// Of a record in its file: more is no record of ours, and documents recurse.
constexpr int DeepestNesting = 100;

const QLatin1String ElementTag("CircuitElement");
const QLatin1String NodeTag("CircuitNode");

/// Whether the text has nothing that streams and documents might take differently, faults aside.
bool hasPlainMarkup(const QByteArray& text) {
    uchar quote = 0;
    bool isInTag = false;
    // It ends with a NUL.
    for (const char* at = text.constData(); *at != 0; ++at) {
        const auto c = static_cast<uchar>(*at);
        if (!isInTag) {
            if (c == '<') {
                isInTag = true;
                const bool isDeclaration = at[1] == '!' && qstrncmp(at, "<!DOCTYPE ", 10) != 0;
                if (at[1] == '?' || isDeclaration) {
                    return false;
                }
            }
        } else if (quote != 0) {
            if (c == quote) {
                quote = 0;
            } else if (c < 0x20) {
                return false;
            }
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            isInTag = false;
        } else if (c == '[' || c >= 0x80) {
            return false;
        }
    }
    return true;
}

/// Reads piece by piece: of a text that it is given as a whole a reader makes three copies.
class TextReader : public QXmlStreamReader {
public:
    explicit TextReader(const QByteArray& text) {
        m_text.setData(text);
        m_text.open(QIODevice::ReadOnly);
        setDevice(&m_text);
        // As the documents do it: a prefix is a part of the name.
        setNamespaceProcessing(false);
    }

private:
    QBuffer m_text;
};

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

CircuitFileText::CircuitFileText(QByteArray text) : m_text(std::move(text)) {
    m_isPlain = hasPlainMarkup(m_text) && isWellFormed();
}

bool CircuitFileText::isWellFormed() {
    TextReader reader(m_text);
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
    TextReader reader(m_text);
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
