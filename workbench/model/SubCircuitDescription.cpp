#include "SubCircuitDescription.h"

#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "SubCircuitElement.h"
#include "SubCircuitProject.h"

#include <QHash>
#include <QPainterPath>
#include <QTransform>

namespace {

/// Scene coordinates, as the record and the element's turn and flip place it.
QPointF placeOf(const QDomElement& record, CircuitElementNode* terminal) {
    QTransform turn;
    turn.rotate(90 * terminal->owner()->rotation());
    return QPointF(record.attribute(QStringLiteral("X")).toDouble(),
                   record.attribute(QStringLiteral("Y")).toDouble()) +
           turn.map(terminal->position());
}

void appendShape(QDomElement record, const QPainterPath& path) {
    QDomDocument document = record.ownerDocument();
    QDomElement shape = document.createElement(QStringLiteral("Shape"));
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element step = path.elementAt(i);
        QDomElement point = document.createElement(QStringLiteral("ShapeElement"));
        point.setAttribute(QStringLiteral("Type"), static_cast<int>(step.type));
        point.setAttribute(QStringLiteral("X"), step.x);
        point.setAttribute(QStringLiteral("Y"), step.y);
        shape.appendChild(point);
    }
    record.appendChild(shape);
}

}  // namespace

SubCircuitDescription::SubCircuitDescription(ElementTypeData data, QObject* parent)
    : ElementDescription(std::move(data), parent) {}

SubCircuitDescription::~SubCircuitDescription() = default;

QStringList SubCircuitDescription::innerTypes() const {
    QStringList types;
    for (const QDomElement& record : SubCircuitProject::records(data().inside, "CircuitElement")) {
        types.append(record.attribute(QStringLiteral("ElementType")));
    }
    return types;
}

QStringList SubCircuitDescription::bind(
    const std::function<ElementDescription*(const QString&)>& find) {
    QStringList unknown;
    m_inner.clear();
    for (const QString& type : innerTypes()) {
        m_inner.append(find(type));
        if (!m_inner.last() && !unknown.contains(type)) {
            unknown.append(type);
        }
    }
    drawMissingWires();
    return unknown;
}

void SubCircuitDescription::drawMissingWires() {
    const QList<QDomElement> elements = SubCircuitProject::records(data().inside, "CircuitElement");
    const QList<QDomElement> nodes = SubCircuitProject::records(data().inside, "CircuitNode");
    SubCircuitElement sample(this);
    QHash<const CircuitElement*, QDomElement> recordOf;
    for (int i = 0; i < elements.size(); ++i) {
        recordOf.insert(CircuitElement::from(sample.element(i)), elements.at(i));
    }
    for (int i = 0; i < nodes.size(); ++i) {
        CircuitNode* node = CircuitNode::from(sample.node(i));
        if (!node || !nodes.at(i).firstChildElement(QStringLiteral("Shape")).isNull()) {
            continue;
        }
        QPainterPath path;
        CircuitElementNode* first = node->terminals().first();
        const QPointF start = placeOf(recordOf.value(first->owner()), first);
        for (CircuitElementNode* terminal : node->terminals().mid(1)) {
            const QPointF end = placeOf(recordOf.value(terminal->owner()), terminal);
            path.moveTo(start);
            path.lineTo(end.x(), start.y());
            path.lineTo(end);
        }
        appendShape(nodes.at(i), path);
    }
}

void SubCircuitDescription::queryInterface(const QString& name, void** result) {
    if (name == QLatin1String("ISubCircuitElementDesc")) {
        *result = static_cast<ISubCircuitElementDesc*>(this);
    } else {
        ElementDescription::queryInterface(name, result);
    }
}

CircuitElement* SubCircuitDescription::createElement() {
    return new SubCircuitElement(this);
}

QDomDocument SubCircuitDescription::subCircuitInfo() {
    if (m_info.isNull()) {
        m_info = SubCircuitProject::pack(data().inside);
    }
    return m_info.cloneNode().toDocument();
}
