#include "ProjectFile.h"

#include "ProjectWriter.h"
#include "QtSeries.h"
#include "XmlFile.h"
#include "XmlUtils.h"

#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>
#include <utility>

namespace {

constexpr XmlKind ProjectKind = {"project file", "VortelProject"};

const QString PartTag = QStringLiteral("ProjectPart");
const QString PartId = QStringLiteral("ID");
const QString FormatAttribute = QStringLiteral("Format");

/// What the parts of this program write. Their own attributes first, then their records with what
/// these may hold; records of elements and nodes tell of themselves. Some have children of one
/// kind.
struct KnownRecord {
    const char* tag;
    QStringList attributes;
    QString child = {};
    QStringList childAttributes = {};
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
    const QString run = QStringLiteral("Run");
    const QStringList ofRun = words("Start Length Script Bold Italic Underline Color");
    static const QVector<KnownPart> parts = {
        {ProjectFile::CircuitPart,
         words("ID Title"),
         {{"CircuitElement", {}},
          {"CircuitNode", {}},
          {"GlobalVar", words("Name Value IsReal IsString")},
          {"TextBox",
           words("FontFamily FontSize PixelSize X Y Width Height BorderColor FillColor TextColor"),
           run, ofRun},
          {"EPTextBox",
           words(
               "FontFamily FontSize PixelSize FillColor SizedByHand X Y Width Height ElementIndex "
               "Property")},
          {"GlobalParamTextBox",
           words("GlobalParamName FontFamily FontSize PixelSize X Y Width Height"), run, ofRun}}},
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

bool hasOnly(const QDomElement& record, const QStringList& known) {
    const QDomNamedNodeMap attributes = record.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        if (!known.contains(attributes.item(i).nodeName())) {
            return false;
        }
    }
    return true;
}

bool isBlank(const QDomNode& node) {
    return node.isCharacterData() && !node.isComment() &&
           XmlUtils::withoutForbidden(node.nodeValue()).trimmed().isEmpty();
}

std::optional<QString> decoded(const QByteArray& bytes, QString* reason) {
    QString text;
    if (!QtSeries::decodeUtf8(bytes, &text) || text.contains(QChar::Null)) {
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
        const QStringView rest = QStringView(text).mid(tag, 9);
        int from = tag + 1;
        if (rest.startsWith(QLatin1String("<!--"))) {
            from = text.indexOf(QLatin1String("-->"), tag + 4);
        } else if (rest == QLatin1String("<![CDATA[")) {
            from = text.indexOf(QLatin1String("]]>"), tag + 9);
        }
        next = from < 0 ? -1 : text.indexOf(QLatin1Char('<'), from);
        const bool isLeaf = next > 0 && rest.mid(1, 1) != QLatin1String("/") &&
                            rest.mid(1, 1) != QLatin1String("!") &&
                            QStringView(text).mid(next, 2) == QLatin1String("</");
        int begin = next;
        while (isLeaf && text.at(begin - 1).isSpace()) {
            --begin;
        }
        const QStringView close = QStringView(text).left(qMax(begin, 0)).right(2);
        if (isLeaf && begin < next && close.endsWith(QLatin1Char('>')) &&
            close != QLatin1String("/>")) {
            result += text.mid(taken, begin - taken) + QLatin1String("<![CDATA[") +
                      text.mid(begin, next - begin) + QLatin1String("]]>");
            taken = next;
        }
    }
    return taken == 0 ? text : result + text.mid(taken);
}

bool isKnownFormat(const QString& number, QString* reason) {
    bool isNumber = false;
    const int format = number.toInt(&isNumber);
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

void keepAttributes(const QDomElement& from, QDomElement to, const QStringList& known) {
    for (const auto& attribute : ProjectWriter::attributesOf(from)) {
        if (!to.hasAttribute(attribute.first) && !known.contains(attribute.first)) {
            to.setAttribute(attribute.first, attribute.second);
        }
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
    if (!document ||
        !isKnownFormat(document->documentElement().attribute(FormatAttribute), reason)) {
        return {};
    }
    ProjectFile file;
    file.m_document = *document;
    return file;
}

bool ProjectFile::isReadable(const QByteArray& bytes, QString* reason) {
    QString format;
    const auto visit = [&format](const QXmlStreamReader& reader, int depth) {
        if (depth == 0) {
            format = reader.attributes().value(FormatAttribute).toString();
        }
    };
    return skimXmlFile(bytes, ProjectKind, visit) ? isKnownFormat(format, reason)
                                                  : fromBytes(bytes, reason).has_value();
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

void ProjectFile::keepStrangeAttributes(const ProjectFile& earlier) {
    keepAttributes(earlier.root(), root(), {});
    for (const KnownPart& known : knownParts()) {
        const QDomElement now = part(QLatin1String(known.id));
        if (!now.isNull()) {
            keepAttributes(earlier.part(QLatin1String(known.id)), now, known.attributes);
        }
    }
}

void ProjectFile::keepStrangers(const ProjectFile& earlier) {
    keepStrangeAttributes(earlier);
    for (const KnownPart& known : knownParts()) {
        const QString id = QLatin1String(known.id);
        QDomElement now = part(id);
        const QDomElement before = earlier.part(id);
        if (now.isNull() || before.isNull()) {
            continue;
        }
        for (QDomElement record = before.firstChildElement(); !record.isNull();
             record = record.nextSiblingElement()) {
            if (!knownRecord(known, record.tagName())) {
                now.appendChild(m_document.importNode(record, true));
            }
        }
    }
    QSet<QString> known;
    for (QDomElement e = root().firstChildElement(PartTag); !e.isNull();
         e = e.nextSiblingElement(PartTag)) {
        known.insert(e.attribute(PartId));
    }
    QSet<QString> seen;
    for (QDomNode node = earlier.root().firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString id = node.toElement().attribute(PartId);
        const bool isPart = node.isElement() && node.nodeName() == PartTag;
        // A second part of one ID was never read, so it isn't known either.
        const bool isFirst = isPart && !seen.contains(id);
        if (isFirst) {
            seen.insert(id);
        }
        if ((!isFirst || !known.contains(id)) && !isBlank(node)) {
            root().appendChild(m_document.importNode(node, true));
            if (isPart) {
                known.insert(id);
            }
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
            bool isStrange = !hasOnly(record, kind->attributes);
            for (QDomElement child = record.firstChildElement(); !child.isNull();
                 child = child.nextSiblingElement()) {
                isStrange |= child.tagName() != kind->child ||
                             !hasOnly(child, kind->childAttributes) ||
                             !child.firstChildElement().isNull();
            }
            count += isStrange ? 1 : 0;
        }
    }
    return count;
}

QByteArray ProjectFile::toBytes() const {
    return ProjectWriter(*this).finish();
}
