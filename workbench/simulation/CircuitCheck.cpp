#include "CircuitCheck.h"

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "ElementDescription.h"
#include "ParameterExpression.h"
#include "SpiceModels.h"
#include "SubCircuitElement.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("CircuitCheck", text);
}

/// What is joined with what.
class Groups {
public:
    const void* leaderOf(const void* member) {
        const void* leader = m_leaders.value(member, member);
        if (leader == member) {
            return member;
        }
        leader = leaderOf(leader);
        m_leaders.insert(member, leader);
        return leader;
    }
    /// False if they were joined before.
    bool join(const void* a, const void* b) {
        a = leaderOf(a);
        b = leaderOf(b);
        if (a == b) {
            return false;
        }
        m_leaders.insert(a, b);
        return true;
    }

private:
    QHash<const void*, const void*> m_leaders;
};

class Check {
public:
    Check(Circuit& circuit, const SpiceModels& models) : m_circuit(circuit), m_models(models) {}

    QVector<CircuitProblem> run() {
        joinNetsByName();
        checkParameterNames();
        for (int i = 0; i < m_circuit.elementCount(); ++i) {
            if (CircuitElement* element = CircuitElement::from(m_circuit.element(i))) {
                checkElement(element);
            }
        }
        checkPaths();
        std::stable_sort(m_problems.begin(), m_problems.end(),
                         [](const auto& a, const auto& b) { return a.severity > b.severity; });
        return m_problems;
    }

private:
    enum class About { Element, Net, Whole };

    void tell(CircuitProblem::Severity severity, const QString& text, About about,
              const QString& name = {}) {
        m_problems.append({severity, text, about == About::Element ? name : QString(),
                           about == About::Net ? name : QString()});
    }

    static bool isGround(CircuitNode* node) {
        return node->hasFixedName() && node->name() == QLatin1String("gnd");
    }

    static bool isNamedBySymbol(CircuitNode* node) {
        for (CircuitElementNode* terminal : node->terminals()) {
            if (terminal->owner()->description()->data().spice.joinsNets) {
                return true;
            }
        }
        return node->hasFixedName();
    }

    /// What is one net in spite of the drawing counts as one in all that follows.
    void joinNetsByName() {
        QHash<QString, CircuitNode*> first;
        QSet<QString> told;
        for (int i = 0; i < m_circuit.nodeCount(); ++i) {
            CircuitNode* node = CircuitNode::from(m_circuit.node(i));
            m_hasGround = m_hasGround || isGround(node);
            if (isGround(node)) {
                join(node, &m_ground);
            }
            CircuitNode*& other = first[node->name()];
            if (!other) {
                other = node;
                continue;
            }
            join(node, other);
            if (!isNamedBySymbol(node) && !isNamedBySymbol(other) && !told.contains(node->name())) {
                told.insert(node->name());
                tell(CircuitProblem::Warning,
                     tr("Two nets are named %1: they count as one.").arg(node->name()), About::Net,
                     node->name());
            }
        }
        if (!m_hasGround && hasVoltages()) {
            tell(CircuitProblem::Error,
                 tr("The circuit has no ground: connect a Ground to the net that all voltages are "
                    "measured against."),
                 About::Whole);
        }
    }

    /// Logic levels need no reference.
    bool hasVoltages() {
        for (int i = 0; i < m_circuit.elementCount(); ++i) {
            CircuitElement* element = CircuitElement::from(m_circuit.element(i));
            for (CircuitElementNode* terminal : element->terminals()) {
                if (terminal->type() != QLatin1String("d")) {
                    return true;
                }
            }
        }
        return false;
    }

    void join(const void* a, const void* b) {
        m_paths.join(a, b);
        m_sources.join(a, b);
    }

    void checkParameterNames() {
        QHash<QString, QString> names;
        for (int i = 0; i < m_circuit.globalVariableCount(); ++i) {
            const QString name = m_circuit.globalVariableName(i);
            const QString known = names.value(name.toLower());
            if (!known.isEmpty()) {
                tell(CircuitProblem::Error,
                     tr("The parameters %1 and %2 differ only in the case of letters, which the "
                        "simulator does not see.")
                         .arg(known, name),
                     About::Whole);
            }
            names.insert(name.toLower(), name);
        }
    }

    void checkElement(CircuitElement* element) {
        const ElementTypeData& data = element->description()->data();
        if (!canBeSimulated(element)) {
            tell(CircuitProblem::Error,
                 tr("%1 is a %2, which can not be simulated.").arg(element->name(), data.label),
                 About::Element, element->name());
            return;
        }
        for (CircuitElementNode* terminal : element->terminals()) {
            if (!terminal->node()) {
                tell(CircuitProblem::Warning,
                     tr("The terminal %1 of %2 is not connected.")
                         .arg(terminal->name(), element->name()),
                     About::Element, element->name());
            }
        }
        checkValues(element);
        const QString model = element->modelName();
        if (!model.isEmpty() && !m_models.contains(model)) {
            tell(CircuitProblem::Error,
                 tr("%1 has the model %2, which is not known.").arg(element->name(), model),
                 About::Element, element->name());
        }
        checkSource(element);
        joinPaths(element);
    }

