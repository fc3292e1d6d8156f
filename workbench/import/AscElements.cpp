#include "AscElements.h"

#include "AscValues.h"
#include "BoxType.h"
#include "ElementLibrary.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

QString attribute(const AscDevice& device, const char* name) {
    return device.symbol.attributes.value(QLatin1String(name)).trimmed();
}

/// All that is said behind the nets, in the order in which the simulator reads it.
QString wholeValue(const AscDevice& device, bool withSpiceLine = true) {
    QStringList parts = {attribute(device, "SpiceModel"), attribute(device, "Value"),
                         attribute(device, "Value2")};
    if (withSpiceLine) {
        parts << attribute(device, "SpiceLine") << attribute(device, "SpiceLine2");
    }
    parts.removeAll(QString());
    return parts.join(QLatin1Char(' '));
}

struct Semiconductor {
    const char* kind;
    const char* type;
    const char* terminals;
};

constexpr Semiconductor Semiconductors[] = {
    {"diode", "Diode", "A K"},       {"varactor", "Diode", "A K"}, {"zener", "ZenerDiode", "A K"},
    {"schottky", "Schottky", "A K"}, {"led", "LED", "A K"},        {"npn", "NPN", "C B E"},
    {"pnp", "PNP", "C B E"},         {"nmos", "NMOS", "D G S"},    {"pmos", "PMOS", "D G S"},
    {"njf", "NJFET", "D G S"},       {"pjf", "PJFET", "D G S"}};

/// By the symbol's kind, or by the letter that its file names.
QChar deviceLetter(const AscDevice& device) {
    const QString told = attribute(device, "Prefix").left(1).toUpper();
    if (!told.isEmpty()) {
        return told.at(0);
    }
    static const QHash<QString, QString> letters = {
        {QStringLiteral("R"), QStringLiteral("res res2")},
        {QStringLiteral("C"), QStringLiteral("cap polcap")},
        {QStringLiteral("L"), QStringLiteral("ind ind2 polyind")},
        {QStringLiteral("V"), QStringLiteral("voltage")},
        {QStringLiteral("I"), QStringLiteral("current load")},
        {QStringLiteral("B"), QStringLiteral("bv bi")},
        {QStringLiteral("D"), QStringLiteral("diode zener schottky led varactor")},
        {QStringLiteral("Q"), QStringLiteral("npn pnp")},
        {QStringLiteral("M"), QStringLiteral("nmos pmos")},
        {QStringLiteral("J"), QStringLiteral("njf pjf")},
        {QStringLiteral("S"), QStringLiteral("sw")}};
    for (auto it = letters.begin(); it != letters.end(); ++it) {
        if (it.value().split(QLatin1Char(' ')).contains(device.kind)) {
            return it.key().at(0);
        }
    }
    return {};
}

bool isNone(const QString& value) {
    bool ok = false;
    return value.isEmpty() || (value.toDouble(&ok) == 0 && ok);
}

}  // namespace

void AscElements::remark(const ImportedElement& element, const QString& text) {
    m_remarks->append(element.name + QLatin1String(": ") + text);
}

QString AscElements::value(const QString& text) const {
    return AscValues::value(text, m_context.parameters);
}

ImportedElement AscElements::elementOf(const AscDevice& device) {
    ImportedElement element;
    element.name = device.symbol.instance();
    const int earlier = m_remarks->size();
    if (!device.arePinsGuessed && map(device, &element) && doesFit(element) &&
        element.terminals.size() == device.pins.size()) {
        return element;
    }
    // What was told of the attempt is of no matter.
    m_remarks->erase(m_remarks->begin() + earlier, m_remarks->end());
    return boxOf(device);
}

bool AscElements::map(const AscDevice& device, ImportedElement* element) {
    switch (deviceLetter(device).unicode()) {
        case 'R':
        case 'C':
        case 'L':
            return mapPassive(device, element);
        case 'V':
        case 'I':
        case 'B':
            return mapSource(device, element);
        case 'D':
        case 'Q':
        case 'M':
        case 'J':
            return mapSemiconductor(device, element);
        case 'S':
            return mapSwitch(device, element);
        default:
            return false;
    }
}

