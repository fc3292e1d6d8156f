// Drawings of other programs, and what changed between two files.

#include "AscFile.h"
#include "WorkbenchProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace {

QString sample(const char* name) {
    return QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/asc/") + QLatin1String(name);
}

/// The numbers of the column whose head holds the text.
QVector<double> column(const QByteArray& csv, const char* head) {
    QList<QByteArray> lines = csv.trimmed().split('\n');
    const QList<QByteArray> heads = lines.takeFirst().split(',');
    QVector<double> values;
    for (int i = 0; i < heads.size(); ++i) {
        for (const QByteArray& line : qAsConst(lines)) {
            if (heads.at(i).contains(head)) {
                values.append(line.split(',').at(i).toDouble());
            }
        }
    }
    return values;
}

}  // namespace

using GuestsTest = WorkbenchTest;

TEST_F(GuestsTest, ImportedLowPassAnswersAsItsFormulaSays) {
    const QString project = path("lowpass.vprj");
    EXPECT_EQ(run({"convert", sample("lowpass.asc"), project}).errorLines, QStringList());
    const QString csv = path("out.csv");
    ASSERT_EQ(run({"simulate", project, "-o", csv}).errorLines, QStringList());
    const QVector<double> frequency = column(contentOf(csv), "frequency");
    const QVector<double> gain = column(contentOf(csv), "out dB");
    ASSERT_EQ(frequency.size(), 701);  // 100 in each of seven decades
    ASSERT_EQ(gain.size(), frequency.size());
    for (int i = 0; i < frequency.size(); i += 50) {
        const double corner = frequency.at(i) * 2 * M_PI * 1e3 * 100e-9;
        EXPECT_NEAR(gain.at(i), -10 * std::log10(1 + corner * corner), 0.01) << frequency.at(i);
    }
    // Where the wires were drawn: the file's (144, 96) is the canvas's (180, 120).
    const QJsonObject drawing = QJsonDocument::fromJson(run({"describe", project}).output).object();
    QStringList corners;
    for (const QJsonValue& node : drawing.value(QStringLiteral("nodes")).toArray()) {
        for (const QJsonValue& point : node.toObject().value(QStringLiteral("path")).toArray()) {
            corners.append(QStringLiteral("%1 %2")
                               .arg(point.toArray().at(1).toDouble())
                               .arg(point.toArray().at(2).toDouble()));
        }
    }
    EXPECT_TRUE(corners.contains(QStringLiteral("180 120")));
}

TEST_F(GuestsTest, ImportedStageHasItsModelValuesAndAnalysis) {
    const Outcome outcome = run({"convert", sample("stage.asc"), path("stage.vprj")});
    EXPECT_EQ(outcome.status, 0);
    const QString told = outcome.errorLines.join(QLatin1Char('\n'));
    EXPECT_TRUE(told.contains("C1: \"V=25 Rser=0.1\" is left out")) << qPrintable(told);
    EXPECT_TRUE(told.contains("1 drawn lines and shapes")) << qPrintable(told);
    EXPECT_EQ(outcome.errorLines.size(), 2) << qPrintable(told);
    ASSERT_EQ(run({"netlist", path("stage.vprj"), "-o", path("stage.cir")}).status, 0);
    const QString netlist = QString::fromUtf8(contentOf(path("stage.cir")));
    for (const char* line : {".param Rc = 4.7k", "Q1 out n", "2N3904", "CE n", " 100u IC=0", "V2 n",
                             "DC 12", "SIN(0 10m 1k", ".tran 5u 5m 0 5u"}) {
        EXPECT_TRUE(netlist.contains(QLatin1String(line))) << line << '\n' << qPrintable(netlist);
    }
    ASSERT_EQ(run({"simulate", path("stage.vprj"), "-o", path("stage.csv")}).errorLines,
              QStringList());
    // It amplifies: the 20 mV at its input come out as volts.
    const QVector<double> out = column(contentOf(path("stage.csv")), "out");
    EXPECT_GT(*std::max_element(out.begin(), out.end()) - *std::min_element(out.begin(), out.end()),
              1.0);
}

