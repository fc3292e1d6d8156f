// How the editor reads the pointer: modes, presses, drags, wires laid by hand, hover and wheel.

#include "CCanvasGestures.h"
#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CElementCreateCmd.h"
#include "CManualConnectorLineItem.h"
#include "CPlacementTool.h"
#include "CSelectionRectangleItem.h"
#include "CUndoRedo.h"
#include "CircuitGeometry.h"
#include "HistoryStep.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitNode.h"
#include "IElementBasicParametersDesc.h"
#include "ItemTypes.h"
#include "QtSeries.h"

#include <Plexa/DataStore.h>

#include <QGraphicsLineItem>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWidgetAction>

#include <cstdlib>

namespace {

/// Heads a group of entries in a menu.
void addHeading(QMenu& menu, const QString& text) {
    auto* label = new QLabel(text, &menu);
    label->setFrameShape(QFrame::Box);
    label->setMargin(5);
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setItalic(true);
    label->setFont(font);
    auto* heading = new QWidgetAction(&menu);
    heading->setDefaultWidget(label);
    menu.addAction(heading);
}

}  // namespace

CCircuitEditor::Mode CCircuitEditor::mode() const {
    return d->mode;
}

void CCircuitEditor::setMode(Mode mode) {
    if (mode == d->mode) {
        return;
    }
    d->placement->stop();
    d->mode = mode;
    if (mode == OutVarSelectionMode) {
        viewport()->setCursor(Qt::CrossCursor);
    } else {
        viewport()->unsetCursor();
    }
    d->dropConnection();
    d->gestures->showModeCursor();
    emit editorModeChanged(mode);
}

QGraphicsItem* CCircuitEditorData::itemAt(const QPoint& viewportPos) {
    const QPointF point = circuitEditor->mapToScene(viewportPos);
    for (QGraphicsItem* item : circuitEditor->items(viewportPos)) {
        if (item->contains(item->mapFromScene(point))) {
            return item;
        }
    }
    return nullptr;
}

QPoint CCircuitEditor::roundedScenePosition(const QPoint& viewportPos) const {
    return CircuitGeometry::roundedPoint(mapToScene(viewportPos));
}

void CCircuitEditor::mousePressEvent(QMouseEvent* event) {
    if (d->gestures->press(event) || event->button() != Qt::LeftButton || !d->scene) {
        return;
    }
    beginHistoryGesture();
    unhighlight();
    d->selecting = false;
    if (event->modifiers() & Qt::ControlModifier) {
        startSelectionRectangle(mapToScene(event->pos()));
        return;
    }
    QGraphicsItem* item = d->itemAt(event->pos());
    if (d->selectionRectItem) {
        if (item == d->selectionRectItem) {
            QGraphicsView::mousePressEvent(event);
            return;
        }
        delete d->selectionRectItem;
    }
    if (!item) {
        pressOnCanvas(event->pos());
    } else {
        pressOnItem(event, item);
    }
}

void CCircuitEditor::startSelectionRectangle(const QPointF& corner) {
    d->selecting = true;
    d->isPasteSelected = false;
    d->selectionStart = corner;
    d->selectionEnd = corner;
    if (!d->selectionRectItem) {
        d->selectionRectItem = new CSelectionRectangleItem(this);
    }
    d->selectionRectItem->setRect(QRectF(d->selectionStart, d->selectionEnd).normalized());
    d->selectionRectItem->setVisible(true);
    if (d->propertyEditor && circuit()) {
        d->propertyEditor->setObject(circuit()->containerObject(), false);
    }
}

void CCircuitEditor::pressOnCanvas(const QPoint& viewportPos) {
    if (d->mode == ManualConnectionMode) {
        manualClick(nullptr, viewportPos);
        return;
    }
    d->connectionStartItem = nullptr;
    if (d->mode == OutVarSelectionMode) {
        return;
    }
    if (d->propertyEditor && circuit()) {
        QObject* object = circuit()->containerObject();
        d->propertyEditor->setObject(object, false);
        d->lastPropertyObject = object;
    }
    d->panning = true;
    d->lastPanPos = QCursor::pos();
}

