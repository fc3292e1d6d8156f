// A group turned or mirrored as one, with its wires.

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "ConnectedMove.h"
#include "ElementCaptions.h"
#include "ICircuitElement.h"

namespace {

constexpr int QuarterTurns = 4;
constexpr int Upright = 1;   // flipped top to bottom
constexpr int Sideways = 2;  // flipped left to right

/// What the group's way about the origin is: a quarter to the right, or left to right.
QTransform wayOf(bool isMirror) {
    return isMirror ? QTransform(-1, 0, 0, 1, 0, 0) : QTransform(0, 1, -1, 0, 0, 0);
}

/// An element is flipped first and turned then: mirrored, it turns the other way.
void change(ICircuitElement* element, bool isMirror) {
    QObject* object = element->containerObject();
    const int turns = element->rotation();
    if (!isMirror) {
        object->setProperty("Rotation", (turns + 1) % QuarterTurns);
        return;
    }
    const int flip = element->flip();
    const int half = flip == Upright ? QuarterTurns / 2 : 0;
    object->setProperty("Flip", flip == 0 ? Sideways : 0);
    object->setProperty("Rotation", (QuarterTurns + half - turns) % QuarterTurns);
}

QPointF anchorOf(const CCircuitEditorElementItem* item) {
    const QStringList names = item->element()->elementNodeNames();
    const auto* terminal = names.isEmpty() ? nullptr : item->nodeItem(names.first());
    return terminal ? terminal->mapToScene(QPointF(0, 0)) : item->pos();
}

}  // namespace

QTransform ConnectedMove::turn(const QPointF& center, bool isMirror) {
    QTransform way = QTransform::fromTranslate(-center.x(), -center.y()) * wayOf(isMirror) *
                     QTransform::fromTranslate(center.x(), center.y());
    // Listeners may take any of them away.
    const auto members = m_members;
    for (const Member& member : members) {
        if (member.textBox) {
            // Upright still, and its middle goes the way.
            const QPointF half = QRectF(QPointF(), member.textBox->rect().size()).center();
            member.textBox->setPos(way.map(member.start + half) - half);
        } else if (member.element) {
            turnElement(member, way, isMirror);
        }
    }
    for (const Trail& trail : qAsConst(m_trails)) {
        CCircuitEditorNodeItem* wire = m_editor ? m_editor->nodeItem(trail.node) : nullptr;
        if (wire && trail.wasManual && trail.fixed.isEmpty()) {
            wire->addShape(wire->mapFromScene(way.map(trail.path)), true);
        } else if (wire) {
            follow(m_editor, trail);
        }
    }
    QList<CCircuitEditorElementItem*> turned;
    for (const Member& member : members) {
        if (member.element) {
            turned.append(member.element);
        }
    }
    ElementCaptions::keepClear(turned);
    return way;
}

void ConnectedMove::turnElement(const Member& member, const QTransform& way, bool isMirror) {
    const QPointer<CCircuitEditorElementItem> item(member.element);
    const QPointF target = way.map(anchorOf(item));
    change(item->element(), isMirror);
    if (!item) {
        return;
    }
    item->setInternalMoveMode(true);
    item->setPos(item->pos() + target - anchorOf(item));
    if (!item) {
        return;
    }
    item->setInternalMoveMode(false);
    // The boxes stay together.
    QRectF block;
    for (const auto& [object, start] : member.boxes) {
        if (const auto* box = qobject_cast<CCircuitElementPropertyTextBox*>(object.data())) {
            block |= QRectF(start, box->rect().size());
        }
    }
    const QPointF step = way.map(block.center()) - block.center();
    for (const auto& [object, start] : member.boxes) {
        if (auto* box = qobject_cast<CCircuitElementPropertyTextBox*>(object.data())) {
            box->setPos(start + step);
        }
    }
}
