// The program as it is used from a shell: exit status, streams and files.

#include "WorkbenchProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSvgRenderer>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString Divider = QStringLiteral(VORTEL_SOURCE_DIR "/tests/data/divider.ckt");
const QStringList Suffixes = {"svg", "pdf", "ps", "png", "jpg"};

QStringList names(const QJsonObject& drawing, const char* list) {
    QStringList result;
    for (const QJsonValue& entry : drawing.value(QLatin1String(list)).toArray()) {
        result.append(entry.toObject().value(QStringLiteral("name")).toString());
    }
    return result;
}

}  // namespace

using CommandLineTest = WorkbenchTest;

TEST_F(CommandLineTest, BadUseTellsTheUsage) {
    const QList<QPair<QStringList, QString>> cases = {
        {{"export"}, "export needs a file name"},
        {{"export", Divider}, "export needs at least one -o OUT"},
        {{"export", Divider, "-o"}, "-o needs a file name"},
        {{"export", Divider, "-o", "x.gif"}, "x.gif: the name of a picture must end in"},
        {{"export", Divider, "-o", "svg"}, "svg: the name of a picture must end in"},
        {{"export", Divider, "-o", "x.svg", "-o", "x"}, "x: the name of a picture must end in"},
        {{"export", Divider, Divider, "-o", "x.svg"}, "too many file names"},
        {{"describe"}, "describe needs a file name"},
        {{"describe", Divider, "x"}, "too many file names: x"},
        {{"describe", Divider, "-o", "x.svg"}, "-o belongs to export"},
        {{"convert", Divider}, "convert needs a file name"},
        {{"convert", Divider, "x.svg"},
         "x.svg: convert writes files whose names end in .vprj or .ckt"},
        {{"--colour"}, "unknown option --colour"},
        {{"--plugin"}, "--plugin needs a file name"},
        {{Divider, Divider}, "too many file names"},
        {{""}, "the file name is empty"}};
    for (const auto& [arguments, sentence] : cases) {
        SCOPED_TRACE(qPrintable(arguments.join(' ')));
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2);
        ASSERT_EQ(outcome.errorLines.size(), 2) << testing::PrintToString(outcome.errorLines);
        EXPECT_TRUE(outcome.errorLines.at(0).startsWith(sentence))
            << qPrintable(outcome.errorLines.at(0));
        EXPECT_TRUE(outcome.errorLines.at(1).startsWith("usage: vortel-workbench "));
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_EQ(files(), QStringList());
}

TEST_F(CommandLineTest, HelpAndVersionGoToTheStandardOutput) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.startsWith("usage: vortel-workbench "));
    EXPECT_TRUE(run({"export", "--help"}).output.startsWith("usage: vortel-workbench export FILE"));
    EXPECT_EQ(run({"--version"}).output, "vortel-workbench 2.0\n");
}

