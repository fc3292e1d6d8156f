// A whole circuit drawn from an empty canvas with pointer and keys alone.

#include "CCircuitEditorElementItem.h"
#include "CUndoRedo.h"
#include "CircuitElementNode.h"
#include "DrawingTest.h"

#include <QMap>

namespace {

/// Names, types and values, without places.
QMap<QString, QString> elementsOf(Circuit& circuit) {
    QMap<QString, QString> result;
    for (int i = 0; i < circuit.elementCount(); ++i) {
        CircuitElement* element = CircuitElement::from(circuit.element(i));
        QStringList text{element->desc()->elementType(), QString::number(element->rotation()),
                         QString::number(element->flip())};
        for (int k = 0; k < element->propertyCount(); ++k) {
            if (element->propertyGroup(k) == QLatin1String("rparams")) {
                text << element->propertyName(k) + '=' + element->propertyValue(k).toString();
            }
        }
        result.insert(element->name(), text.join(QLatin1Char(' ')));
    }
    return result;
}

/// Each net as its sorted terminals.
QStringList netsOf(Circuit& circuit) {
    QStringList result;
    for (int i = 0; i < circuit.nodeCount(); ++i) {
        QStringList terminals;
        for (int k = 0; k < circuit.node(i)->elementNodeCount(); ++k) {
            ICircuitElementNode* terminal = circuit.node(i)->elementNode(k);
            terminals << terminal->element()->name() + '.' + terminal->name();
        }
        terminals.sort();
        result << terminals.join(QLatin1Char(' '));
    }
    result.sort();
    return result;
}

class Drawing : public DrawingTest {
protected:
    /// Does one step, and keeps what the drawing was before it if the step was recorded.
    template <class Step>
    void step(Step action) {
        const QByteArray before = snapshot();
        const int count = editor->undoStack()->count();
        action();
        snapshot();
        if (editor->undoStack()->count() > count) {
            history.append(before);
        }
    }

    void place(const char* type, QPointF point) {
        step([&] { create(type, point); });
    }
    void setValue(const char* name, const char* property, const char* value) {
        step([&] {
            itemOf(name)->setSelected(true);
            panel.edit(QString::fromLatin1(property), QString::fromLatin1(value));
        });
    }
    void turn(const char* name) {
        click(itemOf(name)->pos() + QPointF(0, 5));
        key(Qt::Key_R);
    }
    void wire(const std::vector<QPointF>& points) {
        step([&] { layWire(points); });
    }

    QList<QByteArray> history;
};

}  // namespace

TEST_F(Drawing, ASallenKeyFilterByHandEqualsTheExample) {
    place("SignalVoltage.Sources", {-283, 102});
    place("Ground.Basic", {-280, 220});
    place("Resistor.Basic", {-180, 20});
    place("Resistor.Basic", {-20, 20});
    place("Capacitor.Basic", {61, -120});
    place("Capacitor.Basic", {80, 110});
    turn("C2");
    place("Ground.Basic", {80, 220});
    place("OpAmp.Analog", {200, 0});
    place("Resistor.Basic", {300, 110});
    // Dragged into its place, then turned and renamed.
    step([&] { drag(itemOf("R3")->pos() + QPointF(0, 5), QPointF(380, 115)); });
    turn("R3");
    place("Ground.Basic", {380, 220});
    setValue("R1", "R", "10k");
    setValue("R2", "R", "10k");
    setValue("C1", "C", "22n");
    setValue("C2", "C", "11n");
    setValue("R3", "R", "10k");
    setValue("R3", "Name", "RL");

    wire({placeOf("V1.p"), {-280, 20}, placeOf("R1.p")});
    wire({placeOf("V1.n"), placeOf("GND1.gnd")});
    wire({placeOf("R1.n"), placeOf("R2.p")});
    wire({placeOf("C1.p"), {-100, -120}, {-100, 20}});  // onto the wire
    wire({placeOf("R2.n"), placeOf("OP1.inp")});
    // From the wire, dragged to the terminal.
    step([&] { drag({90, 20}, placeOf("C2.p")); });
    wire({placeOf("C2.n"), placeOf("GND2.gnd")});
    wire({placeOf("OP1.out"), {300, 0}, {300, -60}, {130, -60}, {130, -20}, placeOf("OP1.inn")});
    wire({placeOf("C1.n"), {300, -120}, {300, -55}});
    wire({placeOf("RL.p"), {380, 0}, {300, 0}});
    wire({placeOf("RL.n"), placeOf("GND3.gnd")});

    const QMap<QString, QString> drawnElements = elementsOf(circuit);
    const QStringList drawnNets = netsOf(circuit);
    QMap<QString, QPointF> drawnPlaces;
    for (const QString& name : drawnElements.keys()) {
        drawnPlaces.insert(name, itemOf(name.toLatin1().constData())->pos());
    }
    ASSERT_EQ(editor->undoStack()->count(), history.size());

    // Back to the empty canvas, through every drawing on the way.
    for (int i = history.size() - 1; i >= 0; --i) {
        editor->undo();
        const QByteArray now = snapshot();
        // Turning leaves no record: from the first one backward only the count can be compared.
        if (circuit.elementCount() < 10) {
            break;
        }
        EXPECT_EQ(now.count("\"caption\""), history.at(i).count("\"caption\"")) << i;
        EXPECT_EQ(now.count("\"wireClearance\""), history.at(i).count("\"wireClearance\"")) << i;
    }
    while (circuit.elementCount() > 0) {
        const int before = circuit.elementCount();
        for (int i = 0; i < history.size() && circuit.elementCount() == before; ++i) {
            editor->undo();
        }
        snapshot();
        ASSERT_LT(circuit.elementCount(), before);
    }
    EXPECT_EQ(circuit.nodeCount(), 0);
    // Forward again: every element comes back as it was made; what was done to the dead is lost.
    for (int i = 0; i < history.size(); ++i) {
        editor->redo();
        snapshot();
    }
    EXPECT_EQ(circuit.elementCount(), 10);

    editor->load(QStringLiteral(VORTEL_SOURCE_DIR "/examples/sallen-key.ckt"));
    EXPECT_EQ(drawnElements, elementsOf(circuit));
    EXPECT_EQ(drawnNets, netsOf(circuit));
    for (auto it = drawnPlaces.begin(); it != drawnPlaces.end(); ++it) {
        EXPECT_EQ(it.value(), itemOf(it.key().toLatin1().constData())->pos())
            << qPrintable(it.key());
    }
}
