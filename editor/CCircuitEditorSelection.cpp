// Capture: from what is selected to the clipboard document.

#include "CCircuitEditorSelection.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelectionData.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CircuitGeometry.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ICircuitNode.h"
#include "IClipboard.h"
#include "IQObjectLoadSave.h"
#include "ItemTypes.h"
#include "RecordFields.h"
#include "TextStyles.h"
#include "XmlText.h"

#include <QApplication>
#include <QClipboard>
#include <QGraphicsScene>
#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>

using namespace RecordFields;

namespace {

// As many as a picture of 64 MB has; a larger one is scaled down to that.
constexpr double MostPixels = 16e6;

QDomDocument newDocument() {
    return QDomDocument(QStringLiteral("VortelGUICircuitEditor"));
}

QDomElement appendElement(QDomDocument document, QDomNode parent, const char* tag) {
    QDomElement element = document.createElement(QLatin1String(tag));
    parent.appendChild(element);
    return element;
}

/// A white picture of that size, in units, with what `paint` draws on it: that gets the painter and
/// the factor from units to pixels. Null for a size of nothing.
template <class Paint>
QIcon iconOf(const QSizeF& size, Paint paint) {
    const double factor =
        std::min(1.0, std::sqrt(MostPixels / std::max(1.0, size.width() * size.height())));
    QPixmap pixmap(CircuitGeometry::roundedInt(size.width() * factor),
                   CircuitGeometry::roundedInt(size.height() * factor));
    if (pixmap.isNull()) {
        return {};
    }
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    paint(&painter, factor);
    painter.end();
    return QIcon(pixmap);
}

QIcon iconOf(QGraphicsItem* item, const QWidget* widget) {
    const QRectF area = item->boundingRect();
    return iconOf(area.size(), [&](QPainter* painter, double factor) {
        QStyleOptionGraphicsItem option;
        option.initFrom(widget);
        option.rect = area.toAlignedRect();
        option.exposedRect = area;
        painter->scale(factor, factor);
        painter->translate(-area.topLeft());
        item->paint(painter, &option, nullptr);
    });
}

QIcon iconOf(QGraphicsScene* scene, const QRectF& area) {
    return iconOf(area.size(), [&](QPainter* painter, double) {
        painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                                QPainter::SmoothPixmapTransform);
        scene->render(painter, painter->viewport(), area, Qt::KeepAspectRatio);
    });
}

QRectF sceneRect(const QGraphicsItem* item) {
    return item->mapToScene(item->boundingRect()).boundingRect();
}

}  // namespace

CCircuitEditorSelection::CCircuitEditorSelection(CCircuitEditor* editor)
    : d(std::make_unique<CCircuitEditorSelectionData>()) {
    d->circuitEditor = editor;
}

CCircuitEditorSelection::~CCircuitEditorSelection() = default;

CCircuitEditor* CCircuitEditorSelection::circuitEditor() const {
    return d->circuitEditor;
}

IClipboard* CCircuitEditorSelection::clipboard() const {
    return d->circuitEditor->clipboard();
}

IQObjectLoadSave* CCircuitEditorSelection::qobjectLoadSave() const {
    return d->circuitEditor->qobjectLoadSave();
}

IXmlUtils* CCircuitEditorSelection::xmlUtils() const {
    return d->circuitEditor->xmlUtils();
}

ICircuit* CCircuitEditorSelection::circuit() const {
    return d->circuitEditor->circuit();
}

void CCircuitEditorSelection::reset() {
    d->clipboardText.clear();
    d->clipboardToolTip.clear();
    d->clipboardIcon = QIcon();
    const bool wasEmpty = d->itemList.isEmpty();
    d->elementList.clear();
    d->itemList.clear();
    d->textBoxList.clear();
    if (!wasEmpty) {
        emit d->circuitEditor->selectionStateChanged();
    }
}

void CCircuitEditorSelection::initFromItem(QGraphicsItem* item) {
    const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
    auto* textBox = qgraphicsitem_cast<CCircuitEditorTextBox*>(item);
    if (!elementItem && !textBox) {
        reset();
        return;
    }
    // Adds to the lists: dropping the selection is what empties them.
    QDomDocument document = newDocument();
    d->itemList.append(item);
    if (elementItem) {
        d->elementList.append(elementItem->element());
        d->saveElement(document, appendElement(document, document, "CircuitElement"), *elementItem);
        d->clipboardToolTip = elementItem->element()->desc()->label();
    } else {
        d->textBoxList.append(textBox);
        d->saveTextBox(document, appendElement(document, document, "TextBox"), *textBox);
    }
    d->clipboardText = document.toString(2);
    d->clipboardIcon = iconOf(item, d->circuitEditor);
    emit d->circuitEditor->selectionStateChanged();
}

void CCircuitEditorSelection::takeItems(const QList<QGraphicsItem*>& items) {
    reset();
    d->itemList = items;
    for (QGraphicsItem* item : items) {
        if (const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
            d->elementList.append(elementItem->element());
        } else if (auto* textBox = qgraphicsitem_cast<CCircuitEditorTextBox*>(item)) {
            d->textBoxList.append(textBox);
        }
    }
    emit d->circuitEditor->selectionStateChanged();
}