void CCircuitEditor::pressOnItem(QMouseEvent* event, QGraphicsItem* item) {
    const int type = item->type();
    if (d->mode == EditMode && type == ElementNodeItemType) {
        return;
    }
    if (type == TextBoxItemType || type == ElementPropertyTextBoxItemType) {
        QGraphicsView::mousePressEvent(event);
        return;
    }
    if (type == NodeItemType || type == ElementItemType) {
        item->setSelected(true);
        if (d->readOnly) {
            return;
        }
    }
    switch (d->mode) {
        case OutVarSelectionMode:
            pickOutputVariable(item);
            break;
        case ManualConnectionMode:
            manualClick(item, event->pos());
            break;
        case EditMode:
            d->connectionStartItem = nullptr;
            if (type == NodeItemType) {
                const QPointF point = mapToScene(event->pos());
                d->connectionStartItem = item;
                d->conItem()->setLine(QLineF(point, point));
                d->conItem()->setVisible(true);
            } else if (type == ElementItemType) {
                QGraphicsView::mousePressEvent(event);
            }
            break;
    }
}

void CCircuitEditor::mouseMoveEvent(QMouseEvent* event) {
    if (d->gestures->move(event) || (d->readOnly && !d->panning) || !d->scene) {
        return;
    }
    if (d->selecting) {
        if (!d->selectionRectItem) {
            d->selecting = false;  // the rectangle was deleted meanwhile
            return;
        }
        d->selectionEnd = mapToScene(event->pos());
        d->selectionRectItem->setRect(QRectF(d->selectionStart, d->selectionEnd).normalized());
        return;
    }
    if (!d->selectionRectItem || QGraphicsView::itemAt(event->pos()) != d->selectionRectItem) {
        if (d->panning) {
            panTo(QCursor::pos());
            return;
        }
        if (d->mode == OutVarSelectionMode) {
            return;
        }
        if (d->mode != ManualConnectionMode && d->connectionStartItem) {
            QLineF line = d->conItem()->line();
            line.setP2(mapToScene(event->pos()));
            d->conItem()->setLine(line);
        }
    }
    QGraphicsView::mouseMoveEvent(event);
}

void CCircuitEditor::panTo(const QPoint& pointer) {
    const QPoint step = d->lastPanPos - pointer;
    d->lastPanPos = pointer;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + step.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + step.y());
}

void CCircuitEditor::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<CCircuitEditor> self(this);
    const bool isLast = event->button() == Qt::LeftButton;
    answerRelease(event);
    // What the release has led to may have taken the editor along.
    if (self && isLast) {
        endHistoryGesture();
    }
}

void CCircuitEditor::answerRelease(QMouseEvent* event) {
    if (d->gestures->release(event) || !d->scene) {
        return;
    }
    const bool wasPanning = d->panning;
    if (d->selecting && (wasPanning || !d->readOnly)) {
        closeSelectionRectangle();
        return;
    }
    if (wasPanning) {
        d->panning = false;
        return;
    }
    if (d->readOnly || d->mode == OutVarSelectionMode) {
        releaseGrabber(event);
        return;
    }
    QGraphicsView::mouseReleaseEvent(event);
    if (d->mode != ManualConnectionMode) {
        releaseConnection(event);
    }
}

void CCircuitEditor::releaseGrabber(QMouseEvent* event) {
    // An item that took the press is let go of, or it would take the next one, too.
    QGraphicsItem* grabber = d->scene->mouseGrabberItem();
    auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(grabber);
    if (element && d->readOnly) {
        // A double click gave it the press. With the release it would snap and connect.
        element->ungrabMouse();
        element->setCursor2(element->circuitNodeItemCount() > 0 ? Qt::ArrowCursor
                                                                : Qt::OpenHandCursor);
        d->scene->forgetDrag();
    } else if (grabber) {
        QGraphicsView::mouseReleaseEvent(event);
    }
}

