#include "ProjectWriter.h"

#include "XmlUtils.h"

#include <algorithm>

namespace {

const QString ElementTag = QStringLiteral("CircuitElement");
const QString NodeTag = QStringLiteral("CircuitNode");
const QString TerminalTag = QStringLiteral("ElementNode");
const QString Id = QStringLiteral("ID");
const QString Reference = QStringLiteral("ElementID");

QString textOf(const QDomNode& node) {
    return XmlUtils::withoutForbidden(node.nodeValue());
}

}  // namespace

ProjectWriter::ProjectWriter(const ProjectFile& file) : m_file(file), m_out(&m_bytes) {
    m_out.setAutoFormatting(true);
    m_out.setAutoFormattingIndent(2);
    m_out.writeStartDocument();
}

void ProjectWriter::number(QDomElement record) {
    if (record.tagName() == ElementTag) {
        m_numbers.insert(record.attribute(Id), m_next);
        record.setAttribute(Id, m_next++);
        return;
    }
    for (QDomElement e = record.firstChildElement(TerminalTag); !e.isNull();
         e = e.nextSiblingElement(TerminalTag)) {
        const auto number = m_numbers.constFind(e.attribute(Reference));
        if (number != m_numbers.constEnd()) {
            e.setAttribute(Reference, *number);
        }
    }
}

std::vector<std::pair<QString, QString>> ProjectWriter::attributesOf(const QDomNode& element) {
    std::vector<std::pair<QString, QString>> sorted;
    const QDomNamedNodeMap attributes = element.attributes();
    const int count = attributes.count();
    sorted.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        const QDomNode attribute = attributes.item(i);
        sorted.emplace_back(attribute.nodeName(), attribute.nodeValue());
    }
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

void ProjectWriter::begin(const QDomNode& element) {
    m_out.writeStartElement(element.nodeName());
    for (const auto& attribute : attributesOf(element)) {
        m_out.writeAttribute(attribute.first, XmlUtils::withoutForbidden(attribute.second));
    }
}

void ProjectWriter::writeChildren(const QDomNode& parent) {
    for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling()) {
        write(child);
    }
}

void ProjectWriter::write(const QDomNode& node) {
    switch (node.nodeType()) {
        case QDomNode::ElementNode:
            begin(node);
            writeChildren(node);
            m_out.writeEndElement();
            break;
        case QDomNode::TextNode:
            m_out.writeCharacters(textOf(node));
            break;
        case QDomNode::CDATASectionNode:
            // Splits what holds the section's own end.
            m_out.writeCDATA(textOf(node));
            break;
        case QDomNode::CommentNode:
            m_out.writeComment(textOf(node));
            break;
        case QDomNode::ProcessingInstructionNode:
            m_out.writeProcessingInstruction(node.nodeName(), textOf(node));
            break;
        default:
            break;
    }
}

void ProjectWriter::takePiece() {
    if (m_part.isNull()) {
        m_part = m_file.root().firstChildElement();
        begin(m_file.root());
        begin(m_part);
    }
    for (QDomNode child = m_part.firstChild(); !child.isNull(); child = m_part.firstChild()) {
        if (child.nodeName() == ElementTag || child.nodeName() == NodeTag) {
            number(child.toElement());
        }
        write(child);
        m_part.removeChild(child);
    }
}

QByteArray ProjectWriter::finish() {
    if (m_part.isNull()) {
        const QDomElement circuit = m_file.part(QLatin1String(ProjectFile::CircuitPart));
        for (const QString& tag : {ElementTag, NodeTag}) {
            for (QDomElement e = circuit.firstChildElement(tag); !e.isNull();
                 e = e.nextSiblingElement(tag)) {
                number(e);
            }
        }
        write(m_file.root());
    } else {
        takePiece();
        m_out.writeEndElement();
        for (QDomNode node = m_part.nextSibling(); !node.isNull(); node = node.nextSibling()) {
            write(node);
        }
        m_out.writeEndElement();
    }
    m_out.writeEndDocument();
    return m_bytes;
}
