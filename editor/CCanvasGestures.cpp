#include "CCanvasGestures.h"

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CManualConnectorLineItem.h"
#include "CPlacementTool.h"
#include "CSelectionRectangleItem.h"
#include "CircuitGeometry.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "ItemTypes.h"
#include "QtSeries.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

CCanvasGestures::CCanvasGestures(CCircuitEditor* editor, CCircuitEditorData* data)
    : m_editor(editor), d(data) {
    connect(editor, &CCircuitEditor::toolChanged, this, &CCanvasGestures::scheduleHint);
    connect(editor, &CCircuitEditor::selectionStateChanged, this, &CCanvasGestures::scheduleHint);
}

bool CCanvasGestures::press(QMouseEvent* event) {
    scheduleHint();
    if (startPan(event) || d->placement->press(event)) {
        return true;
    }
    m_pressedTerminal = nullptr;
    if (!m_on || event->button() != Qt::LeftButton || event->modifiers() != Qt::NoModifier ||
        d->readOnly || d->mode != CCircuitEditor::EditMode || !d->circuitSolver) {
        return false;
    }
    QGraphicsItem* item = d->itemAt(event->pos());
    if (item && item->type() == ElementNodeItemType) {
        m_pressedTerminal = item;
        m_pressPlace = event->pos();
    }
    return false;
}

bool CCanvasGestures::startPan(QMouseEvent* event) {
    if (!m_on || event->button() != Qt::MiddleButton) {
        return false;
    }
    m_middlePan = true;
    d->lastPanPos = QtSeries::globalPosition(*event);
    return true;
}

bool CCanvasGestures::move(QMouseEvent* event) {
    if (m_middlePan) {
        if (event->buttons() & Qt::MiddleButton) {
            m_editor->panTo(QtSeries::globalPosition(*event));
            return true;
        }
        m_middlePan = false;
    }
    if (d->placement->move(event)) {
        return true;
    }
    if (!m_on || d->selecting || d->panning) {
        return false;
    }
    if (m_pressedTerminal && event->buttons() & Qt::LeftButton &&
        (event->pos() - m_pressPlace).manhattanLength() >= QApplication::startDragDistance()) {
        startWire(event);
    }
    // The items would show cursors of their own.
    return d->mode == CCircuitEditor::ManualConnectionMode;
}

void CCanvasGestures::startWire(QMouseEvent* event) {
    QGraphicsItem* terminal = m_pressedTerminal;
    m_pressedTerminal = nullptr;
    m_editor->setMode(CCircuitEditor::ManualConnectionMode);
    m_draggingWire = true;
    m_singleWire = true;
    m_editor->manualClick(terminal, event->pos());
}

bool CCanvasGestures::release(QMouseEvent* event) {
    scheduleHint();
    if (event->button() == Qt::MiddleButton && m_middlePan) {
        m_middlePan = false;
        return true;
    }
    m_pressedTerminal = nullptr;
    if (d->placement->release(event)) {
        return true;
    }
    if (m_draggingWire && event->button() == Qt::LeftButton) {
        m_draggingWire = false;
        endDraggedWire(event);
        return true;
    }
    return false;
}

void CCanvasGestures::endDraggedWire(QMouseEvent* event) {
    if (d->mode != CCircuitEditor::ManualConnectionMode || !d->connectionStartItem) {
        return;
    }
    QGraphicsItem* item = d->itemAt(event->pos());
    const int type = item ? item->type() : 0;
    if (item == d->connectionStartItem) {
        m_editor->setMode(CCircuitEditor::EditMode);
    } else if (type == ElementNodeItemType || type == NodeItemType) {
        joinByDrag(item, m_editor->mapToScene(event->pos()));
    } else {
        // Let go on the way: the wire goes on, click by click.
        m_editor->manualClick(item, event->pos());
    }
}

QGraphicsItem* CCanvasGestures::jointOf(QGraphicsItem* item) const {
    const auto* terminal =
        m_on ? qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(item) : nullptr;
    const CCircuitEditorElementItem* element = terminal ? terminal->elementItem() : nullptr;
    for (int i = 0; element && i < element->circuitNodeItemCount(); ++i) {
        CCircuitEditorNodeItem* wire = element->circuitNodeItem(i);
        ICircuitNode* node = wire->circuitNode();
        for (int k = 0; k < node->elementNodeCount(); ++k) {
            if (node->elementNode(k) == terminal->elementNode()) {
                return wire;
            }
        }
    }
    return item;
}

void CCanvasGestures::joinByDrag(QGraphicsItem* end, const QPointF& place) {
    auto* terminal = static_cast<CCircuitEditorElementNodeItem*>(d->connectionStartItem);
    const QPointF from = terminal->mapToScene(QPointF());
    const QPointF to = end->type() == ElementNodeItemType ? end->mapToScene(QPointF())
                                                          : m_editor->snapToGrid(place);
    const int exit =
        CircuitGeometry::exitDirection(from, terminal->elementItem()->sceneBoundingRect());
    const bool isUpright = exit == CircuitGeometry::ExitUp || exit == CircuitGeometry::ExitDown;
    QPainterPath path(from);
    path.lineTo(isUpright ? QPointF(from.x(), to.y()) : QPointF(to.x(), from.y()));
    path.lineTo(to);

    QGraphicsItem* first = jointOf(terminal);
    QGraphicsItem* second = jointOf(end);
    const auto isLaid = [](QGraphicsItem* item) {
        const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
        return wire && wire->isManuallyConnected();
    };
    // Two nets become one that keeps both drawings, and so is never routed.
    const bool bothAreNets = first->type() == NodeItemType && second->type() == NodeItemType;
    const bool isDrawn = bothAreNets || isLaid(first) || isLaid(second);
    if (first != second) {
        ICircuitNode* node = d->makeConnection(first, second);
        if (CCircuitEditorNodeItem* wire = isDrawn ? m_editor->nodeItem(node) : nullptr) {
            wire->addShape(path, false);
        }
    }
    m_editor->setMode(CCircuitEditor::EditMode);
}

