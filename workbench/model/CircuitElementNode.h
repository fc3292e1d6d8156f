#pragma once

#include "ICircuitElementNode.h"

#include <QObject>

class CircuitElement;
class CircuitNode;
struct TerminalData;

/// A terminal of an element, owned by it. Knows the net that it is on.
class CircuitElementNode : public QObject, public ICircuitElementNode {
    Q_OBJECT
    Q_INTERFACES(ICircuitElementNode)

public:
    /// `data` belongs to the element's type and outlives the terminal.
    CircuitElementNode(const TerminalData& data, CircuitElement* element);
    ~CircuitElementNode() override;

    /// The model's terminal behind an interface pointer; null for null and for a foreign object.
    static CircuitElementNode* from(ICircuitElementNode* terminal);

    CircuitElement* owner() const { return m_element; }
    /// Null while the terminal is unconnected.
    CircuitNode* node() const { return m_node; }
    /// The name that this terminal imposes on its net; mostly empty.
    QString fixedNetName() const;

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitElementNode
    ICircuitElement* element() override;
    QString name() override;
    QString type() override;
    QPointF position() override;
    QColor color() override;

private:
    friend class CircuitNode;

    const TerminalData& m_data;
    CircuitElement* m_element = nullptr;
    CircuitNode* m_node = nullptr;
};
