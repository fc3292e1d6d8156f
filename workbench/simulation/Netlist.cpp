#include "Netlist.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "DrawingType.h"
#include "ElementDescription.h"
#include "SpiceModels.h"
#include "SpiceText.h"
#include "SubCircuitElement.h"

#include <QRegularExpression>
#include <QVector>

#include <algorithm>

namespace {

const QString GroundName = QStringLiteral("gnd");

bool isGround(CircuitNode* node) {
    return node->hasFixedName() && node->name() == GroundName;
}

/// "R2" before "R10".
bool comesBefore(CircuitElement* a, CircuitElement* b) {
    static const QRegularExpression numbered(QStringLiteral("\\A(.*?)(\\d{1,9})\\z"));
    const auto left = numbered.match(a->name());
    const auto right = numbered.match(b->name());
    if (left.hasMatch() && right.hasMatch() && left.captured(1) == right.captured(1)) {
        return left.captured(2).toInt() < right.captured(2).toInt();
    }
    return a->name() < b->name();
}

QString definitionName(SubCircuitElement* element) {
    const QString type = element->description()->data().type;
    return type.contains(QLatin1Char('~')) ? DrawingType::shortName(type)
                                           : type.section(QLatin1Char('.'), 0, 0);
}

/// The terminals whose currents the results of a type need.
QStringList measuredTerminals(const SpiceData& spice) {
    static const QRegularExpression current(QStringLiteral("\\bi\\(([^)]+)\\)"));
    QStringList names;
    for (const QString& result : spice.results) {
        for (auto it = current.globalMatch(result); it.hasNext();) {
            names.append(it.next().captured(1));
        }
    }
    names.removeDuplicates();
    return names;
}

/// The lines of one circuit: the whole, or the inside of a sub-circuit.
class CircuitWriter {
public:
    CircuitWriter(ICircuit& circuit, const SpiceModels& models, NetlistProbes probes)
        : m_circuit(circuit), m_models(models), m_probes(probes) {
        nameElements();
        nameNets();
    }

    void write();
    QString netOf(CircuitNode* node) const { return m_nets.value(node); }
    QStringList parameterLines() const;

    Netlist result;
    /// In the order of their first use.
    QStringList modelLines;
    QVector<SubCircuitElement*> subCircuits;

private:
    void nameElements();
    void nameNets();
    void writeElement(CircuitElement* element);
    void writeSubCircuit(SubCircuitElement* element);
    void writeDigitalProbes();
    /// Where the element's own lines reach the terminal: behind its ammeter, if it has one.
    QString connect(CircuitElementNode* terminal, bool measured);
    QString modelOf(CircuitElement* element);
    QString expand(CircuitElement* element, const QString& text, const QString& model);
    QString meaning(CircuitElement* element, const QString& name, const QString& model);
    /// The voltage source that carries the current of the element that controls this one.
    QString branchOf(CircuitElement* element);
    CircuitElement* controlOf(CircuitElement* element) const;
    static QString ammeter(const QString& stem, const QString& terminal) {
        static const QRegularExpression strange(QStringLiteral("\\W"));
        return QStringLiteral("Vi_%1_%2").arg(stem, QString(terminal).replace(strange, "_"));
    }
    static bool isSource(CircuitElement* element) {
        const QStringList& lines = element->description()->data().spice.lines;
        return !lines.isEmpty() && lines.first().startsWith(QLatin1Char('V'));
    }

