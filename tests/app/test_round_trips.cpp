// What a file holds, through loading and saving: nothing is lost, and saving again changes nothing.

#include "ElementLibrary.h"
#include "NetlistType.h"
#include "ProjectFile.h"
#include "WorkbenchProcess.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

const QDir Examples(QStringLiteral(VORTEL_SOURCE_DIR "/examples"));

/// Without the sizes of boxes that fit their text: they follow from the fonts of the machine.
QString withoutMeasuredSizes(const QByteArray& project) {
    static const QRegularExpression box("<(EPTextBox|GlobalParamTextBox)[^>]*>");
    static const QRegularExpression size(" (Width|Height)=\"[^\"]*\"");
    QString text = QString::fromUtf8(project);
    for (int at = 0;;) {
        const QRegularExpressionMatch match = box.match(text, at);
        if (!match.hasMatch()) {
            return text;
        }
        const QString plain = match.captured().remove(size);
        text.replace(match.capturedStart(), match.capturedLength(), plain);
        at = match.capturedStart() + plain.size();
    }
}

/// One line for each entry: its fields of these names.
QStringList lines(const QJsonObject& drawing, const char* list, const QStringList& fields) {
    QStringList result;
    for (const QJsonValue& entry : drawing.value(QLatin1String(list)).toArray()) {
        QStringList values;
        for (const QString& field : fields) {
            values.append(entry.toObject().value(field).toVariant().toString());
        }
        result.append(values.join(' '));
    }
    return result;
}

// The second box's text needs an end of its section in two parts, and lies off the grid.
const char* const EveryRecord = R"(<?xml version="1.0" encoding="UTF-8"?>
<VortelProject Format="1"><ProjectPart ID="VortelCircuit" Title="Ω &amp; &lt;all&gt;">
<CircuitElement ElementType="DifferentialStage.Subcircuits" ID="7" X="0" Y="0">
 <Property Name="Name" Value="X1"/></CircuitElement>
<CircuitElement ElementType="Resistor.Basic" ID="3" X="200" Y="0">
 <Property Name="Name" Value="R1"/><Property Name="Caption" Value="Last Ω"/>
 <Property Name="Rotation" Value="1"/><Parameter Name="R" Value="{gain*1k}"/></CircuitElement>
<CircuitElement ElementType="Capacitor.Basic" ID="5" X="300.25" Y="0.5">
 <Property Name="Name" Value="C1"/><Property Name="Flip" Value="2"/></CircuitElement>
<CircuitNode Name="sum" X="0" Y="0"><ElementNode Name="out" ElementID="7"/>
 <ElementNode Name="p" ElementID="3"/><ElementNode Name="p" ElementID="5"/>
 <Shape><ShapeElement Type="0" X="50" Y="0"/><ShapeElement Type="1" X="80.5" Y="0"/></Shape>
</CircuitNode>
<CircuitNode Name="back" X="0" Y="0"><ElementNode Name="n" ElementID="3"/>
 <ElementNode Name="n" ElementID="5"/></CircuitNode>
<GlobalVar Name="gain" Value="2.5" IsReal="1" IsString="0"/>
<GlobalVar Name="count" Value="3" IsReal="0" IsString="0"/>
<GlobalVar Name="mode" Value="fast &amp; loud" IsReal="0" IsString="1"/>
<TextBox FontFamily="DejaVu Sans" X="0" Y="-200" Width="150" Height="60" BorderColor="#b71c1c"
 FillColor="#80fff8d6" TextColor="#2e7d32"><![CDATA[{|b|} & <R{|W|}>{|?|}µ]]></TextBox>
<TextBox FontFamily="DejaVu Sans" X="0.25" Y="-100" Width="5" Height="5"><![CDATA[a]]]]><![CDATA[>b]]></TextBox>
<EPTextBox FontFamily="DejaVu Sans" X="220" Y="0" ElementIndex="1" Property="Caption"/>
<EPTextBox FontFamily="DejaVu Sans" X="220" Y="20" ElementIndex="1" Property="R"/>
<EPTextBox FontFamily="DejaVu Sans" X="320" Y="20" ElementIndex="2" Property="C"/>
<EPTextBox FontFamily="DejaVu Sans" X="320" Y="40" ElementIndex="2" Property="V0"/>
<GlobalParamTextBox GlobalParamName="gain" FontFamily="DejaVu Sans" X="0" Y="100"><![CDATA[gain = 2.5]]></GlobalParamTextBox>
<GlobalParamTextBox GlobalParamName="mode" FontFamily="DejaVu Sans" X="0" Y="130"><![CDATA[mode = fast & loud]]></GlobalParamTextBox>
</ProjectPart><ProjectPart ID="OutputVariables">
<OutputVar Type="2" Name="cur" ACType="false" Element="R1" ElementVarName="i"/>
<OutputVar Type="0" Name="sum" ACType="true" Node="sum"/>
<OutputVar Type="1" Name="pin" ACType="false" Element="X1" ElementNode="out"/>
<OutputVar Type="2" Name="Ω" ACType="true" Element="X1" ElementVarName="vout_ac"/>
</ProjectPart></VortelProject>
)";

}  // namespace

