#include "CircuitFile.h"

#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringList>

#include <algorithm>

namespace {

constexpr char RootTag[] = "VortelCircuit";

/// The records of a circuit file lie four levels deep. The XML reader recurses and would run out of
/// stack on a file that is nested without end.
constexpr int DeepestNesting = 1000;

/// Position after the tag that opens at `start`; a `>` within quotes doesn't end it.
int endOfTag(const QString& text, int start) {
    QChar quote;
    for (int i = start; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!quote.isNull()) {
            if (c == quote) {
                quote = QChar();
            }
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('>')) {
            return i + 1;
        }
    }
    return text.size();
}

int skipPast(const QString& text, const char* end, int from) {
    const int found = text.indexOf(QLatin1String(end), from);
    return found < 0 ? text.size() : found + static_cast<int>(qstrlen(end));
}

bool isNestedTooDeeply(const QString& text) {
    int depth = 0;
    int i = 0;
    while ((i = text.indexOf(QLatin1Char('<'), i)) >= 0) {
        const QStringView rest = QStringView(text).mid(i, 9);
        if (rest.startsWith(QLatin1String("<!--"))) {
            i = skipPast(text, "-->", i + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            i = skipPast(text, "]]>", i + 9);
        } else if (rest.startsWith(QLatin1String("<?"))) {
            i = skipPast(text, "?>", i + 2);
        } else if (rest.startsWith(QLatin1String("<!"))) {
            i += 2;
        } else if (rest.startsWith(QLatin1String("</"))) {
            --depth;
            i += 2;
        } else {
            const int end = endOfTag(text, i + 1);
            const bool closesItself = end - i > 2 && text.at(end - 2) == QLatin1Char('/');
            if (!closesItself && ++depth > DeepestNesting) {
                return true;
            }
            i = end;
        }
    }
    return false;
}

/// The whole text up to the first NUL, as the editor reads it.
std::optional<QString> readText(const QString& fileName, QString* reason) {
    const QFileInfo info(fileName);
    if (!info.exists()) {
        *reason = QStringLiteral("does not exist");
        return {};
    }
    if (info.isDir()) {
        *reason = QStringLiteral("is a folder");
        return {};
    }
    if (!info.isFile()) {
        *reason = QStringLiteral("is not a regular file");
        return {};
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return {};
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        *reason = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return {};
    }
    const int end = bytes.indexOf('\0');
    return QString::fromLatin1(end < 0 ? bytes : bytes.left(end));
}

bool parse(const QString& text, QDomDocument* document, QString* reason) {
    if (text.trimmed().isEmpty()) {
        *reason = QStringLiteral("is empty");
        return false;
    }
    if (text.contains(QLatin1String("<!ENTITY"))) {
        *reason = QStringLiteral("declares entities, which a circuit file never does");
        return false;
    }
    if (isNestedTooDeeply(text)) {
        *reason = QStringLiteral("is nested too deeply");
        return false;
    }
    QString error;
    int line = 0;
    if (!document->setContent(text, &error, &line)) {
        *reason = QStringLiteral("is not well-formed XML: %1 in line %2").arg(error).arg(line);
        return false;
    }
    const QString tag = document->documentElement().tagName();
    if (tag != QLatin1String(RootTag)) {
        *reason = QStringLiteral("is not a circuit file: its root element is \"%1\", not \"%2\"")
                      .arg(tag, QLatin1String(RootTag));
        return false;
    }
    return true;
}

QVector<CircuitRecords::Terminal> terminalsOf(const QDomElement& node) {
    QVector<CircuitRecords::Terminal> terminals;
    const QString tag = QStringLiteral("ElementNode");
    for (QDomElement e = node.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag)) {
        terminals.append({e.attribute(QStringLiteral("ElementID")).toInt(),
                          e.attribute(QStringLiteral("Name"))});
    }
    return terminals;
}

QString counted(int count, const char* noun) {
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(noun),
                                                    count == 1 ? QString() : QStringLiteral("s"));
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

}  // namespace

std::optional<CircuitRecords> readCircuitFile(const QString& fileName, QString* reason) {
    const std::optional<QString> text = readText(fileName, reason);
    QDomDocument document;
    if (!text || !parse(*text, &document, reason)) {
        return {};
    }
    CircuitRecords records;
    for (QDomElement e = document.documentElement().firstChildElement(); !e.isNull();
         e = e.nextSiblingElement()) {
        if (e.tagName() == QLatin1String("CircuitElement")) {
            ++records.elementCount;
        } else if (e.tagName() == QLatin1String("CircuitNode")) {
            records.nodes.append(terminalsOf(e));
        }
    }
    return records;
}

QString lossesOf(const CircuitRecords& records, ICircuit& circuit) {
    QStringList parts;
    const int lostElements = records.elementCount - circuit.elementCount();
    if (lostElements > 0) {
        parts.append(counted(lostElements, "element"));
    }
    if (const int lost = lostNodes(records, circuit)) {
        parts.append(counted(lost, "node"));
    }
    return parts.isEmpty()
               ? QString()
               : parts.join(QStringLiteral(" and ")) + QStringLiteral(" could not be restored");
}