void CCircuitEditor::closeSelectionRectangle() {
    d->selecting = false;
    if (d->selectionRectItem) {
        d->selection->initFromSelectionRect(d->selectionRectItem->rect());
        d->selectionRectItem->setItemList(d->selection->itemList());
    }
}

void CCircuitEditor::releaseConnection(QMouseEvent* event) {
    d->hideConnectionLine();
    QGraphicsItem* start = d->connectionStartItem;
    d->connectionStartItem = nullptr;
    d->connectionEndItem = nullptr;
    if (!d->circuitSolver || !start) {
        emit canvasClickEvent(canvas(), roundedScenePosition(event->pos()), event->button(),
                              event->modifiers());
        return;
    }
    QGraphicsItem* end = d->itemAt(event->pos());
    const bool isEnd = end && (end->type() == ElementNodeItemType || end->type() == NodeItemType);
    if (isEnd && end != start) {
        d->makeConnection(start, end);
    }
}

void CCircuitEditor::mouseDoubleClickEvent(QMouseEvent* event) {
    const HistoryStep step(this);
    if (d->gestures->doubleClick(event) || d->mode == ManualConnectionMode) {
        return;
    }
    if (d->mode == OutVarSelectionMode) {
        QMessageBox::information(this, QStringLiteral("Error"),
                                 QStringLiteral("Cannot create new items in \"Add Variable\" mode"),
                                 QMessageBox::Ok);
        return;
    }
    ICircuit* bound = circuit();
    if (!d->elementExplorer || !d->circuitElementFactory || !bound) {
        return;
    }
    if (isStudy()) {
        // A picture of another circuit: its boxes have no dialogs, and nothing is added.
        return;
    }
    if (d->itemAt(event->pos())) {
        QGraphicsView::mouseDoubleClickEvent(event);
        return;
    }
    ICircuitElement* element =
        d->circuitElementFactory->createElement(d->elementExplorer->selectedElementName());
    if (!element) {
        return;
    }
    insertElement(element, mapToScene(event->pos()));
    emit canvasDoubleClickEvent(canvas(), roundedScenePosition(event->pos()), event->button(),
                                event->modifiers());
}

void CCircuitEditor::insertElement(ICircuitElement* element, const QPointF& point) {
    const QPointer<QObject> guard(element->containerObject());
    circuit()->addElement(element);
    if (!guard) {
        return;
    }
    if (CCircuitEditorElementItem* item = elementItem(element)) {
        item->setPos(point);
        snapToGrid(item);
    }
    d->undoStack->push(new CElementCreateCmd(element));
    if (d->captionNewElements) {
        captionNewElement(element);
    }
}

void CCircuitEditor::pickOutputVariable(QGraphicsItem* item) {
    const QPointer<CCircuitEditor> self(this);
    d->connectionStartItem = item;
    if (const auto* terminal = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(item)) {
        emit outvarSelected(terminal->elementItem()->element(), terminal->elementNode());
    } else if (const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item)) {
        emit outvarSelected(wire->circuitNode());
    } else if (const auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
        pickElementVariable(element->element());
    }
    if (self) {
        d->connectionStartItem = nullptr;
    }
}

void CCircuitEditor::pickElementVariable(ICircuitElement* element) {
    void* answer = nullptr;
    element->desc()->queryInterface(QStringLiteral("IElementBasicParametersDesc"), &answer);
    auto* parameters = static_cast<IElementBasicParametersDesc*>(answer);
    if (!parameters) {
        return;
    }
    QMenu menu;
    const auto addGroup = [&menu](const QString& heading, const QStringList& names) {
        if (!names.isEmpty()) {
            addHeading(menu, heading);
        }
        for (const QString& name : names) {
            menu.addAction(name);
        }
    };
    addGroup(QStringLiteral("Output Variables"), parameters->outputVariables().keys());
    addGroup(QStringLiteral("Output AC Variables"), parameters->outputACVariables().keys());
    addGroup(QStringLiteral("Real Parameters"), parameters->realParameters().keys());
    if (menu.isEmpty()) {
        return;
    }
    const QPointer<CCircuitEditor> self(this);
    connect(this, &CCircuitEditor::editorModeChanged, &menu, &QMenu::close);
    QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the picking may be over, the editor or the element gone.
    if (self && d->mode == OutVarSelectionMode && chosen && !qobject_cast<QWidgetAction*>(chosen) &&
        elementItem(element)) {
        emit outvarSelected(element, chosen->text());
    }
}

