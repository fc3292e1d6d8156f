#include "ConnectedMove.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"

#include <QGraphicsScene>

#include <algorithm>

namespace {

QPointF placeOf(const CCircuitEditorElementNodeItem* terminal) {
    return terminal->mapToScene(QPointF(0, 0));
}

}  // namespace

ConnectedMove::ConnectedMove(CCircuitEditor* editor, const QList<QGraphicsItem*>& items)
    : m_editor(editor) {
    QList<CCircuitEditorElementItem*> elements;
    for (QGraphicsItem* item : items) {
        Member member;
        member.start = item->pos();
        if (auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
            member.element = element;
            for (CCircuitElementPropertyTextBox* box : element->propertyTextBoxes()) {
                member.boxes.append({box, box->pos()});
            }
            elements.append(element);
            m_members.append(member);
        } else if (auto* textBox = qgraphicsitem_cast<CCircuitEditorTextBox*>(item)) {
            member.textBox = textBox;
            m_members.append(member);
        }
    }
    QSet<CCircuitEditorNodeItem*> wires;
    for (const CCircuitEditorElementItem* element : qAsConst(elements)) {
        for (int i = 0; i < element->circuitNodeItemCount(); ++i) {
            CCircuitEditorNodeItem* wire = element->circuitNodeItem(i);
            if (!wires.contains(wire)) {
                wires.insert(wire);
                m_trails.append(trailOf(editor, wire, elements));
            }
        }
    }
}

ConnectedMove::Trail ConnectedMove::trailOf(CCircuitEditor* editor, CCircuitEditorNodeItem* wire,
                                            const QList<CCircuitEditorElementItem*>& movers) {
    const QSet<CCircuitEditorElementItem*> moving(movers.begin(), movers.end());
    Trail trail;
    trail.node = wire->circuitNode();
    trail.wasManual = wire->isManuallyConnected();
    trail.path = wire->mapToScene(wire->internalShape());
    for (int i = 0; i < trail.node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = trail.node->elementNode(i);
        CCircuitEditorElementItem* element =
            terminal ? editor->elementItem(terminal->element()) : nullptr;
        const CCircuitEditorElementNodeItem* marker =
            element ? element->nodeItem(terminal) : nullptr;
        if (!marker) {
            continue;
        }
        if (moving.contains(element)) {
            trail.moved.append({element, terminal->name(), placeOf(marker)});
        } else {
            trail.fixed.append(placeOf(marker));
        }
    }
    return trail;
}

bool ConnectedMove::moveBy(CCircuitEditor* editor, const QList<QGraphicsItem*>& items,
                           const QPointF& step) {
    if (!editor->movesConnectedElements()) {
        return false;
    }
    ConnectedMove(editor, items).moveTo(step);
    return true;
}

QMap<QString, QPointF> ConnectedMove::terminalPlaces(const CCircuitEditorElementItem* item) {
    QMap<QString, QPointF> places;
    const CompleteHistory* history = CompleteHistory::of(item->circuitEditor());
    if (history && history->isApplying()) {
        return places;  // which has the paths, too
    }
    if (item->element() && item->circuitEditor()->movesConnectedElements() &&
        item->circuitNodeItemCount() > 0) {
        for (const QString& name : item->element()->elementNodeNames()) {
            if (const CCircuitEditorElementNodeItem* terminal = item->nodeItem(name)) {
                places.insert(name, placeOf(terminal));
            }
        }
    }
    return places;
}

void ConnectedMove::followTerminals(CCircuitEditorElementItem* item,
                                    const QMap<QString, QPointF>& oldPlaces) {
    if (oldPlaces.isEmpty() || oldPlaces == terminalPlaces(item)) {
        return;
    }
    for (int i = 0; i < item->circuitNodeItemCount(); ++i) {
        CCircuitEditorNodeItem* wire = item->circuitNodeItem(i);
        if (wire->isManuallyConnected()) {
            Trail trail = trailOf(item->circuitEditor(), wire, {item});
            for (MovedTerminal& terminal : trail.moved) {
                terminal.start = oldPlaces.value(terminal.name, terminal.start);
            }
            follow(item->circuitEditor(), trail);
        }
    }
}

void ConnectedMove::follow(CCircuitEditor* editor, const Trail& trail) {
    CCircuitEditorNodeItem* wire = editor->nodeItem(trail.node);
    if (!wire || trail.isOff) {
        return;
    }
    if (!trail.wasManual) {
        wire->updateNode();
        return;
    }
    QVector<WireStretch::Shift> shifts;
    for (const MovedTerminal& terminal : trail.moved) {
        const CCircuitEditorElementNodeItem* marker =
            terminal.element ? terminal.element->nodeItem(terminal.name) : nullptr;
        if (marker) {
            shifts.append({terminal.start, placeOf(marker)});
        }
    }
    const QPainterPath path = WireStretch::stretched(trail.path, shifts, trail.fixed);
    wire->addShape(wire->mapFromScene(path), true);
}

void ConnectedMove::setPositions(const QPointF& offset) {
    // Listeners to the moves may take any of them away.
    const auto members = m_members;
    for (const Member& member : members) {
        if (member.element) {
            member.element->setInternalMoveMode(true);
            member.element->setPos(member.start + offset);
            if (member.element) {
                member.element->setInternalMoveMode(false);
            }
        } else if (member.textBox) {
            member.textBox->setPos(member.start + offset);
        }
    }
}

void ConnectedMove::moveTo(const QPointF& offset) {
    if (!m_editor) {
        return;
    }
    setPositions(offset);
    for (const Trail& trail : qAsConst(m_trails)) {
        follow(m_editor, trail);
    }
}

void ConnectedMove::comeOff() {
    for (Trail& trail : m_trails) {
        CCircuitEditorNodeItem* wire = m_editor ? m_editor->nodeItem(trail.node) : nullptr;
        if (!wire || trail.fixed.isEmpty() || trail.isOff) {
            continue;
        }
        trail.isOff = true;
        QSet<ICircuitElementNode*> leaving;
        QVector<QPointF> ends;
        for (const MovedTerminal& terminal : qAsConst(trail.moved)) {
            if (terminal.element) {
                leaving.insert(terminal.element->element()->elementNode(terminal.name));
            }
            ends.append(terminal.start);
        }
        wire->setLeftOut(leaving);
        // Where their branches are none of their own the wire can't be kept as it was laid.
        QPainterPath kept;
        if (trail.wasManual && trail.fixed.size() > 1) {
            kept = WireStretch::withoutBranchesTo(ends, trail.path);
        }
        if (kept.isEmpty()) {
            wire->setManuallyConnected(false);
        } else {
            wire->addShape(wire->mapFromScene(kept), true);
        }
    }
}

void ConnectedMove::putBack(CCircuitEditor* editor, const Trail& trail) {
    CCircuitEditorNodeItem* wire = editor->nodeItem(trail.node);
    if (!wire) {
        return;
    }
    wire->setLeftOut({});
    if (trail.wasManual) {
        wire->addShape(wire->mapFromScene(trail.path), true);
    } else {
        wire->setManuallyConnected(false);
    }
}

void ConnectedMove::putBack() {
    if (!m_editor) {
        return;
    }
    setPositions(QPointF());
    for (const Member& member : qAsConst(m_members)) {
        // By steps they may be off by what sums of fractions lose.
        for (const auto& [box, start] : member.boxes) {
            if (auto* caption = qobject_cast<CCircuitElementPropertyTextBox*>(box.data())) {
                caption->setPos(start);
            }
        }
    }
    for (Trail& trail : m_trails) {
        trail.isOff = false;
        putBack(m_editor, trail);
    }
}
