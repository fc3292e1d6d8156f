#include "CircuitElementNode.h"

#include "CircuitElement.h"
#include "ElementTypeData.h"

CircuitElementNode::CircuitElementNode(const TerminalData& data, CircuitElement* element)
    : QObject(element), m_data(data), m_element(element) {
    // Without a name as an object: that would take as much memory again, and there are many.
}

CircuitElementNode::~CircuitElementNode() = default;

CircuitElementNode* CircuitElementNode::from(ICircuitElementNode* terminal) {
    return terminal ? qobject_cast<CircuitElementNode*>(terminal->containerObject()) : nullptr;
}

QString CircuitElementNode::fixedNetName() const {
    return m_data.netName;
}

ICircuitElement* CircuitElementNode::element() {
    return m_element;
}

QString CircuitElementNode::name() {
    return m_data.name;
}

QString CircuitElementNode::type() {
    return m_data.type;
}

QPointF CircuitElementNode::position() {
    const QPointF& p = m_data.position;
    switch (m_element->flip()) {
        case 1:
            return {p.x(), -p.y()};
        case 2:
            return {-p.x(), p.y()};
        default:
            return p;
    }
}

QColor CircuitElementNode::color() {
    struct Entry {
        QLatin1String type;
        QRgb color;
    };
    // Dark enough for a thin wire on white, and far enough apart to tell the kinds at a glance.
    static const Entry table[] = {
        {QLatin1String("e"), qRgb(0x1b, 0x3a, 0x6b)}, {QLatin1String("d"), qRgb(0x2e, 0x7d, 0x32)},
        {QLatin1String("t"), qRgb(0xd8, 0x43, 0x15)}, {QLatin1String("p"), qRgb(0x7b, 0x1f, 0xa2)},
        {QLatin1String("g"), qRgb(0x00, 0x79, 0x6b)}, {QLatin1String("x"), qRgb(0x79, 0x55, 0x48)},
    };
    for (const Entry& entry : table) {
        if (m_data.type == entry.type) {
            return QColor(entry.color);
        }
    }
    return QColor(Qt::black);
}