void CCircuitEditorSelection::initFromSelectionRect(const QRectF& rect) {
    reset();
    QGraphicsScene* scene = d->circuitEditor->scene();
    QList<QGraphicsItem*> items = scene->items(rect, Qt::IntersectsItemShape);
    // The rectangle that was drawn lies there, too.
    items.erase(std::remove_if(items.begin(), items.end(),
                               [this](const QGraphicsItem* item) {
                                   return d->circuitEditor->isSelectionRectangle(item);
                               }),
                items.end());
    initFromItems(items, rect);
}

void CCircuitEditorSelection::initFromGroup(const QList<QGraphicsItem*>& items) {
    reset();
    QList<QGraphicsItem*> all;
    QSet<QGraphicsItem*> wires;
    for (QGraphicsItem* item : items) {
        const auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item);
        for (int i = 0; element && i < element->circuitNodeItemCount(); ++i) {
            QGraphicsItem* wire = element->circuitNodeItem(i);
            if (!wires.contains(wire)) {
                wires.insert(wire);
                all.append(wire);
            }
        }
        if (item->type() != NodeItemType) {
            all.append(item);
        }
    }
    initFromItems(all, QRectF());
}

void CCircuitEditorSelection::initFromItems(const QList<QGraphicsItem*>& items, QRectF rect) {
    if (items.isEmpty()) {
        return;
    }
    QDomDocument document = newDocument();
    QDomElement root = appendElement(document, document, "CircuitElementGroup");
    // In this order: which nets are whole depends on the elements.
    d->captureElements(document, root, items);
    d->captureWholeNodes(document, root, items);
    d->captureTextBoxes(document, root, items);
    QRectF united;
    for (const QGraphicsItem* item : qAsConst(d->itemList)) {
        united = united | sceneRect(item);
    }
    // The lower left corner is what a paste puts at its point.
    setStoredPosition(root, united.bottomLeft());
    d->clipboardText = document.toString(1);
    d->clipboardIcon = iconOf(d->circuitEditor->scene(), rect.isNull() ? united : rect);
    d->clipboardToolTip =
        QStringLiteral("Group of %1 elements").arg(d->textBoxList.size() + d->elementList.size());
    emit d->circuitEditor->selectionStateChanged();
}

void CCircuitEditorSelectionData::captureElements(QDomDocument document, QDomElement root,
                                                  const QList<QGraphicsItem*>& items) {
    const QDomElement parent = appendElement(document, root, "CircuitElements");
    for (QGraphicsItem* item : items) {
        if (const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
            elementList.append(elementItem->element());
            itemList.append(item);
            saveElement(document, appendElement(document, parent, "CircuitElement"), *elementItem);
        }
    }
}

void CCircuitEditorSelectionData::captureWholeNodes(QDomDocument document, QDomElement root,
                                                    const QList<QGraphicsItem*>& items) {
    const QDomElement parent = appendElement(document, root, "CircuitNodes");
    const QSet<ICircuitElement*> captured(elementList.begin(), elementList.end());
    for (QGraphicsItem* item : items) {
        const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item);
        ICircuitNode* node = wire ? wire->circuitNode() : nullptr;
        bool isWhole = node;
        for (int i = 0; isWhole && i < node->elementNodeCount(); ++i) {
            isWhole = captured.contains(node->elementNode(i)->element());
        }
        if (isWhole) {
            itemList.append(item);
            saveNode(document, parent, node, circuitEditor->qobjectLoadSave());
        }
    }
}

void CCircuitEditorSelectionData::captureTextBoxes(QDomDocument document, QDomElement root,
                                                   const QList<QGraphicsItem*>& items) {
    const QDomElement parent = appendElement(document, root, "TextBoxes");
    for (QGraphicsItem* item : items) {
        if (auto* textBox = qgraphicsitem_cast<CCircuitEditorTextBox*>(item)) {
            textBoxList.append(textBox);
            itemList.append(item);
            saveTextBox(document, appendElement(document, parent, "TextBox"), *textBox);
        }
    }
}

void CCircuitEditorSelectionData::saveElement(QDomDocument document, QDomElement record,
                                              const CCircuitEditorElementItem& item) {
    ICircuitElement* element = item.element();
    if (IQObjectLoadSave* loadSave = circuitEditor->qobjectLoadSave()) {
        loadSave->save(element->containerObject(), document, record);
    }
    setStoredPosition(record, item.pos());
    record.setAttribute(QStringLiteral("Name"), xmlText(element->desc()->elementType()));
    copyElementPropertyTextBoxes(item, document, record);
}

void CCircuitEditorSelectionData::copyElementPropertyTextBoxes(
    const CCircuitEditorElementItem& item, QDomDocument document, QDomElement record) {
    for (const CCircuitElementPropertyTextBox* box : item.propertyTextBoxes()) {
        QDomElement boxRecord = appendElement(document, record, "EPTextBox");
        setStoredRect(boxRecord, QRectF(box->pos() - item.pos(), box->rect().size()));
        boxRecord.setAttribute(QStringLiteral("Property"), xmlText(box->propertyName()));
        if (circuitEditor->keepsTextStyles()) {
            TextStyles::store(boxRecord, *box);
        }
    }
}