class RoundTrips : public WorkbenchTest {
protected:
    /// Saves the file in a copy that holds the same, and is the same when it is saved again.
    QByteArray drawingThatSurvives(const QString& file, const QString& copyName) {
        SCOPED_TRACE(qPrintable(file));
        const Outcome original = run({"describe", file});
        EXPECT_EQ(original.status, 0);
        EXPECT_EQ(original.errorLines, QStringList());
        const QString copy = path(copyName);
        EXPECT_EQ(run({"convert", file, copy}).errorLines, QStringList());
        EXPECT_EQ(run({"describe", copy}).output, original.output);
        EXPECT_EQ(run({"convert", copy, path("again-" + copyName)}).errorLines, QStringList());
        EXPECT_EQ(contentOf(path("again-" + copyName)), contentOf(copy));
        return original.output;
    }
};

TEST_F(RoundTrips, LoseNothingOfTheExamples) {
    const QStringList circuits = Examples.entryList({"*.ckt"});
    const QStringList projects = Examples.entryList({"*.vprj"});
    ASSERT_FALSE(circuits.isEmpty());
    ASSERT_FALSE(projects.isEmpty());
    for (const QString& name : circuits) {
        drawingThatSurvives(Examples.filePath(name), "circuit.ckt");
        drawingThatSurvives(Examples.filePath(name), "circuit.vprj");
    }
    for (const QString& name : projects) {
        drawingThatSurvives(Examples.filePath(name), "project.vprj");
        // As the program itself wrote it.
        EXPECT_EQ(withoutMeasuredSizes(contentOf(path("project.vprj"))),
                  withoutMeasuredSizes(contentOf(Examples.filePath(name))));
    }
}

TEST_F(RoundTrips, KeepWhatANewerVersionWrites) {
    const QString file = write("newer.vprj", R"(<VortelProject Format="1">
<ProjectPart ID="VortelCircuit" Mood="good"><Probe Net="n1"/>
<CircuitElement ElementType="Resistor.Basic" ID="3" X="0" Y="0" Locked="1">
 <Property Name="Name" Value="R1"/><Property Name="Footprint" Value="0603"/><Pin No="7"/>
</CircuitElement>
<CircuitElement ElementType="Resistor.Basic" ID="4" X="200" Y="0"/>
<CircuitNode Name="n1" X="0" Y="0" Net="5"><ElementNode Name="n" ElementID="3"/>
 <ElementNode Name="p" ElementID="4"/></CircuitNode></ProjectPart>)"
                                             "&#1;\x01<ProjectPart ID=\"Future\"><Blank> </Blank>"
                                             "</ProjectPart></VortelProject>");
    drawingThatSurvives(file, "copy.vprj");
    const QByteArray copy = contentOf(path("copy.vprj"));
    for (const char* kept : {"Mood=\"good\"", "<Probe Net=\"n1\"/>", "Locked=\"1\"", "Net=\"5\"",
                             "<Property Name=\"Footprint\" Value=\"0603\"/>", "<Pin No=\"7\"/>"}) {
        EXPECT_EQ(copy.count(kept), 1) << kept;
    }
    QString reason;
    EXPECT_EQ(ProjectFile::fromBytes(copy, &reason)->part("Future").text(), " ");

    const QString boxes = write("boxes.vprj", R"(<VortelProject Format="1">
<ProjectPart ID="VortelCircuit"><TextBox Angle="3">t</TextBox></ProjectPart></VortelProject>)");
    EXPECT_EQ(
        run({"describe", boxes}).errorLines,
        QStringList(boxes + ": what a newer version keeps in 1 record could not be restored"));
}

TEST_F(RoundTrips, NumbersMeanTheSameWhenSomeElementsAreLost) {
    const QString file = write("damaged.vprj", R"(<VortelProject Format="1">
<ProjectPart ID="VortelCircuit">
<CircuitElement ElementType="Memristor.Exotic" ID="8" X="0" Y="0"/>
<CircuitElement ElementType="Resistor.Basic" ID="7" X="0" Y="0"/>
<CircuitElement ElementType="Resistor.Basic" ID="3" X="200" Y="0">
 <Parameter Name="R" Value="banana"/></CircuitElement>
<CircuitNode Name="cut" X="0" Y="0"><ElementNode Name="a" ElementID="8"/>
 <ElementNode Name="n" ElementID="7"/><ElementNode Name="p" ElementID="3"/>
 <Shape><ShapeElement Type="0" X="50" Y="0"/><ShapeElement Type="1" X="150" Y="0"/></Shape>
</CircuitNode>
<EPTextBox ElementIndex="0" Property="M"/><EPTextBox ElementIndex="2" Property="Name"/>
</ProjectPart><ProjectPart ID="OutputVariables">
<OutputVar Type="2" Name="a" Element="M1" ElementVarName="i"/></ProjectPart></VortelProject>)");
    const Outcome outcome = run({"describe", file});
    EXPECT_EQ(outcome.errorLines,
              QStringList(file + ": 1 element, 1 node, 1 text box, 1 output variable and the value "
                                 "\"banana\" of R in R2 could not be restored"));
    const QJsonObject drawing = QJsonDocument::fromJson(outcome.output).object();
    EXPECT_EQ(lines(drawing, "nodes", {"name", "manual"}), QStringList("cut true"));
    EXPECT_EQ(lines(drawing, "textBoxes", {"text"}), QStringList("Name=R2"));
}

