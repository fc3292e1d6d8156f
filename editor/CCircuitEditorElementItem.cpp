// The element item as a holder of data and a painter.

#include "CCircuitEditorElementItem.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItemData.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CircuitGeometry.h"
#include "ConnectedMove.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "ICircuitElementVisual.h"
#include "QtSeries.h"
#include "SvgPicture.h"

#include <QBitmap>
#include <QCursor>
#include <QGraphicsScene>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>

#include <utility>

namespace {

constexpr double Angles[] = {0.0, 90.0, 180.0, 270.0};

// Single-precision constants, widened.
constexpr double SelectionAlpha = 0.30000001192092896;
constexpr double SelectionStop = 0.6000000238418579;

}  // namespace

CCircuitEditorElementItem::CCircuitEditorElementItem(CCircuitEditor* editor)
    : QObject(editor), d(std::make_unique<CCircuitEditorElementItemData>()) {
    d->circuitEditor = editor;
    static const QPen sharedPen = QtSeries::hairline();
    setPen(sharedPen);
    editor->scene()->addItem(this);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemSendsGeometryChanges);
    setZValue(1000);
    setCursor2(Qt::OpenHandCursor);
    setAcceptHoverEvents(true);
}

CCircuitEditorElementItem::~CCircuitEditorElementItem() {
    auto* editor = qobject_cast<CCircuitEditor*>(parent());
    if (editor && d->moved) {
        for (CCircuitEditorNodeItem* wire : QList<CCircuitEditorNodeItem*>(d->circuitNodeItems)) {
            wire->setManuallyConnected(false);
        }
    }
    for (CCircuitEditorNodeItem* wire : qAsConst(d->circuitNodeItems)) {
        wire->setHeldBy(this, false);
    }
    // The list first: a box would take itself out of it.
    for (CCircuitElementPropertyTextBox* box : std::exchange(d->propertyTextBoxes, {})) {
        box->forgetElementItem();
        delete box;
    }
    // The terminal items go before the data, which they look at.
    qDeleteAll(d->elementNodeItemMap);
    d->elementNodeItemMap.clear();
    if (editor) {
        editor->forgetItem(this);
    }
}

ICircuitElement* CCircuitEditorElementItem::element() const {
    return d->element;
}

CCircuitEditor* CCircuitEditorElementItem::circuitEditor() const {
    return d->circuitEditor;
}

CCircuitEditorElementNodeItem* CCircuitEditorElementItem::nodeItem(
    ICircuitElementNode* elementNode) const {
    return elementNode ? nodeItem(elementNode->name()) : nullptr;
}

CCircuitEditorElementNodeItem* CCircuitEditorElementItem::nodeItem(const QString& name) const {
    return d->elementNodeItemMap.value(name);
}

void CCircuitEditorElementItem::clearElement() {
    const double g = CircuitGeometry::gridStep(d->circuitEditor->gridSize());
    d->pixmap = QPixmap();
    qDeleteAll(d->elementNodeItemMap);
    d->elementNodeItemMap.clear();
    setToolTip(QString());
    setRect(-g, -g, 2 * g, 2 * g);
    QObject::disconnect(d->element->containerObject(), nullptr, this, nullptr);
}

void CCircuitEditorElementItem::setElement(ICircuitElement* element) {
    if (element == d->element) {
        return;
    }
    if (d->element) {
        clearElement();
    }
    d->element = element;
    d->renderer = nullptr;
    if (!element) {
        return;
    }
    for (const QString& name : element->elementNodeNames()) {
        if (d->elementNodeItemMap.contains(name)) {
            continue;
        }
        auto* terminal = new CCircuitEditorElementNodeItem(this);
        terminal->setElementNode(element->elementNode(name));
        terminal->setCursor(Qt::ArrowCursor);
        terminal->setVisible(true);
        d->elementNodeItemMap.insert(name, terminal);
    }
    connect(element->containerObject(), SIGNAL(assignedModelChanged()), this,
            SLOT(slotAssignedModelChanged()), Qt::QueuedConnection);
    reloadElement();
}

void CCircuitEditorElementItem::reloadElement() {
    if (!d->element) {
        return;
    }
    const QMap<QString, QPointF> oldPlaces = ConnectedMove::terminalPlaces(this);
    ICircuitElementVisual* visual = d->element->visual();
    d->renderer = visual->renderer();
    d->pixmap = visual->pixmap();
    if (!d->renderer && !d->pixmap.isNull()) {
        d->pixmap.setMask(d->pixmap.createMaskFromColor(Qt::white, Qt::MaskInColor));
    }
    update(QRectF());
    const QSizeF size = d->renderer ? d->renderer->viewBoxF().size() : QSizeF(d->pixmap.size());
    const QPointF offset = visual->pictureOffset();
    setRect(-size.width() * 0.5 + offset.x(), -size.height() * 0.5 + offset.y(), size.width(),
            size.height());
    QTransform rotation;
    rotation.rotate(Angles[d->element->rotation()], Qt::ZAxis);
    // Most are not rotated, and need no room for a transform then.
    if (rotation != transform()) {
        setTransform(rotation, false);
    }
    updateToolTip();
    for (CCircuitEditorElementNodeItem* terminal : qAsConst(d->elementNodeItemMap)) {
        terminal->reloadNode();
    }
    updateCircuitNodes();
    ConnectedMove::followTerminals(this, oldPlaces);
}

void CCircuitEditorElementItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option,
                                      QWidget*) {
    if (d->circuitEditor && !d->circuitEditor->hasTurnInPicture()) {
        return;
    }
    QRectF frame = boundingRect();
    if (!d->renderer) {
        painter->drawPixmap(frame.topLeft(), d->pixmap);
    } else {
        const QRectF box = d->renderer->viewBoxF();
        painter->translate(frame.x() - box.x(), frame.y() - box.y());
        frame = box;
        if (!d->renderer->isValid()) {
            qWarning("%s:Invalid renderer state",
                     "virtual void CCircuitEditorElementItem::paint(QPainter*, const "
                     "QStyleOptionGraphicsItem*, QWidget*)");
            return;
        }
        painter->save();
        painter->translate(box.x() + box.width() * 0.5, box.y() + box.height() * 0.5);
        switch (d->element->flip()) {
            case 1:
                painter->scale(1.0, -1.0);
                break;
            case 2:
                painter->scale(-1.0, 1.0);
                break;
            default:
                break;
        }
        if (SvgPicture* picture = SvgPicture::under(painter)) {
            picture->drawSymbol(painter, d->renderer);
        } else {
            d->renderer->render(painter, box);
        }
        painter->restore();
    }
    if (isSelected()) {
        paintSelection(painter, option, frame);
    }
}

void CCircuitEditorElementItem::paintSelection(QPainter* painter,
                                               const QStyleOptionGraphicsItem* option,
                                               const QRectF& frame) const {
    QColor edge = option->palette.brush(QPalette::Current, QPalette::Highlight).color();
    QColor middle = option->palette.brush(QPalette::Current, QPalette::Light).color();
    edge.setAlphaF(SelectionAlpha);
    middle.setAlphaF(SelectionAlpha);
    QLinearGradient gradient(frame.x(), frame.y(), frame.x(), frame.y() + frame.height());
    gradient.setColorAt(0, edge);
    gradient.setColorAt(SelectionStop, middle);
    gradient.setColorAt(1.0, edge);
    painter->fillRect(frame, gradient);
    edge.setAlphaF(1.0);
    painter->setPen(
        QPen(QBrush(edge, Qt::SolidPattern), 1.0, Qt::DashLine, Qt::SquareCap, Qt::BevelJoin));
    painter->drawRects(&frame, 1);
    painter->setPen(Qt::black);
}

void CCircuitEditorElementItem::setCursor2(const QCursor& cursor) {
    if (hasCursor()) {
        unsetCursor();
    }
    setCursor(cursor);
}

void CCircuitEditorElementItem::addCircuitNodeItem(CCircuitEditorNodeItem* item) {
    forgetNets();
    if (!item || d->circuitNodeItems.contains(item)) {
        return;
    }
    d->circuitNodeItems.append(item);
    item->setHeldBy(this, true);
    setCursor2(Qt::ArrowCursor);
}

void CCircuitEditorElementItem::removeCircuitNodeItem(CCircuitEditorNodeItem* item) {
    forgetNets();
    if (d->circuitNodeItems.removeAll(item) > 0) {
        item->setHeldBy(this, false);
    }
    if (d->circuitNodeItems.isEmpty()) {
        setCursor2(Qt::OpenHandCursor);
    }
}

int CCircuitEditorElementItem::circuitNodeItemCount() const {
    return d->circuitNodeItems.size();
}

CCircuitEditorNodeItem* CCircuitEditorElementItem::circuitNodeItem(int index) const {
    return d->circuitNodeItems.value(index);
}

void CCircuitEditorElementItem::forgetNets() {
    for (CCircuitEditorElementNodeItem* terminal : qAsConst(d->elementNodeItemMap)) {
        terminal->forgetNets();
    }
}

void CCircuitEditorElementItem::updateCircuitNodes() {
    for (int i = 0; i < d->circuitNodeItems.size(); ++i) {
        d->circuitNodeItems.at(i)->updateNode();
    }
}

void CCircuitEditorElementItem::setInternalMoveMode(bool on) {
    d->internalMoveMode = on;
}

bool CCircuitEditorElementItem::isInternalMoveMode() const {
    return d->internalMoveMode;
}

void CCircuitEditorElementItem::slotAssignedModelChanged() {
    updateToolTip();
}
