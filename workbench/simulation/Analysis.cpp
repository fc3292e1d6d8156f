#include "Analysis.h"

#include "EngineeringNumber.h"
#include "Netlist.h"
#include "SpiceText.h"

#include <QCoreApplication>

#include <cmath>

namespace {

using Field = AnalysisField;

constexpr char Spacing[] = "dec|oct|lin";
/// More runs than anyone waits for or could tell apart.
constexpr int MostSweepValues = 200;

QString tr(const char* text) {
    return QCoreApplication::translate("Simulation", text);
}

bool isSet(const QString& text) {
    return !text.trimmed().isEmpty();
}

double number(const QString& text) {
    bool ok = false;
    return EngineeringNumber::parse(text, &ok);
}

const AnalysisField* fieldOf(const QString& analysis, const QString& field) {
    if (const AnalysisType* type = analysisType(analysis)) {
        for (const AnalysisField& candidate : type->fields) {
            if (field == QLatin1String(candidate.name)) {
                return &candidate;
            }
        }
    }
    return nullptr;
}

}  // namespace

const QVector<AnalysisType>& analysisTypes() {
    static const QVector<AnalysisType> types = {
        {"op", QT_TRANSLATE_NOOP("Simulation", "Operating point"), {}},
        {"dc",
         QT_TRANSLATE_NOOP("Simulation", "DC sweep"),
         {{"source", QT_TRANSLATE_NOOP("Simulation", "Source"), "", "V1", Field::Text},
          {"from", QT_TRANSLATE_NOOP("Simulation", "From"), "", "0"},
          {"to", QT_TRANSLATE_NOOP("Simulation", "To"), "", "5"},
          {"step", QT_TRANSLATE_NOOP("Simulation", "Step"), "", "10m"},
          {"source2", QT_TRANSLATE_NOOP("Simulation", "Outer source"), "", "", Field::Text, "",
           true},
          {"from2", QT_TRANSLATE_NOOP("Simulation", "Outer from"), "", "", Field::Number, "", true},
          {"to2", QT_TRANSLATE_NOOP("Simulation", "Outer to"), "", "", Field::Number, "", true},
          {"step2", QT_TRANSLATE_NOOP("Simulation", "Outer step"), "", "", Field::Number, "",
           true}}},
        {"ac",
         QT_TRANSLATE_NOOP("Simulation", "AC"),
         {{"spacing", QT_TRANSLATE_NOOP("Simulation", "Spacing"), "", "dec", Field::Choice,
           Spacing},
          {"points", QT_TRANSLATE_NOOP("Simulation", "Points"), "", "50"},
          {"from", QT_TRANSLATE_NOOP("Simulation", "From"), "Hz", "1"},
          {"to", QT_TRANSLATE_NOOP("Simulation", "To"), "Hz", "1M"}}},
        {"tran",
         QT_TRANSLATE_NOOP("Simulation", "Transient"),
         {{"stop", QT_TRANSLATE_NOOP("Simulation", "Stop"), "s", "10m"},
          {"step", QT_TRANSLATE_NOOP("Simulation", "Largest step"), "s", "", Field::Number, "",
           true},
          {"start", QT_TRANSLATE_NOOP("Simulation", "Record from"), "s", "", Field::Number, "",
           true},
          {"initial", QT_TRANSLATE_NOOP("Simulation", "Begin with"), "", "operating point",
           Field::Choice, "operating point|initial values"}}},
        {"noise",
         QT_TRANSLATE_NOOP("Simulation", "Noise"),
         {{"output", QT_TRANSLATE_NOOP("Simulation", "Output net"), "", "out", Field::Text},
          {"source", QT_TRANSLATE_NOOP("Simulation", "Input source"), "", "V1", Field::Text},
          {"spacing", QT_TRANSLATE_NOOP("Simulation", "Spacing"), "", "dec", Field::Choice,
           Spacing},
          {"points", QT_TRANSLATE_NOOP("Simulation", "Points"), "", "50"},
          {"from", QT_TRANSLATE_NOOP("Simulation", "From"), "Hz", "1"},
          {"to", QT_TRANSLATE_NOOP("Simulation", "To"), "Hz", "1M"}}},
        {"sweep",
         QT_TRANSLATE_NOOP("Simulation", "Parameter sweep"),
         {{"parameter", QT_TRANSLATE_NOOP("Simulation", "Parameter"), "", "", Field::Text, "",
           true},
          {"from", QT_TRANSLATE_NOOP("Simulation", "From"), "", "", Field::Number, "", true},
          {"to", QT_TRANSLATE_NOOP("Simulation", "To"), "", "", Field::Number, "", true},
          {"count", QT_TRANSLATE_NOOP("Simulation", "Runs"), "", "5"},
          {"spacing", QT_TRANSLATE_NOOP("Simulation", "Spacing"), "", "lin", Field::Choice,
           "lin|log"}}}};
    return types;
}

