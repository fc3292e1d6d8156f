// Netlists, checks, runs of the real simulator compared with formulas, and runs that go wrong.

#include "Analysis.h"
#include "CircuitCheck.h"
#include "ElementLibrary.h"
#include "HostFixture.h"
#include "Netlist.h"
#include "NetlistType.h"
#include "OutputVariable.h"
#include "Simulator.h"
#include "SpiceModels.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cmath>

namespace {

class Simulation : public testing::Test {
protected:
    Simulation() {
        const QString folder = QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library");
        QString reason;
        EXPECT_TRUE(library.load(folder)) << qPrintable(library.problems().join(QLatin1Char('\n')));
        EXPECT_TRUE(models.load(folder + QStringLiteral("/models.lib"), &reason));
    }

    /// One element per line: "Resistor.Basic R1 in out R=1k", with the net of each terminal, "-"
    /// for none. A net with one terminal gets none.
    void build(const QString& lines) {
        for (const QString& line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const QStringList words = line.simplified().split(QLatin1Char(' '));
            ElementDescription* type = library.description(words.at(0));
            ASSERT_NE(type, nullptr) << qPrintable(words.at(0));
            CircuitElement* element = type->createElement();
            element->setName(words.at(1));
            circuit.addElement(element);
            int next = 2;
            for (CircuitElementNode* terminal : element->terminals()) {
                const QString net = words.value(next++);
                CircuitElementNode*& other = m_terminals[net];
                if (other && net != QLatin1String("-")) {
                    CircuitNode* node = other->node();
                    node ? static_cast<ICircuitSolver&>(solver).makeConnection(terminal, node)
                         : (static_cast<ICircuitSolver&>(solver).makeConnection(other, terminal) !=
                            nullptr);
                    other->node()->setName(net);
                }
                other = terminal;
            }
            for (; next < words.size(); ++next) {
                set(element, words.at(next).section(QLatin1Char('='), 0, 0),
                    words.at(next).section(QLatin1Char('='), 1));
            }
        }
    }

    static void set(CircuitElement* element, const QString& name, const QString& value) {
        if (name == QLatin1String("model")) {
            element->setModelName(value);
            return;
        }
        for (int i = 0; i < element->propertyCount(); ++i) {
            if (element->propertyName(i) == name) {
                element->setPropertyValue(i, value);
                return;
            }
        }
        FAIL() << qPrintable(name);
    }

    void setUp(const char* analysis,
               std::initializer_list<std::pair<const char*, const char*>> fields) {
        setup.setActive(QLatin1String(analysis));
        for (const auto& field : fields) {
            setup.setValue(QLatin1String(analysis), QLatin1String(field.first),
                           QString::fromUtf8(field.second));
        }
    }

    /// The error of the run; empty if it went well.
    QString run() {
        QString reason;
        QSignalSpy finished(&simulator, &Simulator::finished);
        if (!simulator.start(circuit, models, setup, &reason)) {
            return reason;
        }
        if (finished.isEmpty() && !finished.wait(30000)) {
            return QStringLiteral("no end");
        }
        element = finished.first().at(1).toString();
        return finished.first().at(0).toString();
    }

    QVector<std::complex<double>> net(const char* name, int index = 0) {
        Curve curve;
        QString reason;
        EXPECT_TRUE(
            simulator.runs().at(index).results.netCurve(QLatin1String(name), &curve, &reason))
            << qPrintable(reason);
        return curve.values;
    }

    double result(const char* elementName, const char* variable) {
        Curve curve;
        QString reason;
        EXPECT_TRUE(simulator.runs().first().results.elementCurve(
            circuit.elementNamed(QLatin1String(elementName)), QLatin1String(variable), &curve,
            &reason))
            << qPrintable(reason);
        return curve.values.isEmpty() ? NAN : curve.values.last().real();
    }

