// What the element item does when it is moved, selected or pointed at.

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CCircuitEditorElementConfigDialog.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementItemData.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CElementMoveCmd.h"
#include "CUndoRedo.h"
#include "CircuitGeometry.h"
#include "ConnectedDrag.h"
#include "ElementCaptions.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitSolver.h"
#include "InterfacePointer.h"
#include "MoveDialog.h"

#include <QDesktopServices>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QUrl>

#include <cmath>

namespace {

constexpr double SamePosition = 1e-12;
// The segment, in item coordinates, that stands for a connection made at a drop.
const QPointF DropStub(0.1, 0.1);

bool differ(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) > SamePosition || std::abs(a.y() - b.y()) > SamePosition;
}

/// Of an element that a listener may have taken away.
void keepCaptionsClear(const QPointer<CCircuitEditorElementItem>& item) {
    if (item) {
        ElementCaptions::keepClear({item});
    }
}

/// What a terminal was dropped on: a terminal, or else a wire and its net.
struct DropTarget {
    InterfacePointer<ICircuitElementNode> terminal;
    CCircuitEditorNodeItem* wire;
    ICircuitNode* node;
};

/// To be taken down while all of them live: a connection can dissolve nets, whose wires then go.
QList<DropTarget> dropTargets(const QList<QGraphicsItem*>& items,
                              const CCircuitEditorElementNodeItem* dropped) {
    QList<DropTarget> targets;
    for (QGraphicsItem* item : items) {
        const auto* end = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(item);
        auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
        if (end && end != dropped) {
            targets.append({end->elementNode(), nullptr, nullptr});
        } else if (wire) {
            targets.append({nullptr, wire, wire->circuitNode()});
        }
    }
    return targets;
}

}  // namespace

bool CCircuitEditorElementItem::isLocked() const {
    // The main editor's flag counts for items of every editor.
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const CCircuitEditor* mainEditor = component ? component->circuitEditor() : nullptr;
    if (!mainEditor) {
        mainEditor = d->circuitEditor;
    }
    return !d->internalMoveMode && !mainEditor->isInternalMove() && !d->circuitNodeItems.isEmpty();
}

void CCircuitEditorElementItem::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    if (ConnectedDrag* drag = ConnectedDrag::of(d->circuitEditor)) {
        drag->press(this, event);
        setCursor2(Qt::ClosedHandCursor);
        return;
    }
    if (isLocked()) {
        return;
    }
    d->oldPos = pos();
    d->newPos = pos();
    QGraphicsRectItem::mousePressEvent(event);
    setCursor2(Qt::ClosedHandCursor);
}

void CCircuitEditorElementItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (ConnectedDrag* drag = ConnectedDrag::of(d->circuitEditor)) {
        drag->move(event);
        return;
    }
    if (isLocked()) {
        setCursor2(Qt::ForbiddenCursor);
        return;
    }
    QGraphicsRectItem::mouseMoveEvent(event);
}

void CCircuitEditorElementItem::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    if (ConnectedDrag* drag = ConnectedDrag::of(d->circuitEditor)) {
        // A question about nets may run its own event loop.
        const QPointer<CCircuitEditorElementItem> self(this);
        setCursor2(Qt::OpenHandCursor);
        drag->release();
        if (self) {
            tellClick(event);
        }
        return;
    }
    if (isLocked()) {
        setCursor2(Qt::ArrowCursor);
        return;
    }
    setCursor2(Qt::OpenHandCursor);
    QGraphicsRectItem::mouseReleaseEvent(event);
    const QPointer<CCircuitEditorElementItem> self(this);
    if (d->moved) {
        finishDrag();
    }
    // The model may answer a drop by taking the element away.
    if (!self) {
        return;
    }
    d->moved = false;
    tellClick(event);
}

void CCircuitEditorElementItem::tellClick(const QGraphicsSceneMouseEvent* event) {
    emit d->circuitEditor->elementClickEvent(d->element,
                                             CircuitGeometry::roundedPoint(event->pos()),
                                             event->button(), event->modifiers());
}

void CCircuitEditorElementItem::finishDrag() {
    updateCircuitNodes();
    d->newPos = pos();
    if (differ(d->oldPos, d->newPos)) {
        // The command holds the position from before the snap, which isn't recorded.
        d->circuitEditor->undoStack()->push(new CElementMoveCmd(this, d->oldPos, d->newPos));
        d->oldPos = QPointF();
        d->newPos = QPointF();
    }
    d->circuitEditor->snapToGrid(this);
    joinWhatItLiesOn();
}

void CCircuitEditorElementItem::joinWhatItLiesOn() {
    if (d->circuitEditor->movesConnectedElements()) {
        ConnectedMove(d->circuitEditor, {this}).settle();
        return;
    }
    const QPointer<CCircuitEditorElementItem> self(this);
    for (const QString& name : d->elementNodeItemMap.keys()) {
        if (self && d->elementNodeItemMap.contains(name)) {
            connectAtDrop(d->elementNodeItemMap.value(name));
        }
    }
}

