#include "ProjectFile.h"

#include "XmlFile.h"
#include "XmlUtils.h"

#include <QHash>
#include <QTextCodec>
#include <QXmlStreamWriter>

namespace {

constexpr XmlKind ProjectKind = {"project file", "VortelProject"};

const QString PartTag = QStringLiteral("ProjectPart");
const QString PartId = QStringLiteral("ID");
const QString FormatAttribute = QStringLiteral("Format");

std::optional<QString> decoded(const QByteArray& bytes, QString* reason) {
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || text.contains(QChar::Null)) {
        *reason = QStringLiteral("is not a project file: it is not UTF-8 text");
        return {};
    }
    // They would go with the next save in any case, and leave behind what they parted.
    return XmlUtils::withoutForbidden(text);
}

bool isReadable(const QDomElement& root, QString* reason) {
    bool isNumber = false;
    const int format = root.attribute(FormatAttribute).toInt(&isNumber);
    if (!isNumber || format < 1) {
        *reason =
            QStringLiteral("is not a project file: it does not tell the number of its format");
        return false;
    }
    if (format > ProjectFile::Format) {
        *reason = QStringLiteral(
                      "was written by a newer version of the program: it is of format %1, and this "
                      "version reads up to %2")
                      .arg(format)
                      .arg(ProjectFile::Format);
        return false;
    }
    return true;
}

void numberFromZero(const QDomElement& circuit) {
    const QString elementTag = QStringLiteral("CircuitElement");
    const QString nodeTag = QStringLiteral("CircuitNode");
    const QString terminalTag = QStringLiteral("ElementNode");
    const QString reference = QStringLiteral("ElementID");
    QHash<QString, int> numbers;
    int next = 0;
    for (QDomElement e = circuit.firstChildElement(elementTag); !e.isNull();
         e = e.nextSiblingElement(elementTag)) {
        numbers.insert(e.attribute(PartId), next);
        e.setAttribute(PartId, next++);
    }
    for (QDomElement node = circuit.firstChildElement(nodeTag); !node.isNull();
         node = node.nextSiblingElement(nodeTag)) {
        for (QDomElement e = node.firstChildElement(terminalTag); !e.isNull();
             e = e.nextSiblingElement(terminalTag)) {
            const auto number = numbers.constFind(e.attribute(reference));
            if (number != numbers.constEnd()) {
                e.setAttribute(reference, *number);
            }
        }
    }
}

/// Sorted: the document itself keeps attributes in the order of a hash.
QMap<QString, QString> attributesOf(const QDomElement& element) {
    QMap<QString, QString> sorted;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        sorted.insert(attribute.name(), attribute.value());
    }
    return sorted;
}

void writeNode(QXmlStreamWriter& out, const QDomNode& node) {
    const QString text = XmlUtils::withoutForbidden(node.nodeValue());
    switch (node.nodeType()) {
        case QDomNode::ElementNode: {
            out.writeStartElement(node.nodeName());
            const QMap<QString, QString> attributes = attributesOf(node.toElement());
            for (auto it = attributes.begin(); it != attributes.end(); ++it) {
                out.writeAttribute(it.key(), XmlUtils::withoutForbidden(it.value()));
            }
            for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
                writeNode(out, child);
            }
            out.writeEndElement();
            break;
        }
        case QDomNode::TextNode:
            out.writeCharacters(text);
            break;
        case QDomNode::CDATASectionNode:
            // Splits what holds the section's own end.
            out.writeCDATA(text);
            break;
        case QDomNode::CommentNode:
            out.writeComment(text);
            break;
        case QDomNode::ProcessingInstructionNode:
            out.writeProcessingInstruction(node.nodeName(), text);
            break;
        default:
            break;
    }
}

}  // namespace

ProjectFile::ProjectFile() {
    QDomElement root = m_document.createElement(QLatin1String(ProjectKind.rootTag));
    root.setAttribute(FormatAttribute, Format);
    m_document.appendChild(root);
}

std::optional<ProjectFile> ProjectFile::read(const QString& fileName, QString* reason) {
    const std::optional<QByteArray> bytes = readRegularFile(fileName, reason);
    return bytes ? fromBytes(*bytes, reason) : std::nullopt;
}

std::optional<ProjectFile> ProjectFile::fromBytes(const QByteArray& bytes, QString* reason) {
    const std::optional<QString> text = decoded(bytes, reason);
    const std::optional<QDomDocument> document =
        text ? parseXmlFile(*text, ProjectKind, reason) : std::nullopt;
    if (!document || !isReadable(document->documentElement(), reason)) {
        return {};
    }
    ProjectFile file;
    file.m_document = *document;
    return file;
}

QDomElement ProjectFile::part(const QString& id) const {
    QDomElement part = root().firstChildElement(PartTag);
    while (!part.isNull() && part.attribute(PartId) != id) {
        part = part.nextSiblingElement(PartTag);
    }
    return part;
}

QDomElement ProjectFile::addPart(const QString& id) {
    QDomElement part = m_document.createElement(PartTag);
    part.setAttribute(PartId, id);
    root().appendChild(part);
    return part;
}

void ProjectFile::keepStrangers(const ProjectFile& earlier) {
    const QMap<QString, QString> attributes = attributesOf(earlier.root());
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        if (!root().hasAttribute(it.key())) {
            root().setAttribute(it.key(), it.value());
        }
    }
    for (QDomNode node = earlier.root().firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement element = node.toElement();
        const QString id = element.attribute(PartId);
        // A second part of one ID was never read, so it isn't known either.
        const bool isKnown =
            element.tagName() == PartTag && !part(id).isNull() && earlier.part(id) == element;
        if (!isKnown) {
            root().appendChild(m_document.importNode(node, true));
        }
    }
}

QByteArray ProjectFile::toBytes() const {
    numberFromZero(part(QLatin1String(CircuitPart)));
    QByteArray bytes;
    QXmlStreamWriter out(&bytes);
    out.setAutoFormatting(true);
    out.setAutoFormattingIndent(2);
    out.writeStartDocument();
    writeNode(out, root());
    out.writeEndDocument();
    return bytes;
}
