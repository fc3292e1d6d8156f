// What becomes of the nets where a move of connected elements ends.

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "ConnectedMove.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ICircuitSolver.h"

#include <QGraphicsScene>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QSet>

namespace {

// What stands for a connection without length.
const QPointF DropStub(0.1, 0.1);

ICircuitNode* nodeOf(const CCircuitEditorElementNodeItem* terminal) {
    const CCircuitEditorElementItem* element = terminal->elementItem();
    for (int i = 0; i < element->circuitNodeItemCount(); ++i) {
        ICircuitNode* node = element->circuitNodeItem(i)->circuitNode();
        for (int k = 0; k < node->elementNodeCount(); ++k) {
            if (node->elementNode(k) == terminal->elementNode()) {
                return node;
            }
        }
    }
    return nullptr;
}

/// A model that doesn't tell which names it has given by itself has its nets taken as named: one
/// question too many does less harm than a short.
bool isNamed(ICircuitNode* node) {
    if (!node) {
        return false;
    }
    QObject* object = node->containerObject();
    bool isAutomatic = false;
    if (object->metaObject()->indexOfMethod("hasAutomaticName()") >= 0) {
        QMetaObject::invokeMethod(object, "hasAutomaticName", Qt::DirectConnection,
                                  Q_RETURN_ARG(bool, isAutomatic));
    }
    return !isAutomatic;
}

/// Nets that become one, and the first two names that thereby meet.
class Merging {
public:
    void merge(ICircuitNode* a, ICircuitNode* b) {
        if (!a || !b || a == b) {
            return;
        }
        const int kept = groupOf(a);
        const int gone = groupOf(b);
        for (int& group : m_groups) {
            group = group == gone ? kept : group;
        }
        if (kept != gone) {
            m_names[kept] += m_names.take(gone);
        }
        if (m_conflict.isEmpty() && m_names[kept].size() > 1) {
            m_conflict = m_names[kept].values();
            m_conflict.sort();
        }
    }
    QStringList conflict() const { return m_conflict; }

private:
    int groupOf(ICircuitNode* node) {
        if (!m_groups.contains(node)) {
            const int group = m_groups.size();
            m_groups.insert(node, group);
            m_names[group] = isNamed(node) ? QSet<QString>{node->name()} : QSet<QString>();
        }
        return m_groups.value(node);
    }

    QHash<ICircuitNode*, int> m_groups;
    QHash<int, QSet<QString>> m_names;
    QStringList m_conflict;
};

QPainterPath drawingOf(const CCircuitEditor* editor, ICircuitNode* node) {
    const CCircuitEditorNodeItem* wire = editor->nodeItem(node);
    return wire ? wire->mapToScene(wire->internalShape()) : QPainterPath();
}

}  // namespace

/// A terminal and what it lies on: a terminal, or a wire.
struct ConnectedMove::Join {
    QPointer<CCircuitEditorElementItem> element;
    QString name;
    ICircuitNode* ownNode = nullptr;
    QPointer<CCircuitEditorElementItem> otherElement;
    QString otherName;
    ICircuitNode* otherNode = nullptr;
};

void ConnectedMove::cut(const Trail& trail) {
    CCircuitEditorNodeItem* wire = m_editor->nodeItem(trail.node);
    if (!wire) {
        return;
    }
    wire->setLeftOut({});
    if (trail.fixed.size() < 2) {
        m_editor->on_removeNodeRequest(trail.node);
    } else {
        for (const MovedTerminal& terminal : trail.moved) {
            ICircuitSolver* solver = m_editor ? m_editor->circuitSolver() : nullptr;
            if (solver && terminal.element && m_editor->nodeItem(trail.node)) {
                solver->breakConnection(terminal.element->element()->elementNode(terminal.name),
                                        trail.node);
            }
        }
    }
    // Among themselves they stay joined.
    for (int i = 1; i < trail.moved.size(); ++i) {
        const MovedTerminal& first = trail.moved.first();
        const MovedTerminal& other = trail.moved.at(i);
        ICircuitSolver* solver = m_editor ? m_editor->circuitSolver() : nullptr;
        if (solver && first.element && other.element) {
            solver->makeConnection(first.element->element()->elementNode(first.name),
                                   other.element->element()->elementNode(other.name));
        }
    }
}