const AnalysisType* analysisType(const QString& name) {
    for (const AnalysisType& type : analysisTypes()) {
        if (name == QLatin1String(type.name)) {
            return &type;
        }
    }
    return nullptr;
}

SimulationSetup::SimulationSetup() : m_active(QStringLiteral("tran")) {}

void SimulationSetup::setActive(const QString& analysis) {
    if (analysisType(analysis) && analysis != QLatin1String("sweep")) {
        m_active = analysis;
    }
}

QString SimulationSetup::value(const QString& analysis, const QString& field) const {
    const AnalysisField* known = fieldOf(analysis, field);
    return known ? m_values.value(analysis).value(field, QString::fromUtf8(known->value))
                 : QString();
}

void SimulationSetup::setValue(const QString& analysis, const QString& field,
                               const QString& value) {
    const AnalysisField* known = fieldOf(analysis, field);
    if (!known) {
        return;
    }
    if (value == QString::fromUtf8(known->value)) {
        m_values[analysis].remove(field);
    } else {
        m_values[analysis].insert(field, value);
    }
    if (m_values.value(analysis).isEmpty()) {
        m_values.remove(analysis);
    }
}

QString SimulationSetup::problem(const QString& analysis) const {
    const AnalysisType* type = analysisType(analysis);
    if (!type) {
        return tr("There is no analysis \"%1\".").arg(analysis);
    }
    for (const AnalysisField& field : type->fields) {
        const QString text = value(analysis, QLatin1String(field.name));
        const QString label = tr(field.label);
        bool ok = true;
        if (!isSet(text)) {
            if (!field.optional) {
                return tr("%1: \"%2\" is empty.").arg(tr(type->label), label);
            }
        } else if (field.kind == AnalysisField::Number) {
            EngineeringNumber::parse(text, &ok);
        } else if (field.kind == AnalysisField::Choice) {
            ok = QString::fromLatin1(field.choices).split(QLatin1Char('|')).contains(text);
        }
        if (!ok) {
            return tr("%1: \"%2\" can not be %3.").arg(tr(type->label), label, text);
        }
    }
    const auto at = [&](const char* field) {
        return number(value(analysis, QLatin1String(field)));
    };
    if (analysis == QLatin1String("ac") || analysis == QLatin1String("noise")) {
        const bool isLinear = value(analysis, QStringLiteral("spacing")) == QLatin1String("lin");
        if (at("points") < 1 || at("from") < 0 || at("to") < at("from") ||
            (!isLinear && at("from") <= 0)) {
            return tr("%1: the frequencies must be positive and rise, with one point at least.")
                .arg(tr(type->label));
        }
    } else if (analysis == QLatin1String("tran") &&
               (at("stop") <= 0 || at("step") < 0 || at("start") < 0 ||
                at("start") >= at("stop"))) {
        return tr("Transient: the times must be positive, and the start before the stop.");
    } else if (analysis == QLatin1String("dc")) {
        for (const char* suffix : {"", "2"}) {
            const QString end = QLatin1String(suffix);
            if (!isSet(value(analysis, QStringLiteral("source") + end))) {
                continue;
            }
            const double step = number(value(analysis, QStringLiteral("step") + end));
            const double way = number(value(analysis, QStringLiteral("to") + end)) -
                               number(value(analysis, QStringLiteral("from") + end));
            if (step == 0 || way / step < 0) {
                return tr("DC sweep: the step must lead from the first value to the last.");
            }
        }
    } else if (analysis == QLatin1String("sweep") && !sweptParameter().isEmpty()) {
        const bool isLog = value(analysis, QStringLiteral("spacing")) == QLatin1String("log");
        if (at("count") < 1 || at("count") > MostSweepValues ||
            (isLog && (at("from") <= 0 || at("to") <= 0))) {
            return tr("Parameter sweep: 1 to %1 runs; values of a logarithmic sweep are positive.")
                .arg(MostSweepValues);
        }
    }
    return {};
}

