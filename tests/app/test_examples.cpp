// The circuits of examples/, simulated from the command line as they are, against what theory
// tells.

#include "WorkbenchProcess.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>

namespace {

using Numbers = QVector<double>;

constexpr double Pi = 3.14159265358979323846;

/// A table of comma-separated values, whose first column rises.
class Table {
public:
    explicit Table(const QByteArray& csv) {
        const QList<QByteArray> lines = csv.split('\n');
        for (const QByteArray& name : lines.first().split(',')) {
            m_names.append(QString::fromUtf8(name).remove(QLatin1Char('"')));
        }
        m_columns.resize(m_names.size());
        for (int i = 1; i < lines.size() && !lines.at(i).isEmpty(); ++i) {
            const QList<QByteArray> words = lines.at(i).split(',');
            for (int c = 0; c < m_columns.size(); ++c) {
                m_columns[c].append(words.value(c, "nan").toDouble());
            }
        }
    }
    const Numbers& xs() const { return m_columns.first(); }
    const Numbers& of(const char* name) const {
        static const Numbers none{NAN};
        const int column = m_names.indexOf(QLatin1String(name));
        EXPECT_GE(column, 0) << name;
        return column < 0 ? none : m_columns.at(column);
    }
    double at(double x, const char* name) const {
        const auto next = std::lower_bound(xs().begin(), xs().end(), x);
        const int i = qBound(1, int(next - xs().begin()), xs().size() - 1);
        const double share = (x - xs().at(i - 1)) / (xs().at(i) - xs().at(i - 1));
        return of(name).at(i - 1) + share * (of(name).at(i) - of(name).at(i - 1));
    }
    /// Where the curve comes to the level from below, or else from above.
    Numbers crossings(const char* name, double level, bool up) const {
        Numbers found;
        const Numbers& ys = of(name);
        for (int i = 1; i < ys.size(); ++i) {
            const double a = ys.at(i - 1);
            const double b = ys.at(i);
            if (up ? a < level && b >= level : a > level && b <= level) {
                found.append(xs().at(i - 1) +
                             (level - a) / (b - a) * (xs().at(i) - xs().at(i - 1)));
            }
        }
        return found;
    }
    double greatest(const char* name) const {
        return *std::max_element(of(name).begin(), of(name).end());
    }

private:
    QStringList m_names;
    QVector<Numbers> m_columns;
};

double decibels(double ratio) {
    return 20 * std::log10(ratio);
}

void checkLowPass(const Table& table) {
    const double corner = table.crossings("output dB", -decibels(std::sqrt(2)), false).value(0);
    EXPECT_NEAR(corner * 2 * Pi * 1e3 * 100e-9, 1, 1e-3);
}

/// The resistor's own noise, before the capacitor takes it away.
void checkNoise(const Table& table) {
    const double expected = std::sqrt(4 * 1.380649e-23 * 300.15 * 1e3);
    EXPECT_NEAR(table.of("onoise_spectrum").first() / expected, 1, 1e-4);
}

void checkStep(const Table& table) {
    const double damping = 10 / (2 * 1e-3);
    const double angular = std::sqrt(1e9 - damping * damping);
    for (double t = 10e-6; t < 850e-6; t += 7e-6) {
        const double expected =
            1 - std::exp(-damping * t) *
                    (std::cos(angular * t) + damping / angular * std::sin(angular * t));
        ASSERT_NEAR(table.at(100e-6 + t, "output"), expected, 3e-3) << t;
    }
}

void checkBridge(const Table& table) {
    // Each half wave charges to the peak less two diodes, which the load empties until the next.
    const double peak = table.greatest("output");
    EXPECT_NEAR(peak, 10 - 2 * 0.75, 0.15);
    const Numbers& out = table.of("output");
    const double least = *std::min_element(out.end() - out.size() / 4, out.end());
    EXPECT_NEAR(peak - least, peak / 1e3 * 10e-3 / 470e-6, 0.25 * (peak - least));
}

void checkInverter(const Table& table) {
    // Both transistors conduct alike: it switches in the middle, where both are saturated.
    EXPECT_NEAR(table.crossings("output", 1.5, false).value(0), 1.5, 1e-3);
    const double slope = (table.at(1.502, "output") - table.at(1.498, "output")) / 0.004;
    EXPECT_NEAR(slope, -2 / (0.02 * (1.5 - 0.7)) * (1 + 0.02 * 1.5), 5);
    EXPECT_NEAR(table.at(0.5, "output"), 3, 1e-6);
    EXPECT_NEAR(table.at(2.5, "output"), 0, 1e-6);
}

void checkRing(const Table& table) {
    const Numbers rises = table.crossings("output", 1.5, true);
    ASSERT_GT(rises.size(), 4);
    const double period = rises.last() - rises.at(rises.size() - 2);
    // Six delays. That after a step is known; edges that take their time make it up to twice as
    // long.
    const double drive = 3 - 0.7;
    const double delay = 1e-12 / (1.1e-3 * drive) * (2 * 0.7 / drive + std::log(4 * drive / 3 - 1));
    EXPECT_GT(period, 6 * delay);
    EXPECT_LT(period, 12 * delay);
    EXPECT_NEAR(rises.at(rises.size() - 2) - rises.at(rises.size() - 3), period, 1e-3 * period);
}

void checkNested(const Table& table) {
    const Numbers& out = table.of("output");
    const double span = table.greatest("output") - *std::min_element(out.begin(), out.end());
    EXPECT_NEAR(span / 0.2, 1, 5e-3);
}

void checkFamily(const Table& table) {
    const double own = 1 / (2 * Pi * std::sqrt(1e-3 * 1e-6));
    const std::pair<const char*, double> runs[] = {
        {"output (Rdamp=5) dB", 5}, {"output (Rdamp=25) dB", 25}, {"output (Rdamp=125) dB", 125}};
    for (const auto& run : runs) {
        EXPECT_NEAR(table.at(own, run.first), decibels(std::sqrt(1e-3 / 1e-6) / run.second), 0.1);
    }
}

/// What the amplifier does without its feedback follows from what it does with it.
void check741Gain(const Table& table) {
    const double share = std::pow(10, table.of("output dB").first() / 20);
    EXPECT_GT(share / (1 - share), 50e3);
    const double bandwidth = table.crossings("output dB", -decibels(std::sqrt(2)), false).value(0);
    EXPECT_GT(bandwidth, 0.437e6);
    EXPECT_LT(bandwidth, 1.5e6);
}

void check741Slew(const Table& table) {
    const auto time = [&](double level, bool up) {
        return table.crossings("output", level, up).value(0);
    };
    EXPECT_NEAR(6 / (time(3, true) - time(-3, true)), 0.5e6, 0.1e6);
    EXPECT_NEAR(6 / (time(-3, false) - time(3, false)), 0.5e6, 0.1e6);
}

void checkSallenKey(const Table& table) {
    for (const double f : {100.0, 1000.0, 5000.0}) {
        const std::complex<double> s(0, 2 * Pi * f * 10e3);
        const double expected = decibels(std::abs(1.0 / (1.0 + 2.0 * s * 11e-9 + s * s * 242e-18)));
        EXPECT_NEAR(table.at(f, "out dB"), expected, 0.02) << f;
    }
}

void checkRectifier(const Table& table) {
    EXPECT_NEAR(table.greatest("out"), 325 * 0.999 * std::sqrt(27e-3 / 10) - 2 * 0.7, 1);
}

void checkFollower(const char* in, const char* out, double most, const Table& table) {
    for (double t = 1e-4; t < 1e-2; t += 3.3e-4) {
        ASSERT_NEAR(table.at(t, out), table.at(t, in), most) << t;
    }
}

void checkAdder(const Table& table) {
    for (int i = 0; i < 8; ++i) {
        const double t = (i + 0.5) * 1.25e-3;
        const int bits = int(table.at(t, "a") + table.at(t, "b") + table.at(t, "cin"));
        EXPECT_EQ(table.at(t, "sum"), bits % 2) << i;
        EXPECT_EQ(table.at(t, "carry"), bits / 2) << i;
    }
}

class Examples : public WorkbenchTest {};

}  // namespace

