#include <JSON/JSON.h>
#include <Plexa/AbstractComponent.h>
#include <Plexa/ComponentFactory.h>
#include <Plexa/ComponentManager.h>
#include <Plexa/DomAccess.h>
#include <Plexa/ObjectIterator.h>
#include <Plexa/PluginLoader.h>

#include "HostFixture.h"

#include <QAction>

namespace {

QStringList life;

/// A component that writes down what happens to it and offers a circuit, a widget-less action, and
/// nothing else.
class Part : public Plexa::AbstractComponent {
public:
    ~Part() override { life << "delete " + name; }

    QObject* fetchObject(const QString& objectName) const override {
        ++asked;
        return objectName.endsWith(QLatin1String(".circuit")) ? &circuit : nullptr;
    }
    QAction* fetchAction(const QString& objectName) const override {
        return objectName.endsWith(QLatin1String(".action")) ? &action : nullptr;
    }
    void creationAnnounced() override {
        name = componentName();
        life << "announce " + name;
    }
    void initializeComponent() override { life << "initialize " + name; }
    void finalizeComponent() override { life << "finalize " + name; }
    void componentDestroyed(Plexa::AbstractComponent* other) override {
        life << name + " told of " + other->componentName();
    }

    QString name;
    mutable int asked = 0;
    mutable Circuit circuit;
    mutable QAction action{nullptr};
};

Plexa::AbstractComponent* makePart() {
    return new Part;
}

const char* const Description = R"({"components": [
    {"name": "A", "objects": ["nothing", "circuit"], "properties": {"page": {"x": [1]}, "n": 2}},
    {"name": "B", "objects": ["action", "circuit"],
     "settings": {"circuit": {"Title": "Set"}},
     "calls": {"circuit": [["addModel", "M1", "m.lib"], ["addModel", "M2", 7]]}},
    {"name": "C"}]})";

class Framework : public testing::Test {
protected:
    Framework() {
        life.clear();
        for (const char* name : {"A", "B", "C"}) {
            Plexa::ComponentFactory::instance()->registerComponentInfo(name, makePart,
                                                                       &Part::staticMetaObject);
        }
        describe(Description);
    }
    ~Framework() override {
        manager.shutdown();
        manager.setGuiDescription({});
    }
    void describe(const QByteArray& json) {
        Plexa::GuiDescription description;
        QString error;
        ASSERT_TRUE(description.parse(json, &error)) << error.toStdString();
        manager.setGuiDescription(description);
    }
    Part* part(const char* name) { return static_cast<Part*>(manager.component(name)); }

    Plexa::ComponentManager& manager = *Plexa::ComponentManager::instance();
    QString error;
};

}  // namespace

TEST_F(Framework, TheFactoryMakesEachComponentOnce) {
    auto* factory = Plexa::ComponentFactory::instance();
    EXPECT_TRUE(factory->isRegistered("A"));
    EXPECT_FALSE(factory->isRegistered("Z"));
    EXPECT_EQ(factory->createComponent("Z"), nullptr);
    Plexa::AbstractComponent* component = factory->createComponent("A");
    ASSERT_TRUE(component);
    EXPECT_EQ(factory->createComponent("A"), component);
    EXPECT_EQ(component->componentName(), "A");
    EXPECT_EQ(component->findComponent("A"), component);
    EXPECT_EQ(component->findComponent("B"), nullptr);
    EXPECT_EQ(component->componentGui()["page"].toString(), R"({"x":[1]})");
    EXPECT_EQ(component->componentGui()["n"].toInt(), 2);
    EXPECT_FALSE(component->componentGui()["z"].isValid());
    delete component;
    EXPECT_EQ(manager.component("A"), nullptr) << "a component may go on its own";
}