    ICircuit& m_circuit;
    const SpiceModels& m_models;
    const NetlistProbes m_probes;
    QVector<CircuitElement*> m_elements;
    QHash<CircuitElement*, QString> m_stems;
    QHash<CircuitNode*, QString> m_nets;
    SpiceNames m_netNames;
    // Where the lines of the element under way reach its terminals.
    QHash<QString, QString> m_connections;
    // Elements whose current others name.
    QSet<CircuitElement*> m_controls;
    QSet<QString> m_modelsUsed;
    // The names of blocks that types bring along, by type.
    QHash<QString, QString> m_definitions;
    SpiceNames m_definitionNames;
};

void CircuitWriter::nameElements() {
    SpiceNames names;
    SpiceNames devices;
    for (int i = 0; i < m_circuit.elementCount(); ++i) {
        if (CircuitElement* element = CircuitElement::from(m_circuit.element(i))) {
            m_elements.append(element);
            const QString line = element->description()->data().spice.lines.value(0);
            const QChar kind = line.isEmpty() ? QLatin1Char('X') : line.at(0);
            // A resistor "Load" is written as "RLoad", which another one may be named.
            QString stem = names.unique(element->name());
            while (devices.isTaken(SpiceText::designator(kind, stem))) {
                stem = names.unique(element->name());
            }
            devices.unique(SpiceText::designator(kind, stem));
            m_stems.insert(element, stem);
        }
    }
    std::stable_sort(m_elements.begin(), m_elements.end(), comesBefore);
    for (CircuitElement* element : qAsConst(m_elements)) {
        CircuitElement* control = controlOf(element);
        if (control && !isSource(control)) {
            m_controls.insert(control);
        }
    }
}

void CircuitWriter::nameNets() {
    // Both mean ground to the simulator.
    m_netNames.unique(QStringLiteral("0"));
    m_netNames.unique(GroundName);
    const QStringList names = m_stems.values();
    const QSet<QString> stems(names.begin(), names.end());
    QHash<QString, QString> shared;
    for (int i = 0; i < m_circuit.nodeCount(); ++i) {
        CircuitNode* node = CircuitNode::from(m_circuit.node(i));
        if (!node) {
            continue;
        }
        // Nets of one name are one net, however the drawing shows them.
        QString name = isGround(node) ? QStringLiteral("0") : shared.value(node->name());
        if (name.isEmpty()) {
            // What an element's own lines have inside is named after the element: "OP1_o".
            const bool looksInner = stems.contains(node->name().section(QLatin1Char('_'), 0, -2));
            name = m_netNames.unique(node->name() + QLatin1String(looksInner ? "_net" : ""));
        }
        shared.insert(node->name(), name);
        m_nets.insert(node, name);
        const QString vector =
            name == QLatin1String("0") ? QString() : QStringLiteral("v(%1)").arg(name.toLower());
        result.nets.insert(node->name(), vector);
    }
}

void CircuitWriter::write() {
    for (CircuitElement* element : qAsConst(m_elements)) {
        if (auto* subCircuit = qobject_cast<SubCircuitElement*>(element)) {
            writeSubCircuit(subCircuit);
        } else {
            writeElement(element);
        }
    }
    if (m_probes == NetlistProbes::All) {
        writeDigitalProbes();
    }
}

QString CircuitWriter::connect(CircuitElementNode* terminal, bool measured) {
    CircuitElement* element = terminal->owner();
    const QString stem = m_stems.value(element);
    const QPair<QString, QString> key{element->name(), terminal->name()};
    const QString net =
        terminal->node()
            ? m_nets.value(terminal->node())
            : m_netNames.unique(QStringLiteral("open_%1_%2").arg(stem, terminal->name()));
    const QString vector =
        net == QLatin1String("0") ? QString() : QStringLiteral("v(%1)").arg(net.toLower());
    result.voltages.insert(key, vector);
    if (!measured || terminal->type() == QLatin1String("d")) {
        return net;
    }
    const QString source = ammeter(stem, terminal->name());
    const QString behind = m_netNames.unique(QStringLiteral("%1_%2").arg(stem, terminal->name()));
    result.lines.append(QStringLiteral("%1 %2 %3 0").arg(source, net, behind));
    result.ammeters.insert(source.toLower(), element->name());
    result.currents.insert(key, QStringLiteral("i(%1)").arg(source.toLower()));
    return behind;
}

void CircuitWriter::writeElement(CircuitElement* element) {
    const SpiceData& spice = element->description()->data().spice;
    const bool probed = m_probes == NetlistProbes::All;
    const QStringList measured = probed ? measuredTerminals(spice) : QStringList();
    const bool isControl = m_controls.contains(element);
    m_connections.clear();
    for (CircuitElementNode* terminal : element->terminals()) {
        const bool first = terminal == element->terminals().first();
        const bool hasLines = !spice.lines.isEmpty();
        m_connections.insert(terminal->name(),
                             connect(terminal, hasLines && ((isControl && first) ||
                                                            measured.contains(terminal->name()))));
    }
    if (spice.lines.isEmpty()) {
        return;
    }
    const QString model = modelOf(element);
    const QStringList block = m_models.lines(element->modelName());
    const bool isBlock = block.value(0).startsWith(QLatin1String(".subckt"), Qt::CaseInsensitive);
    const QStringList& lines =
        isBlock && !spice.subcircuitLines.isEmpty() ? spice.subcircuitLines : spice.lines;
    for (const QString& line : lines) {
        const QString text = expand(element, line, model);
        result.elements.insert(text.section(QLatin1Char(' '), 0, 0).toLower(), element->name());
        result.lines.append(text);
    }
}

void CircuitWriter::writeSubCircuit(SubCircuitElement* element) {
    const bool probed = m_probes == NetlistProbes::All;
    const QStringList measured =
        probed ? measuredTerminals(element->description()->data().spice) : QStringList();
    QString line = SpiceText::designator(QLatin1Char('X'), m_stems.value(element));
    result.elements.insert(line.toLower(), element->name());
    for (CircuitElementNode* terminal : element->terminals()) {
        line += QLatin1Char(' ') + connect(terminal, measured.contains(terminal->name()));
    }
    result.lines.append(line + QLatin1Char(' ') + definitionName(element));
    subCircuits.append(element);
}

void CircuitWriter::writeDigitalProbes() {
    QMap<QString, CircuitNode*> digital;
    for (auto it = m_nets.begin(); it != m_nets.end(); ++it) {
        if (it.key()->type() == QLatin1String("d")) {
            digital.insert(it.value(), it.key());
        }
    }
    for (auto it = digital.begin(); it != digital.end(); ++it) {
        const QString shown = m_netNames.unique(it.key() + QStringLiteral("_level"));
        result.lines.append(QStringLiteral("Av_%1 [%1] [%2] vortel_level").arg(it.key(), shown));
        const QString vector = QStringLiteral("v(%1)").arg(shown.toLower());
        result.nets.insert(it.value()->name(), vector);
        for (CircuitElementNode* terminal : it.value()->terminals()) {
            result.voltages.insert({terminal->owner()->name(), terminal->name()}, vector);
        }
    }
    if (!digital.isEmpty()) {
        modelLines.append(
            QStringLiteral(".model vortel_level dac_bridge(out_low=0 out_high=1 out_undef=0.5)"));
    }
}

QString CircuitWriter::modelOf(CircuitElement* element) {
    const QStringList block = m_models.lines(element->modelName());
    if (!block.isEmpty()) {
        if (!m_modelsUsed.contains(element->modelName())) {
            m_modelsUsed.insert(element->modelName());
            modelLines += block;
        }
        return element->modelName();
    }
    const ElementTypeData& type = element->description()->data();
    if (!type.spice.definition.isEmpty()) {
        QString& name = m_definitions[type.type];
        if (name.isEmpty()) {
            name = m_definitionNames.unique(QLatin1String("netlist_") +
                                            type.type.section(QRegularExpression("[~.]"), 0, 0));
            QStringList lines = type.spice.definition;
            lines.first().replace(QLatin1String("${model}"), name);
            modelLines += lines;
        }
        return name;
    }
    const QString& body = type.spice.model;
    if (body.isEmpty()) {
        return {};
    }
    const QString name = m_stems.value(element) + QStringLiteral("_model");
    modelLines.append(QStringLiteral(".model %1 %2").arg(name, expand(element, body, name)));
    return name;
}

QString CircuitWriter::expand(CircuitElement* element, const QString& text, const QString& model) {
    static const QRegularExpression placeholder(
        QStringLiteral("([A-Za-z])?\\$(?:\\{([^}]*)\\}|\\(([^)]*)\\))"));
    QString result;
    int end = 0;
    for (auto it = placeholder.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result += text.mid(end, match.capturedStart() - end);
        const QString before = match.captured(1);
        const QString name = match.captured(2);
        if (!match.captured(3).isEmpty()) {
            result += before + SpiceText::operand(element->parameter(match.captured(3)));
        } else if (name == QLatin1String("name") && !before.isEmpty()) {
            result += SpiceText::designator(before.at(0), m_stems.value(element));
        } else {
            result += before + meaning(element, name, model);
        }
        end = match.capturedEnd();
    }
    return result + text.mid(end);
}

QString CircuitWriter::meaning(CircuitElement* element, const QString& name, const QString& model) {
    if (name == QLatin1String("name")) {
        return m_stems.value(element);
    }
    if (name == QLatin1String("model")) {
        return model;
    }
    if (name == QLatin1String("branch")) {
        return branchOf(element);
    }
    for (const SpiceData::Choice& choice : element->description()->data().spice.choices) {
        if (choice.name == name) {
            const QString value = element->parameter(choice.parameter);
            return expand(
                element, choice.texts.value(value, choice.texts.value(QStringLiteral("*"))), model);
        }
    }
    const auto connection = m_connections.constFind(name);
    return connection == m_connections.constEnd() ? SpiceText::value(element->parameter(name))
                                                  : *connection;
}

CircuitElement* CircuitWriter::controlOf(CircuitElement* element) const {
    if (!element->description()->data().resolvesControls) {
        return nullptr;
    }
    const QString name = element->parameter(QStringLiteral("control"));
    for (CircuitElement* candidate : m_elements) {
        if (!name.isEmpty() && candidate->name() == name) {
            return candidate;
        }
    }
    return nullptr;
}

QString CircuitWriter::branchOf(CircuitElement* element) {
    CircuitElement* control = controlOf(element);
    if (!control) {
        // Of an element that there isn't: the simulator names the line.
        return element->parameter(QStringLiteral("control"));
    }
    const QString stem = m_stems.value(control);
    return isSource(control) ? SpiceText::designator(QLatin1Char('V'), stem)
                             : ammeter(stem, control->elementNodeNames().value(0));
}

QStringList CircuitWriter::parameterLines() const {
    QStringList lines;
    for (int i = 0; i < m_circuit.globalVariableCount(); ++i) {
        const QString text = m_circuit.globalVariableValue(i).toString();
        // A text has no place in what the simulator computes.
        if (m_circuit.isRealGlobalVariable(i) || SpiceText::isNumeric(text)) {
            lines.append(QStringLiteral(".param %1 = %2")
                             .arg(m_circuit.globalVariableName(i), SpiceText::value(text)));
        }
    }
    return lines;
}

/// The definitions of the sub-circuits used, each once, innermost types included.
class SubCircuitWriter {
public:
    SubCircuitWriter(const SpiceModels& models) : m_models(models) {}