    QStringList problems() {
        QStringList texts;
        for (const CircuitProblem& problem : checkCircuit(circuit, models)) {
            texts.append(problem.text);
        }
        return texts;
    }

    ElementLibrary library;
    Circuit circuit;
    CircuitSolver solver{&circuit};
    SpiceModels models;
    SimulationSetup setup;
    Simulator simulator;
    QString element;
    // One of each net.
    QHash<QString, CircuitElementNode*> m_terminals;
};

const char RcFilter[] = R"(SignalVoltage.Sources V1 in 0 amplitude=1
                           Resistor.Basic R1 in out R={Rload}
                           Capacitor.Basic C1 out 0 C=100n
                           Ground.Basic GND1 0)";

TEST_F(Simulation, WritesAReadableNetlist) {
    circuit.setTitle(QStringLiteral("Low pass"));
    circuit.addGlobalVariable(QStringLiteral("Rload"), QStringLiteral("{2*0.5M/1k}"), true);
    build(QLatin1String(RcFilter));
    // "Load" and "RLoad" are one name to the simulator.
    build(
        QStringLiteral("Resistor.Basic Load out 0 R=4.7M\nResistor.Basic RLoad out 0 "
                       "R=1k\nNPN.Semiconductors T1 in out 0"));
    EXPECT_EQ(writeNetlist(circuit, models).lines.join(QLatin1Char('\n')),
              QStringLiteral("Low pass\n\n* Parameters\n.param Rload = {2*0.5Meg/1k}\n\n* Models\n"
                             ".model T1_model NPN(BF=100 IS=1e-15 BR=1 VAF=100)\n\n* Elements\n"
                             "C1 out 0 100n IC=0\nRLoad out 0 4.7Meg\nR1 in out {Rload}\n"
                             "RLoad_2 out 0 1k\n"
                             "QT1 in out 0 T1_model\n"
                             "V1 in 0 DC 0 AC 1 0 SIN(0 1 1k 0 0 0)"));
}

TEST_F(Simulation, KnowsCurrentsAndPowersOfElements) {
    build(
        QStringLiteral("DCVoltage.Sources V1 in 0 V=10\nResistor.Basic R1 in mid R=1k\n"
                       "Resistor.Basic R2 mid 0 R=1k\nSwitch.Basic S1 in 0 state=open Roff=1M\n"
                       "CurrentControlledCurrent.Sources F1 - - x 0 gain=2 control=R2\n"
                       "Resistor.Basic R3 x 0 R=1k\nGround.Basic GND1 0"));
    setUp("op", {});
    ASSERT_EQ(run(), QString());
    EXPECT_NEAR(result("R2", "i"), 5e-3, 1e-9);
    EXPECT_NEAR(result("R2", "p"), 25e-3, 1e-8);
    EXPECT_NEAR(result("S1", "i"), 1e-5, 1e-11);
    EXPECT_NEAR(result("V1", "i"), -5.01e-3, 1e-9);
    EXPECT_NEAR(result("R3", "i"), -10e-3, 1e-8);
    auto* variable = OutputVariable::from(circuit.addOutputVariable(
        circuit.elementNamed(QStringLiteral("R1")), QStringLiteral("v_ac")));
    Curve curve;
    QString reason;
    ASSERT_TRUE(simulator.runs().first().results.curveOf(variable, &curve, &reason));
    EXPECT_NEAR(curve.values.first().real(), 5, 1e-6);
    EXPECT_EQ(curve.unit, QStringLiteral("V"));
}

