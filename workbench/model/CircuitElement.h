#pragma once

#include "ICircuitElement.h"
#include "IEditableProperties.h"

#include <QObject>
#include <QVector>

class Circuit;
class CircuitElementNode;
class ElementDescription;

/// An element. The caller owns it until it is added to a circuit, which then does; it owns its
/// terminals, and keeps its parameters as text. Its description outlives it.
///
/// Editable properties: first the parameters (group "rparams"), then one per terminal (group
/// "Nodes") whose value is the name of the terminal's net; writing it renames that net. A write
/// that the property can't take changes nothing.
class CircuitElement : public QObject, public ICircuitElement, public IEditableProperties {
    Q_OBJECT
    Q_INTERFACES(ICircuitElement IEditableProperties)
    // The name comes first: what is stored with an element is read back in this order, and the
    // caption follows the name.
    Q_PROPERTY(QString Name READ name WRITE setName)
    Q_PROPERTY(QString Caption READ caption WRITE setCaption)
    Q_PROPERTY(int Rotation READ rotation WRITE setRotation)
    Q_PROPERTY(int Flip READ flip WRITE setFlip)
    Q_PROPERTY(QString ModelName READ modelName WRITE setModelName)
    // The records of files carry the model themselves, those of copies and of undo don't.
    Q_CLASSINFO("RecordAttributes", "ModelName")

public:
    explicit CircuitElement(ElementDescription* description, QObject* parent = nullptr);
    /// An element that is destroyed while in a circuit leaves it first, with all signals.
    ~CircuitElement() override;

    /// The model's element behind an interface pointer; null for null and for a foreign object.
    static CircuitElement* from(ICircuitElement* element);

    ElementDescription* description() const { return m_description; }
    const QVector<CircuitElementNode*>& terminals() const { return m_terminals; }
    /// True from `addElement` until the circuit has dropped the element.
    bool isInCircuit() const { return m_inCircuit; }
    /// Empty for a parameter that the type doesn't have.
    QString parameter(const QString& name) const;

    /// Refuses an empty name, and in a circuit a name that another element bears. A caption that
    /// equals the old name follows.
    virtual void setName(const QString& name);
    /// Refuses anything but 0 to 3.
    virtual void setRotation(int rotation);
    /// Refuses anything but 0 to 2.
    virtual void setFlip(int flip);
    /// Follows a global parameter that got another name.
    void renameReferences(const QString& oldName, const QString& newName);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitElement
    QString name() override;
    QString caption() override;
    void setCaption(QString caption) override;
    ICircuit* circuit() override;
    ICircuitElementVisual* visual() override;
    ICircuitElementDesc* desc() override;
    QStringList elementNodeNames() override;
    ICircuitElementNode* elementNode(const QString& name) override;
    int flip() override;
    int rotation() override;
    void setModelName(QString name) override;
    QString modelName() override;

    // IEditableProperties
    int propertyCount() override;
    QString propertyName(int index) override;
    QString propertyGroup(int index) override;
    QVariant propertyValue(int index) override;
    void setPropertyValue(int index, QVariant value) override;
    QString propertyValueString(int index) override;

signals:
    void elementChanged();
    void assignedModelChanged();
    void propertyChanged(QString name);

protected:
    /// Null before the element is added; stays after it has been dropped, until it dies.
    Circuit* model() const { return m_circuit; }

private:
    friend class Circuit;

    bool isParameter(int index) const { return index >= 0 && index < m_values.size(); }
    /// The terminal behind a property index; null if the index means none.
    CircuitElementNode* terminalAt(int index) const;
    void changeName(const QString& name);

    ElementDescription* m_description = nullptr;
    Circuit* m_circuit = nullptr;
    bool m_inCircuit = false;
    QVector<CircuitElementNode*> m_terminals;
    // In the order of the description's parameters.
    QVector<QString> m_values;
    QString m_name;
    QString m_caption;
    QString m_modelName;
    int m_rotation = 0;
    int m_flip = 0;
};