    void write(const QVector<SubCircuitElement*>& elements) {
        for (SubCircuitElement* element : elements) {
            const QString type = element->description()->data().type;
            if (!m_written.contains(type)) {
                m_written.insert(type);
                writeOne(element);
            }
        }
    }

    QStringList lines;

private:
    void writeOne(SubCircuitElement* element) {
        CircuitWriter inside(*static_cast<ICircuit*>(element), m_models, NetlistProbes::None);
        inside.write();
        QString head = QStringLiteral(".subckt ") + definitionName(element);
        for (CircuitElementNode* terminal : element->terminals()) {
            head += QLatin1Char(' ') +
                    inside.netOf(CircuitNode::from(element->innerNode(terminal->name())));
        }
        lines.append(QString());
        lines.append(head);
        lines += inside.parameterLines() + inside.modelLines + inside.result.lines;
        lines.append(QStringLiteral(".ends"));
        write(inside.subCircuits);
    }

    const SpiceModels& m_models;
    QSet<QString> m_written;
};

QStringList section(const char* title, const QStringList& lines) {
    return lines.isEmpty()
               ? lines
               : QStringList{QString(), QStringLiteral("* ") + QLatin1String(title)} + lines;
}

}  // namespace

Netlist writeNetlist(Circuit& circuit, const SpiceModels& models, NetlistProbes probes) {
    CircuitWriter writer(circuit, models, probes);
    writer.write();
    SubCircuitWriter subCircuits(models);
    subCircuits.write(writer.subCircuits);
    Netlist netlist = writer.result;
    QString title = circuit.title().simplified();
    netlist.lines = QStringList{title.isEmpty() ? QStringLiteral("Untitled") : title} +
                    section("Parameters", writer.parameterLines()) +
                    section("Models", writer.modelLines) +
                    section("Elements", writer.result.lines) + subCircuits.lines +
                    section("Texts of the drawing", models.furtherLines());
    return netlist;
}
