#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "GalleryPage.h"
#include "HostFixture.h"
#include "NetlistType.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSvgRenderer>
#include <QTemporaryDir>

namespace {

const QString ShippedFolder = QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library");

const char* const Good = R"({
    "label": "Widget", "description": "A widget.", "namePrefix": "W", "category": 0,
    "display": ["size"], "models": ["small", "large"],
    "terminals": [{"name": "a", "type": "e", "position": [-20, 0]},
                  {"name": "b", "type": "t", "position": [20, -10], "netName": "hot"}],
    "parameters": [{"name": "size", "value": "3m", "unit": "m", "description": "Length"},
                   {"name": "tint", "value": "red", "kind": "choice", "choices": ["red", "blue"]},
                   {"name": "control", "value": "", "kind": "text"}],
    "outputVariables": {"heat": "Heat given off"}, "outputACVariables": {"heat_ac": "The same"},
    "mixed": true, "picture": "Widget.svg", "pictureOffset": [1, -2]})";

const char* const Picture =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20" viewBox="-20 -10 40 20"/>)";

/// A folder with one library, "Lib", into which a test puts its files.
class Library : public testing::Test {
protected:
    Library() {
        QDir(folder.path()).mkdir(QStringLiteral("Lib"));
        write("Widget.svg", Picture);
    }
    void write(const QString& name, const QByteArray& content) {
        QFile file(folder.filePath(QStringLiteral("Lib/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    ElementLibrary library;
};

}  // namespace

TEST_F(Library, EachFaultIsToldAndTheRestLoads) {
    const struct {
        const char* what;
        const char* with;
        const char* problem;
    } table[] = {
        {"{\n", "[", "is no JSON: "},
        {Good, "[]", "is no JSON object"},
        {"\"label\": \"Widget\", ", "", "\"label\" is missing"},
        {"\"namePrefix\": \"W\"", "\"namePrefix\": 7", "\"namePrefix\" is missing"},
        {"\"terminals\"", "\"pins\"", "there is no terminal"},
        {"\"b\", ", "\"a\", ", "the terminal \"a\" bears a name that is taken"},
        {"\"name\": \"a\"", "\"name\": \"\"", "a terminal has no name"},
        {"\"name\": \"a\"", "\"name\": \"Caption\"", "the terminal \"Caption\" is named like a"},
        {"\"type\": \"t\"", "\"type\": \"q\"", "the terminal \"b\" has the unknown type \"q\""},
        {"[-20, 0]", "[-20]", "the terminal \"a\" has no position"},
        {"[-20, 0]", "[-20, 5]", "the terminal \"a\" does not lie on a multiple of 10"},
        {"\"tint\"", "\"a\"", "the parameter \"a\" bears a name that is taken"},
        {"\"tint\"", "\"Flip\"", "the parameter \"Flip\" is named like a property"},
        {"\"tint\"", "\"objectName\"", "the parameter \"objectName\" is named like a property"},
        {"\"text\"", "\"poem\"", "the parameter \"control\" is of the unknown kind \"poem\""},
        {"\"3m\"", "\"big\"", "the parameter \"size\" can not have the value \"big\""},
        {"\"red\", \"kind\"", "\"pink\", \"kind\"", "\"tint\" can not have the value \"pink\""},
        {"Widget.svg", "Gone.svg", "there is no picture \"Gone.svg\""},
        {"\"Widget.svg\"", "\"\"", "there is no picture \"\""},
        {"[1, -2]", "1", "\"pictureOffset\" is no pair of numbers"},
        {"[\"size\"]", "[\"colour\"]", "\"display\" names \"colour\""},
        {"\"control\", \"value\"", "\"ctl\", \"value\"", "needs a parameter \"control\""},
        {"\"category\": 0", "\"category\": 5", "a sub-circuit needs an \"inside\""},
        {"\"category\": 0", "\"inside\": \"x.vprj\"", "only a sub-circuit, of category 5,"},
    };
    const QByteArray good =
        QByteArray(Good).replace("\"mixed\"", "\"resolvesControls\": true, \"mixed\"");
    write("Widget.json", good);
    int count = 0;
    for (const auto& row : table) {
        QByteArray content = row.what == Good ? QByteArray(row.with) : good;
        content.replace(row.what, row.with);
        ASSERT_NE(content, good) << row.what;
        write("Faulty.json", content);
        ElementLibrary one;
        EXPECT_FALSE(one.load(folder.path())) << row.problem;
        EXPECT_EQ(one.types(), QStringList("Widget.Lib"));
        ASSERT_FALSE(one.problems().isEmpty());
        const QString problem = one.problems().first();
        EXPECT_TRUE(problem.startsWith(folder.filePath("Lib/Faulty.json: ")))
            << problem.toStdString();
        EXPECT_TRUE(problem.contains(row.problem))
            << problem.toStdString() << "\n instead of " << row.problem;
        ++count;
    }
    EXPECT_EQ(count, 24);
}

TEST_F(Library, NamesAndFoldersThatCanNotBe) {
    write("Widget.json", Good);
    write("Wid.get.json", Good);
    EXPECT_FALSE(library.load(folder.path()));
    EXPECT_EQ(library.types(), QStringList("Widget.Lib"));
    EXPECT_TRUE(library.problems().first().contains("\"Wid.get.Lib\" must have exactly one dot"));
    EXPECT_FALSE(library.load(folder.filePath("none")));
    EXPECT_TRUE(library.problems().last().contains("there is no such folder"));

    ElementDescription* known = library.description("Widget.Lib");
    library.load(folder.path());
    EXPECT_TRUE(library.problems().last().contains("\"Widget.Lib\" is known already"));
    EXPECT_EQ(library.description("Widget.Lib"), known);
}

TEST(ShippedLibrary, LoadsWithoutAComplaintAndMakesElements) {
    ElementLibrary library;
    EXPECT_TRUE(library.load(ShippedFolder));
    EXPECT_EQ(library.problems(), QStringList());
    ASSERT_FALSE(library.types().isEmpty());
    ElementFactory factory(library);
    ICircuitElementFactory* interface = &factory;
    Circuit circuit;
    for (const QString& type : library.types()) {
        ICircuitElement* element = interface->createElement(type);
        ASSERT_TRUE(element) << type.toStdString();
        EXPECT_EQ(element->circuit(), nullptr);
        EXPECT_EQ(element->desc()->elementType(), type);
        EXPECT_EQ(element->containerObject()->metaObject()->indexOfMethod(
                      "resolveControlNodesAndBranches()") >= 0,
                  library.description(type)->data().resolvesControls)
            << type.toStdString();
        for (const QString& name : element->elementNodeNames()) {
            EXPECT_NE(element->elementNode(name)->color(), QColor(Qt::black)) << type.toStdString();
        }
        circuit.addElement(element);
    }
    EXPECT_EQ(interface->createElement("Resistor"), nullptr);
    EXPECT_EQ(interface->createElement(""), nullptr);
    ASSERT_TRUE(library.description("Ground.Basic"));
    EXPECT_EQ(library.description("Ground.Basic")->data().terminals.first().netName, "gnd");
}

TEST(ShippedLibrary, PicturesAndTerminalsFitTogether) {
    ElementLibrary library;
    library.load(ShippedFolder);
    for (const QString& name : library.types()) {
        SCOPED_TRACE(name.toStdString());
        ElementDescription* type = library.description(name);
        QSvgRenderer* renderer = type->visual()->renderer();
        QRectF box;
        if (renderer) {
            ASSERT_TRUE(renderer->isValid());
            box = renderer->viewBoxF();
            EXPECT_EQ(renderer->defaultSize(), box.size().toSize());
        } else {
            ASSERT_FALSE(type->visual()->pixmap().isNull());
            box = QRectF(QPointF(), type->visual()->pixmap().size());
            box.moveCenter({});
        }
        EXPECT_EQ(box.center(), QPointF(0, 0));
        const int halfWidth = qRound(box.width() / 2);
        const int halfHeight = qRound(box.height() / 2);
        EXPECT_EQ(halfWidth % 10 + halfHeight % 10, 0);
        EXPECT_EQ(QSizeF(2 * halfWidth, 2 * halfHeight), box.size());
        for (const TerminalData& pin : type->data().terminals) {
            SCOPED_TRACE(pin.name.toStdString());
            const double x = qAbs(pin.position.x());
            const double y = qAbs(pin.position.y());
            EXPECT_TRUE((x == halfWidth && y <= halfHeight) || (y == halfHeight && x <= halfWidth));
            // A wire leaves by the nearest edge, which must be the one that the terminal is on.
            EXPECT_TRUE(x != halfWidth || halfHeight - y >= 20);
        }
    }
}

TEST(ShippedLibrary, TheGalleryInTheDocsIsCurrent) {
    ElementLibrary library;
    library.load(ShippedFolder);
    QFile page(QStringLiteral(VORTEL_SOURCE_DIR "/docs/elements.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    EXPECT_TRUE(galleryPage(library, "../workbench/library") == page.readAll())
        << "run ./dev gallery";
}

TEST(NetlistTypes, PinsBecomeTerminals) {
    const QString text = QStringLiteral(
        "* A comment\n.subckt Amp IN+ IN- Name params: gain=2Meg\n+ Rx = 1k half={gain/2} ; rest\n"
        "E1 Name 0 IN+ IN- {gain}\n.ends\n.subckt other a b\n.ends");
    const ElementLibrary library;
    ElementDescription* type = library.description(NetlistType::nameFor(text));
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->elementType().count(QLatin1Char('.')), 1);
    EXPECT_EQ(NetlistType::textOf(type->elementType()), text);
    EXPECT_EQ(library.description(type->elementType()), type);
    const std::unique_ptr<CircuitElement> element(type->createElement());
    EXPECT_EQ(element->elementNodeNames(), QStringList({"IN+", "IN-", "Name_"}));
    EXPECT_EQ(element->parameter("gain"), "2M");
    EXPECT_EQ(element->parameter("Rx"), "1k");
    EXPECT_EQ(type->data().parameters.size(), 2);
    EXPECT_TRUE(type->visual()->renderer()->isValid());
    for (const char* bad : {"", "R1 a b 1k", ".subckt a\n.ends", ".subckt a b c",
                            ".subckt a 0\n.ends", ".subckt a b B\n.ends"}) {
        ElementTypeData data;
        QString reason;
        EXPECT_FALSE(NetlistType::describe(bad, &data, &reason)) << bad;
        EXPECT_FALSE(reason.isEmpty()) << bad;
    }
    EXPECT_EQ(library.description("x~rubbish.Netlists"), nullptr);
}