void CCircuitEditorSelectionData::saveNode(QDomDocument document, QDomElement parent,
                                           ICircuitNode* node, IQObjectLoadSave* loadSave) {
    const CCircuitEditorNodeItem* item = circuitEditor->nodeItem(node);
    QDomElement record = appendElement(document, parent, "CircuitNode");
    record.setAttribute(QStringLiteral("Name"), xmlText(node->name()));
    for (int i = 0; i < node->elementNodeCount(); ++i) {
        ICircuitElementNode* terminal = node->elementNode(i);
        QDomElement terminalRecord = appendElement(document, record, "ElementNode");
        terminalRecord.setAttribute(QStringLiteral("Name"), xmlText(terminal->name()));
        terminalRecord.setAttribute(QStringLiteral("ParentElement"),
                                    xmlText(terminal->element()->name()));
    }
    setStoredPosition(record, item->pos());
    if (item->isManuallyConnected()) {
        const QDomElement shape = appendElement(document, record, "Shape");
        const QPainterPath path = item->internalShape();
        for (int i = 0; i < path.elementCount(); ++i) {
            const QPainterPath::Element at = path.elementAt(i);
            QDomElement point = appendElement(document, shape, "ShapeElement");
            point.setAttribute(QStringLiteral("Type"), static_cast<int>(at.type));
            setStoredPosition(point, QPointF(std::floor(at.x), std::floor(at.y)));
        }
    }
    if (loadSave) {
        loadSave->save(node->containerObject(), document, record);
    }
}

void CCircuitEditorSelectionData::saveTextBox(QDomDocument document, QDomElement record,
                                              const CCircuitEditorTextBox& box) {
    setStoredRect(record, QRectF(box.pos(), box.rect().size()));
    const QFont font = box.defaultFont();
    record.setAttribute(QStringLiteral("FontFamily"), xmlText(font.family()));
    // A box's font has its size in pixels, under the number that was given as points.
    record.setAttribute(QStringLiteral("FontSize"),
                        font.pointSize() > 0 ? font.pointSize() : font.pixelSize());
    setStoredColors(record, box);
    if (circuitEditor->keepsTextStyles()) {
        TextRuns::store(document, record, box.runs());
    }
    const QString text = xmlText(box.text());
    // Nothing but blanks isn't read back from between tags.
    if (!text.isEmpty() && text.trimmed().isEmpty()) {
        appendCData(document, record, text);
    } else {
        record.appendChild(document.createTextNode(text));
    }
}

void CCircuitEditorSelection::copy() {
    IClipboard* service = clipboard();
    if (!service) {
        return;
    }
    service->addData({d->clipboardIcon, d->clipboardText, d->clipboardToolTip});
    QApplication::clipboard()->setText(d->clipboardText, QClipboard::Clipboard);
}

void CCircuitEditorSelection::cut() {
    copy();
    erase();
}

void CCircuitEditorSelection::erase() {
    // One deletion may take others along, and empties the capture; an item may be listed twice.
    QList<QPointer<CCircuitEditorTextBox>> boxes;
    for (CCircuitEditorTextBox* box : qAsConst(d->textBoxList)) {
        boxes.append(box);
    }
    const QList<ICircuitElement*> elements = d->elementList;
    for (const QPointer<CCircuitEditorTextBox>& box : qAsConst(boxes)) {
        delete box;
    }
    for (ICircuitElement* element : elements) {
        if (d->circuitEditor->elementItem(element)) {
            element->circuit()->removeElement(element);
        }
    }
    if (!boxes.isEmpty()) {
        emit d->circuitEditor->projectPartModified();
    }
    reset();
}

void CCircuitEditorSelection::forgetItem(QGraphicsItem* item) {
    d->pastedItemList.removeAll(item);
    if (d->itemList.removeAll(item) == 0) {
        return;
    }
    if (const auto* elementItem = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
        d->elementList.removeAll(elementItem->element());
    } else if (auto* textBox = qgraphicsitem_cast<CCircuitEditorTextBox*>(item)) {
        d->textBoxList.removeAll(textBox);
    }
    if (d->itemList.isEmpty()) {
        emit d->circuitEditor->selectionStateChanged();
    }
}

QString CCircuitEditorSelection::clipboardText() const {
    return d->clipboardText;
}

QString CCircuitEditorSelection::clipboardToolTip() const {
    return d->clipboardToolTip;
}

QIcon CCircuitEditorSelection::clipboardIcon() const {
    return d->clipboardIcon;
}

QList<QGraphicsItem*> CCircuitEditorSelection::itemList() const {
    return d->itemList;
}

QList<ICircuitElement*> CCircuitEditorSelection::elementList() const {
    return d->elementList;
}

QList<QGraphicsItem*> CCircuitEditorSelection::pastedItemList() const {
    return d->pastedItemList;
}