TEST_F(Simulation, ReachesDigitalAndNestedCircuits) {
    build(
        QStringLiteral("DCVoltage.Sources V1 a 0 V=1\nDCVoltage.Sources V2 b 0 V=0.5\n"
                       "Comparator.Analog U1 a b high\nComparator.Analog U2 b a low\n"
                       "And.Digital U3 high low both\nOr.Digital U4 high low any\n"
                       "Not.Digital U5 both not\nNot.Digital U6 any none\nNot.Digital U7 not x\n"
                       "Not.Digital U8 none y\nGround.Basic GND1 0\n"
                       "DCVoltage.Sources V3 vcc 0 V=12\nDCVoltage.Sources V4 0 vee V=12\n"
                       "TwoStageAmplifier.Subcircuits X1 out a out vcc vee\n"
                       "Resistor.Basic R1 out 0 R=10k"));
    setUp("tran", {{"stop", "10u"}});
    ASSERT_EQ(run(), QString());
    EXPECT_EQ(net("both").last().real(), 0);
    EXPECT_EQ(net("any").last().real(), 1);
    EXPECT_EQ(result("U5", "y"), 1);
    EXPECT_TRUE(std::isfinite(net("out").last().real()));
}

/// Each terminal on a resistor: what the library tells of a type is what the simulator takes, with
/// the type's own model and with each of those it accepts.
TEST_F(Simulation, TakesEveryTypeOfTheLibrary) {
    setUp("tran", {{"stop", "1u"}});
    QMap<QString, QString> circuits;
    int number = 0;
    for (const QString& type : library.types()) {
        const ElementTypeData& data = library.description(type)->data();
        for (const QString& model : data.models + QStringList{QString()}) {
            QString nets;
            QString loads;
            ++number;
            for (const TerminalData& terminal : data.terminals) {
                const QString net = QStringLiteral("n%1_%2").arg(number).arg(terminal.name);
                nets += QLatin1Char(' ') + net;
                if (terminal.type == QLatin1String("e") && terminal.netName.isEmpty()) {
                    loads += QStringLiteral("Resistor.Basic RL%1 %1 first\n").arg(net);
                }
            }
            circuits[type.section(QLatin1Char('.'), 1)] +=
                QStringLiteral("%1 X%2 %3 %4\n%5")
                    .arg(type)
                    .arg(number)
                    .arg(nets, model.isEmpty() ? QString() : QLatin1String("model=") + model,
                         loads);
        }
    }
    EXPECT_GE(library.types().size(), 70);
    for (const QString& lines : qAsConst(circuits)) {
        circuit.clear();
        m_terminals.clear();
        build(lines + QStringLiteral("DCVoltage.Sources Vx first 0\nGround.Basic GNDx 0\n"));
        EXPECT_EQ(run(), QString()) << qPrintable(simulator.log());
    }
}

TEST_F(Simulation, KeepsTextNetlistsApart) {
    const auto type = [](const char* resistance) {
        return NetlistType::nameFor(QStringLiteral(".subckt Load a b params: n=1\nR1 a b {n*%1}\n"
                                                   "X1 a b helper\n.ends\n"
                                                   ".subckt helper a b\nR1 a b 1Meg\n.ends")
                                        .arg(QLatin1String(resistance)));
    };
    build(QStringLiteral("DCVoltage.Sources V1 a 0 V=1\nGround.Basic G1 0\n%1 X1 a 0\n"
                         "%1 X2 a 0 n=4\n%2 X3 a 0")
              .arg(type("1k"), type("2k")));
    setUp("op", {});
    ASSERT_EQ(run(), QString());
    EXPECT_NEAR(result("X1", "i_a"), 1 / 1e3 + 1e-6, 1e-9);
    EXPECT_NEAR(result("X2", "i_a"), 1 / 4e3 + 1e-6, 1e-9);
    EXPECT_NEAR(result("X3", "i_a"), 1 / 2e3 + 1e-6, 1e-9);
}