void CCircuitEditor::manualClick(QGraphicsItem* item, const QPoint& viewportPos) {
    const int type = item ? item->type() : 0;
    const bool isEnd = type == ElementNodeItemType || type == NodeItemType;
    if (!isEnd && !d->connectionStartItem) {
        return;
    }
    const QPointF point = type == ElementNodeItemType ? item->mapToScene(QPointF(0, 0))
                                                      : snapToGrid(mapToScene(viewportPos));
    if (!d->connectionStartItem) {
        d->connectionStartItem = item;
        d->manualConnectorItem = new CManualConnectorLineItem(d->scene);
        d->manualConnectorItem->setEditor(this);
        d->manualConnectorItem->addPoint(point);
        d->manualConnectorItem->show();
    } else if (!d->connectionEndItem && d->manualConnectorItem) {
        d->manualConnectorItem->addPoint(point);
        updateViewport();
        d->manualConnectorItem->show();
        if (isEnd) {
            finishManualConnection(item);
        }
    }
}

void CCircuitEditor::finishManualConnection(QGraphicsItem* end) {
    QGraphicsItem* start = d->gestures->jointOf(d->connectionStartItem);
    end = d->gestures->jointOf(end);
    d->connectionEndItem = end;
    const bool bothTerminals =
        start->type() == ElementNodeItemType && end->type() == ElementNodeItemType;
    if (!bothTerminals) {
        QGraphicsItem* wire = start->type() == NodeItemType ? start : end;
        static_cast<CCircuitEditorNodeItem*>(wire)->setManuallyConnected(true);
    }
    // Joining may delete the ends, and with them ends the gesture: the path is taken first.
    const QPainterPath path = d->manualConnectorItem->path();
    ICircuitNode* node = d->makeConnection(start, end);
    if (CCircuitEditorNodeItem* item = nodeItem(node)) {
        item->addShape(bothTerminals ? item->mapFromScene(path) : path, bothTerminals);
    }
    d->dropConnection();
    if (!d->gestures->goesOnLaying()) {
        setMode(EditMode);
    }
}

bool CCircuitEditor::isSelectionRectangle(const QGraphicsItem* item) const {
    return item && item == d->selectionRectItem;
}

bool CCircuitEditor::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && d &&
        d->gestures->claimsKey(static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
        // The view would look for the next focus first, among items and widgets.
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    if (d && d->statusLabel) {
        if (event->type() == QEvent::HoverLeave) {
            d->statusLabel->setText(QString());
        } else if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove) {
            const QPointF place =
                mapToScene(QtSeries::position(*static_cast<QHoverEvent*>(event)).toPoint());
            const int grid = CircuitGeometry::gridStep(d->gridSize);
            d->statusLabel->setText(QStringLiteral("%1, %2")
                                        .arg(CircuitGeometry::truncatedInt(place.x()) / grid)
                                        .arg(-(CircuitGeometry::truncatedInt(place.y()) / grid)));
        }
    }
    return QGraphicsView::event(event);
}

void CCircuitEditor::wheelEvent(QWheelEvent* event) {
    // The longer way of a wheel that turns in two directions.
    const QPoint angle = event->angleDelta();
    const int delta = std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
    if (delta < 1) {
        zoomOut();
    } else {
        zoomIn();
    }
}