TEST_F(Examples, AnswerWhatTheoryTells) {
    if (QStandardPaths::findExecutable(QStringLiteral("ngspice")).isEmpty()) {
        GTEST_SKIP() << "ngspice is not installed";
    }
    const struct {
        const char* file;
        const char* analysis;
        std::function<void(const Table&)> check;
    } table[] = {
        {"rc-lowpass.vprj", "", checkLowPass},
        {"rc-lowpass.vprj", "noise", checkNoise},
        {"rlc-step.vprj", "", checkStep},
        {"diode-bridge.vprj", "", checkBridge},
        {"cmos-inverter.vprj", "", checkInverter},
        {"ring-oscillator.vprj", "", checkRing},
        {"nested-amplifier.vprj", "", checkNested},
        {"parameter-sweep.vprj", "", checkFamily},
        {"follower-741.vprj", "", check741Gain},
        {"follower-741.vprj", "tran", check741Slew},
        {"sallen-key.ckt", "ac", checkSallenKey},
        {"rectifier.ckt", "", checkRectifier},
        {"cmos-amplifier.ckt", "", [](const Table& t) { checkFollower("inp", "out", 1e-3, t); }},
        {"opamp-741.vprj", "", [](const Table& t) { checkFollower("input", "output", 5e-3, t); }},
        {"full-adder.ckt", "", checkAdder}};
    QStringList untold = QDir(QStringLiteral(VORTEL_SOURCE_DIR "/examples"))
                             .entryList({QStringLiteral("*.ckt"), QStringLiteral("*.vprj")});
    for (const auto& row : table) {
        SCOPED_TRACE(row.file);
        untold.removeAll(QLatin1String(row.file));
        QStringList arguments{QStringLiteral("simulate"),
                              QStringLiteral(VORTEL_SOURCE_DIR "/examples/") + row.file,
                              QStringLiteral("-o"), path(QStringLiteral("out.csv"))};
        if (*row.analysis) {
            arguments << QStringLiteral("--analysis") << QLatin1String(row.analysis);
        }
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errorLines, QStringList());
        row.check(Table(contentOf(path(QStringLiteral("out.csv")))));
    }
    EXPECT_EQ(untold, QStringList());
}