TEST_F(GuestsTest, WhatHasNoTypeIsABoxThatIsTold) {
    const Outcome outcome = run({"convert", sample("mixture.asc"), path("m.vprj")});
    EXPECT_EQ(outcome.status, 0);
    const QString told = outcome.errorLines.join(QLatin1Char('\n'));
    for (const char* remark : {"is not understood: NONSENSE", "U1: Opamps", "A1: Digital",
                               "V3: voltage", ".meas TRAN x MAX V(out)\" is a text"}) {
        EXPECT_TRUE(told.contains(QLatin1String(remark))) << remark << '\n' << qPrintable(told);
    }
    const QString netlist = path("m.cir");
    run({"netlist", path("m.vprj"), "-o", netlist});
    const QString lines = QString::fromUtf8(contentOf(netlist));
    // Terminals in the symbol's order; models and couplings by the texts of the drawing.
    for (const char* line :
         {"XU1 in 0 vcc 0 out MyAmp", "V3 in 0 SINE(0 1 1k 1m 100) AC 2", ".subckt MyAmp 1 2 3 4 5",
          "K1 L1 L2 0.99", ".model MyDiode D(Is=1e-12 N=1.5)"}) {
        EXPECT_TRUE(lines.contains(QLatin1String(line))) << line << '\n' << qPrintable(lines);
    }
    EXPECT_FALSE(lines.contains(QLatin1String(".ic"))) << "a comment has no effect";
    // A box is a type like others: it is drawn, and lasts through a save.
    EXPECT_EQ(run({"convert", path("m.vprj"), path("again.vprj")}).errorLines, QStringList());
    EXPECT_EQ(contentOf(path("again.vprj")), contentOf(path("m.vprj")));
    EXPECT_EQ(run({"diff", path("m.vprj"), path("again.vprj")}).status, 0);
}

TEST_F(GuestsTest, SymbolOfASheetIsASubCircuitWithItsOwnValues) {
    EXPECT_EQ(run({"convert", sample("nested.asc"), path("n.vprj")}).errorLines, QStringList());
    EXPECT_EQ(run({"convert", path("n.vprj"), path("again.vprj")}).errorLines, QStringList());
    EXPECT_EQ(contentOf(path("again.vprj")), contentOf(path("n.vprj")));
    const QString csv = path("n.csv");
    ASSERT_EQ(run({"simulate", path("again.vprj"), "-o", csv}).errorLines, QStringList());
    EXPECT_NEAR(column(contentOf(csv), "half").value(0), 4, 1e-6);
    EXPECT_NEAR(column(contentOf(csv), "quarter").value(0), 2, 1e-6);
    run({"netlist", path("n.vprj"), "-o", path("n.cir")});
    EXPECT_TRUE(contentOf(path("n.cir")).contains(".model Clamp"));
}

TEST(AscFile, TextIsReadInEveryEncoding) {
    const QString text = QStringLiteral("Version 4\nSYMATTR Value 2.2\u00B5\n");
    QByteArray wide;
    for (const QChar c : text) {
        wide.append(char(c.unicode() & 0xFF)).append(char(c.unicode() >> 8));
    }
    for (const QByteArray& bytes : {text.toUtf8(), QByteArray("\xEF\xBB\xBF") + text.toUtf8(),
                                    text.toLatin1(), wide, QByteArray("\xFF\xFE") + wide}) {
        EXPECT_EQ(decodeAsc(bytes).remove(QChar(QChar::ByteOrderMark)), text);
    }
}

TEST_F(GuestsTest, DiffTellsWhatChanged) {
    const QString before = QStringLiteral(VORTEL_SOURCE_DIR "/examples/rc-lowpass.vprj");
    QByteArray bytes = contentOf(before);
    const auto replace = [&bytes](const char* from, const char* to) {
        ASSERT_TRUE(bytes.contains(from)) << from;
        bytes.replace(from, to);
    };
    replace("Name=\"R\" Value=\"1k\"", "Name=\"R\" Value=\"2k\"");
    replace("Value=\"C1\"", "Value=\"Cx\"");
    replace("Node=\"out\"", "Node=\"load\"");
    replace("CircuitNode Name=\"out\"", "CircuitNode Name=\"load\"");
    replace("<ElementNode ElementID=\"0\" Name=\"n\"/>",
            "<ElementNode ElementID=\"1\" Name=\"p\"/>");
    replace("<!--Text boxes-->",
            "<TextBox X=\"0\" Y=\"0\" Width=\"9\" Height=\"9\">Hello</TextBox>");
    replace("<ProjectPart Analysis=\"ac\"", "<ProjectPart Analysis=\"tran\"");
    const Outcome outcome = run({"diff", before, write("after.vprj", bytes)});
    EXPECT_EQ(outcome.status, 1);
    for (const char* line :
         {"C1 renamed: Cx", "R1: R 1k -> 2k", "net out renamed: load", "net gnd: left by V1.n",
          "text added: \"Hello\"", "simulation, analysis: ac -> tran"}) {
        EXPECT_TRUE(outcome.output.split('\n').contains(line)) << line << '\n'
                                                               << outcome.output.constData();
    }
    EXPECT_EQ(run({"diff", before, before}).status, 0);
    EXPECT_EQ(run({"diff", before, path("none.vprj")}).status, 2);
    EXPECT_EQ(run({"diff", before}).status, 2);
}