QString SimulationSetup::line(const QString& analysis, const Netlist& netlist,
                              QString* reason) const {
    const auto text = [&](const char* field) {
        return SpiceText::value(value(analysis, QLatin1String(field)));
    };
    const auto source = [&](const char* field) {
        const QString name = value(analysis, QLatin1String(field));
        for (auto it = netlist.elements.begin(); it != netlist.elements.end(); ++it) {
            const QChar kind = it.key().at(0);
            if (it.value() == name && (kind == QLatin1Char('v') || kind == QLatin1Char('i'))) {
                return it.key();
            }
        }
        *reason = tr("%1 is no source of the circuit.").arg(name);
        return QString();
    };
    const auto frequencies = [&] {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(text("spacing"), text("points"), text("from"), text("to"));
    };
    if (analysis == QLatin1String("op")) {
        return QStringLiteral(".op");
    }
    if (analysis == QLatin1String("dc")) {
        QString line = QStringLiteral(".dc %1 %2 %3 %4")
                           .arg(source("source"), text("from"), text("to"), text("step"));
        if (isSet(text("source2"))) {
            line += QStringLiteral(" %1 %2 %3 %4")
                        .arg(source("source2"), text("from2"), text("to2"), text("step2"));
        }
        return reason->isEmpty() ? line : QString();
    }
    if (analysis == QLatin1String("ac")) {
        return QStringLiteral(".ac ") + frequencies();
    }
    if (analysis == QLatin1String("noise")) {
        const QString vector = netlist.nets.value(text("output"));
        if (vector.isEmpty()) {
            *reason = tr("%1 is no net of the circuit.").arg(text("output"));
        }
        const QString from = source("source");
        return reason->isEmpty()
                   ? QStringLiteral(".noise %1 %2 %3").arg(vector, from, frequencies())
                   : QString();
    }
    const double stop = number(text("stop"));
    const QString largest = isSet(text("step")) ? text("step") : QString::number(stop / 1000);
    const QString start = isSet(text("start")) ? text("start") : QStringLiteral("0");
    QString line = QStringLiteral(".tran %1 %2 %3 %1").arg(largest, text("stop"), start);
    if (text("initial") == QLatin1String("initial values")) {
        line += QStringLiteral(" uic");
    }
    return line;
}

QVector<double> SimulationSetup::sweepValues() const {
    const QString sweep = QStringLiteral("sweep");
    if (sweptParameter().isEmpty() || !problem(sweep).isEmpty()) {
        return {};
    }
    const double from = number(value(sweep, QStringLiteral("from")));
    const double to = number(value(sweep, QStringLiteral("to")));
    const int count = static_cast<int>(number(value(sweep, QStringLiteral("count"))));
    const bool isLog = value(sweep, QStringLiteral("spacing")) == QLatin1String("log");
    QVector<double> values;
    for (int i = 0; i < count; ++i) {
        const double share = count > 1 ? double(i) / (count - 1) : 0;
        values.append(isLog ? from * std::pow(to / from, share) : from + (to - from) * share);
    }
    return values;
}

void SimulationSetup::save(QDomDocument document, QDomElement parent) const {
    parent.setAttribute(QStringLiteral("Analysis"), m_active);
    for (auto it = m_values.begin(); it != m_values.end(); ++it) {
        QDomElement element = document.createElement(QStringLiteral("Analysis"));
        element.setAttribute(QStringLiteral("Name"), it.key());
        for (auto value = it.value().begin(); value != it.value().end(); ++value) {
            element.setAttribute(value.key(), value.value());
        }
        parent.appendChild(element);
    }
}

SimulationSetup SimulationSetup::load(const QDomElement& parent) {
    SimulationSetup setup;
    setup.setActive(parent.attribute(QStringLiteral("Analysis")));
    const QString tag = QStringLiteral("Analysis");
    for (QDomElement e = parent.firstChildElement(tag); !e.isNull();
         e = e.nextSiblingElement(tag)) {
        const QDomNamedNodeMap attributes = e.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            setup.setValue(e.attribute(QStringLiteral("Name")), attributes.item(i).nodeName(),
                           attributes.item(i).nodeValue());
        }
    }
    return setup;
}

bool SimulationSetup::operator==(const SimulationSetup& other) const {
    return m_active == other.m_active && m_values == other.m_values;
}
