#include "CircuitFile.h"

#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ProjectFile.h"
#include "XmlFile.h"

#include <Plexa/DataStore.h>

#include <QHash>
#include <QSet>
#include <QTextStream>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr XmlKind CircuitKind = {"circuit file", "VortelCircuit"};

QVector<CircuitRecords::Terminal> terminalsOf(const QDomElement& node) {
    QVector<CircuitRecords::Terminal> terminals;
    const QString tag = QStringLiteral("ElementNode");
    for (QDomElement e = node.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag)) {
        terminals.append({e.attribute(QStringLiteral("ElementID")).toInt(),
                          e.attribute(QStringLiteral("Name"))});
    }
    return terminals;
}

QList<QDomElement> childrenOf(const QDomElement& parent, const char* tag) {
    QList<QDomElement> children;
    for (QDomElement e = parent.firstChildElement(QLatin1String(tag)); !e.isNull();
         e = e.nextSiblingElement(QLatin1String(tag))) {
        children.append(e);
    }
    return children;
}

QString counted(int count, const char* noun, const char* plural = "s") {
    return QStringLiteral("%1 %2%3").arg(QString::number(count), QLatin1String(noun),
                                         QLatin1String(count == 1 ? "" : plural));
}

/// "a, b and c".
QString joined(QStringList parts) {
    const QString last = parts.isEmpty() ? QString() : parts.takeLast();
    return parts.isEmpty() ? last : parts.join(QLatin1String(", ")) + QLatin1String(" and ") + last;
}

int countOf(const QDomElement& parent, std::initializer_list<const char*> tags) {
    int count = 0;
    for (const char* tag : tags) {
        for (QDomElement e = parent.firstChildElement(QLatin1String(tag)); !e.isNull();
             e = e.nextSiblingElement(QLatin1String(tag))) {
            ++count;
        }
    }
    return count;
}

/// The boxes that elements get by themselves when a circuit file is opened.
int captionCount(const QDomElement& part, ICircuit* circuit) {
    int count = 0;
    const QString tag = QStringLiteral("EPTextBox");
    for (QDomElement e = part.firstChildElement(tag); circuit && !e.isNull();
         e = e.nextSiblingElement(tag)) {
        const int index = e.attribute(QStringLiteral("ElementIndex")).toInt();
        ICircuitElement* element =
            index >= 0 && index < circuit->elementCount() ? circuit->element(index) : nullptr;
        const QString property = e.attribute(QStringLiteral("Property"));
        const QStringList shown = element ? element->desc()
                                                ->info()
                                                .value(QStringLiteral("#display"))
                                                .toString()
                                                .split(QLatin1Char(' '), Qt::SkipEmptyParts)
                                          : QStringList();
        count += element && (property == QLatin1String("Caption") || shown.contains(property));
    }
    return count;
}

/// Circuit files are written in Latin-1.
bool hasLettersBeyondLatin1(const QDomElement& circuit) {
    QString text;
    QTextStream out(&text);
    for (const char* tag : {"CircuitElement", "CircuitNode"}) {
        for (QDomElement e = circuit.firstChildElement(QLatin1String(tag)); !e.isNull();
             e = e.nextSiblingElement(QLatin1String(tag))) {
            e.save(out, 0, QDomNode::EncodingFromTextStream);
        }
    }
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
}

/// The elements of the circuit by the numbers that the file gave them; of several with one number
/// the first, as the editor does it.
QHash<int, ICircuitElement*> elementsById(ICircuit& circuit) {
    QHash<int, ICircuitElement*> elements;
    for (int i = 0; i < circuit.elementCount(); ++i) {
        ICircuitElement* element = circuit.element(i);
        const int id = element->containerObject()->property("_UniqueId_").toInt();
        if (!elements.contains(id)) {
            elements.insert(id, element);
        }
    }
    return elements;
}

QHash<ICircuitElementNode*, ICircuitNode*> nodesByTerminal(ICircuit& circuit) {
    QHash<ICircuitElementNode*, ICircuitNode*> nodes;
    for (int i = 0; i < circuit.nodeCount(); ++i) {
        ICircuitNode* node = circuit.node(i);
        for (int k = 0; k < node->elementNodeCount(); ++k) {
            nodes.insert(node->elementNode(k), node);
        }
    }
    return nodes;
}

int lostNodes(const CircuitRecords& records, ICircuit& circuit) {
    const auto elements = elementsById(circuit);
    const auto nodes = nodesByTerminal(circuit);
    const auto nodeOf = [&](const CircuitRecords::Terminal& terminal) -> ICircuitNode* {
        ICircuitElement* element = elements.value(terminal.elementId);
        return element ? nodes.value(element->elementNode(terminal.name)) : nullptr;
    };
    const auto isLost = [&](const QVector<CircuitRecords::Terminal>& terminals) {
        ICircuitNode* node = terminals.size() < 2 ? nullptr : nodeOf(terminals.first());
        return !node || std::any_of(terminals.begin(), terminals.end(),
                                    [&](const auto& terminal) { return nodeOf(terminal) != node; });
    };
    return static_cast<int>(std::count_if(records.nodes.begin(), records.nodes.end(), isLost));
}

/// Makes records of the elements of a file as they are come upon.
class RecordCollector {
public:
    explicit RecordCollector(CircuitRecords* records) : m_records(records) {}

    void operator()(const QXmlStreamReader& reader, int depth) {
        if (depth == 1) {
            m_inNode = reader.qualifiedName() == QLatin1String("CircuitNode");
            if (m_inNode) {
                m_records->nodes.append(QVector<CircuitRecords::Terminal>());
            } else if (reader.qualifiedName() == QLatin1String("CircuitElement")) {
                ++m_records->elementCount;
            }
        } else if (depth == 2 && m_inNode &&
                   reader.qualifiedName() == QLatin1String("ElementNode")) {
            const QXmlStreamAttributes attributes = reader.attributes();
            m_records->nodes.last().append({attributes.value(QLatin1String("ElementID")).toInt(),
                                            attributes.value(QLatin1String("Name")).toString()});
        }
    }

private:
    CircuitRecords* m_records;
    bool m_inNode = false;
};

}  // namespace