TEST_F(CommandLineTest, RefusesWhatIsNoDrawing) {
    const QString broken = dataFile("broken/");
    const QByteArray deep =
        QByteArray("<a>").repeated(100000) + QByteArray("</a>").repeated(100000);
    QList<QPair<QString, QString>> cases = {
        {path("missing.ckt"), "does not exist"},
        {dataFile("broken"), "is a folder"},
        {"/dev/zero", "is not a regular file"},
        {broken + "empty.ckt", "is empty"},
        {broken + "blank.ckt", "is empty"},
        {broken + "not-xml.ckt", "is not well-formed XML: "},
        {broken + "truncated.ckt", "is not well-formed XML: unexpected end of file in line 16"},
        {broken + "wrong-root.ckt", "its root element is \"html\", not \"VortelCircuit\""},
        {broken + "entities.ckt", "declares entities"},
        {write("nested.ckt", deep), "is nested too deeply"},
        {write("open.ckt", QByteArray("<a b='>'>").repeated(100000)), "is nested too deeply"},
        {write("two\nlines.ckt", ""), "is empty"},
        {write("nested.vprj", deep), "is nested too deeply"},
        {write("empty.vprj", ""), "is empty"},
        {write("garbage.vprj", QByteArray::fromHex("89504e470d0a1a0a")), "is not UTF-8 text"},
        {write("nul.vprj", QByteArray("<VortelProject Format='1'/>\0", 28)), "is not UTF-8 text"},
        {write("circuit.vprj", contentOf(Divider)), "is not a project file: its root element is"},
        {write("half.vprj", "<VortelProject Format=\"1\"><ProjectPart"), "is not well-formed XML"},
        {write("entities.vprj",
               "<!DOCTYPE a SYSTEM '>' [<!ENTITY x 'y'>]><VortelProject Format='1'/>"),
         "declares entities"},
        {write("hidden.vprj",
               "<!DOCTYPE a [<!ATTLIST b c CDATA '<!--'> <!ENTITY x 'y'>]><a/> <!-- -->"),
         "declares entities"},
        {write("newer.vprj", "<VortelProject Format='2'/>"),
         "was written by a newer version of the program: it is of format 2, and this version "
         "reads up to 1"},
        {write("unknown.vprj", "<VortelProject/>"), "does not tell the number of its format"}};
    if (geteuid() != 0) {  // root reads everything
        const QString locked = write("locked.ckt", "<VortelCircuit/>");
        QFile::setPermissions(locked, QFileDevice::WriteOwner);
        cases.append({locked, "cannot be read: Permission denied"});
    }
    const QStringList before = files();
    const QList<QStringList> commands = {
        {"describe"}, {"convert", path("out.ckt")}, {"export", "-o", path("out.svg")}};
    for (int i = 0; i < cases.size(); ++i) {
        const QString& file = cases.at(i).first;
        QStringList arguments = commands.at(i % commands.size());
        arguments.insert(1, file);
        SCOPED_TRACE(qPrintable(arguments.join(' ')));
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1);
        ASSERT_EQ(outcome.errorLines.size(), 1) << testing::PrintToString(outcome.errorLines);
        EXPECT_TRUE(outcome.errorLines.first().startsWith(QString(file).replace('\n', ' ') + ": "));
        EXPECT_TRUE(outcome.errorLines.first().contains(cases.at(i).second))
            << qPrintable(outcome.errorLines.first());
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_EQ(files(), before);
}

TEST_F(CommandLineTest, TellsWhatCouldNotBeRestored) {
    const QString partly = dataFile("broken/partly-unknown.ckt");
    const Outcome outcome = run({"describe", partly});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errorLines,
              QStringList(partly + ": 2 elements and 3 nodes could not be restored"));
    const QJsonObject drawing = QJsonDocument::fromJson(outcome.output).object();
    EXPECT_EQ(names(drawing, "elements"), QStringList({"R1", "R2", "R3"}));
    EXPECT_EQ(names(drawing, "nodes"), QStringList({"whole", "partial"}));

    const QString one = dataFile("broken/one-unknown.ckt");
    EXPECT_EQ(run({"convert", one, path("out.ckt")}).errorLines,
              QStringList(one + ": 1 element could not be restored"));
    // What is lost is lost once: the new file is whole.
    EXPECT_EQ(run({"describe", path("out.ckt")}).errorLines, QStringList());

    // Nothing is read beyond the first NUL, and so nothing there is missed.
    const Outcome afterNul = run({"describe", dataFile("broken/after-nul.ckt")});
    EXPECT_EQ(afterNul.status, 0);
    EXPECT_EQ(afterNul.errorLines, QStringList());

    // A deep comment is no deep document.
    const QString comment =
        write("comment.ckt",
              "<VortelCircuit><!--" + QByteArray("<a>").repeated(5000) + "--></VortelCircuit>");
    EXPECT_EQ(run({"describe", comment}).status, 0);
}

