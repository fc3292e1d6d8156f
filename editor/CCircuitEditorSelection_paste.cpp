// Paste: from a clipboard document to new elements, nets and text boxes.

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorSelection.h"
#include "CCircuitEditorSelectionData.h"
#include "CCircuitEditorTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementFactory.h"
#include "ICircuitNode.h"
#include "ICircuitSolver.h"
#include "IClipboard.h"
#include "IEditableProperties.h"
#include "IQObjectLoadSave.h"
#include "IXmlUtils.h"
#include "QtSeriesXml.h"
#include "RecordFields.h"
#include "TextStyles.h"
#include "XmlText.h"

#include <QApplication>
#include <QClipboard>
#include <QGraphicsItem>
#include <QPointer>

using namespace RecordFields;

namespace {

constexpr int SystemClipboard = -2;
// Deeper than any document of the editor. One that is far deeper would overflow the stack as it is
// parsed, and as it is freed.
constexpr int DeepestDocument = 100;

int pastEnd(const QString& text, const char* end, int from) {
    const int found = text.indexOf(QLatin1String(end), from);
    return found < 0 ? text.size() : found + static_cast<int>(qstrlen(end));
}

/// The place behind a tag, whose quoted values may hold its end.
int pastTag(const QString& text, int from) {
    QChar quote;
    for (int i = from; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!quote.isNull()) {
            quote = c == quote ? QChar() : quote;
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('>')) {
            return i + 1;
        }
    }
    return text.size();
}

/// Whether tags open within tags too often, or might do so by entities. Nothing else is judged:
/// what the text is worth as XML its parser alone says.
bool isTooDeep(const QString& text) {
    int depth = 0;
    for (int at = text.indexOf(QLatin1Char('<')); at >= 0;
         at = text.indexOf(QLatin1Char('<'), at)) {
        const QStringView rest = QStringView(text).mid(at);
        if (rest.startsWith(QLatin1String("<!--"))) {
            at = pastEnd(text, "-->", at + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            at = pastEnd(text, "]]>", at);
        } else if (rest.startsWith(QLatin1String("<?"))) {
            at = pastEnd(text, "?>", at);
        } else {
            const int start = at;
            at = pastTag(text, start);
            const QStringView tag = QStringView(text).mid(start, at - start);
            if (tag.startsWith(QLatin1String("</"))) {
                --depth;
            } else if (tag.startsWith(QLatin1String("<!"))) {
                if (tag.contains(QLatin1Char('['))) {
                    return true;
                }
            } else if (!tag.endsWith(QLatin1String("/>"))) {
                ++depth;
            }
            if (depth > DeepestDocument) {
                return true;
            }
        }
    }
    return false;
}

/// What the text holds of a clipboard document: it may be any text, of any size. Of one that breaks
/// off, or that is no XML from some place on, this is what stands before.
QDomDocument readDocument(const QString& text) {
    QDomDocument document;
    const bool isForUs =
        text.contains(QLatin1String("<CircuitElement")) || text.contains(QLatin1String("<TextBox"));
    const QString allowed = isForUs ? xmlText(text) : QString();
    if (!isTooDeep(allowed)) {
        QtSeries::readXml(&document, allowed);
    }
    return document;
}

QList<QDomElement> children(const QDomElement& parent, const char* tag) {
    QList<QDomElement> result;
    for (QDomElement child = parent.firstChildElement(QLatin1String(tag)); !child.isNull();
         child = child.nextSiblingElement(QLatin1String(tag))) {
        result.append(child);
    }
    return result;
}

/// The element's properties named "Nodes", by index.
QMap<int, QVariant> nodesProperties(IEditableProperties* properties) {
    QMap<int, QVariant> result;
    for (int i = 0; properties && i < properties->propertyCount(); ++i) {
        if (properties->propertyName(i) == QLatin1String("Nodes")) {
            result.insert(i, properties->propertyValue(i));
        }
    }
    return result;
}

}  // namespace

QRectF CCircuitEditorSelection::paste(int index) {
    return paste(QPointF(0, 0), index);
}

QRectF CCircuitEditorSelection::paste(const QPointF& pos, int index) {
    d->pasteElementMap.clear();
    d->pastedItemList.clear();
    return clipboard() ? d->pasteDocument(documentToPaste(index), &pos, {}) : QRectF();
}

