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
/// On the element, from its terminal.
constexpr QPointF Beside(12, 3);

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

void HistoryUser::oneOf(const std::vector<std::function<void()>>& ways) {
    ways.at(size_t(m_random.bounded(int(ways.size()))))();
}

void HistoryUser::perform(const UserStep& step) {
    m_random.seed(step.seed);
    const auto made = [this] { createAnything(); };
    const auto wired = [this] { wire(); };
    const auto joined = [this] { drag(terminalPoint() + QPointF(15, 0), terminalPoint()); };
    const auto chosen = [this] { selectAndDo(); };
    const auto asked = [this] { openMenu(); };
    const auto switched = [this] { switchProperty(); };
    // What happens more often stands there more often.
    const std::function<void()> kinds[StepKinds] = {
        [this] { editor->undo(); },
        [this] { editor->redo(); },
        made,
        made,
        [this] { placeTwo(); },
        wired,
        wired,
        wired,
        joined,
        joined,
        [this] { drag(terminalPoint() + Beside, point()); },
        [this] { drag(point(), terminalPoint()); },
        [this] { m_random.bounded(2) ? editor->snapToGrid() : editor->bringToCenter(); },
        [this] { moveTo(point()); },
        chosen,
        chosen,
        chosen,
        [this] { useClipboard(); },
        [this] { annotate(); },
        [this] { changeBox(); },
        [this] { changeParameters(); },
        [this] { changeProperty(); },
        [this] { changeOutputs(); },
        [this] { cutNet(); },
        asked,
        asked,
        [this] { pickOutput(); },
        [this] { doubleClick(m_random.bounded(2) ? terminalPoint() + Beside : point()); },
        switched,
        switched,
        [this] { reload(); },
        [this] { changeCollaborators(); }};
    kinds[step.kind]();
}

void HistoryUser::createAnything() {
    explorer.selected = QString::fromLatin1(Types[m_random.bounded(5)]);
    const QPointF place = point();
    const QGraphicsItem* there = editor->itemAt(at(place));
    if (!there || there->type() < TextBoxItemType) {  // whose dialogs would open
        doubleClick(place);
    }
}

void HistoryUser::placeTwo() {
    editor->startPlacing(QString::fromLatin1(Types[m_random.bounded(5)]));
    click(point());
    key(m_random.bounded(2) ? Qt::Key_R : Qt::Key_F);
    click(terminalPoint());
    key(Qt::Key_Escape);
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
            click(terminalPoint() + Beside);
            key(keys[m_random.bounded(8)]);
            break;
    }
}

void HistoryUser::useClipboard() {
    const int action = m_random.bounded(6);
    if (action < 3) {
        editor->selectAll();
        action == 0 ? editor->cut() : key(action == 1 ? Qt::Key_Right : Qt::Key_Delete);
        return;
    }
    drag(point(), point(), Qt::ControlModifier);
    // Not without bounds: copies of copies double.
    if (editor->scene()->items().size() < 150) {
        editor->copy();
        m_random.bounded(2) ? editor->paste(point()) : editor->duplicate();
        click(point());
    }
}

void HistoryUser::openMenu() {
    const QGraphicsItem* box = anyBox();
    oneOf({[&] { rightClick(point()); },
           [&] { rightClick(box ? box->sceneBoundingRect().center() : point()); },
           // A wire has its menu where it leaves a terminal.
           [&] { rightClick(terminalPoint()); }, [&] { rightClick(terminalPoint() + Beside); }});
}

void HistoryUser::pickOutput() {
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    click(terminalPoint() + (m_random.bounded(2) ? QPointF() : Beside));
    key(Qt::Key_Tab);
    editor->setMode(CCircuitEditor::EditMode);
}

void HistoryUser::cutNet() {
    ICircuitNode* net = anyNet();
    CCircuitEditorElementItem* item = anyElement();
    if (!net || !item) {
        return;
    }
    oneOf({[&] {
               const int terminal = m_random.bounded(net->elementNodeCount());
               solver.breakConnection(net->elementNode(terminal), net);
           },
           [&] { solver.breakConnection(net); },
           [&] { solver.disconnectElement(item->element()); }});
}
