#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "HostFixture.h"
#include "ISubCircuitElementDesc.h"
#include "SubCircuitElement.h"
#include "SubCircuitProject.h"
#include "TypeMaker.h"
#include "WarningGuard.h"
#include "XmlUtils.h"

#include <Plexa/DomAccess.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTransform>

namespace {

const QString ShippedFolder = QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library");

/// The stored project, as whoever shows the inside of an element gets at it.
QDomDocument storedProject(ICircuitElement* element) {
    void* answer = nullptr;
    element->desc()->queryInterface("ISubCircuitElementDesc", &answer);
    if (!answer) {
        return {};
    }
    const QDomDocument info = static_cast<ISubCircuitElementDesc*>(answer)->subCircuitInfo();
    QByteArray payload;
    XmlUtils().loadBinaryData(
        Plexa::DomAccess(info).query("CircuitInfo.VortelProjectFile").element(), payload);
    QDomDocument part;
    part.setContent(qUncompress(payload));
    return part;
}

QList<QDomElement> recordsIn(const QDomDocument& part, const char* tag) {
    return Plexa::DomAccess(part).query(QLatin1String("ProjectPart.") + tag).elements();
}

QPointF placeOf(const QDomElement& record) {
    return {record.attribute("X").toDouble(), record.attribute("Y").toDouble()};
}

/// Whether a stored wire passes through the point.
bool touches(const QDomElement& node, const QPointF& point) {
    QPointF from;
    for (QDomElement step = node.firstChildElement("Shape").firstChildElement(); !step.isNull();
         step = step.nextSiblingElement()) {
        const QPointF to = placeOf(step);
        const QRectF box = QRectF(from, to).normalized();
        const bool within = point.x() >= box.left() && point.x() <= box.right() &&
                            point.y() >= box.top() && point.y() <= box.bottom();
        if (step.attribute("Type") == "1" && within && (box.width() == 0 || box.height() == 0)) {
            return true;
        }
        from = to;
    }
    return false;
}

/// Records and what was made of them agree one by one, and each wire ends on its terminals.
void expectPaired(ICircuitElement* element) {
    SCOPED_TRACE(element->desc()->elementType().toStdString());
    auto* circuit = qobject_cast<ICircuit*>(element->containerObject());
    ASSERT_TRUE(circuit);
    const QDomDocument part = storedProject(element);
    const QList<QDomElement> elements = recordsIn(part, "CircuitElement");
    const QList<QDomElement> nodes = recordsIn(part, "CircuitNode");
    ASSERT_EQ(circuit->elementCount(), elements.size());
    ASSERT_EQ(circuit->nodeCount(), nodes.size());
    QHash<ICircuitElement*, QDomElement> recordOf;
    for (int i = 0; i < elements.size(); ++i) {
        ICircuitElement* inner = circuit->element(i);
        ASSERT_TRUE(inner);
        EXPECT_EQ(inner->desc()->elementType(), elements.at(i).attribute("ElementType"));
        EXPECT_EQ(inner->name(), elements.at(i).firstChildElement("Property").attribute("Value"));
        EXPECT_EQ(inner->circuit(), circuit);
        recordOf.insert(inner, elements.at(i));
    }
    for (int i = 0; i < nodes.size(); ++i) {
        ICircuitNode* node = circuit->node(i);
        ASSERT_TRUE(node);
        EXPECT_EQ(node->name(), nodes.at(i).attribute("Name"));
        EXPECT_EQ(node->circuit(), circuit);
        for (int k = 0; k < node->elementNodeCount(); ++k) {
            ICircuitElementNode* terminal = node->elementNode(k);
            QTransform turn;
            turn.rotate(90 * terminal->element()->rotation());
            EXPECT_TRUE(touches(nodes.at(i), placeOf(recordOf.value(terminal->element())) +
                                                 turn.map(terminal->position())))
                << node->name().toStdString() << " at " << terminal->element()->name().toStdString()
                << '.' << terminal->name().toStdString();
        }
    }
}

const char* const Inside = R"(<VortelProject Format="1"><ProjectPart ID="Other"/>
<ProjectPart ID="VortelCircuit" Title="Block">
<CircuitElement ID="7" ElementType="Pin.Lib" X="0" Y="0"/>
<CircuitElement ID="8" ElementType="Gone.Lib" X="50" Y="0"/>
<CircuitElement ID="9" ElementType="Pin.Lib" X="100" Y="40"><Property Name="Rotation" Value="1"/>
  <Property Name="Name" Value="W5"/><Parameter Name="size" Value="{len}"/></CircuitElement>
<CircuitNode Name="lost"><ElementNode Name="b" ElementID="8"/><ElementNode Name="b" ElementID="7"/>
</CircuitNode>
<CircuitNode Name="a"><ElementNode Name="a" ElementID="7"/><ElementNode Name="b" ElementID="8"/>
  <ElementNode Name="a" ElementID="7"/><ElementNode Name="z" ElementID="9"/>
  <ElementNode Name="a" ElementID="9"/></CircuitNode>
<CircuitNode Name="twice"><ElementNode Name="a" ElementID="7"/><ElementNode Name="b" ElementID="9"/>
</CircuitNode>
<GlobalVar Name="len" Value="2m" IsReal="1"/></ProjectPart></VortelProject>)";