QRectF CCircuitEditorSelection::repeat(const QString& text, const QPointF& step) {
    d->pasteElementMap.clear();
    d->pastedItemList.clear();
    return d->pasteDocument(readDocument(text), nullptr, step);
}

QRectF CCircuitEditorSelection::pasteText(const QPointF& pos, const QString& text) {
    d->pasteElementMap.clear();
    d->pastedItemList.clear();
    return d->pasteDocument(readDocument(text), &pos, {});
}

QDomDocument CCircuitEditorSelection::documentOf(const QString& text) {
    return readDocument(text);
}

QRectF CCircuitEditorSelectionData::pasteDocument(const QDomDocument& document, const QPointF* pos,
                                                  const QPointF& step) {
    const QDomElement root = document.documentElement();
    if (root.isNull()) {
        return {};
    }
    const CCircuitEditor* editor = circuitEditor;
    const QPointF offset = editor->snapToGrid(pos ? *pos - boundedPosition(root) : step);
    if (root.tagName() == QLatin1String("CircuitElement")) {
        pasteElement(document, root, editor->circuit(), editor->qobjectLoadSave(),
                     editor->circuitElementFactory());
    } else if (root.tagName() == QLatin1String("TextBox")) {
        pasteTextBox(document, root, editor->circuit(), editor->qobjectLoadSave(),
                     editor->circuitElementFactory());
    } else {
        pasteGroup(document, root);
    }
    return movePasted(offset);
}

QDomDocument CCircuitEditorSelection::documentToPaste(int index) const {
    return clipboard() ? readDocument(d->textToPaste(index)) : QDomDocument();
}

QString CCircuitEditorSelectionData::textToPaste(int index) const {
    const QClipboard* system = QApplication::clipboard();
    IClipboard* service = circuitEditor->clipboard();
    const int count = service->dataCount();
    QString text;
    if (index != SystemClipboard && count > 0) {
        text = service->data(index >= 0 && index < count ? index : 0).data.toString();
    }
    return text.isEmpty() ? system->text(QClipboard::Clipboard) : text;
}

void CCircuitEditorSelectionData::pasteGroup(QDomDocument document, QDomElement root) {
    ICircuit* circuit = circuitEditor->circuit();
    IQObjectLoadSave* loadSave = circuitEditor->qobjectLoadSave();
    ICircuitElementFactory* factory = circuitEditor->circuitElementFactory();
    const auto group = [&root](const char* name, const char* tag) {
        return children(root.firstChildElement(QLatin1String(name)), tag);
    };
    // Elements first: the nets refer to them.
    for (const QDomElement& record : group("CircuitElements", "CircuitElement")) {
        pasteElement(document, record, circuit, loadSave, factory);
    }
    for (const QDomElement& record : group("CircuitNodes", "CircuitNode")) {
        pasteNode(document, record, circuit, loadSave, circuitEditor->xmlUtils());
    }
    for (const QDomElement& record : group("TextBoxes", "TextBox")) {
        pasteTextBox(document, record, circuit, loadSave, factory);
    }
}

void CCircuitEditorSelectionData::pasteElement(QDomDocument document, QDomElement record,
                                               ICircuit* circuit, IQObjectLoadSave* loadSave,
                                               ICircuitElementFactory* factory) {
    if (!circuit || !loadSave || !factory) {
        return;
    }
    ICircuitElement* element = factory->createElement(record.attribute(QStringLiteral("Name")));
    if (!element) {
        return;
    }
    circuit->addElement(element);
    CCircuitEditorElementItem* item = circuitEditor->elementItem(element);
    if (item) {
        pastedItemList.append(item);
        item->setPos(boundedPosition(record));
        circuitEditor->snapToGrid(item);
    }
    // Everything is taken from the document but what makes the element this one: its name, its
    // caption and the nets that it is on.
    QObject* object = element->containerObject();
    const QString newName = element->name();
    const QString newCaption = element->caption();
    auto* properties = qobject_cast<IEditableProperties*>(object);
    const QMap<int, QVariant> nodes = nodesProperties(properties);
    loadSave->load(object, document, record);
    pasteElementMap.insert(element->caption(), element);
    if (element->name() != newName) {
        object->setProperty("Name", newName);
    }
    element->setCaption(newCaption);
    for (auto it = nodes.begin(); it != nodes.end(); ++it) {
        properties->setPropertyValue(it.key(), it.value());
    }
    if (item) {
        pasteElementPropertyTextBoxes(item, record);
    }
}