bool AscElements::mapPassive(const AscDevice& device, ImportedElement* element) {
    const QChar letter = deviceLetter(device);
    const bool isPolarized = device.kind == QLatin1String("polcap");
    element->type = letter == QLatin1Char('R')   ? QStringLiteral("Resistor.Basic")
                    : letter == QLatin1Char('L') ? QStringLiteral("Inductor.Basic")
                    : isPolarized                ? QStringLiteral("PolarizedCapacitor.Basic")
                                                 : QStringLiteral("Capacitor.Basic");
    element->terminals = QStringList{QStringLiteral("p"), QStringLiteral("n")};
    const QString whole = wholeValue(device);
    static const QRegularExpression gap(QStringLiteral("\\s+(?![^{]*\\})"));
    const QString first = whole.section(gap, 0, 0);
    // As the symbols have it before anyone gives them a value.
    const bool isUnset = first.isEmpty() || first == QString(letter);
    const QString own = value(first);
    if (!isUnset && own.isNull()) {
        return false;
    }
    if (isUnset) {
        remark(*element, tr("has no value; it is that of a new element"));
    } else {
        element->parameters.append({QString(letter), own});
    }
    if (isPolarized) {
        element->parameters.append({QStringLiteral("ESR"), QStringLiteral("1u")});
    }
    QHash<QString, QString> known;
    if (letter == QLatin1Char('C')) {
        known.insert(QStringLiteral("ic"), QStringLiteral("V0"));
        if (isPolarized) {
            known.insert(QStringLiteral("rser"), QStringLiteral("ESR"));
        }
    } else if (letter == QLatin1Char('L')) {
        known.insert(QStringLiteral("ic"), QStringLiteral("I0"));
    }
    takeExtras(whole.mid(first.size()), known, element);
    return true;
}

void AscElements::takeExtras(const QString& text, const QHash<QString, QString>& known,
                             ImportedElement* element) {
    QString rest = text;
    for (const auto& assignment : AscValues::assignments(text)) {
        const QString parameter = known.value(assignment.first.toLower());
        const QString own = value(assignment.second);
        if (parameter.isEmpty() || own.isNull()) {
            continue;
        }
        element->parameters.append({parameter, own});
        const QRegularExpression taken(QRegularExpression::escape(assignment.first) +
                                       QStringLiteral("\\s*=\\s*") +
                                       QRegularExpression::escape(assignment.second));
        rest.remove(taken);
    }
    rest = rest.simplified();
    if (!rest.isEmpty()) {
        remark(*element, tr("\"%1\" is left out").arg(rest));
    }
}

bool AscElements::mapSource(const AscDevice& device, ImportedElement* element) {
    const QChar letter = deviceLetter(device);
    element->terminals = QStringList{QStringLiteral("p"), QStringLiteral("n")};
    const QString text = wholeValue(device, false);
    if (letter == QLatin1Char('B')) {
        static const QRegularExpression behaviour(QStringLiteral("\\A([VI])\\s*=\\s*(.+)\\z"),
                                                  QRegularExpression::CaseInsensitiveOption);
        const QRegularExpressionMatch match = behaviour.match(text);
        const bool isVoltage = match.captured(1).toUpper() == QLatin1String("V");
        element->type = isVoltage ? QStringLiteral("BehavioralVoltage.Sources")
                                  : QStringLiteral("BehavioralCurrent.Sources");
        element->parameters.append(
            {QStringLiteral("expression"), AscValues::simulatorText(match.captured(2))});
        return match.hasMatch();
    }
    if (!mapWaveform(letter == QLatin1Char('V'), text, element)) {
        return false;
    }
    takeExtras(attribute(device, "SpiceLine") + QLatin1Char(' ') + attribute(device, "SpiceLine2"),
               {}, element);
    return true;
}

bool AscElements::mapWaveform(bool isVoltage, const QString& text, ImportedElement* element) {
    const AscValues::Waveform wave = AscValues::waveform(text);
    const QString ending =
        isVoltage ? QStringLiteral("Voltage.Sources") : QStringLiteral("Current.Sources");
    const auto set = [&](const char* names, const QStringList& values) {
        const QStringList parameters = QString::fromLatin1(names).split(QLatin1Char(' '));
        bool isWhole = values.size() == parameters.size();
        for (int i = 0; i < parameters.size() && isWhole; ++i) {
            element->parameters.append({parameters.at(i), value(values.at(i))});
            isWhole = !element->parameters.last().second.isNull();
        }
        return isWhole;
    };
    if (!wave.isUnderstood || (!wave.function.isEmpty() && !wave.dc.isEmpty())) {
        return false;
    }
    const QString dc = wave.dc.isEmpty() ? QStringLiteral("0") : wave.dc;
    if (wave.function.isEmpty() && wave.isAc) {
        element->type = QLatin1String("AC") + ending;
        return isVoltage && set("magnitude phase DC",
                                {wave.acMagnitude.isNull() ? QStringLiteral("1") : wave.acMagnitude,
                                 wave.acPhase.isNull() ? QStringLiteral("0") : wave.acPhase, dc});
    }
    if (wave.function.isEmpty()) {
        element->type = QLatin1String("DC") + ending;
        if (wave.dc.isEmpty() || (wave.dc.size() == 1 && wave.dc.at(0).isLetter())) {
            remark(*element, tr("has no value; it is that of a new element"));
            return true;
        }
        return set(isVoltage ? "V" : "I", {wave.dc});
    }
    QStringList arguments = wave.arguments;
    const auto hasNone = [&arguments](int from) {
        return std::all_of(arguments.begin() + std::min<int>(from, arguments.size()),
                           arguments.end(), isNone);
    };
    if (wave.function.startsWith(QLatin1String("SIN"))) {
        const QString phase = arguments.value(5);
        arguments = arguments.mid(0, 5) + arguments.mid(6);
        const QString magnitude = value(arguments.value(1));
        const bool isSameAc = wave.isAc && wave.acMagnitude == magnitude && isNone(wave.acPhase);
        const bool isAcRight = isSameAc || (!wave.isAc && !m_context.isSmallSignal);
        element->type = QLatin1String("Signal") + ending;
        return isAcRight && hasNone(3) &&
               set("offset amplitude frequency phase",
                   arguments.mid(0, 3) << (phase.isEmpty() ? QStringLiteral("0") : phase));
    }
    if (wave.isAc) {
        return false;
    }
    if (wave.function == QLatin1String("PULSE")) {
        element->type = QLatin1String("Pulse") + ending;
        return hasNone(7) && set("low high delay rise fall width period", arguments.mid(0, 7));
    }
    if (wave.function == QLatin1String("EXP")) {
        element->type = QLatin1String("Exponential") + ending;
        return isVoltage && set("low high delay rise fallDelay fall", arguments);
    }
    if (wave.function == QLatin1String("PWL")) {
        element->type = QLatin1String("PWL") + ending;
        for (QString& argument : arguments) {
            if (value(argument).isNull()) {
                return false;
            }
            argument = AscValues::simulatorText(argument);
        }
        element->parameters.append({QStringLiteral("points"), arguments.join(QLatin1Char(' '))});
        return !arguments.isEmpty();
    }
    return false;
}