bool CCanvasGestures::doubleClick(QMouseEvent* event) {
    scheduleHint();
    // The first click of the two has put it down.
    return d->placement->isActive() || (m_on && event->button() == Qt::MiddleButton);
}

bool CCanvasGestures::keyPress(QKeyEvent* event) {
    scheduleHint();
    if (d->placement->keyPress(event)) {
        return true;
    }
    if (!m_on) {
        return false;
    }
    if (event->key() == Qt::Key_Escape) {
        return escape();
    }
    return event->key() == Qt::Key_Backspace && eraseBackward(event);
}

bool CCanvasGestures::claimsKey(const QKeyEvent* event) const {
    if (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) {
        return false;
    }
    if (d->placement->isActive()) {
        return CPlacementTool::isOwnKey(event->key());
    }
    const bool turns = event->key() == Qt::Key_R || event->key() == Qt::Key_F;
    return m_on && turns && (hasGroup() || (d->scene && !d->scene->selectedItems().isEmpty()));
}

bool CCanvasGestures::hasGroup() const {
    return d->selectionRectItem && d->selectionRectItem->isVisible();
}

bool CCanvasGestures::escape() {
    if (d->mode == CCircuitEditor::ManualConnectionMode) {
        const bool wasUnderWay = d->manualConnectorItem;
        d->dropConnection();
        if (!wasUnderWay || m_singleWire) {
            m_editor->setMode(CCircuitEditor::EditMode);
        }
        return true;
    }
    // A drag under way is the dragged item's to give up.
    if (!d->scene || d->scene->mouseGrabberItem()) {
        return false;
    }
    d->hideConnectionLine();
    d->dropConnection();
    m_editor->unhighlight();
    delete d->selectionRectItem;
    if (d->propertyEditor && m_editor->circuit()) {
        d->propertyEditor->setObject(m_editor->circuit()->containerObject(), false);
    }
    return true;
}

bool CCanvasGestures::eraseBackward(QKeyEvent* event) {
    if (d->mode == CCircuitEditor::ManualConnectionMode) {
        if (d->manualConnectorItem) {
            d->manualConnectorItem->removeLastPoint();
        }
        return true;
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, event->modifiers());
    QApplication::sendEvent(m_editor, &press);
    return true;
}

void CCanvasGestures::showModeCursor() {
    if (d->mode != CCircuitEditor::ManualConnectionMode) {
        m_singleWire = false;
        m_draggingWire = false;
    } else if (m_on) {
        m_editor->viewport()->setCursor(Qt::CrossCursor);
    }
    scheduleHint();
}

void CCanvasGestures::forgetItem(QGraphicsItem* item) {
    if (item == m_pressedTerminal) {
        m_pressedTerminal = nullptr;
    }
}

QString CCanvasGestures::hint() const {
    if (d->placement->isActive()) {
        return d->placement->hint();
    }
    if (d->readOnly) {
        return QStringLiteral("For reading only");
    }
    switch (d->mode) {
        case CCircuitEditor::OutVarSelectionMode:
            return QStringLiteral("Click a terminal, wire or element to list it, Esc ends");
        case CCircuitEditor::ManualConnectionMode:
            return d->connectionStartItem
                       ? QStringLiteral(
                             "Click each corner, then a terminal or wire; Backspace "
                             "takes a corner back, Esc gives up")
                       : QStringLiteral(
                             "Click the terminal or wire where the wire begins, Esc ends");
        case CCircuitEditor::EditMode:
            break;
    }
    if (hasGroup()) {
        return QStringLiteral("Drag the group, or move it by the arrow keys; Esc lets go");
    }
    const QList<QGraphicsItem*> selected =
        d->scene ? d->scene->selectedItems() : QList<QGraphicsItem*>();
    const bool isElement = !selected.isEmpty() && selected.first()->type() == ElementItemType;
    return isElement ? QStringLiteral("R turns, F flips, arrow keys move; Esc lets go")
                     : QStringLiteral("Drag pans, Ctrl and drag takes a group, W lays a wire");
}

void CCanvasGestures::scheduleHint() {
    if (!m_hintScheduled) {
        m_hintScheduled = true;
        QMetaObject::invokeMethod(this, &CCanvasGestures::tellHint, Qt::QueuedConnection);
    }
}

void CCanvasGestures::tellHint() {
    m_hintScheduled = false;
    const QString now = hint();
    if (now != m_hint) {
        m_hint = now;
        emit m_editor->toolHintChanged(now);
    }
}