TEST_F(Framework, LifeRunsInOrderAndTheNeededGoLast) {
    ASSERT_TRUE(manager.createComponents(&error));
    manager.announceComponents();
    manager.initializeComponents();
    EXPECT_EQ(life, QStringList({"announce A", "announce B", "announce C", "initialize A",
                                 "initialize B", "initialize C"}));
    // C is needed by A and A by B: without these, the youngest would go first.
    manager.addDependency(part("C"), part("A"));
    part("A")->addDependency(part("A"), part("B"));
    manager.addDependency(part("B"), part("B"));
    manager.addDependency(nullptr, part("C"));
    life.clear();
    manager.shutdown();
    EXPECT_EQ(life,
              QStringList({"finalize A", "finalize B", "finalize C", "A told of B", "C told of B",
                           "delete B", "C told of A", "delete A", "delete C"}));
    EXPECT_TRUE(manager.components().isEmpty());
}

TEST_F(Framework, ARingOfDependenciesStillEnds) {
    ASSERT_TRUE(manager.createComponents(&error));
    manager.announceComponents();
    manager.addDependency(part("A"), part("B"));
    manager.addDependency(part("B"), part("C"));
    manager.addDependency(part("C"), part("A"));
    manager.shutdown();
    EXPECT_TRUE(manager.components().isEmpty());
}

TEST_F(Framework, ObjectsAreWalkedAndFoundByInterface) {
    ASSERT_TRUE(manager.createComponents(&error));
    const Plexa::ObjectIterator all;
    EXPECT_EQ(all.currentObjectName(), "");
    QStringList names;
    for (QObject* object = all.firstObject(); object; object = all.nextObject()) {
        EXPECT_EQ(manager.nameOf(all.currentObjectComponent()),
                  all.currentObjectName().section('.', 0, 0));
        names << all.currentObjectName();
    }
    EXPECT_EQ(names, QStringList({"A.circuit", "B.action", "B.circuit"}));
    EXPECT_EQ(all.nextObject(), nullptr);
    EXPECT_EQ(all.currentObjectName(), "");
    EXPECT_EQ(all.currentObjectComponent(), nullptr);
    EXPECT_EQ(all.firstObject(), &part("A")->circuit) << "starts anew";
    EXPECT_EQ(Plexa::ObjectIterator("B").firstObject(), &part("B")->action);
    EXPECT_EQ(Plexa::ObjectIterator("C").firstObject(), nullptr);
    EXPECT_EQ(Plexa::ObjectIterator("Z").firstObject(), nullptr);

    QString name;
    Plexa::AbstractComponent* owner = nullptr;
    EXPECT_EQ(part("C")->findObject("ICircuit", name, &owner), &part("A")->circuit);
    EXPECT_EQ(name, "A.circuit");
    EXPECT_EQ(owner, part("A"));
    EXPECT_EQ(part("C")->findObject("IClipboard", name, &owner), nullptr);
    const int asked = part("A")->asked;
    EXPECT_TRUE(manager.object(part("A"), "circuit"));
    EXPECT_EQ(part("A")->asked, asked) << "remembered";
}

TEST_F(Framework, TheDescriptionConfiguresObjects) {
    ASSERT_TRUE(manager.createComponents(&error));
    ASSERT_TRUE(manager.configureObjects(&error)) << error.toStdString();
    EXPECT_EQ(part("B")->circuit.title(), "Set");
    EXPECT_EQ(part("B")->circuit.modelFile(1), "7") << "arguments are converted";

    const struct {
        const char* section;
        const char* error;
    } table[] = {
        {R"("settings": {"circuit": {"Colour": 1}})", "B.circuit has no property \"Colour\""},
        {R"("settings": {"none": {"Title": 1}})", "B.none has no property \"Title\""},
        {R"("calls": {"circuit": [["explode"]]})", "B.circuit has no method \"explode\""},
        {R"("calls": {"circuit": [["addModel", "one"]]})", "B.circuit has no method \"addModel\""},
        {R"("calls": {"none": [["addModel"]]})", "B.none has no method \"addModel\""},
    };
    for (const auto& row : table) {
        describe(QByteArray(R"({"components": [{"name": "B", )") + row.section + "}]}");
        EXPECT_FALSE(manager.configureObjects(&error)) << row.section;
        EXPECT_EQ(error, row.error);
    }
}