/// A folder with one library, "Lib", that has a plain type and the picture for all.
class SubCircuits : public testing::Test {
protected:
    SubCircuits() {
        QDir(folder.path()).mkdir("Lib");
        write("Pin.svg", R"(<svg xmlns="http://www.w3.org/2000/svg"/>)");
        write("Pin.json", R"({"label": "Pin", "namePrefix": "W", "picture": "Pin.svg",
            "terminals": [{"name": "a", "type": "e", "position": [-20, 10]},
                          {"name": "b", "type": "e", "position": [20, 0]}],
            "parameters": [{"name": "size", "value": "3m"}]})");
    }
    void write(const QString& name, const QByteArray& content) {
        QFile file(folder.filePath("Lib/" + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /// A sub-circuit whose terminal "t" is the inside's net "a".
    void writeType(const QString& name, const QByteArray& inside) {
        write(name + ".json",
              "{\"label\": \"Block\", \"namePrefix\": \"X\", \"category\": 5,"
              "\"picture\": \"Pin.svg\", \"inside\": \"" +
                  name.toUtf8() +
                  ".vprj\", \"terminals\": [{\"name\": \"t\", \"type\": \"e\","
                  "\"position\": [0, 0], \"innerNet\": \"a\"}]}");
        write(name + ".vprj", inside);
    }
    QString problemsOf(ElementLibrary& library) {
        library.load(folder.path());
        return library.problems().join('\n');
    }

    QTemporaryDir folder;
};

}  // namespace

TEST(ShippedSubCircuits, OpenOneWithinAnother) {
    ElementLibrary library;
    library.load(ShippedFolder);
    ElementFactory factory(library);
    Circuit circuit;
    for (const char* type : {"DifferentialStage.Subcircuits", "TwoStageAmplifier.Subcircuits"}) {
        ICircuitElement* element = factory.createElement(type);
        circuit.addElement(element);
        EXPECT_EQ(element->desc()->category(), 5);
        expectPaired(element);
        EXPECT_FALSE(recordsIn(storedProject(element), "TextBox").isEmpty());
        EXPECT_FALSE(recordsIn(storedProject(element), "EPTextBox").isEmpty());
        auto* block = qobject_cast<SubCircuitElement*>(element->containerObject());
        for (const QString& name : element->elementNodeNames()) {
            ICircuitNode* net = block->innerNode(name);
            ASSERT_TRUE(net) << name.toStdString();
            EXPECT_EQ(net->name() + net->type(), name + element->elementNode(name)->type());
        }
    }
    auto* amplifier = qobject_cast<ICircuit*>(circuit.element(1)->containerObject());
    ICircuitElement* stage = amplifier->element(0);
    EXPECT_EQ(stage->name() + '/' + stage->desc()->label(), "X1/Differential stage");
    expectPaired(stage);
    auto* inside = qobject_cast<ICircuit*>(stage->containerObject());
    EXPECT_EQ(inside->globalVariableName(0) + '=' + inside->globalVariableValue(0).toString(),
              "Rload=6.8k");
}

TEST_F(SubCircuits, RecordsThatGiveNothingKeepTheirPlace) {
    writeType("Block", Inside);
    ElementLibrary library;
    EXPECT_TRUE(problemsOf(library).contains("no type for the inside's elements of \"Gone.Lib\""));
    ASSERT_TRUE(library.description("Block.Lib"));
    const std::unique_ptr<CircuitElement> element(
        library.description("Block.Lib")->createElement());
    auto* block = qobject_cast<SubCircuitElement*>(element.get());
    ASSERT_TRUE(block);
    ASSERT_EQ(block->elementCount(), 3);
    EXPECT_EQ(block->element(1), nullptr);
    EXPECT_EQ(block->element(2)->name(), "W5");
    EXPECT_EQ(CircuitElement::from(block->element(2))->parameter("size"), "{len}");
    ASSERT_EQ(block->nodeCount(), 3);
    EXPECT_EQ(block->node(0), nullptr);
    EXPECT_EQ(block->node(2), nullptr);
    ASSERT_TRUE(block->node(1));
    EXPECT_EQ(block->node(1)->elementNodeCount(), 2);
    EXPECT_EQ(block->innerNode("t"), block->node(1));
    EXPECT_EQ(block->innerNode("u"), nullptr);
    EXPECT_EQ(block->element(3), nullptr);
    EXPECT_EQ(block->node(-1), nullptr);

    // The net that nobody has drawn got a wire from terminal to terminal.
    const QDomElement drawn = recordsIn(storedProject(block), "CircuitNode").at(1);
    EXPECT_TRUE(touches(drawn, {-20, 10}));
    EXPECT_TRUE(touches(drawn, {90, 20}));
    EXPECT_EQ(Plexa::DomAccess(storedProject(block)).query("ProjectPart").elements().size(), 1);

    // What would change the inside doesn't.
    block->removeElement(block->element(0));
    block->removeNode(block->node(1));
    block->addGlobalVariable("more", 1, true);
    block->clear();
    block->element(0)->circuit()->clear();
    EXPECT_EQ(block->addOutputVariable(block->node(1)), nullptr);
    EXPECT_EQ(block->circuitSolver(), nullptr);
    EXPECT_TRUE(block->element(0) && block->node(1) && block->globalVariableCount() == 1);
}

TEST_F(SubCircuits, InsidesThatCanNotBeUsedAreRefused) {
    const auto packed = [](const QByteArray& payload) {
        return "<CircuitInfo><VortelProjectFile>" + payload.toBase64() +
               "</VortelProjectFile></CircuitInfo>";
    };
    const QByteArray part = "<ProjectPart><CircuitNode Name='a'/></ProjectPart>";
    const QByteArray project(Inside);
    const QByteArray whole = qCompress(part);
    const struct {
        QByteArray inside;
        const char* problem;  // null for none
    } table[] = {
        {part, nullptr},
        {packed(whole), nullptr},
        {"", "it is no XML"},
        {"garbage", "it is no XML"},
        {project.left(project.size() / 2), "it is no XML"},
        {QByteArray("<a>").repeated(100000), "nested too deeply"},
        {QByteArray("<a>").repeated(150) + QByteArray("</a>").repeated(150), "too deeply"},
        {"<VortelCircuit/>", "its root \"VortelCircuit\" is not that of a project"},
        {"<VortelProject Format='1'/>", "it has no part \"VortelCircuit\""},
        {"<VortelProject Format='2'/>", "its format \"2\" is not known"},
        {"<ProjectPart/>", "the terminal \"t\" belongs to the net \"a\", which"},
        {"<CircuitInfo/>", "it holds no compressed project"},
        {packed(part), "it holds no compressed project"},
        {packed(QByteArray("\xff\xff\xff\xf0", 4) + whole.mid(4)), "it holds no compressed"},
        {packed(whole.left(whole.size() / 2)), "it holds no compressed project"},
        {packed(qCompress("junk")), "it is no XML"},
        {packed(qCompress("<Part/>")), "what it holds is no project part"},
    };
    announceLog("qUncompress");
    for (const auto& row : table) {
        SCOPED_TRACE(row.inside.left(60).toStdString());
        writeType("Block", row.inside);
        ElementLibrary library;
        const QString problems = problemsOf(library);
        EXPECT_EQ(problems.isEmpty(), !row.problem) << problems.toStdString();
        EXPECT_TRUE(!row.problem || problems.contains(row.problem)) << problems.toStdString();
        EXPECT_LE(library.problems().size(), 1);
        EXPECT_EQ(library.description("Block.Lib") != nullptr, !row.problem);
    }
}

TEST_F(SubCircuits, AnyProjectOfTheProgramCanBeInside) {
    QString problem;
    const QDomDocument part = SubCircuitProject::read(
        QStringLiteral(VORTEL_SOURCE_DIR "/examples/opamp-741.vprj"), &problem);
    EXPECT_EQ(problem, QString());
    EXPECT_GT(SubCircuitProject::records(part, "CircuitElement").size(), 20);
}

TEST_F(SubCircuits, NoneContainsItself) {
    const auto holding = [](const char* type) {
        return QByteArray("<ProjectPart><CircuitElement ElementType='") + type +
               ".Lib'/><CircuitNode Name='a'/></ProjectPart>";
    };
    writeType("Self", holding("Self"));
    writeType("A", holding("B"));
    writeType("B", holding("C"));
    writeType("C", holding("A"));
    writeType("Outer", holding("A"));
    writeType("Good", holding("Fine"));
    writeType("Fine", holding("Pin"));
    ElementLibrary library;
    const QString problems = problemsOf(library);
    EXPECT_EQ(library.types(), QStringList({"Fine.Lib", "Good.Lib", "Outer.Lib", "Pin.Lib"}));
    EXPECT_EQ(library.problems().size(), 5) << problems.toStdString();
    EXPECT_TRUE(problems.contains("Lib/Self.json: the sub-circuit contains itself by way of \"Se"));
    EXPECT_TRUE(problems.contains("Lib/C.json: the sub-circuit contains itself by way of \"A.Lib"));
    EXPECT_TRUE(problems.contains("Lib/Outer.json: there is no type for the inside's elements of"));
}

TEST_F(SubCircuits, AreMadeOfAnyProjectWithPorts) {
    ElementLibrary library;
    library.load(ShippedFolder);
    const QString project = ShippedFolder + "/Subcircuits/DifferentialStage.vprj";
    const QString target = folder.filePath("Own/Stage");
    EXPECT_EQ(makeSubCircuitType(library, project, target), "");
    EXPECT_TRUE(makeSubCircuitType(library, project, target).contains("such a type already"));
    write("Portless.vprj", Inside);
    EXPECT_TRUE(makeSubCircuitType(library, folder.filePath("Lib/Portless.vprj"), target)
                    .contains("there is no port"));

    ElementDescription* made = nullptr;
    library.load(folder.path());
    ASSERT_TRUE(made = library.description("Stage.Own"));
    EXPECT_EQ(made->label(), "Differential stage");
    QStringList pins;
    for (const TerminalData& pin : made->data().terminals) {
        pins
            << QStringLiteral("%1 %2 %3").arg(pin.name).arg(pin.position.x()).arg(pin.position.y());
    }
    EXPECT_EQ(pins, QStringList({"inp -40 0", "vcc 0 -40", "out 40 -10", "inn 40 10", "vee 0 40"}));
    const std::unique_ptr<CircuitElement> element(made->createElement());
    expectPaired(element.get());
}
