// Construction, state and collaborators of the editor.

#include "CCircuitEditor.h"

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CPlacementTool.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "ConnectedDrag.h"
#include "ICircuitElementNode.h"

#include <QLabel>

CCircuitEditor::CCircuitEditor(QWidget* parent)
    : QGraphicsView(parent), d(std::make_unique<CCircuitEditorData>(this, parent)) {
    d->scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    for (QWidget* widget : {viewport(), static_cast<QWidget*>(this)}) {
        widget->setAcceptDrops(true);
        widget->setAutoFillBackground(true);
    }
    setAttribute(Qt::WA_Hover);
    setScene(d->scene);
    connect(d->scene, SIGNAL(changed(QList<QRectF>)), this, SLOT(on_scene_changed()));
    // The scene belongs to the widget that the editor was made for, and may go first: with nothing
    // to draw on, the editor lets go of the circuit.
    connect(d->scene, &QObject::destroyed, this, [this] {
        d->connectorLineItem = nullptr;
        if (d->boundCircuit) {
            QObject::disconnect(d->boundCircuit, nullptr, this, nullptr);
        }
    });
    setSceneRect(-4000, -4000, 8000, 8000);
    d->scene->setSceneRect(-4000, -4000, 8000, 8000);
    setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                   QPainter::SmoothPixmapTransform);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MouseTracking);
    d->undoStack = new CUndoRedoStack(this);
    connect(d->undoStack, &CUndoRedoStack::canUndoChanged, this, &CCircuitEditor::canUndoChanged);
    connect(d->undoStack, &CUndoRedoStack::canRedoChanged, this, &CCircuitEditor::canRedoChanged);
}

CCircuitEditor::~CCircuitEditor() {
    // Items and commands reach the data while they die, so they go before it; the model is left as
    // it is, for it belongs to others.
    if (d->boundCircuit) {
        QObject::disconnect(d->boundCircuit, nullptr, this, nullptr);
    }
    d->completeHistory.reset();
    delete d->undoStack;
    d->undoStack = nullptr;
    if (d->scene) {
        QObject::disconnect(d->scene, nullptr, this, nullptr);
    }
    d->deleteItems();
    if (d->scene && !d->scene->parent()) {
        delete d->scene;
    }
}

int CCircuitEditor::gridSize() const {
    return d->gridSize;
}

void CCircuitEditor::setGridSize(int size) {
    d->gridSize = size;
}

QColor CCircuitEditor::gridColor() const {
    return d->gridColor;
}

void CCircuitEditor::setGridColor(const QColor& color) {
    if (color != d->gridColor) {
        d->gridColor = color;
        updateViewport();
    }
}

QColor CCircuitEditor::crosshairColor() const {
    return d->crosshairColor;
}

void CCircuitEditor::setCrosshairColor(const QColor& color) {
    if (color != d->crosshairColor) {
        d->crosshairColor = color;
        updateViewport();
    }
}

int CCircuitEditor::darkGridColorPercent() const {
    return d->darkGridColorPercent;
}

void CCircuitEditor::setDarkGridColorPercent(int percent) {
    if (percent != d->darkGridColorPercent) {
        d->darkGridColorPercent = percent;
        updateViewport();
    }
}

QString CCircuitEditor::defaultPSPath() const {
    return d->defaultPSPath;
}

void CCircuitEditor::setDefaultPSPath(const QString& path) {
    d->defaultPSPath = path;
}

void CCircuitEditor::setGridColorRGB(int red, int green, int blue) {
    setGridColor(QColor(red, green, blue));
}

void CCircuitEditor::setBackgroundColorRGB(int red, int green, int blue) {
    d->backgroundColor = QColor(red, green, blue);
    updateViewport();
}

void CCircuitEditor::setCrosshairColorRGB(int red, int green, int blue) {
    setCrosshairColor(QColor(red, green, blue));
}

void CCircuitEditor::setEditorSize(int size) {
    const int corner = -(size / 2);
    const QRectF area(corner, corner, size, size);
    d->scene->setSceneRect(area);
    setSceneRect(area);
}

void CCircuitEditor::setGridLineType(const QString& type) {
    d->gridLineType = type;
    updateViewport();
}

void CCircuitEditor::setGridType(const QString& type) {
    d->gridType = type;
    updateViewport();
}

void CCircuitEditor::setTextBoxDefaultSize(int width, int height) {
    d->textBoxDefaultWidth = width;
    d->textBoxDefaultHeight = height;
}

bool CCircuitEditor::isRouteEmptyShapes() const {
    return d->routeEmptyShapes;
}

void CCircuitEditor::setRouteEmptyShapes(bool on) {
    d->routeEmptyShapes = on;
}

CUndoRedoStack* CCircuitEditor::undoStack() const {
    return d->undoStack;
}

QLabel* CCircuitEditor::statusLabel() const {
    if (!d->statusLabel) {
        d->statusLabel = new QLabel;
        d->statusLabel->setFixedWidth(80);
        d->statusLabel->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
        d->statusLabel->setFrameStyle(int(QFrame::StyledPanel) | int(QFrame::Sunken));
    }
    return d->statusLabel;
}