TEST_F(Examples, ABatchRunEndsWhateverTheSimulatorDoes) {
    // What is found first on the path is the simulator.
    const QString folder = path(QStringLiteral("bin"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = QStringLiteral(VORTEL_SOURCE_DIR "/examples/rc-lowpass.vprj");
    const QStringList arguments{QStringLiteral("simulate"), file, QStringLiteral("-o"),
                                path(QStringLiteral("out.csv"))};
    const QString name = write(QStringLiteral("bin/ngspice"), "#!/bin/sh\nexec sleep 600\n");
    QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString rest = environment.value(QStringLiteral("PATH"));
    environment.insert(QStringLiteral("PATH"), folder + QLatin1Char(':') + rest);
    Outcome outcome =
        run(arguments + QStringList{QStringLiteral("--timeout"), QStringLiteral("1")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errorLines, QStringList("The simulation took longer than 1 s"));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("out.csv"))));
    EXPECT_EQ(
        run(arguments + QStringList{QStringLiteral("--timeout"), QStringLiteral("soon")}).status,
        2);

    // A disk that is full as the answer is written.
    if (!QStandardPaths::findExecutable(QStringLiteral("ngspice")).isEmpty()) {
        write(QStringLiteral("bin/ngspice"),
              "#!/bin/sh\ntrap '' XFSZ\nulimit -f 4\nPATH=${PATH#*:}\nexec ngspice \"$@\"\n");
        outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errorLines.size(), 1);
        EXPECT_FALSE(QFile::exists(path(QStringLiteral("out.csv"))));
    }
}
