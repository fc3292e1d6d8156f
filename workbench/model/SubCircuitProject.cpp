#include "SubCircuitProject.h"

#include "ProjectFile.h"
#include "QtSeriesXml.h"
#include "XmlUtils.h"

#include <QFile>
#include <QXmlStreamReader>
#include <QtEndian>

namespace SubCircuitProject {

namespace {

const QString PartTag = QStringLiteral("ProjectPart");
const QString CircuitPartId = QStringLiteral("VortelCircuit");
const QString InfoTag = QStringLiteral("CircuitInfo");
const QString PayloadTag = QStringLiteral("VortelProjectFile");

/// A document is destroyed level by level, on the stack. Projects have five levels.
constexpr int DeepestNesting = 100;
/// Bytes. A circuit of a hundred thousand elements stays below.
constexpr quint32 LargestProject = 256u << 20;
constexpr int LargestPayload = 64 << 20;

bool isSound(const QByteArray& bytes, QString* problem) {
    QXmlStreamReader reader(bytes);
    int depth = 0;
    while (!reader.atEnd() && depth <= DeepestNesting) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
    }
    if (depth > DeepestNesting) {
        *problem = QStringLiteral("it is nested too deeply");
    } else if (reader.hasError()) {
        *problem = QStringLiteral("it is no XML: %1 in line %2")
                       .arg(reader.errorString())
                       .arg(reader.lineNumber());
    }
    return problem->isEmpty();
}

QDomDocument parse(const QByteArray& bytes, QString* problem) {
    QDomDocument document;
    QString reason;
    int line = 0;
    if (!isSound(bytes, problem)) {
        return {};
    }
    if (!QtSeries::readXml(&document, bytes, &reason, &line)) {
        *problem = QStringLiteral("it is no XML: %1 in line %2").arg(reason).arg(line);
        return {};
    }
    return document;
}

/// The part as a document of its own.
QDomDocument documentOf(const QDomElement& part) {
    QDomDocument document;
    document.appendChild(document.importNode(part, true));
    return document;
}

QDomDocument fromProject(const QDomElement& project, QString* problem) {
    const QString format = project.attribute(QStringLiteral("Format"));
    if (format != QString::number(ProjectFile::Format)) {
        *problem = QStringLiteral("its format \"%1\" is not known").arg(format);
        return {};
    }
    for (QDomElement part = project.firstChildElement(PartTag); !part.isNull();
         part = part.nextSiblingElement(PartTag)) {
        if (part.attribute(QStringLiteral("ID")) == CircuitPartId) {
            return documentOf(part);
        }
    }
    *problem = QStringLiteral("it has no part \"%1\"").arg(CircuitPartId);
    return {};
}

QDomDocument fromInfo(const QDomElement& info, QString* problem) {
    QByteArray payload;
    XmlUtils().loadBinaryData(info.firstChildElement(PayloadTag), payload);
    return unpack(payload, LargestProject, problem);
}

}  // namespace

QDomDocument read(const QString& fileName, QString* problem) {
    problem->clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = file.errorString();
        return {};
    }
    const QDomDocument document = parse(file.readAll(), problem);
    if (!problem->isEmpty()) {
        return {};
    }
    const QDomElement root = document.documentElement();
    if (root.tagName() == InfoTag) {
        return fromInfo(root, problem);
    }
    if (root.tagName() == QLatin1String("VortelProject")) {
        return fromProject(root, problem);
    }
    if (root.tagName() != PartTag) {
        *problem = QStringLiteral("its root \"%1\" is not that of a project").arg(root.tagName());
        return {};
    }
    return documentOf(root);
}

QDomDocument unpack(const QByteArray& packed, quint32 largest, QString* problem) {
    // The first four bytes tell the length.
    const bool hasLength = packed.size() > 4 && packed.size() <= LargestPayload;
    const bool isTaken = hasLength && qFromBigEndian<quint32>(packed.constData()) <= largest;
    const QByteArray bytes = isTaken ? qUncompress(packed) : QByteArray();
    if (bytes.isEmpty()) {
        *problem = QStringLiteral("it holds no compressed project");
        return {};
    }
    const QDomDocument part = parse(bytes, problem);
    if (problem->isEmpty() && part.documentElement().tagName() != PartTag) {
        *problem = QStringLiteral("what it holds is no project part");
        return {};
    }
    return part;
}

QDomDocument pack(const QDomDocument& part) {
    QDomDocument info;
    QDomElement root = info.createElement(InfoTag);
    QDomElement payload = info.createElement(PayloadTag);
    info.appendChild(root);
    root.appendChild(payload);
    XmlUtils::storeBinaryData(info, payload, qCompress(part.toByteArray(-1)));
    return info;
}

QList<QDomElement> records(const QDomDocument& part, const char* tag) {
    return XmlUtils().findElements(part.documentElement(), QLatin1String(tag));
}

}  // namespace SubCircuitProject
