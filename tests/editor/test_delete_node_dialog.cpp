// Choosing what to take out of a net, and taking it out.

#include "CCircuitEditorNodeItem.h"
#include "CDeleteCircuitNodeDialog.h"
#include "CircuitElementNode.h"
#include "DialogDriver.h"
#include "DrawingTest.h"

#include <QApplication>
#include <QGraphicsView>
#include <QListWidget>
#include <QScrollBar>
#include <QWheelEvent>

#include <functional>

/// Four resistors whose left ends are one net.
class DeleteNodeDialog : public DrawingTest {
protected:
    DeleteNodeDialog() {
        for (int i = 0; i < 4; ++i) {
            create("Resistor.Basic", {0, i * 100.0 - 150});
        }
        node = solver.makeConnection(terminal("R1.p"), terminal("R2.p"));
        solver.makeConnection(terminal("R3.p"), node);
        solver.makeConnection(terminal("R4.p"), node);
    }

    /// Runs the dialog with these rows checked and no others.
    void choose(
        const QList<int>& rows, bool accept, const std::function<void()>& meanwhile = [] {}) {
        DialogDriver driver;
        driver.queue([=](QWidget* dialog) {
            auto* list = dialog->findChild<QListWidget*>("listWidget");
            for (int i = 0; i < list->count(); ++i) {
                list->item(i)->setCheckState(rows.contains(i) ? Qt::Checked : Qt::Unchecked);
            }
            meanwhile();
            QMetaObject::invokeMethod(dialog, accept ? "accept" : "reject");
        });
        QMetaObject::invokeMethod(editor, "deletePartsOfNode",
                                  Q_ARG(QObject*, node->containerObject()));
        EXPECT_EQ(driver.titles, QStringList{"Delete Node Dialog"});
        turnEventLoop();
    }
    /// A branch by hand, around two corners.
    QPainterPath branch(const char* terminalName) {
        const QPointF end = placeOf(terminalName);
        QPainterPath path(end);
        path.lineTo(end.x() - 50, end.y());
        path.lineTo(end.x() - 50, 0);
        path.lineTo(end.x() - 20, 0);
        return path;
    }
    QString terminalsLeft() {
        QString names;
        for (int i = 0; circuit.nodeCount() > 0 && i < circuit.node(0)->elementNodeCount(); ++i) {
            names += circuit.node(0)->elementNode(i)->element()->name();
        }
        return names;
    }

    ICircuitNode* node = nullptr;
};

TEST_F(DeleteNodeDialog, ListsTheNetAndItsLaterTerminals) {
    element("R3")->setCaption("load");
    CDeleteCircuitNodeDialog dialog(nullptr);
    EXPECT_FALSE(dialog.deleteWholeNode());
    dialog.setCircuitEditor(editor);
    dialog.setCirucitNode(node);
    EXPECT_EQ(dialog.circuit(), &circuit);
    auto* list = dialog.findChild<QListWidget*>("listWidget");
    QStringList rows;
    for (int i = 0; i < list->count(); ++i) {
        rows << list->item(i)->text() + QString::number(list->item(i)->checkState());
    }
    EXPECT_EQ(rows, (QStringList{"Whole node2", "p of load0", "p of R40"}));
    EXPECT_TRUE(dialog.deleteWholeNode());
    list->item(0)->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(dialog.deleteWholeNode());
    EXPECT_TRUE(dialog.selectedElementNodes().isEmpty());
    list->item(2)->setCheckState(Qt::Checked);
    EXPECT_EQ(dialog.selectedElementNodes(), QList<ICircuitElementNode*>{terminal("R4.p")});

    // The wire fills the view, also after that has got another size, and the wheel changes nothing.
    auto* view = dialog.findChild<QGraphicsView*>("graphicsView");
    dialog.show();
    turnEventLoop();
    const double scale = view->transform().m11();
    dialog.resize(1000, 900);
    turnEventLoop();
    EXPECT_GT(view->transform().m11(), scale);
    const QRect shown =
        view->mapFromScene(editor->itemFor(node)->sceneBoundingRect()).boundingRect();
    EXPECT_TRUE(view->viewport()->rect().adjusted(-1, -1, 1, 1).contains(shown));
    EXPECT_GT(shown.height(), view->viewport()->height() * 0.9);
    view->scale(10, 10);
    const int scrolled = view->verticalScrollBar()->value();
    QWheelEvent wheel({5, 5}, view->mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view->viewport(), &wheel);
    EXPECT_EQ(view->verticalScrollBar()->value(), scrolled);

    // The wire may go while it is shown, and stays selected when the dialog goes.
    EXPECT_TRUE(editor->itemFor(node)->isSelected());
    solver.breakConnection(node);
    dialog.resize(500, 400);
    turnEventLoop();
    dialog.setCirucitNode(nullptr);
    EXPECT_EQ(list->count(), 0);
}

TEST_F(DeleteNodeDialog, WhatWasChosenGoes) {
    choose({0, 1, 2}, false);
    EXPECT_EQ(terminalsLeft(), "R1R2R3R4");
    choose({}, true);
    EXPECT_EQ(terminalsLeft(), "R1R2R3R4");
    // A wire that was laid by hand is kept as far as it doesn't lead to what has gone.
    QPainterPath kept = branch("R1.p");
    kept.addPath(branch("R4.p").toReversed());
    QPainterPath laid = kept;
    laid.addPath(branch("R3.p"));
    CCircuitEditorNodeItem* wire = editor->nodeItem(node);
    wire->addShape(laid, true);
    choose({1}, true);
    EXPECT_EQ(terminalsLeft(), "R1R2R4");
    EXPECT_TRUE(wire->internalShape() == kept);
    EXPECT_TRUE(wire->isManuallyConnected());
    // Nothing else was laid: what is left is routed.
    wire->addShape(branch("R4.p"), true);
    choose({1}, true);
    EXPECT_EQ(terminalsLeft(), "R1R2");
    EXPECT_TRUE(wire->contains(placeOf("R1.p")));
    EXPECT_FALSE(wire->isManuallyConnected());
    choose({0}, true);
    EXPECT_EQ(circuit.nodeCount(), 0);
    EXPECT_TRUE(circuit.elementCount() == 4);

    QMetaObject::invokeMethod(editor, "deletePartsOfNode", Q_ARG(QObject*, element("R1")));
    QMetaObject::invokeMethod(editor, "deletePartsOfNode", Q_ARG(QObject*, nullptr));
}

TEST_F(DeleteNodeDialog, TheNetMayShrinkOrGoWhileTheUserChooses) {
    choose({2}, true, [this] { solver.breakConnection(terminal("R1.p"), node); });
    EXPECT_EQ(terminalsLeft(), "R2R3");
    solver.makeConnection(terminal("R4.p"), node);
    editor->nodeItem(node)->addShape(branch("R3.p"), true);
    // A terminal of two takes the other one along.
    choose({1}, true, [this] { solver.breakConnection(terminal("R3.p"), node); });
    EXPECT_EQ(circuit.nodeCount(), 0);

    node = solver.makeConnection(terminal("R1.p"), terminal("R2.p"));
    DialogDriver driver;
    driver.queue([this](QWidget* dialog) {
        circuit.removeElement(element("R4"));
        circuit.removeNode(node);
        turnEventLoop();
        QMetaObject::invokeMethod(dialog, "accept");
    });
    editor->deletePartsOfNode(node->containerObject());
    EXPECT_EQ(circuit.nodeCount(), 0);
}