void CCircuitEditor::setInternalMove(bool on) {
    d->internalMove = on;
}

bool CCircuitEditor::isInternalMove() const {
    return d->internalMove;
}

void CCircuitEditor::forgetItem(QGraphicsItem* item) {
    d->forgetItem(item);
}

void CCircuitEditor::itemSelected(QGraphicsItem*) {}

QGraphicsView* CCircuitEditor::graphicsView() {
    return this;
}

QGraphicsScene* CCircuitEditor::graphicsScene() {
    return d->scene;
}

ICanvas* CCircuitEditor::canvas() {
    return this;
}

int CCircuitEditor::typeOfItem(QGraphicsItem* item) const {
    switch (item ? item->type() : 0) {
        case CCircuitEditorElementItem::Type:
            return 1;
        case CCircuitEditorElementNodeItem::Type:
            return 2;
        case CCircuitEditorNodeItem::Type:
            return 3;
        default:
            return 0;
    }
}

ICircuitElement* CCircuitEditor::elementFromItem(QGraphicsItem* item) const {
    const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
    return elementItem ? elementItem->element() : nullptr;
}

ICircuitElementNode* CCircuitEditor::elementNodeFromItem(QGraphicsItem* item) const {
    const auto* terminalItem = qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(item);
    return terminalItem ? terminalItem->elementNode() : nullptr;
}

ICircuitNode* CCircuitEditor::circuitNodeFromItem(QGraphicsItem* item) const {
    const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
    return wire ? wire->circuitNode() : nullptr;
}

QGraphicsItem* CCircuitEditor::itemFor(ICircuitElement* element) {
    return elementItem(element);
}

QGraphicsItem* CCircuitEditor::itemFor(ICircuitElementNode* elementNode) {
    const CCircuitEditorElementItem* item =
        elementNode ? elementItem(elementNode->element()) : nullptr;
    return item ? item->nodeItem(elementNode) : nullptr;
}

QGraphicsItem* CCircuitEditor::itemFor(ICircuitNode* node) {
    return nodeItem(node);
}

CCircuitEditorElementItem* CCircuitEditor::elementItem(ICircuitElement* element) const {
    return d->elementItemMap.value(element);
}

CCircuitEditorNodeItem* CCircuitEditor::nodeItem(ICircuitNode* node) const {
    return d->nodeItemMap.value(node);
}

void CCircuitEditor::setQObjectLoadSave(IQObjectLoadSave* service) {
    d->qobjectLoadSave = service;
}

IQObjectLoadSave* CCircuitEditor::qobjectLoadSave() const {
    return d->qobjectLoadSave;
}

void CCircuitEditor::setMathUtils(IMathUtils* service) {
    d->mathUtils = service;
}

IMathUtils* CCircuitEditor::mathUtils() const {
    return d->mathUtils;
}

void CCircuitEditor::setClipboard(IClipboard* clipboard) {
    d->clipboard = clipboard;
}

IClipboard* CCircuitEditor::clipboard() const {
    return d->clipboard;
}

void CCircuitEditor::setPropertyEditor(IPropertyEditor* editor) {
    IPropertyEditor* old = d->propertyEditor;
    if (editor == old) {
        return;
    }
    if (old) {
        QObject::disconnect(old->containerObject(), nullptr, this, nullptr);
    }
    d->propertyEditor = editor;
    if (editor) {
        connect(editor->containerObject(),
                SIGNAL(propertyValueChanged(QObject*, QString, QVariant, QVariant)), this,
                SLOT(on_propertyValueChanged(QObject*, QString, QVariant, QVariant)));
    }
}

IPropertyEditor* CCircuitEditor::propertyEditor() const {
    return d->propertyEditor;
}

ICircuitSolver* CCircuitEditor::circuitSolver() const {
    return d->circuitSolver;
}

ICircuit* CCircuitEditor::circuit() const {
    return d->circuitSolver ? d->circuitSolver->circuit() : nullptr;
}

void CCircuitEditor::setCircuitElementFactory(ICircuitElementFactory* factory) {
    d->circuitElementFactory = factory;
}

ICircuitElementFactory* CCircuitEditor::circuitElementFactory() const {
    return d->circuitElementFactory;
}

void CCircuitEditor::setElementExplorer(IElementExplorer* explorer) {
    d->elementExplorer = explorer;
}

IElementExplorer* CCircuitEditor::elementExplorer() const {
    return d->elementExplorer;
}

void CCircuitEditor::setXmlUtils(IXmlUtils* service) {
    d->xmlUtils = service;
}

IXmlUtils* CCircuitEditor::xmlUtils() const {
    return d->xmlUtils;
}

void CCircuitEditor::setReadOnly(bool readOnly) {
    d->placement->stop();
    d->readOnly = readOnly;
}

bool CCircuitEditor::isReadOnly() const {
    return d->readOnly;
}