void CCircuitEditorElementItem::connectAtDrop(CCircuitEditorElementNodeItem* terminal) {
    const QPointF place = mapToScene(terminal->pos());
    QPainterPath stub(place);
    stub.lineTo(mapToScene(terminal->pos() + DropStub));
    const QPointer<CCircuitEditor> editor(d->circuitEditor);
    const QPointer<CCircuitEditorElementItem> self(this);
    ICircuitElementNode* own = terminal->elementNode();
    for (const DropTarget& target : dropTargets(scene()->items(place), terminal)) {
        ICircuitSolver* solver = editor && self ? editor->circuitSolver() : nullptr;
        if (!solver) {
            return;
        }
        if (editor->itemFor(target.terminal.get())) {
            ICircuitNode* node = solver->makeConnection(target.terminal, own);
            if (CCircuitEditorNodeItem* wire = editor->nodeItem(node)) {
                wire->addShape(wire->mapFromScene(stub), true);
            }
        } else if (target.wire && editor->nodeItem(target.node) == target.wire &&
                   solver->makeConnection(own, target.node) &&
                   editor->nodeItem(target.node) == target.wire) {
            target.wire->addShape(stub, false);
        }
    }
}

void CCircuitEditorElementItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsRectItem::mouseDoubleClickEvent(event);
    emit d->circuitEditor->elementDoubleClickEvent(d->element,
                                                   CircuitGeometry::roundedPoint(event->pos()),
                                                   event->button(), event->modifiers());
}

void CCircuitEditorElementItem::keyPressEvent(QKeyEvent* event) {
    if (!isSelected()) {
        return;
    }
    const bool isFine = event->modifiers() & Qt::ControlModifier;
    const bool isFast =
        d->circuitEditor->movesConnectedElements() && (event->modifiers() & Qt::ShiftModifier);
    const double step =
        (isFine ? 1 : d->circuitEditor->gridSize()) * (isFast ? ConnectedMove::FastFactor : 1);
    QObject* object = d->element->containerObject();
    const QPointer<CCircuitEditorElementItem> self(this);
    switch (event->key()) {
        case Qt::Key_F:
            object->setProperty("Flip", (d->element->flip() + 1) % 3);
            keepCaptionsClear(self);
            break;
        case Qt::Key_R:
            object->setProperty("Rotation", (d->element->rotation() + 1) % 4);
            keepCaptionsClear(self);
            break;
        case Qt::Key_F1:
            showHelpFile();
            break;
        case Qt::Key_Left:
            moveByCommand({-step, 0});
            break;
        case Qt::Key_Up:
            moveByCommand({0, -step});
            break;
        case Qt::Key_Right:
            moveByCommand({step, 0});
            break;
        case Qt::Key_Down:
            moveByCommand({0, step});
            break;
        case Qt::Key_Delete:
            // Deletes this item: nothing may follow.
            d->circuitEditor->on_removeElementRequest(d->element);
            return;
        default:
            QGraphicsRectItem::keyPressEvent(event);
            break;
    }
}

void CCircuitEditorElementItem::moveByCommand(const QPointF& step) {
    const QPointF position = pos() + step;
    if (differ(position, pos())) {
        d->circuitEditor->undoStack()->push(new CElementMoveCmd(this, pos(), position));
    }
    if (ConnectedMove::moveBy(d->circuitEditor, {this}, step)) {
        return;
    }
    setPos(position);
    d->moved = true;
    updateCircuitNodes();
}

void CCircuitEditorElementItem::setHoverCursor() {
    setCursor2(d->circuitEditor->mode() == CCircuitEditor::ManualConnectionMode
                   ? Qt::ArrowCursor
                   : Qt::OpenHandCursor);
}

QColor CCircuitEditorElementItem::hoveredBoxColor() {
    return QColor(QStringLiteral("lightsteelblue"));
}

void CCircuitEditorElementItem::setBoxBackgrounds(const QColor& color) {
    for (CCircuitElementPropertyTextBox* box : qAsConst(d->propertyTextBoxes)) {
        if (d->circuitEditor->keepsTextStyles()) {
            box->setHighlight(color.alpha() > 0 ? color : QColor());
        } else {
            box->setBackgroundColor(color);
        }
    }
}

void CCircuitEditorElementItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event) {
    QGraphicsRectItem::hoverEnterEvent(event);
    setHoverCursor();
    setBoxBackgrounds(hoveredBoxColor());
}

void CCircuitEditorElementItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
    QGraphicsRectItem::hoverMoveEvent(event);
    setHoverCursor();
}

void CCircuitEditorElementItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event) {
    QGraphicsRectItem::hoverLeaveEvent(event);
    setCursor2(Qt::OpenHandCursor);
    setBoxBackgrounds(Qt::transparent);
}