/// Between what the data sheets guarantee, where they tell it.
TEST_F(Simulation, HasModelsThatMeetTheirDataSheets) {
    build(QStringLiteral(
        "Ground.Basic G1 0\nDCVoltage.Sources V1 c1 0 V=1\nDCVoltage.Sources V5 c5 0 V=5\n"
        "DCVoltage.Sources V10 g10 0 V=10\n"
        "NPN.Semiconductors Q1 c1 b1 0 model=2N3904\nDCCurrent.Sources I1 0 b1 I=60u\n"
        "NPN.Semiconductors Q2 c5 b2 0 model=BC547\nDCCurrent.Sources I2 0 b2 I=7u\n"
        "PNP.Semiconductors Q3 0 b3 c1 model=2N3906\nDCCurrent.Sources I3 b3 0 I=60u\n"
        "PNP.Semiconductors Q4 0 b4 c5 model=BC557\nDCCurrent.Sources I4 b4 0 I=6u\n"
        "Diode.Semiconductors D1 d1 0 model=1N4148\nDCCurrent.Sources I5 0 d1 I=10m\n"
        "Diode.Semiconductors D2 d2 0 model=1N4007\nDCCurrent.Sources I6 0 d2 I=1\n"
        "Diode.Semiconductors D3 0 d3 model=1N4148\nDCCurrent.Sources I7 0 d3 I=100u\n"
        "ZenerDiode.Semiconductors D4 0 d4 BV=5.1\nDCCurrent.Sources I8 0 d4 I=1m\n"
        "PowerMOSFET.Semiconductors M1 d5 d5 0 model=2N7000\nDCCurrent.Sources I9 0 d5 I=1m\n"
        "PowerMOSFET.Semiconductors M2 d6 g10 0 model=2N7000\nDCCurrent.Sources I10 0 d6 I=500m"));
    setUp("op", {});
    ASSERT_EQ(run(), QString()) << qPrintable(simulator.log());
    const struct {
        const char* what;
        double value;
        double least;
        double most;
    } table[] = {{"hFE 2N3904", result("Q1", "ic") / 60e-6, 100, 300},
                 {"VBE 2N3904", result("Q1", "vbe"), 0.65, 0.85},
                 {"hFE BC547B", result("Q2", "ic") / 7e-6, 200, 450},
                 {"VBE BC547B", result("Q2", "vbe"), 0.58, 0.70},
                 {"hFE 2N3906", -result("Q3", "ic") / 60e-6, 100, 300},
                 {"hFE BC557B", -result("Q4", "ic") / 6e-6, 220, 475},
                 {"VF 1N4148", result("D1", "v"), 0.62, 1.0},
                 {"VF 1N4007", result("D2", "v"), 0.8, 1.1},
                 {"VBR 1N4148", -result("D3", "v"), 100, 110},
                 {"VZ", -result("D4", "v"), 5.0, 5.2},
                 {"Vth 2N7000", result("M1", "vgs"), 0.8, 3},
                 {"RDS 2N7000", result("M2", "vds") / 0.5, 0.5, 5}};
    for (const auto& row : table) {
        EXPECT_GE(row.value, row.least) << row.what;
        EXPECT_LE(row.value, row.most) << row.what;
    }
}

TEST_F(Simulation, SaysWhatIsWrongAndWhere) {
    ElementTypeData strange = library.description(QStringLiteral("Resistor.Basic"))->data();
    strange.spice = {};
    strange.label = QStringLiteral("Oddity");
    ElementDescription oddity(strange);
    CircuitElement* odd = oddity.createElement();
    odd->setName(QStringLiteral("R9"));
    circuit.addElement(odd);
    build(
        QStringLiteral("DCVoltage.Sources V1 a b V=1\nDCVoltage.Sources V2 b a V=1\n"
                       "DCVoltage.Sources V3 s s\nCapacitor.Basic C1 a float\n"
                       "Capacitor.Basic C2 float b\nResistor.Basic R1 a - R={Rx}\n"
                       "NPN.Semiconductors Q1 a a b model=nobody"));
    circuit.node(0)->setName(QStringLiteral("a"));
    const QStringList texts = problems();
    const QStringList expected = {
        QStringLiteral("The circuit has no ground: connect a Ground to the net that all voltages "
                       "are measured against."),
        QStringLiteral("R9 is a Oddity, which can not be simulated."),
        QStringLiteral("V2 closes a loop of voltage sources."),
        QStringLiteral("V3 is short-circuited by the net s."),
        QStringLiteral("Q1 has the model nobody, which is not known."),
        QStringLiteral("The terminal n of R1 is not connected."),
        QStringLiteral("Two nets are named a: they count as one.")};
    for (const QString& text : expected) {
        EXPECT_TRUE(texts.contains(text)) << qPrintable(text);
    }
    EXPECT_TRUE(texts.join(QLatin1Char('\n')).contains(QLatin1String("{Rx} of R1")));
    build(QStringLiteral("Ground.Basic GND1 b"));
    EXPECT_TRUE(problems().contains(
        QStringLiteral("The net float floats: no direct current can flow from it to ground.")));
    EXPECT_FALSE(run().isEmpty());
}

