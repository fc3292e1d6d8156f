#include "AscDirectives.h"

#include "AscValues.h"
#include "EngineeringNumber.h"
#include "ParameterExpression.h"
#include "SpiceModels.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

/// More runs than anyone waits for; a step that is too small makes as many.
constexpr double MostRuns = 200;

double asNumber(const QString& text) {
    bool ok = false;
    const double number = EngineeringNumber::parse(AscValues::value(text), &ok);
    return ok ? number : 0;
}

/// In braces, as the workbench has it; null if it isn't understood.
QString parameterValue(QString text, const QHash<QString, QString>& spelling) {
    const bool isQuoted = text.size() > 1 &&
                          (text.startsWith(QLatin1Char('\'')) || text.startsWith(QLatin1Char('"')));
    if (isQuoted) {
        text = text.mid(1, text.size() - 2);
    }
    const QString plain = AscValues::value(text, spelling);
    if (!plain.isNull()) {
        return plain.startsWith(QLatin1Char('{')) && !ParameterExpression::isWellFormed(plain)
                   ? QString()
                   : plain;
    }
    const QString inBraces = AscValues::value(QStringLiteral("{%1}").arg(text), spelling);
    return ParameterExpression::isWellFormed(inBraces) ? inBraces : QString();
}

}  // namespace

QHash<QString, QString> AscDirectives::spelling() const {
    QHash<QString, QString> names;
    for (const auto& parameter : m_parameters) {
        names.insert(parameter.first.toLower(), parameter.first);
    }
    return names;
}

void AscDirectives::take(const QString& text, QStringList* remarks) {
    const QStringList lines = SpiceModels::wholeLines(text);
    // The simulation looks at the texts that begin with one.
    const bool isRead = !lines.isEmpty() && (lines.first().startsWith(QLatin1Char('.')) ||
                                             SpiceModels::isDirective(lines.first()));
    bool inSubCircuit = false;
    for (const QString& line : lines) {
        const QString first = line.section(QLatin1Char(' '), 0, 0).toLower();
        inSubCircuit = inSubCircuit || first == QLatin1String(".subckt");
        const bool isTaken = inSubCircuit || SpiceModels::isDirective(line);
        inSubCircuit = inSubCircuit && first != QLatin1String(".ends");
        if (!takeLine(line) && !(isRead && isTaken)) {
            remarks->append(tr("\"%1\" is a text in the drawing, and of no effect").arg(line));
        }
    }
}

bool AscDirectives::takeLine(const QString& line) {
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    const QString first = words.first().toLower();
    if (first.startsWith(QLatin1String(".param"))) {
        return takeParameters(line);
    }
    if (first == QLatin1String(".tran")) {
        return takeTransient(words.mid(1));
    }
    if (first == QLatin1String(".ac")) {
        return takeSpectrum(QStringLiteral("ac"), words.mid(1));
    }
    if (first == QLatin1String(".dc")) {
        return takeDc(words.mid(1));
    }
    if (first == QLatin1String(".noise")) {
        return takeNoise(words.mid(1));
    }
    if (first == QLatin1String(".op")) {
        activate(QStringLiteral("op"));
        return true;
    }
    if (first == QLatin1String(".step")) {
        return takeStep(words.mid(1));
    }
    // They keep their lines, and say nothing of the circuit.
    return first == QLatin1String(".end") || first == QLatin1String(".backanno");
}

void AscDirectives::activate(const QString& analysis) {
    if (!m_hasAnalysis) {
        m_setup.setActive(analysis);
        m_hasAnalysis = true;
    }
    const bool isSpectrum = analysis == QLatin1String("ac") || analysis == QLatin1String("noise");
    m_isSmallSignal = m_isSmallSignal || isSpectrum;
}

bool AscDirectives::set(const QString& analysis, const QStringList& fields,
                        const QStringList& words) {
    for (int i = 0; i < fields.size(); ++i) {
        if (AscValues::value(words.value(i)).isNull()) {
            return false;
        }
    }
    for (int i = 0; i < fields.size(); ++i) {
        m_setup.setValue(analysis, fields.at(i), AscValues::value(words.at(i)));
    }
    return true;
}