    static bool canBeSimulated(CircuitElement* element) {
        auto* subCircuit = qobject_cast<SubCircuitElement*>(element);
        if (!subCircuit) {
            return element->description()->data().spice.known;
        }
        for (int i = 0; i < static_cast<ICircuit*>(subCircuit)->elementCount(); ++i) {
            CircuitElement* inner =
                CircuitElement::from(static_cast<ICircuit*>(subCircuit)->element(i));
            if (!inner || !canBeSimulated(inner)) {
                return false;
            }
        }
        return true;
    }

    void checkValues(CircuitElement* element) {
        const auto lookup = [this](const QString& name) {
            for (int i = 0; i < m_circuit.globalVariableCount(); ++i) {
                if (m_circuit.globalVariableName(i) == name) {
                    return m_circuit.globalVariableValue(i).toString();
                }
            }
            return QString();
        };
        for (const ParameterData& parameter : element->description()->data().parameters) {
            const QString text = element->parameter(parameter.name);
            if (parameter.kind != ParameterData::Number) {
                continue;
            }
            const IMathUtils::Evaluation value = ParameterExpression::evaluate(text, lookup);
            if (!value.ok) {
                tell(CircuitProblem::Error,
                     tr("The value %1 of %2 can not be computed: %3.")
                         .arg(text, element->name(), value.problem),
                     About::Element, element->name());
            }
        }
    }

    /// The terminals of the voltage sources that the element is written with.
    void checkSource(CircuitElement* element) {
        static const QRegularExpression source(QStringLiteral(
            "\\A(?:[VEH]|B(?=.* V=))\\$\\{name\\}\\S* \\$\\{(\\w+)\\} \\$\\{(\\w+)\\}"));
        for (const QString& line : element->description()->data().spice.lines) {
            const QRegularExpressionMatch match = source.match(line);
            CircuitNode* ends[] = {nodeOf(element, match.captured(1)),
                                   nodeOf(element, match.captured(2))};
            if (!match.hasMatch() || !ends[0] || !ends[1] || m_sources.join(ends[0], ends[1])) {
                continue;
            }
            tell(CircuitProblem::Error,
                 ends[0] == ends[1]
                     ? tr("%1 is short-circuited by the net %2.")
                           .arg(element->name(), ends[0]->name())
                     : tr("%1 closes a loop of voltage sources.").arg(element->name()),
                 About::Element, element->name());
        }
    }

    static CircuitNode* nodeOf(CircuitElement* element, const QString& terminal) {
        CircuitElementNode* found = CircuitElementNode::from(element->elementNode(terminal));
        return found ? found->node() : nullptr;
    }

    void joinPaths(CircuitElement* element) {
        const SpiceData& spice = element->description()->data().spice;
        if (spice.blocks) {
            return;
        }
        const QVector<QStringList> paths =
            spice.paths.isEmpty() ? QVector<QStringList>{element->elementNodeNames()} : spice.paths;
        for (const QStringList& path : paths) {
            const void* first = nullptr;
            for (const QString& terminal : path) {
                const void* end = terminal == QLatin1String("0")
                                      ? static_cast<const void*>(&m_ground)
                                      : nodeOf(element, terminal);
                if (first && end) {
                    m_paths.join(first, end);
                }
                first = first ? first : end;
            }
        }
    }

    void checkPaths() {
        if (!m_hasGround) {
            return;
        }
        for (int i = 0; i < m_circuit.nodeCount(); ++i) {
            CircuitNode* node = CircuitNode::from(m_circuit.node(i));
            if (node->type() != QLatin1String("d") &&
                m_paths.leaderOf(node) != m_paths.leaderOf(&m_ground)) {
                tell(CircuitProblem::Warning,
                     tr("The net %1 floats: no direct current can flow from it to ground.")
                         .arg(node->name()),
                     About::Net, node->name());
            }
        }
    }

    Circuit& m_circuit;
    const SpiceModels& m_models;
    QVector<CircuitProblem> m_problems;
    // Stands for all nets that are ground.
    const char m_ground = 0;
    bool m_hasGround = false;
    Groups m_paths;
    Groups m_sources;
};

}  // namespace

QVector<CircuitProblem> checkCircuit(Circuit& circuit, const SpiceModels& models) {
    return Check(circuit, models).run();
}