TEST_F(Simulation, NamesTheElementThatTheSimulatorStumblesOver) {
    build(
        QStringLiteral("BehavioralVoltage.Sources B1 a 0 expression=v(x)*foo\n"
                       "Resistor.Basic R1 a 0\nGround.Basic GND1 0"));
    setUp("op", {});
    EXPECT_EQ(run(), QStringLiteral("The simulator complains about B1: Undefined parameter [foo]"));
    EXPECT_EQ(element, QStringLiteral("B1"));
    build(QStringLiteral("DCVoltage.Sources V1 a 0"));
    EXPECT_EQ(run(), QStringLiteral("V1 closes a loop of voltage sources."));
}

TEST_F(Simulation, SurvivesASimulatorThatFails) {
    build(
        QStringLiteral("DCVoltage.Sources V1 a 0 V=1\nResistor.Basic R1 a 0\nGround.Basic GND1 0"));
    setUp("op", {});
    QTemporaryDir folder;
    const auto script = [&](const char* text) {
        const QString name = folder.filePath(QStringLiteral("simulator"));
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("#!/bin/sh\n") + text + "\n");
        file.close();
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                            QFileDevice::WriteOwner);
        simulator.setProgram(name);
    };
    script("kill -9 $$");
    EXPECT_EQ(run(), QStringLiteral("The simulator ended unexpectedly."));
    script("echo 'Error: cannot do r1 at all'; exit 1");
    EXPECT_EQ(run(),
              QStringLiteral("The simulator complains about R1: Error: cannot do r1 at all"));
    EXPECT_EQ(element, QStringLiteral("R1"));
    script("exit 0");
    EXPECT_EQ(run(), QStringLiteral("The simulator answered no values."));
    script(
        "printf 'No. Variables: 2\\nNo. Points: 9\\nVariables:\\n 0 a v\\n 1 b v\\nBinary:\\nxx' > "
        "answer.raw");
    EXPECT_EQ(run(), QStringLiteral("The simulator answered no values."));
    script(
        "printf 'No. Variables: 1\\nNo. Points: 9\\nVariables:\\n 0 a v\\nBinary:\\n0123456789' > "
        "answer.raw");
    EXPECT_EQ(run(), QStringLiteral("The answer of the simulator breaks off: is there room on the "
                                    "disk?"));
    script("exec sleep 600");
    QString reason;
    QSignalSpy finished(&simulator, &Simulator::finished);
    ASSERT_TRUE(simulator.start(circuit, models, setup, &reason));
    EXPECT_FALSE(simulator.start(circuit, models, setup, &reason));
    simulator.cancel();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished.first().first().toString(), QStringLiteral("The simulation was cancelled."));
    simulator.setTimeLimit(1);
    EXPECT_EQ(run(), QStringLiteral("The simulation took longer than 1 s."));
    simulator.setProgram(QStringLiteral("/nowhere/ngspice"));
    EXPECT_TRUE(run().contains(QLatin1String("install the package ngspice")));
}

}  // namespace