QList<ConnectedMove::Join> ConnectedMove::joins() const {
    QSet<const CCircuitEditorElementItem*> movers;
    for (const Member& member : m_members) {
        movers.insert(member.element);
    }
    QSet<ICircuitNode*> off;
    for (const Trail& trail : m_trails) {
        if (trail.isOff) {
            off.insert(trail.node);
        }
    }
    QList<Join> result;
    for (const Member& member : m_members) {
        const CCircuitEditorElementItem* element = member.element;
        if (!element || !element->element()) {
            continue;
        }
        for (const QString& name : element->element()->elementNodeNames()) {
            CCircuitEditorElementNodeItem* terminal = element->nodeItem(name);
            if (!terminal) {
                continue;
            }
            ICircuitNode* own = nodeOf(terminal);
            own = off.contains(own) ? nullptr : own;
            for (QGraphicsItem* item :
                 m_editor->scene()->items(terminal->mapToScene(QPointF(0, 0)))) {
                Join join{member.element, name, own, nullptr, QString(), nullptr};
                if (auto* end = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(item)) {
                    if (movers.contains(end->elementItem())) {
                        continue;
                    }
                    join.otherElement = end->elementItem();
                    join.otherName = end->elementNode()->name();
                    join.otherNode = nodeOf(end);
                } else if (auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item)) {
                    join.otherNode = wire->circuitNode();
                } else {
                    continue;
                }
                if (!own || own != join.otherNode) {
                    result.append(join);
                }
            }
        }
    }
    return result;
}

bool ConnectedMove::mayJoin(const QList<Join>& joins) const {
    // A free terminal joins all that it lies on, and so joins that.
    QHash<QString, ICircuitNode*> firstOf;
    Merging merging;
    for (const Join& join : joins) {
        const QString key = join.element->element()->name() + QLatin1Char('.') + join.name;
        ICircuitNode* node = join.ownNode ? join.ownNode : firstOf.value(key);
        merging.merge(node, join.otherNode);
        if (join.otherNode && !node) {
            firstOf.insert(key, join.otherNode);
        }
    }
    const QStringList names = merging.conflict();
    if (names.isEmpty()) {
        return true;
    }
    // On the heap: the editor may go while it is open, and takes it along.
    const QPointer<QMessageBox> box(new QMessageBox(
        QMessageBox::Question, QStringLiteral("Join nets"),
        QStringLiteral("This joins the nets \"%1\" and \"%2\". They become one. Join them?")
            .arg(names.at(0), names.at(1)),
        QMessageBox::Yes | QMessageBox::No, m_editor));
    box->setDefaultButton(QMessageBox::No);
    const int answer = box->exec();
    delete box;
    return answer == QMessageBox::Yes;
}

void ConnectedMove::join(const Join& join) {
    ICircuitSolver* solver = m_editor ? m_editor->circuitSolver() : nullptr;
    const CCircuitEditorElementNodeItem* terminal =
        join.element ? join.element->nodeItem(join.name) : nullptr;
    if (!solver || !terminal) {
        return;
    }
    ICircuitNode* own = nodeOf(terminal);
    // What is drawn of both nets stays, whichever of them the model keeps.
    QPainterPath drawing = drawingOf(m_editor, own);
    const QPointF place = terminal->mapToScene(QPointF(0, 0));
    ICircuitNode* joined = nullptr;
    if (!join.otherName.isEmpty()) {
        const CCircuitEditorElementNodeItem* other =
            join.otherElement ? join.otherElement->nodeItem(join.otherName) : nullptr;
        ICircuitNode* otherNode = other ? nodeOf(other) : nullptr;
        if (!other || (own && own == otherNode)) {
            return;
        }
        drawing.addPath(drawingOf(m_editor, otherNode));
        joined = solver->makeConnection(other->elementNode(), terminal->elementNode());
    } else if (m_editor->nodeItem(join.otherNode) && own != join.otherNode) {
        drawing.addPath(drawingOf(m_editor, join.otherNode));
        if (solver->makeConnection(terminal->elementNode(), join.otherNode)) {
            joined = join.otherNode;
        }
    }
    CCircuitEditorNodeItem* wire = m_editor ? m_editor->nodeItem(joined) : nullptr;
    if (wire) {
        drawing.moveTo(place);
        drawing.lineTo(place + DropStub);
        wire->addShape(wire->mapFromScene(drawing), true);
    }
}

bool ConnectedMove::settle() {
    const QPointer<CCircuitEditor> editor(m_editor);
    const QList<Join> wanted = editor ? joins() : QList<Join>();
    // The question runs its own event loop.
    if (!editor || !mayJoin(wanted)) {
        putBack();
        return false;
    }
    for (const Trail& trail : qAsConst(m_trails)) {
        if (editor && trail.isOff) {
            cut(trail);
        }
    }
    for (const Join& one : wanted) {
        join(one);
    }
    return true;
}
