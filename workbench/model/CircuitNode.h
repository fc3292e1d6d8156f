#pragma once

#include "ICircuitNode.h"
#include "IEditableProperties.h"

#include <QList>
#include <QObject>

class Circuit;
class CircuitElementNode;

/// A net: the terminals that are joined, in the order in which they came. The circuit makes and
/// owns it.
///
/// Names: a terminal may impose a fixed name on its net, and then nothing else is accepted. A name
/// of the form "n" and a number counts as automatic and yields to any other in a merge.
class CircuitNode : public QObject, public ICircuitNode, public IEditableProperties {
    Q_OBJECT
    Q_INTERFACES(ICircuitNode IEditableProperties)
    // Node records carry the name themselves.
    Q_PROPERTY(QString Name READ name WRITE setName STORED false)
    Q_PROPERTY(int WireClearance READ wireClearance WRITE setWireClearance)

public:
    /// A node that is destroyed while in a circuit leaves it first, with all signals.
    ~CircuitNode() override;

    /// The model's node behind an interface pointer; null for null and for a foreign object.
    static CircuitNode* from(ICircuitNode* node);
    static bool isAutomaticName(const QString& name);
    /// By name, for whoever asks before two names become one.
    Q_INVOKABLE bool hasAutomaticName() const { return isAutomaticName(m_name); }

    const QList<CircuitElementNode*>& terminals() const { return m_terminals; }
    /// True from `nodeAdded` until the circuit has dropped the node.
    bool isInCircuit() const { return m_inCircuit; }
    /// False as well while the node is being dissolved.
    bool takesTerminals() const { return m_inCircuit && !m_dissolving; }
    bool hasFixedName() const { return !fixedName().isEmpty(); }

    /// In scene units; a negative one is refused.
    virtual void setWireClearance(int clearance);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitNode
    ICircuit* circuit() override;
    int elementNodeCount() override;
    ICircuitElementNode* elementNode(int index) override;
    /// Refuses an empty name, and any other name than the fixed one of a net that has one.
    void setName(QString name) override;
    QString name() override;
    int wireClearance() override;
    QString type() override;

    // IEditableProperties
    int propertyCount() override;
    QString propertyName(int index) override;
    QString propertyGroup(int index) override;
    QVariant propertyValue(int index) override;
    void setPropertyValue(int index, QVariant value) override;
    QString propertyValueString(int index) override;

signals:
    void nodeChanged();
    void elementNodeAdded(ICircuitElementNode* terminal);
    void elementNodeRemoved(ICircuitElementNode* terminal);

private:
    friend class Circuit;

    enum class Naming { Keep, Update };

    CircuitNode(QString type, Circuit* circuit);

    /// The name that a terminal imposes, empty if none does. The first terminal wins.
    QString fixedName() const;
    /// Adds an unconnected terminal without a signal, for a node that isn't known yet.
    void adopt(CircuitElementNode* terminal);
    void addTerminal(CircuitElementNode* terminal);
    /// `Keep` spares a net that is about to vanish a new name.
    void removeTerminal(int index, Naming naming);
    void rename(const QString& name);
    /// Tells the elements that the value of the terminals' properties has changed.
    void announceName();
    static void announceNet(CircuitElementNode* terminal);

    Circuit* m_circuit = nullptr;
    QString m_type;
    QString m_name;
    QList<CircuitElementNode*> m_terminals;
    int m_wireClearance = 20;
    bool m_inCircuit = false;
    bool m_dissolving = false;
};