void CCircuitEditorElementItem::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
    const QPointer<CCircuitEditorElementItem> self(this);
    const QPointer<QWidget> parent(event->widget());
    ICircuitElement* element = d->element;
    CCircuitEditor* editor = d->circuitEditor;
    QMenu menu;
    const QAction* outputVariables = menu.addAction(QStringLiteral("Output Variables"));
    QAction* remove = menu.addAction(QStringLiteral("Delete Element"));
    remove->setShortcut(QKeySequence::Delete);
    QAction* help = menu.addAction(QStringLiteral("%1 Help").arg(element->desc()->elementType()));
    help->setShortcut(QKeySequence::HelpContents);
    QAction* move = menu.addAction(QStringLiteral("Move Element"));
    move->setEnabled(d->circuitNodeItems.isEmpty() || editor->movesConnectedElements());
    const bool isSubCircuit =
        element->desc()->category() == ICircuitElementDesc::SubCircuitCategory;
    QAction* study = menu.addAction(QStringLiteral("Study Element"));
    study->setEnabled(isSubCircuit);
    QAction* addBoxes = menu.addAction(QStringLiteral("Add default property text boxes"));
    addBoxes->setEnabled(!isSubCircuit);
    const QAction* addCaption = menu.addAction(QStringLiteral("Add Caption"));
    menu.addSeparator();
    emit editor->elementContextMenuEvent(element, &menu, event->modifiers());
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the item may be gone.
    if (!chosen || !self) {
        return;
    }
    if (chosen == outputVariables) {
        showOutputVariables();
    } else if (chosen == remove) {
        editor->on_removeElementRequest(element);
    } else if (chosen == help) {
        showHelpFile();
    } else if (chosen == move) {
        askForMove(parent);
    } else if (chosen == study) {
        studySubCircuit();
    } else if (chosen == addBoxes) {
        createElementPropertyTextBoxesForDisplayProperties();
    } else if (chosen == addCaption) {
        createElementPropertyTextBoxForCaptionProperty();
    }
}

void CCircuitEditorElementItem::showOutputVariables() {
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<CCircuitEditorElementConfigDialog> dialog(
        new CCircuitEditorElementConfigDialog(d->circuitEditor));
    dialog->setCircuitElement(d->element);
    dialog->exec();
    delete dialog;
}

void CCircuitEditorElementItem::askForMove(QWidget* parent) {
    const QPointer<CCircuitEditorElementItem> self(this);
    const std::optional<QPoint> distance =
        askForDistance(parent, QStringLiteral("Move %1").arg(d->element->caption()));
    if (self && distance) {
        moveByCommand(QPointF(*distance) * d->circuitEditor->gridSize());
    }
}

void CCircuitEditorElementItem::showHelpFile() {
    const QString type = d->element->desc()->elementType();
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const QString file = component ? component->helpFileForElement(type) : QString();
    if (file.isEmpty()) {
        QMessageBox::information(d->circuitEditor, QStringLiteral("No help found"),
                                 QStringLiteral("No help was found for element %1").arg(type),
                                 QMessageBox::Ok);
    } else {
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    }
}

void CCircuitEditorElementItem::putBack(const QPointF& position) {
    const bool wasMoved = d->moved;
    const bool wasInternal = d->internalMoveMode;
    d->internalMoveMode = true;
    setPos(position);
    d->internalMoveMode = wasInternal;
    d->moved = wasMoved;
    updateCircuitNodes();
}

QVariant CCircuitEditorElementItem::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemPositionChange) {
        if (isLocked()) {
            return pos();
        }
        d->moved = true;
        d->circuitEditor->touchHistory(this);
        updateCircuitNodes();
        emit d->circuitEditor->projectPartModified();
        emit moved(value.toPointF() - pos());
    } else if (change == ItemSelectedChange && d->circuitEditor) {
        if (value.toBool()) {
            d->circuitEditor->on_elementSelected(d->element);
            emit d->circuitEditor->elementSelected(d->element);
            scene()->setFocusItem(this, Qt::OtherFocusReason);
        } else {
            emit d->circuitEditor->elementUnselected(d->element);
            clearFocus();
        }
    }
    return QGraphicsRectItem::itemChange(change, value);
}

void CCircuitEditorElementItem::updateToolTip() {
    if (!d->element) {
        return;
    }
    QString text = QStringLiteral(
                       "<font size=\"+1\"><b><font color=\"red\">%1</font></b> (<b><i><font "
                       "color=\"blue\">%2</font></i></b>)</font><br>")
                       .arg(d->element->name(), d->element->desc()->label());
    const QString model = d->element->modelName();
    if (!model.isEmpty()) {
        text += QStringLiteral("<b>Model: </b> %1<br>").arg(model);
        QString file;
        ICircuit* circuit = d->element->circuit();
        const int count = circuit ? circuit->modelCount() : 0;
        for (int i = 0; i < count; ++i) {
            if (circuit->modelName(i) == model) {
                file = circuit->modelFile(i);
                break;
            }
        }
        text += QStringLiteral("<b>Model File: </b> %1<br>").arg(file);
    }
    setToolTip(text);
    for (CCircuitEditorNodeItem* wire : qAsConst(d->circuitNodeItems)) {
        wire->updateToolTip();
    }
}