TEST_F(CommandLineTest, ExportWritesEveryFormat) {
    QStringList arguments = {"export", Divider};
    QStringList expected;
    for (const QString& suffix : Suffixes) {
        arguments += {"-o", path("drawing." + suffix)};
        expected.append("drawing." + suffix);
    }
    arguments += {"-o", path("AGAIN.PNG")};
    expected.append("AGAIN.PNG");
    expected.sort();
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errorLines, QStringList());
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(files(), expected);

    const QByteArray svg = contentOf(path("drawing.svg"));
    EXPECT_TRUE(QSvgRenderer(svg).isValid());
    EXPECT_GT(svg.count("<path"), 4);

    // The drawing is 240 by 220 units: from the source's edge to the right resistor's, and from the
    // upper resistor's to the ground's.
    const QImage png(path("drawing.png"), "PNG");
    const QImage jpg(path("drawing.jpg"), "JPG");
    EXPECT_EQ(png.size(), jpg.size());
    EXPECT_EQ(png.size(), QSize(720, 660));
    EXPECT_EQ(png.pixel(0, 0), qRgb(255, 255, 255));

    EXPECT_TRUE(contentOf(path("drawing.pdf")).startsWith("%PDF-"));
    EXPECT_TRUE(contentOf(path("drawing.ps")).startsWith("%!PS"));
}

TEST_F(CommandLineTest, TellsWhatACircuitFileCannotHold) {
    // What no program of today knows is kept.
    const QString rich =
        write("rich.vprj",
              "<VortelProject Format='1'><ProjectPart ID='VortelCircuit' Title='T'>"
              "<CircuitElement ElementType='Resistor.Basic' ID='7' X='0' Y='0'>"
              "<Property Name='Name' Value='R\xce\xa9'/></CircuitElement>"
              "<GlobalVar Name='a' Value='1' IsReal='1'/><GlobalVar Name='b' Value='2' IsReal='1'/>"
              "</ProjectPart><ProjectPart ID='Future'><New/></ProjectPart></VortelProject>");
    EXPECT_EQ(run({"convert", rich, path("poor.ckt")}).errorLines,
              QStringList(path("poor.ckt") +
                          ": a circuit file cannot hold the title, 2 parameters, 1 foreign part "
                          "and letters that Latin-1 lacks"));
    EXPECT_EQ(run({"convert", rich, path("again.vprj")}).errorLines, QStringList());
    EXPECT_TRUE(contentOf(path("again.vprj")).contains("<New/>"));
    EXPECT_TRUE(contentOf(path("again.vprj")).contains("ID=\"0\""));
    EXPECT_TRUE(contentOf(path("again.vprj")).contains("R\xce\xa9"));
}

TEST_F(CommandLineTest, TargetThatCannotBeWritten) {
    ASSERT_TRUE(QDir().mkdir(path("folder.svg")));
    ASSERT_TRUE(QDir().mkdir(path("folder.ckt")));
    ASSERT_EQ(mkfifo(path("pipe.png").toLocal8Bit().constData(), 0600), 0);
    QList<QPair<QStringList, QString>> cases = {
        {{"export", Divider, "-o", path("no/x.svg")}, "there is no folder " + path("no")},
        {{"export", Divider, "-o", path("folder.svg")}, "it is a folder"},
        {{"export", Divider, "-o", path("pipe.png")}, "it is not a regular file"},
        {{"convert", Divider, path("no/x.ckt")}, "there is no folder " + path("no")},
        {{"convert", Divider, path("folder.ckt")}, "it is a folder"},
        {{"export", dataFile("broken/after-nul.ckt"), "-o", path("x.png")},
         "the drawing is empty"}};
    if (geteuid() != 0) {  // root writes everywhere
        QFile::setPermissions(write("locked.svg", "kept"), QFileDevice::ReadOwner);
        cases.append({{"export", Divider, "-o", path("locked.svg")}, "permission denied"});
    }
    const QStringList before = files();
    for (const auto& [arguments, reason] : qAsConst(cases)) {
        SCOPED_TRACE(qPrintable(arguments.join(' ')));
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errorLines,
                  QStringList(QStringLiteral("cannot write %1: %2").arg(arguments.last(), reason)));
    }
    EXPECT_EQ(files(), before);

    // The pictures before the one that fails are whole and stay.
    EXPECT_EQ(run({"export", Divider, "-o", path("x.svg"), "-o", path("folder.svg")}).status, 1);
    EXPECT_TRUE(QFileInfo::exists(path("x.svg")));
}

