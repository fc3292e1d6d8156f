#include "PastePlacement.h"

#include "CCircuitEditorData.h"
#include "CCircuitEditorSelection.h"
#include "CElementPlacementItem.h"
#include "ICircuitElement.h"
#include "ICircuitElementFactory.h"
#include "IQObjectLoadSave.h"
#include "RecordFields.h"

#include <QDomDocument>
#include <QGraphicsObject>
#include <QPainter>

using namespace RecordFields;

namespace {

// Over whatever it is held above.
constexpr double StackingOrder = 2000;
constexpr double Opacity = 0.6;
constexpr int NoEntry = -1;

/// Wires and the frames of texts, and what holds the pictures of elements together. Nothing on the
/// canvas finds it under the pointer.
class Outlines : public QGraphicsObject {
public:
    void add(const QPainterPath& path) {
        prepareGeometryChange();
        m_path.addPath(path);
    }
    QRectF boundingRect() const override { return m_path.boundingRect().adjusted(-2, -2, 2, 2); }
    QPainterPath shape() const override { return {}; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) override {
        if (widget) {  // else a picture, not the screen
            painter->setPen(QPen(QColor(120, 120, 120), 2.0));
            painter->drawPath(m_path);
        }
    }

private:
    QPainterPath m_path;
};

QList<QDomElement> records(const QDomElement& root, const char* group, const char* tag) {
    const QString name = QLatin1String(tag);
    if (root.tagName() == name) {
        return {root};
    }
    QList<QDomElement> result;
    for (QDomElement record = root.firstChildElement(QLatin1String(group)).firstChildElement(name);
         !record.isNull(); record = record.nextSiblingElement(name)) {
        result.append(record);
    }
    return result;
}

}  // namespace

PastePlacement::PastePlacement(CCircuitEditor* editor, int index)
    : m_editor(editor), m_index(index) {}

std::unique_ptr<PastePlacement> PastePlacement::create(CCircuitEditor* editor, int index) {
    std::unique_ptr<PastePlacement> load(new PastePlacement(editor, index));
    const QDomDocument document = editor->d->selection->documentToPaste(index);
    return load->show(document) ? std::move(load) : nullptr;
}

std::unique_ptr<PastePlacement> PastePlacement::createCopy(CCircuitEditor* editor,
                                                           const QString& text) {
    std::unique_ptr<PastePlacement> load(new PastePlacement(editor, NoEntry));
    load->m_text = text;
    return load->show(CCircuitEditorSelection::documentOf(text)) ? std::move(load) : nullptr;
}

PastePlacement::~PastePlacement() {
    delete m_pictures;
    for (const QPointer<QObject>& element : qAsConst(m_elements)) {
        delete element;
    }
}

bool PastePlacement::show(QDomDocument document) {
    const QDomElement root = document.documentElement();
    m_anchor = boundedPosition(root);
    auto* outlines = new Outlines;
    m_pictures = outlines;
    m_pictures->setZValue(StackingOrder);
    m_pictures->setOpacity(Opacity);
    m_pictures->setVisible(false);
    m_editor->d->scene->addItem(m_pictures);
    for (const QDomElement& record : records(root, "CircuitElements", "CircuitElement")) {
        showElement(document, record);
    }
    for (const QDomElement& record : records(root, "CircuitNodes", "CircuitNode")) {
        showWire(record);
    }
    for (const QDomElement& record : records(root, "TextBoxes", "TextBox")) {
        showTextBox(record);
    }
    return m_count > 0;
}

void PastePlacement::showElement(QDomDocument document, const QDomElement& record) {
    ICircuitElementFactory* factory = m_editor->circuitElementFactory();
    IQObjectLoadSave* loadSave = m_editor->qobjectLoadSave();
    ICircuitElement* element =
        factory && loadSave ? factory->createElement(record.attribute(QStringLiteral("Name")))
                            : nullptr;
    if (!element) {
        return;
    }
    m_elements.append(element->containerObject());
    loadSave->load(element->containerObject(), document, record);
    auto* picture = new CElementPlacementItem(element);
    picture->setParentItem(m_pictures);
    picture->setOpacity(1);
    picture->setPos(boundedPosition(record));
    ++m_count;
}

void PastePlacement::showWire(const QDomElement& record) {
    QList<QDomElement> points;
    for (QDomElement point = record.firstChildElement(QStringLiteral("Shape"))
                                 .firstChildElement(QStringLiteral("ShapeElement"));
         !point.isNull(); point = point.nextSiblingElement(QStringLiteral("ShapeElement"))) {
        points.append(point);
    }
    static_cast<Outlines*>(m_pictures.data())->add(storedPath(points, boundedPosition));
}

void PastePlacement::showTextBox(const QDomElement& record) {
    QPainterPath frame;
    frame.addRect(storedRect(record));
    static_cast<Outlines*>(m_pictures.data())->add(frame);
    ++m_count;
}

void PastePlacement::hangAt(const QPointF& point) {
    if (m_editor && m_pictures) {
        m_pictures->setPos(m_editor->snapToGrid(point - m_anchor));
        m_pictures->setVisible(true);
    }
}

bool PastePlacement::putDown(const QPointF& point) {
    if (m_editor) {
        // Out of the way of what is measured.
        delete m_pictures;
        m_text.isEmpty() ? m_editor->pasteAt(point, m_index) : m_editor->pasteTextAt(point, m_text);
    }
    return false;
}

QString PastePlacement::hint() const {
    return QStringLiteral("%1: click to place, Esc ends")
        .arg(m_text.isEmpty() ? QStringLiteral("Paste") : QStringLiteral("Duplicate"));
}
