// What the random user does with pointer, keys and menus.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "HistoryUser.h"

#include <QGraphicsScene>

namespace {

const char* const Types[] = {"Resistor.Basic", "NPN.Semiconductors", "Ground.Basic", "And.Digital",
                             "Capacitor.Basic"};

}  // namespace

QPointF HistoryUser::point() {
    return {m_random.bounded(-12, 13) * 20.0, m_random.bounded(-9, 10) * 20.0};
}

CCircuitEditorElementItem* HistoryUser::anyElement() {
    const int count = editor->circuit() ? circuit.elementCount() : 0;
    return count ? editor->elementItem(circuit.element(m_random.bounded(count))) : nullptr;
}

QPointF HistoryUser::terminalPoint() {
    const CCircuitEditorElementItem* item = anyElement();
    if (!item) {
        return point();
    }
    const QStringList names = item->element()->elementNodeNames();
    return item->nodeItem(names.at(m_random.bounded(names.size())))->mapToScene(QPointF(0, 0));
}

ICircuitNode* HistoryUser::anyNet() {
    const int count = editor->circuit() ? circuit.nodeCount() : 0;
    return count ? circuit.node(m_random.bounded(count)) : nullptr;
}

QGraphicsItem* HistoryUser::anyBox() {
    const int texts = editor->textBoxCount();
    const int properties = editor->elementPropertyTextBoxCount();
    const int count = texts + properties + editor->globalParamTextBoxCount();
    const int chosen = count ? m_random.bounded(count) : -1;
    if (chosen < 0) {
        return nullptr;
    }
    if (chosen < texts) {
        return editor->textBox(chosen);
    }
    if (chosen < texts + properties) {
        return editor->elementPropertyTextBox(chosen - texts);
    }
    return editor->globalParamTextBox(chosen - texts - properties);
}

void HistoryUser::perform(const UserStep& step) {
    m_random.seed(step.seed);
    switch (step.kind) {
        case 0:
            editor->undo();
            break;
        case 1:
            editor->redo();
            break;
        case 14:
        case 15:
        case 16:
            selectAndDo();
            break;
        case 17:
            useClipboard();
            break;
        case 18:
            annotate();
            break;
        case 19:
            changeBox();
            break;
        case 20:
            changeParameters();
            break;
        case 21:
            changeProperty();
            break;
        case 22:
            changeOutputs();
            break;
        case 23:
            cutNet();
            break;
        case 24:
        case 25:
            openMenu();
            break;
        case 26:
            pickOutput();
            break;
        case 27:
            doubleClick(m_random.bounded(2) ? terminalPoint() + QPointF(12, 3) : point());
            break;
        case 28:
        case 29:
            switchProperty();
            break;
        case 30:
            reload();
            break;
        case 31:
            changeCollaborators();
            break;
        default:
            draw(step.kind);
            break;
    }
}

void HistoryUser::draw(int kind) {
    switch (kind) {
        case 2:
        case 3: {
            explorer.selected = QString::fromLatin1(Types[m_random.bounded(5)]);
            const QPointF place = point();
            const QGraphicsItem* there = editor->itemAt(at(place));
            if (!there || there->type() < TextBoxItemType) {  // whose dialogs would open
                doubleClick(place);
            }
            break;
        }
        case 4:
            editor->startPlacing(QString::fromLatin1(Types[m_random.bounded(5)]));
            click(point());
            key(m_random.bounded(2) ? Qt::Key_R : Qt::Key_F);
            click(terminalPoint());
            key(Qt::Key_Escape);
            break;
        case 5:
        case 6:
        case 7:
            wire();
            break;
        case 8:
        case 9:
            drag(terminalPoint() + QPointF(15, 0), terminalPoint());
            break;
        case 10:
            drag(terminalPoint() + QPointF(12, 3), point());
            break;
        case 11:
            drag(point(), terminalPoint());
            break;
        case 12:
            m_random.bounded(2) ? editor->snapToGrid() : editor->bringToCenter();
            break;
        default:
            moveTo(point());
            break;
    }
}

void HistoryUser::wire() {
    framework.component->setManualConnectionMode(true);
    click(terminalPoint());
    for (int corners = m_random.bounded(3); corners > 0; --corners) {
        click(point());
    }
    click(terminalPoint());
    framework.component->setManualConnectionMode(false);
}

void HistoryUser::selectAndDo() {
    const Qt::Key keys[] = {Qt::Key_R,    Qt::Key_F,     Qt::Key_Delete, Qt::Key_Left,
                            Qt::Key_Down, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Backspace};
    const QPointF corner = point();
    const QPointF other = point();
    switch (m_random.bounded(5)) {
        case 0:
            drag(corner, other, Qt::ControlModifier);
            key(keys[m_random.bounded(7)], Qt::ShiftModifier);
            break;
        case 1:
            drag(corner, other, Qt::ControlModifier);
            drag((corner + other) / 2, point());
            break;
        case 2:
            if (ICircuitNode* net = anyNet()) {
                editor->nodeItem(net)->setSelected(true);
                m_random.bounded(2) ? key(Qt::Key_Delete) : editor->eraseSelection();
            }
            break;
        default:
            click(terminalPoint() + QPointF(12, 3));
            key(keys[m_random.bounded(8)]);
            break;
    }
}

void HistoryUser::useClipboard() {
    switch (m_random.bounded(6)) {
        case 0:
            editor->selectAll();
            editor->cut();
            break;
        case 1:
            editor->selectAll();
            key(Qt::Key_Right);
            break;
        case 2:
            editor->selectAll();
            key(Qt::Key_Delete);
            break;
        default:
            drag(point(), point(), Qt::ControlModifier);
            // Not without bounds: copies of copies double.
            if (editor->scene()->items().size() < 150) {
                editor->copy();
                m_random.bounded(2) ? editor->paste(point()) : editor->duplicate();
                click(point());
            }
            break;
    }
}

void HistoryUser::openMenu() {
    const QGraphicsItem* box = anyBox();
    switch (m_random.bounded(4)) {
        case 0:
            rightClick(point());
            break;
        case 1:
            rightClick(box ? box->sceneBoundingRect().center() : point());
            break;
        case 2:
            // A wire has its menu where it leaves a terminal.
            rightClick(terminalPoint());
            break;
        default:
            rightClick(terminalPoint() + QPointF(12, 3));
            break;
    }
}

void HistoryUser::pickOutput() {
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    click(terminalPoint() + (m_random.bounded(2) ? QPointF() : QPointF(12, 3)));
    key(Qt::Key_Tab);
    editor->setMode(CCircuitEditor::EditMode);
}

void HistoryUser::cutNet() {
    ICircuitNode* net = anyNet();
    CCircuitEditorElementItem* item = anyElement();
    switch (net ? m_random.bounded(3) : 3) {
        case 0:
            solver.breakConnection(net->elementNode(m_random.bounded(net->elementNodeCount())),
                                   net);
            break;
        case 1:
            solver.breakConnection(net);
            break;
        case 2:
            if (item) {
                solver.disconnectElement(item->element());
            }
            break;
        default:
            break;
    }
}