CircuitRecords circuitRecords(const QDomElement& parent) {
    CircuitRecords records;
    for (QDomElement e = parent.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        if (e.tagName() == QLatin1String("CircuitElement")) {
            ++records.elementCount;
        } else if (e.tagName() == QLatin1String("CircuitNode")) {
            records.nodes.append(terminalsOf(e));
        }
    }
    return records;
}

std::optional<CircuitRecords> readCircuitFile(const QString& fileName, QString* reason) {
    const std::optional<QByteArray> bytes = readRegularFile(fileName, reason);
    if (!bytes) {
        return {};
    }
    // Up to the first NUL, as the editor reads it.
    const int end = bytes->indexOf('\0');
    const QString text = QString::fromLatin1(end < 0 ? *bytes : bytes->left(end));
    CircuitRecords records;
    if (skimXmlFile(text, CircuitKind, RecordCollector(&records))) {
        return records;
    }
    const std::optional<QDomDocument> document = parseXmlFile(text, CircuitKind, reason);
    if (!document) {
        return {};
    }
    return circuitRecords(document->documentElement());
}

QString lossesOf(const CircuitRecords& records, ICircuit& circuit, const FurtherLosses& further) {
    QStringList parts;
    const int lostElements = records.elementCount - circuit.elementCount();
    if (lostElements > 0) {
        parts.append(counted(lostElements, "element"));
    }
    if (const int lost = lostNodes(records, circuit)) {
        parts.append(counted(lost, "node"));
    }
    if (further.textBoxes > 0) {
        parts.append(counted(further.textBoxes, "text box", "es"));
    }
    if (further.outputVariables > 0) {
        parts.append(counted(further.outputVariables, "output variable"));
    }
    if (further.strangers > 0) {
        parts.append(QStringLiteral("what a newer version keeps in ") +
                     counted(further.strangers, "record"));
    }
    if (further.values.size() == 1) {
        parts.append(QStringLiteral("the value ") + further.values.first());
    } else if (!further.values.isEmpty()) {
        parts.append(counted(further.values.size(), "value"));
    }
    return parts.isEmpty() ? QString() : joined(parts) + QStringLiteral(" could not be restored");
}

int dropUnknownElements(ProjectFile* file, const std::function<bool(const QString&)>& isKnown) {
    const QString circuitId = QLatin1String(ProjectFile::CircuitPart);
    const auto lostOf = [&](const QDomElement& circuit) {
        QVector<bool> lost;
        for (const QDomElement& e : childrenOf(circuit, "CircuitElement")) {
            lost.append(!isKnown(e.attribute(QStringLiteral("ElementType"))));
        }
        return lost;
    };
    const QVector<bool> lost = lostOf(file->part(circuitId));
    if (!lost.contains(true)) {
        return 0;
    }
    *file = file->clone();
    QDomElement circuit = file->part(circuitId);
    QVector<int> places;
    QSet<int> lostIds;
    const QList<QDomElement> elements = childrenOf(circuit, "CircuitElement");
    for (int i = 0, next = 0; i < elements.size(); ++i) {
        places.append(lost.at(i) ? -1 : next++);
        if (lost.at(i)) {
            lostIds.insert(elements.at(i).attribute(QStringLiteral("ID")).toInt());
            circuit.removeChild(elements.at(i));
        }
    }
    for (QDomElement node : childrenOf(circuit, "CircuitNode")) {
        for (const QDomElement& terminal : childrenOf(node, "ElementNode")) {
            if (lostIds.contains(terminal.attribute(QStringLiteral("ElementID")).toInt())) {
                node.removeChild(terminal);
            }
        }
    }
    int boxes = 0;
    for (QDomElement box : childrenOf(circuit, "EPTextBox")) {
        const int place = places.value(box.attribute(QStringLiteral("ElementIndex")).toInt(), -1);
        if (place >= 0) {
            box.setAttribute(QStringLiteral("ElementIndex"), place);
        } else {
            circuit.removeChild(box);
            ++boxes;
        }
    }
    return boxes;
}

QString beyondCircuitFile(const ProjectFile& project, ICircuit* captioned) {
    QStringList parts;
    const auto count = [&parts](int number, const char* noun, const char* plural) {
        if (number > 0) {
            parts.append(counted(number, noun, plural));
        }
    };
    const QString circuitId = QLatin1String(ProjectFile::CircuitPart);
    const QDomElement circuit = project.part(circuitId);
    if (!circuit.attribute(QStringLiteral("Title")).isEmpty()) {
        parts.append(QStringLiteral("the title"));
    }
    count(countOf(circuit, {"TextBox", "EPTextBox", "GlobalParamTextBox"}) -
              captionCount(circuit, captioned),
          "text box", "es");
    count(countOf(circuit, {"GlobalVar"}), "parameter", "s");
    int strangers = 0;
    for (QDomElement e = project.root().firstChildElement(); !e.isNull();
         e = e.nextSiblingElement()) {
        const int outputs = countOf(e, {"OutputVar"});
        count(outputs, "output variable", "s");
        strangers += e != circuit && outputs == 0 && e.hasChildNodes() ? 1 : 0;
    }
    count(strangers, "foreign part", "s");
    if (hasLettersBeyondLatin1(circuit)) {
        parts.append(QStringLiteral("letters that Latin-1 lacks"));
    }
    return joined(parts);
}
