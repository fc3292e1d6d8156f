#include "ProjectFile.h"

#include "XmlFile.h"
#include "XmlUtils.h"

#include <QHash>
#include <QTextCodec>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr XmlKind ProjectKind = {"project file", "VortelProject"};

const QString PartTag = QStringLiteral("ProjectPart");
const QString PartId = QStringLiteral("ID");
const QString FormatAttribute = QStringLiteral("Format");

/// What the parts of this program write. Their own attributes first, then their records with what
/// these may hold; records of elements and nodes tell of themselves.
struct KnownRecord {
    const char* tag;
    QStringList attributes;
};
struct KnownPart {
    const char* id;
    QStringList attributes;
    QVector<KnownRecord> records;
};

const QVector<KnownPart>& knownParts() {
    const auto words = [](const char* text) {
        return QString::fromLatin1(text).split(QLatin1Char(' '));
    };
    static const QVector<KnownPart> parts = {
        {ProjectFile::CircuitPart,
         words("ID Title"),
         {{"CircuitElement", {}},
          {"CircuitNode", {}},
          {"GlobalVar", words("Name Value IsReal IsString")},
          {"TextBox",
           words("FontFamily FontSize X Y Width Height BorderColor FillColor TextColor")},
          {"EPTextBox", words("FontFamily FontSize X Y Width Height ElementIndex Property")},
          {"GlobalParamTextBox", words("GlobalParamName FontFamily FontSize X Y Width Height")}}},
        {"OutputVariables",
         words("ID"),
         {{"OutputVar", words("Type Name ACType Element ElementNode Node ElementVarName")}}}};
    return parts;
}

const KnownRecord* knownRecord(const KnownPart& part, const QString& tag) {
    const auto found = std::find_if(
        part.records.begin(), part.records.end(),
        [&tag](const KnownRecord& record) { return tag == QLatin1String(record.tag); });
    return found == part.records.end() ? nullptr : &*found;
}

bool isBlank(const QDomNode& node) {
    return node.isCharacterData() && !node.isComment() &&
           XmlUtils::withoutForbidden(node.nodeValue()).trimmed().isEmpty();
}

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

/// The XML reader drops texts of nothing but blanks; in a section of their own it keeps them. Only
/// those that are the whole content of an element mean anything.
QString withKeptBlanks(const QString& text) {
    QString result;
    int taken = 0;
    int next = 0;
    for (int tag = text.indexOf(QLatin1Char('<')); tag >= 0; tag = next) {
        const QStringRef rest = text.midRef(tag, 9);
        int from = tag + 1;
        if (rest.startsWith(QLatin1String("<!--"))) {
            from = text.indexOf(QLatin1String("-->"), tag + 4);
        } else if (rest == QLatin1String("<![CDATA[")) {
            from = text.indexOf(QLatin1String("]]>"), tag + 9);
        }
        next = from < 0 ? -1 : text.indexOf(QLatin1Char('<'), from);
        const bool isLeaf = next > 0 && rest.mid(1, 1) != QLatin1String("/") &&
                            rest.mid(1, 1) != QLatin1String("!") &&
                            text.midRef(next, 2) == QLatin1String("</");
        int begin = next;
        while (isLeaf && text.at(begin - 1).isSpace()) {
            --begin;
        }
        const QStringRef close = text.midRef(0, qMax(begin, 0)).right(2);
        if (isLeaf && begin < next && close.endsWith(QLatin1Char('>')) &&
            close != QLatin1String("/>")) {
            result += text.midRef(taken, begin - taken) + QLatin1String("<![CDATA[") +
                      text.midRef(begin, next - begin) + QLatin1String("]]>");
            taken = next;
        }
    }
    return taken == 0 ? text : result + text.midRef(taken);
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

void keepAttributes(const QDomElement& from, QDomElement to, const QStringList& known) {
    const QMap<QString, QString> attributes = attributesOf(from);
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        if (!to.hasAttribute(it.key()) && !known.contains(it.key())) {
            to.setAttribute(it.key(), it.value());
        }
    }
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
        text ? parseXmlFile(withKeptBlanks(*text), ProjectKind, reason) : std::nullopt;
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

ProjectFile ProjectFile::clone() const {
    ProjectFile copy;
    copy.m_document = m_document.cloneNode(true).toDocument();
    return copy;
}

void ProjectFile::keepStrangers(const ProjectFile& earlier) {
    keepAttributes(earlier.root(), root(), {});
    for (const KnownPart& known : knownParts()) {
        const QString id = QLatin1String(known.id);
        QDomElement now = part(id);
        const QDomElement before = earlier.part(id);
        if (now.isNull() || before.isNull()) {
            continue;
        }
        keepAttributes(before, now, known.attributes);
        for (QDomElement record = before.firstChildElement(); !record.isNull();
             record = record.nextSiblingElement()) {
            if (!knownRecord(known, record.tagName())) {
                now.appendChild(m_document.importNode(record, true));
            }
        }
    }
    for (QDomNode node = earlier.root().firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement element = node.toElement();
        const QString id = element.attribute(PartId);
        // A second part of one ID was never read, so it isn't known either.
        const bool isKnown =
            element.tagName() == PartTag && !part(id).isNull() && earlier.part(id) == element;
        if (!isKnown && !isBlank(node)) {
            root().appendChild(m_document.importNode(node, true));
        }
    }
}

int ProjectFile::strangersThatGo() const {
    int count = 0;
    for (const KnownPart& known : knownParts()) {
        for (QDomElement record = part(QLatin1String(known.id)).firstChildElement();
             !record.isNull(); record = record.nextSiblingElement()) {
            const KnownRecord* kind = knownRecord(known, record.tagName());
            if (!kind || kind->attributes.isEmpty()) {
                continue;
            }
            const QDomNamedNodeMap attributes = record.attributes();
            bool isStrange = !record.firstChildElement().isNull();
            for (int i = 0; i < attributes.count(); ++i) {
                isStrange |= !kind->attributes.contains(attributes.item(i).nodeName());
            }
            count += isStrange ? 1 : 0;
        }
    }
    return count;
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