void CCircuitEditorSelectionData::pasteElementPropertyTextBoxes(CCircuitEditorElementItem* item,
                                                                QDomElement record) {
    for (const QDomElement& boxRecord : children(record, "EPTextBox")) {
        auto* box = new CCircuitElementPropertyTextBox(circuitEditor);
        box->setRect(storedRect(boxRecord).translated(item->pos()));
        if (circuitEditor->keepsTextStyles()) {
            TextStyles::apply(boxRecord, box);
        }
        box->setElementProperty(item->element(), boxRecord.attribute(QStringLiteral("Property")));
    }
}

ICircuitElementNode* CCircuitEditorSelectionData::pastedTerminal(const QDomElement& record) const {
    ICircuitElement* element =
        pasteElementMap.value(record.attribute(QStringLiteral("ParentElement")));
    return element ? element->elementNode(record.attribute(QStringLiteral("Name"))) : nullptr;
}

void CCircuitEditorSelectionData::pasteNode(QDomDocument document, QDomElement record,
                                            ICircuit* circuit, IQObjectLoadSave* loadSave,
                                            IXmlUtils* xmlUtils) {
    if (!circuit || !loadSave || !xmlUtils) {
        return;
    }
    const QList<QDomElement> terminals =
        xmlUtils->findElements(record, QStringLiteral("ElementNode"));
    ICircuitSolver* solver = circuit->circuitSolver();
    if (terminals.size() < 2 || !solver) {
        return;
    }
    ICircuitElementNode* first = pastedTerminal(terminals.at(0));
    ICircuitElementNode* second = pastedTerminal(terminals.at(1));
    ICircuitNode* node = first && second ? solver->makeConnection(first, second) : nullptr;
    if (!node) {
        return;
    }
    // A solver may merge the other way, and free the node.
    const QPointer<QObject> guard(node->containerObject());
    for (int i = 2; i < terminals.size() && guard; ++i) {
        if (ICircuitElementNode* terminal = pastedTerminal(terminals.at(i))) {
            solver->makeConnection(terminal, node);
        }
    }
    if (!guard) {
        return;
    }
    const QString newName = node->name();
    loadSave->load(node->containerObject(), document, record);
    node->setName(newName);
    const QPainterPath path =
        storedPath(children(record.firstChildElement(QStringLiteral("Shape")), "ShapeElement"),
                   boundedPosition);
    if (CCircuitEditorNodeItem* item = circuitEditor->nodeItem(node)) {
        pastedItemList.append(item);
        if (!path.isEmpty() || !circuitEditor->isRouteEmptyShapes()) {
            item->addShape(path, true);
        }
        item->setPos(boundedPosition(record));
        item->updateNode();
    }
}

void CCircuitEditorSelectionData::pasteTextBox(QDomDocument, QDomElement record, ICircuit* circuit,
                                               IQObjectLoadSave* loadSave,
                                               ICircuitElementFactory* factory) {
    if (!circuit || !loadSave || !factory) {
        return;
    }
    QFont font;
    font.setFamily(record.attribute(QStringLiteral("FontFamily")));
    bool isNumber = false;
    const int size = record.attribute(QStringLiteral("FontSize")).toInt(&isNumber);
    font.setPointSize(isNumber && size > 0 ? size : QApplication::font().pointSize());
    CCircuitEditorTextBox* box = circuitEditor->addTextBox(storedRect(record));
    box->setDefaultFont(font);
    box->setText(record.text());
    if (circuitEditor->keepsTextStyles()) {
        box->setRuns(TextRuns::stored(record));
    }
    applyStoredColors(record, box);
    pastedItemList.append(box);
}

QRectF CCircuitEditorSelectionData::movePasted(const QPointF& offset) {
    QRectF bounds;
    circuitEditor->setInternalMove(true);
    for (QGraphicsItem* item : QList<QGraphicsItem*>(pastedItemList)) {
        item->setPos(item->pos() + offset);
        circuitEditor->touchHistory(item);  // a wire doesn't tell
    }
    CCircuitEditorNodeItem::updateWiresOf(pastedItemList);
    circuitEditor->setInternalMove(false);
    for (const QGraphicsItem* item : qAsConst(pastedItemList)) {
        bounds = bounds | item->mapToScene(item->boundingRect()).boundingRect();
    }
    return bounds;
}