TEST_F(Framework, DescriptionsThatCanNotBe) {
    Plexa::GuiDescription description;
    ASSERT_TRUE(description.parse(Description, &error));
    EXPECT_FALSE(description.parse("{\"components\": [", &error));
    EXPECT_TRUE(error.startsWith("the GUI description is no JSON: ")) << error.toStdString();
    EXPECT_FALSE(description.parse("[]", &error));
    EXPECT_EQ(error, "the GUI description is no JSON object");
    EXPECT_EQ(description.components().size(), 3) << "the earlier content stays";
    EXPECT_TRUE(description.component("Z").name.isEmpty());
    describe(R"({"components": [{"name": "A"}, {"name": "Zed"}]})");
    EXPECT_FALSE(manager.createComponents(&error));
    EXPECT_EQ(error, "there is no component \"Zed\"");
}

TEST_F(Framework, APluginBringsItsComponent) {
    const QString file = QStringLiteral(VORTEL_BIN_DIR "/libplugin_sample.so");
    ASSERT_EQ(Plexa::loadPlugin(file, &error), "Sample") << error.toStdString();
    Plexa::AbstractComponent* component =
        Plexa::ComponentFactory::instance()->createComponent("Sample");
    ASSERT_TRUE(component);
    EXPECT_EQ(component->componentName(), "Sample");
    EXPECT_EQ(component->objectName(), "made by the plug-in");
}

TEST(Json, ReadsObjectsOnly) {
    const QVariantMap map = JSON::parse(R"({"a": 1, "b": {"c": ["x", null, true]}})");
    EXPECT_EQ(map.value("a").toInt(), 1);
    const QVariantList list = map.value("b").toMap().value("c").toList();
    EXPECT_EQ(list.size(), 3);
    EXPECT_EQ(list.value(0).toString(), "x");
    for (const char* other : {"", "[1]", "7", "{", "{\"a\": 1} x"}) {
        EXPECT_TRUE(JSON::parse(other).isEmpty()) << other;
    }
}

TEST(DomAccess, FindsElementsByPath) {
    const char* const parts =
        "<P><Part n='1'><Net n='1a'/>text<Net n='1b'/></Part><Other><Part n='x'/></Other>"
        "<Part n='2'/><!--Part--><part n='y'/><Part n='3'><Net n='3a'/></Part></P>";
    const struct {
        const char* xml;
        const char* path;
        QStringList found;
    } table[] = {
        {parts, "P.Part", {"1", "2", "3"}},
        {parts, "P.Part.Net", {"1a", "1b", "3a"}},
        {parts, "P.Other.Part", {"x"}},
        {"<P n='0'/>", "P", {"0"}},
        {parts, "Part", {}},
        {parts, "Q.Part", {}},
        {parts, "P.Part.Net.Deeper", {}},
        {parts, "", {}},
        {parts, ".", {}},
        {parts, "P.", {}},
        {parts, ".Part", {}},
        {parts, "P..Net", {}},
        {"", "P.Part", {}},
        {"", "", {}},
        {"garbage", "P", {}},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.path);
        QDomDocument document;
        document.setContent(QString(row.xml));
        const Plexa::DomElement answer = Plexa::DomAccess(document).query(row.path);
        QStringList found;
        for (const QDomElement& element : answer.elements()) {
            found << element.attribute("n");
        }
        EXPECT_EQ(found, row.found);
        EXPECT_EQ(answer.element().isNull(), row.found.isEmpty());
        EXPECT_EQ(answer.element().attribute("n"), row.found.value(0));
    }
    EXPECT_TRUE(Plexa::DomAccess(QDomDocument()).query("P").element().isNull());
}
