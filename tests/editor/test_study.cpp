// The inside of a sub-circuit as a view shows it, and records that hold no good.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CUndoRedo.h"
#include "DrawingTest.h"
#include "ICircuitSolver.h"
#include "WarningGuard.h"

#include <QDomDocument>
#include <QGraphicsScene>
#include <QTest>

#include <functional>
#include <memory>

namespace {

/// Hands out a stored project that something has happened to.
class DamagingXml : public XmlUtils {
    Q_OBJECT

public:
    void loadBinaryData(QDomElement element, QByteArray& data) override {
        XmlUtils::loadBinaryData(element, data);
        damage(data);
    }

    std::function<void(QByteArray&)> damage = [](QByteArray&) {};
};

class Study : public DrawingTest {
protected:
    Study() {
        xml.damage = [](QByteArray&) {};
        view.reset(
            qobject_cast<CCircuitEditor*>(framework.component->createWidget("circuitEditor")));
        view->setXmlUtils(&xml);
        block = create("TwoStageAmplifier.Subcircuits", {0, 0});
        inside = qobject_cast<ICircuit*>(block->containerObject());
    }

    int itemCount() const { return view->scene()->items().size(); }
    int wireCount() const {
        int count = 0;
        for (int i = 0; i < inside->nodeCount(); ++i) {
            count += view->nodeItem(inside->node(i)) ? 1 : 0;
        }
        return count;
    }

    DamagingXml xml;
    std::unique_ptr<CCircuitEditor> view;
    CircuitElement* block = nullptr;
    ICircuit* inside = nullptr;
};

}  // namespace

TEST_F(Study, ShowsTheStoredDrawingAndChangesNothing) {
    ASSERT_NE(inside, nullptr);
    view->setCircuit(nullptr);
    EXPECT_EQ(view->circuitSolver(), nullptr);
    view->setCircuit(inside);
    EXPECT_EQ(view->circuit(), inside);
    EXPECT_EQ(view->circuitSolver()->circuitSolverName(), "DummyCircuitSolver");
    for (int i = 0; i < inside->elementCount(); ++i) {
        EXPECT_NE(view->elementItem(inside->element(i)), nullptr) << i;
    }
    EXPECT_GT(inside->elementCount(), 5);
    EXPECT_EQ(wireCount(), inside->nodeCount());
    EXPECT_GT(view->textBoxCount() * view->elementPropertyTextBoxCount(), 0);
    EXPECT_EQ(view->globalParamTextBoxCount(), 0);
    const CCircuitEditorNodeItem* wire = view->nodeItem(inside->node(0));
    EXPECT_TRUE(wire->isManuallyConnected());
    EXPECT_FALSE(wire->internalShape().isEmpty());

    // Neither a double click nor a drag from wire to terminal reaches the sub-circuit.
    view->resize(600, 400);
    view->show();
    view->bringToCenter();
    view->zoomFit();
    view->setReadOnly(true);
    explorer.selected = QStringLiteral("Resistor.Basic");
    const int elements = inside->elementCount();
    const int commands = editor->undoStack()->count();
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    const CCircuitEditorTextBox* text = view->textBox(0);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                       view->mapFromScene(text->sceneBoundingRect().center()));
    QTest::keyClick(view.get(), Qt::Key_Delete);
    EXPECT_EQ(inside->elementCount(), elements);
    EXPECT_EQ(editor->undoStack()->count() + view->undoStack()->count(), commands);
    EXPECT_FALSE(view->circuitSolver()->makeConnection(inside->node(0)->elementNode(0),
                                                       inside->node(1)->elementNode(0)));
}

TEST_F(Study, ADamagedProjectIsShownAsFarAsItGoes) {
    announceLog(QStringLiteral("qUncompress"));
    const auto repack = [](QByteArray& data, const char* from, const char* to, int times) {
        QByteArray text = qUncompress(data);
        for (int i = 0; i < times; ++i) {
            text.replace(from, to);
        }
        data = qCompress(text);
    };
    const struct {
        const char* what;
        std::function<void(QByteArray&)> damage;
        bool isShown;
    } cases[] = {
        {"truncated", [](QByteArray& data) { data.truncate(data.size() / 2); }, false},
        {"not compressed", [](QByteArray& data) { data = qUncompress(data); }, false},
        {"missing", [](QByteArray& data) { data.clear(); }, false},
        {"no XML", [](QByteArray& data) { data = qCompress("<ProjectPart><"); }, false},
        {"another root", [=](QByteArray& data) { repack(data, "ProjectPart", "Part", 1); }, true},
        {"no records", [=](QByteArray& data) { repack(data, "Circuit", "Other", 1); }, true},
        {"no numbers", [=](QByteArray& data) { repack(data, "=\"", "=\"?", 1); }, true},
    };
    for (const auto& example : cases) {
        SCOPED_TRACE(example.what);
        view.reset(
            qobject_cast<CCircuitEditor*>(framework.component->createWidget("circuitEditor")));
        view->setXmlUtils(&xml);
        xml.damage = example.damage;
        view->setCircuit(inside);
        turnEventLoop();
        EXPECT_EQ(itemCount() > 0, example.isShown);
        EXPECT_EQ(wireCount(), example.isShown ? inside->nodeCount() : 0);
        view->bringToCenter();
    }
}

TEST_F(Study, AWireWithoutAStoredPathIsRoutedIfTold) {
    xml.damage = [](QByteArray& data) {
        data = qCompress(
            qUncompress(data).replace("<Shape>", "<None>").replace("</Shape>", "</None>"));
    };
    for (const bool route : {false, true}) {
        editor->setRouteEmptyShapes(route);
        view.reset(
            qobject_cast<CCircuitEditor*>(framework.component->createWidget("circuitEditor")));
        EXPECT_EQ(view->isRouteEmptyShapes(), route);
        view->setXmlUtils(&xml);
        view->setCircuit(inside);
        const CCircuitEditorNodeItem* wire = view->nodeItem(inside->node(0));
        EXPECT_EQ(wire->isManuallyConnected(), !route);
        EXPECT_EQ(wire->internalShape().isEmpty(), !route);
    }
}

#include "test_study.moc"