bool AscDirectives::takeTransient(const QStringList& words) {
    const QString tran = QStringLiteral("tran");
    QStringList numbers;
    bool isWhole = true;
    for (const QString& word : words) {
        const QString value = AscValues::value(word);
        if (!value.isNull()) {
            numbers.append(value);
        } else if (word.toLower() == QLatin1String("uic")) {
            m_setup.setValue(tran, QStringLiteral("initial"), QStringLiteral("initial values"));
        } else {
            isWhole = false;
        }
    }
    if (numbers.isEmpty() || numbers.size() > 4) {
        return false;
    }
    activate(tran);
    // One number is the end; of more, the first is how often to print.
    m_setup.setValue(tran, QStringLiteral("stop"), numbers.value(numbers.size() == 1 ? 0 : 1));
    if (asNumber(numbers.value(2)) != 0) {
        m_setup.setValue(tran, QStringLiteral("start"), numbers.at(2));
    }
    if (asNumber(numbers.value(3)) != 0) {
        m_setup.setValue(tran, QStringLiteral("step"), numbers.at(3));
    }
    return isWhole;
}

bool AscDirectives::takeSpectrum(const QString& analysis, const QStringList& words) {
    const QString spacing = words.value(0).toLower();
    static const QStringList known = {QStringLiteral("dec"), QStringLiteral("oct"),
                                      QStringLiteral("lin")};
    if (!known.contains(spacing) || words.size() != 4 ||
        !set(analysis, {QStringLiteral("points"), QStringLiteral("from"), QStringLiteral("to")},
             words.mid(1))) {
        return false;
    }
    m_setup.setValue(analysis, QStringLiteral("spacing"), spacing);
    activate(analysis);
    return true;
}

bool AscDirectives::takeDc(const QStringList& words) {
    const QString dc = QStringLiteral("dc");
    if ((words.size() != 4 && words.size() != 8) ||
        !set(dc, {QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("step")},
             words.mid(1, 3))) {
        return false;
    }
    m_setup.setValue(dc, QStringLiteral("source"), words.at(0));
    activate(dc);
    if (words.size() == 8 &&
        set(dc, {QStringLiteral("from2"), QStringLiteral("to2"), QStringLiteral("step2")},
            words.mid(5))) {
        m_setup.setValue(dc, QStringLiteral("source2"), words.at(4));
    }
    return true;
}

bool AscDirectives::takeNoise(const QStringList& words) {
    static const QRegularExpression voltage(QStringLiteral("\\AV\\(([^,()]+)\\)\\z"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = voltage.match(words.value(0));
    const QString noise = QStringLiteral("noise");
    if (!match.hasMatch() || !takeSpectrum(noise, words.mid(2))) {
        return false;
    }
    m_setup.setValue(noise, QStringLiteral("output"), match.captured(1));
    m_setup.setValue(noise, QStringLiteral("source"), words.value(1));
    return true;
}

bool AscDirectives::takeStep(QStringList words) {
    QString spacing = QStringLiteral("lin");
    const QString first = words.value(0).toLower();
    if (first == QLatin1String("dec") || first == QLatin1String("oct") ||
        first == QLatin1String("lin")) {
        spacing = first;
        words.removeFirst();
    }
    // Sources and temperatures are stepped through by others.
    if (words.value(0).toLower() != QLatin1String("param") || words.size() != 5 ||
        words.at(2).toLower() == QLatin1String("list")) {
        return false;
    }
    const double from = asNumber(words.at(2));
    const double to = asNumber(words.at(3));
    const double step = asNumber(words.at(4));
    const bool isLog = spacing != QLatin1String("lin");
    const double decades = isLog && from > 0 && to > from ? std::log10(to / from) : 0;
    const double octaves = decades / std::log10(2.0);
    const double runs = isLog ? step * (spacing == QLatin1String("dec") ? decades : octaves)
                              : (step != 0 ? (to - from) / step : 0);
    const QString sweep = QStringLiteral("sweep");
    if (!(runs > 0 && runs < MostRuns) ||
        !set(sweep, {QStringLiteral("from"), QStringLiteral("to")}, words.mid(2, 2))) {
        return false;
    }
    m_setup.setValue(sweep, QStringLiteral("parameter"),
                     spelling().value(words.at(1).toLower(), words.at(1)));
    m_setup.setValue(sweep, QStringLiteral("count"), QString::number(std::lround(runs) + 1));
    m_setup.setValue(sweep, QStringLiteral("spacing"),
                     isLog ? QStringLiteral("log") : QStringLiteral("lin"));
    return true;
}

bool AscDirectives::takeParameters(const QString& line) {
    bool isWhole = true;
    const auto assignments = AscValues::assignments(line);
    for (const auto& assignment : assignments) {
        const QString value = parameterValue(assignment.second, spelling());
        if (value.isNull() || spelling().contains(assignment.first.toLower())) {
            isWhole = false;
        } else {
            m_parameters.append({assignment.first, value});
        }
    }
    return isWhole && !assignments.isEmpty();
}