bool AscElements::mapSemiconductor(const AscDevice& device, ImportedElement* element) {
    const auto* known =
        std::find_if(std::begin(Semiconductors), std::end(Semiconductors),
                     [&device](const auto& row) { return device.kind == QLatin1String(row.kind); });
    if (known == std::end(Semiconductors)) {
        return false;
    }
    element->type = QLatin1String(known->type) + QLatin1String(".Semiconductors");
    element->terminals = QString::fromLatin1(known->terminals).split(QLatin1Char(' '));
    const QString whole = wholeValue(device);
    const QString model = whole.section(QLatin1Char(' '), 0, 0);
    const bool isNamed = !model.isEmpty() && !model.contains(QLatin1Char('='));
    // As the symbols have it before anyone chooses a part.
    static const QStringList general = {QStringLiteral("d"),    QStringLiteral("npn"),
                                        QStringLiteral("pnp"),  QStringLiteral("nmos"),
                                        QStringLiteral("pmos"), QStringLiteral("njf"),
                                        QStringLiteral("pjf")};
    if (isNamed && (!general.contains(model.toLower()) || m_context.knowsModel(model))) {
        element->model = model;
        if (!m_context.knowsModel(model)) {
            remark(*element, tr("its model %1 is not known; a text with the .model line in the "
                                "drawing makes it so")
                                 .arg(model));
        }
    }
    QHash<QString, QString> values;
    if (known->type == QLatin1String("NMOS") || known->type == QLatin1String("PMOS")) {
        values = {{QStringLiteral("w"), QStringLiteral("W")},
                  {QStringLiteral("l"), QStringLiteral("L")}};
    }
    takeExtras(isNamed ? whole.mid(model.size()) : whole, values, element);
    return true;
}

bool AscElements::mapSwitch(const AscDevice& device, ImportedElement* element) {
    const QString model = wholeValue(device);
    element->type = QStringLiteral("VoltageSwitch.Basic");
    element->terminals = QStringList{QStringLiteral("p"), QStringLiteral("n"), QStringLiteral("cp"),
                                     QStringLiteral("cn")};
    element->model = model;
    return m_context.knowsModel(model);
}

bool AscElements::doesFit(const ImportedElement& element) const {
    const ElementDescription* type = m_library.description(element.type);
    if (!type) {
        return false;
    }
    const QVector<ParameterData>& known = type->data().parameters;
    return std::all_of(element.parameters.begin(), element.parameters.end(), [&](const auto& set) {
        return std::any_of(known.begin(), known.end(), [&set](const ParameterData& parameter) {
            return parameter.name == set.first && parameter.accepts(set.second);
        });
    });
}

ImportedElement AscElements::boxOf(const AscDevice& device) {
    ImportedElement box;
    box.name = device.symbol.instance();
    box.label = BoxType::plain(device.kind);
    box.device = device.arePinsGuessed ? QChar() : deviceLetter(device);
    if (!box.device.isNull() && (box.device < QLatin1Char('A') || box.device > QLatin1Char('Z'))) {
        box.device = QChar();
    }
    box.line = AscValues::simulatorText(wholeValue(device));
    if (box.device == QLatin1Char('X') && box.line.isEmpty()) {
        box.line = device.kind;
    }
    const QString what = device.symbol.name;
    if (device.arePinsGuessed) {
        remark(box, tr("%1 is not known; it is a box with the terminals where wires end, and can "
                       "not be simulated")
                        .arg(what));
    } else if (!device.isBlock) {
        remark(box, tr("%1 \"%2\" fits no element type; it is a box").arg(what, box.line));
    }
    return box;
}
