#include "Results.h"

#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "ElementDescription.h"
#include "OutputVariable.h"

#include <QCoreApplication>

#include <algorithm>
#include <functional>

namespace {

using Values = QVector<std::complex<double>>;

QString tr(const char* text) {
    return QCoreApplication::translate("Simulation", text);
}

/// Computes "(v(p)-v(n))*i(p)" over whole vectors: numbers, v() and i() of terminals, + - * / and
/// parentheses.
class ResultExpression {
public:
    /// Answers the vector of "v" or "i" at a terminal; false if there is none.
    using Source = std::function<bool(QChar kind, const QString& terminal, Values* values)>;

    ResultExpression(const QString& text, int points, const Source& source)
        : m_text(text), m_points(points), m_source(source) {}

    bool compute(Values* values) {
        *values = sum();
        return m_ok && m_at == m_text.size();
    }

private:
    QChar peek() {
        while (m_at < m_text.size() && m_text.at(m_at).isSpace()) {
            ++m_at;
        }
        return m_at < m_text.size() ? m_text.at(m_at) : QChar();
    }
    bool take(char sign) {
        const bool found = peek() == QLatin1Char(sign);
        m_at += found ? 1 : 0;
        return found;
    }

    template <class Operation>
    static void combine(Values* left, const Values& right, Operation operation) {
        std::transform(left->begin(), left->end(), right.begin(), left->begin(), operation);
    }

    Values sum() {
        Values left = product();
        while (m_ok) {
            if (take('+')) {
                combine(&left, product(), std::plus<>());
            } else if (take('-')) {
                combine(&left, product(), std::minus<>());
            } else {
                break;
            }
        }
        return left;
    }

    Values product() {
        Values left = factor();
        while (m_ok) {
            if (take('*')) {
                combine(&left, factor(), std::multiplies<>());
            } else if (take('/')) {
                combine(&left, factor(), std::divides<>());
            } else {
                break;
            }
        }
        return left;
    }

    Values factor() {
        Values none(m_points);
        if (take('-')) {
            combine(&none, factor(), std::minus<>());
            return none;
        }
        if (take('(')) {
            const Values inner = sum();
            m_ok = m_ok && take(')');
            return inner;
        }
        peek();
        int end = m_at;
        while (end < m_text.size() &&
               (m_text.at(end).isLetterOrNumber() || m_text.at(end) == QLatin1Char('.'))) {
            ++end;
        }
        const QString word = m_text.mid(m_at, end - m_at);
        m_at = end;
        if (!word.isEmpty() && !word.at(0).isLetter()) {
            const double number = word.toDouble(&m_ok);
            return Values(m_points, number);
        }
        const int close = m_text.indexOf(QLatin1Char(')'), m_at);
        m_ok = m_ok && word.size() == 1 && close > m_at && take('(');
        Values values(m_points);
        if (m_ok) {
            m_ok = m_source(word.at(0), m_text.mid(m_at, close - m_at), &values);
            m_at = close + 1;
        }
        return values;
    }

    const QString m_text;
    const int m_points;
    const Source& m_source;
    int m_at = 0;
    bool m_ok = true;
};

QString netUnit(const QString& type) {
    return type == QLatin1String("t")   ? QStringLiteral("K")
           : type == QLatin1String("e") ? QStringLiteral("V")
                                        : QString();
}

QString expressionUnit(const QString& expression) {
    const bool voltage = expression.contains(QLatin1String("v("));
    const bool current = expression.contains(QLatin1String("i("));
    if (expression.contains(QLatin1Char('/')) || (!voltage && !current)) {
        return {};
    }
    return voltage && current ? QStringLiteral("W") : QString(QLatin1Char(voltage ? 'V' : 'A'));
}

}  // namespace

bool Results::vector(const QString& name, Values* values) const {
    const int points = m_plot.points();
    if (name.isEmpty()) {
        *values = Values(points);
        return true;
    }
    const int index = m_plot.indexOf(name);
    if (index < 0) {
        return false;
    }
    values->resize(points);
    for (int i = 0; i < points; ++i) {
        (*values)[i] = {m_plot.real.at(index).at(i),
                        m_plot.isComplex ? m_plot.imaginary.at(index).at(i) : 0};
    }
    return true;
}

bool Results::netCurve(const QString& net, Curve* curve, QString* reason) const {
    const auto found = m_netlist.nets.constFind(net);
    if (found == m_netlist.nets.constEnd() || !vector(*found, &curve->values)) {
        *reason = tr("The run does not tell of the net %1.").arg(net);
        return false;
    }
    curve->name = net;
    curve->net = net;
    return true;
}

bool Results::elementCurve(CircuitElement* element, const QString& variable, Curve* curve,
                           QString* reason) const {
    const QMap<QString, QString>& results = element->description()->data().spice.results;
    QString plain = variable;
    if (plain.endsWith(QLatin1String("_ac"))) {
        plain.chop(3);
    }
    const QString expression = results.value(variable, results.value(plain));
    const auto source = [&](QChar kind, const QString& terminal, Values* values) {
        const auto& table = kind == QLatin1Char('v') ? m_netlist.voltages : m_netlist.currents;
        const auto found = table.constFind({element->name(), terminal});
        return found != table.constEnd() && vector(*found, values);
    };
    if (expression.isEmpty() ||
        !ResultExpression(expression, m_plot.points(), source).compute(&curve->values)) {
        *reason = tr("The run does not tell of %1 of %2.").arg(variable, element->name());
        return false;
    }
    curve->name = QStringLiteral("%1(%2)").arg(variable, element->name());
    curve->unit = expressionUnit(expression);
    curve->element = element->name();
    return true;
}

bool Results::curveOf(OutputVariable* variable, Curve* curve, QString* reason) const {
    CircuitElement* element = CircuitElement::from(variable->element());
    CircuitElementNode* terminal = CircuitElementNode::from(variable->elementNode());
    bool found = false;
    if (CircuitNode* node = CircuitNode::from(variable->node())) {
        found = netCurve(node->name(), curve, reason);
        curve->unit = netUnit(node->type());
    } else if (terminal) {
        const auto vectorName =
            m_netlist.voltages.constFind({terminal->owner()->name(), terminal->name()});
        found = vectorName != m_netlist.voltages.constEnd() && vector(*vectorName, &curve->values);
        curve->unit = netUnit(terminal->type());
        curve->element = terminal->owner()->name();
        if (CircuitNode* net = terminal->node()) {
            curve->net = net->name();
        }
        if (!found) {
            *reason = tr("The run does not tell of the terminal %1 of %2.")
                          .arg(terminal->name(), terminal->owner()->name());
        }
    } else if (element) {
        found = elementCurve(element, variable->elementVarName(), curve, reason);
    }
    if (!variable->name().isEmpty()) {
        curve->name = variable->name();
    }
    return found;
}

QVector<Curve> Results::netCurves() const {
    QStringList nets = m_netlist.nets.keys();
    nets.sort();
    QVector<Curve> curves;
    for (const QString& net : qAsConst(nets)) {
        Curve curve;
        QString reason;
        if (!m_netlist.nets.value(net).isEmpty() && netCurve(net, &curve, &reason)) {
            curve.unit = QStringLiteral("V");
            curves.append(curve);
        }
    }
    return curves;
}