TEST_F(CommandLineTest, ReplacesWhatALinkLeadsTo) {
    write("real.svg", "old");
    write(".real.svg.99999999-0.part", "of a program that was killed");
    write(".real.svg.1-0.part", "of one that runs");
    ASSERT_TRUE(QFile::link(path("real.svg"), path("link.svg")));
    EXPECT_EQ(run({"export", Divider, "-o", path("link.svg")}).status, 0);
    EXPECT_TRUE(QFileInfo(path("link.svg")).isSymLink());
    EXPECT_TRUE(contentOf(path("real.svg")).contains("</svg>"));
    EXPECT_EQ(files(), QStringList({".real.svg.1-0.part", "link.svg", "real.svg"}));
    // Also to a file that isn't there yet, and whatever the length of its name.
    const QString name = QString(250, 'n') + ".ckt";
    ASSERT_TRUE(QFile::link(name, path("new.ckt")));
    EXPECT_EQ(run({"convert", Divider, path("new.ckt")}).status, 0);
    EXPECT_TRUE(QFileInfo(path("new.ckt")).isSymLink());
    EXPECT_EQ(QFile::permissions(path(name)), QFile::permissions(path("real.svg")));
}

TEST_F(CommandLineTest, PluginThatCannotBeUsed) {
    const QList<QPair<QString, QString>> cases = {
        {path("none.so"), "does not exist"},
        {Divider, "cannot be loaded"},
        {builtFile("libJSON.so"), "has no entry \"GetComponentPlugin\""},
        {builtFile("libplugin_wrong_key.so"), "was built for another application"},
        {builtFile("libplugin_empty.so"), "offers no component"},
        {builtFile("libplugin_sample.so"), "there is no component \"CCircuitEditorComponent\""}};
    for (const auto& [plugin, reason] : cases) {
        const QList<QStringList> commands = {{"--plugin", plugin, "describe", Divider},
                                             {"export", "--plugin", plugin, Divider, "-o", "x.svg"},
                                             {"--plugin", plugin}};
        for (const QStringList& arguments : commands) {
            SCOPED_TRACE(qPrintable(arguments.join(' ')));
            const Outcome outcome = run(arguments);
            EXPECT_EQ(outcome.status, 1);
            ASSERT_EQ(outcome.errorLines.size(), 1) << testing::PrintToString(outcome.errorLines);
            EXPECT_TRUE(outcome.errorLines.first().contains(reason))
                << qPrintable(outcome.errorLines.first());
        }
    }
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(run({"--plugin", builtFile("libcircuiteditor.so"), "describe", Divider}).status, 0);
}

TEST_F(CommandLineTest, CommandsNeedNoDisplay) {
    // A display that can't be reached must not matter either.
    environment.insert("DISPLAY", ":4711");
    EXPECT_EQ(run({"export", Divider, "-o", path("x.svg")}).status, 0);
    environment.insert("LC_ALL", "C");
    const QString umlaut = write(QString::fromUtf8("Verst\xc3\xa4rker.ckt"), contentOf(Divider));
    EXPECT_EQ(run({"describe", umlaut}).status, 0);
}

TEST_F(CommandLineTest, OutputThatCannotBeWritten) {
    for (const QStringList& arguments : {QStringList{"describe", Divider}, QStringList{"--help"}}) {
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.setProcessEnvironment(environment);
        process.start(builtFile("vortel-workbench"), arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 1);
        EXPECT_EQ(process.readAllStandardError(),
                  "cannot write to the standard output: No space left on device\n");
    }
    // What lacks to make it is told, too.
    environment.insert("PATH", "/nowhere");
    EXPECT_EQ(run({"export", Divider, "-o", path("x.ps")}).errorLines,
              QStringList("cannot write " + path("x.ps") +
                          ": the picture could not be written in full: the program pdftops, which "
                          "makes PostScript, cannot be started"));
}

TEST_F(CommandLineTest, WindowEndsInOrderWhenTheSessionEnds) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(builtFile("vortel-workbench"), {dataFile("broken/wrong-root.ckt")});
    // The line comes once the file was read; from then on the program must sit and wait, with an
    // empty window if the file can't be opened.
    ASSERT_TRUE(process.waitForStarted());
    process.setReadChannel(QProcess::StandardError);
    ASSERT_TRUE(process.waitForReadyRead());
    EXPECT_TRUE(process.readLine().contains("is not a circuit file"));
    EXPECT_FALSE(process.waitForFinished(500));
    process.terminate();
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
}