TEST_F(RoundTrips, KeepEveryKindOfRecord) {
    const QByteArray description =
        drawingThatSurvives(write("every.vprj", EveryRecord), "copy.vprj");
    const QJsonObject drawing = QJsonDocument::fromJson(description).object();
    EXPECT_EQ(drawing["title"].toString(), QString("Ω & <all>"));
    EXPECT_EQ(lines(drawing, "elements", {"name", "type", "caption", "x", "y", "rotation", "flip"}),
              QStringList({"X1 DifferentialStage.Subcircuits X1 0 0 0 0",
                           "R1 Resistor.Basic Last Ω 200 0 1 0",
                           "C1 Capacitor.Basic C1 300.25 0.5 0 2"}));
    EXPECT_EQ(lines(drawing, "nodes", {"name", "manual"}), QStringList({"sum true", "back false"}));
    EXPECT_EQ(lines(drawing, "textBoxes",
                    {"kind", "text", "x", "y", "borderColor", "fillColor", "textColor"}),
              QStringList({"text {|b|} & <R{|W|}>{|?|}µ 0 -200 #ffb71c1c #80fff8d6 #ff2e7d32",
                           "text a]]>b 0.25 -100 #ff808080 #ffffffff #ff000000",
                           "property Last Ω 220 0   ", "property {gain*1k} 220 20   ",
                           "property C=100 nF 320 20   ", "property V0=0 V 320 40   ",
                           "globalParameter gain = 2.5 0 100   ",
                           "globalParameter mode = fast & loud 0 130   "}));
    EXPECT_EQ(lines(drawing, "globalParameters", {"name", "value", "isReal"}),
              QStringList({"gain 2.5 true", "count 3 false", "mode fast & loud false"}));
    EXPECT_EQ(lines(drawing, "outputVariables", {"type", "text", "ac"}),
              QStringList({"2 cur=i_of_R1 false", "0 sum=nodev_ac_of_sum true",
                           "1 pin=nodev_of_sum false", "2 Ω=vout_ac_of_X1 true"}));
}

/// Each type of the library, turned and flipped, and one of a text netlist.
TEST_F(RoundTrips, EveryTypeIsDrawnKeptAndWrittenForTheSimulator) {
    ElementLibrary library;
    ASSERT_TRUE(library.load(QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library")));
    const QStringList types = library.types()
                              << NetlistType::nameFor(".subckt Own a b c\nR1 a b 1k\n.ends");
    QByteArray circuit = "<!DOCTYPE VortelCircuit><VortelCircuit>";
    for (int i = 0; i < types.size(); ++i) {
        circuit += QStringLiteral(
                       "<CircuitElement ID=\"%1\" X=\"%2\" Y=\"%3\" ElementType=\"%4\"><Property "
                       "Name=\"Rotation\" Value=\"%5\"/><Property Name=\"Flip\" Value=\"%6\"/>"
                       "</CircuitElement>")
                       .arg(i)
                       .arg(i % 10 * 200)
                       .arg(i / 10 * 200)
                       .arg(types.at(i))
                       .arg(i % 4)
                       .arg(i % 3)
                       .toUtf8();
    }
    const QString file = write("all.ckt", circuit + "</VortelCircuit>");
    EXPECT_EQ(run({"convert", file, path("all.vprj")}).status, 0);
    EXPECT_EQ(run({"convert", path("all.vprj"), path("again.vprj")}).status, 0);
    EXPECT_TRUE(contentOf(path("all.vprj")) == contentOf(path("again.vprj")));
    const QByteArray before = run({"describe", file}).output;
    EXPECT_TRUE(before == run({"describe", path("again.vprj")}).output);
    EXPECT_EQ(lines(QJsonDocument::fromJson(before).object(), "elements", {"type"}), types);
    EXPECT_EQ(run({"netlist", file, "-o", path("a.cir")}).status, 0);
    EXPECT_EQ(run({"netlist", path("again.vprj"), "-o", path("b.cir")}).status, 0);
    EXPECT_TRUE(contentOf(path("a.cir")) == contentOf(path("b.cir")));
    const Outcome drawn = run({"export", file, "-o", path("all.svg")});
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.errorLines, QStringList());
}
