#pragma once

#include "IContainer.h"

#include <QString>
#include <QStringList>

class ICircuit;
class ICircuitElementDesc;
class ICircuitElementNode;
class ICircuitElementVisual;

/// An element placed in a circuit. Its object carries the element's parameters as properties, the
/// writable properties "Caption", "Rotation" and "Flip", and the dynamic int property "_UniqueId_"
/// by which files tie connections to elements. Signals of the object: `elementChanged()`,
/// `assignedModelChanged()`, `propertyChanged(QString)`.
class ICircuitElement : public virtual IContainer {
public:
    /// Instance name, such as "R1".
    virtual QString name() = 0;
    virtual QString caption() = 0;
    virtual void setCaption(QString caption) = 0;
    /// Null until the element belongs to a circuit.
    virtual ICircuit* circuit() = 0;
    virtual ICircuitElementVisual* visual() = 0;
    virtual ICircuitElementDesc* desc() = 0;
    /// Terminal names in order; the first one is the anchor of grid snapping.
    virtual QStringList elementNodeNames() = 0;
    /// Null for a name that the element doesn't have.
    virtual ICircuitElementNode* elementNode(const QString& name) = 0;
    /// 0 none, 1 mirrored top to bottom, 2 mirrored left to right.
    virtual int flip() = 0;
    /// Index 0 to 3 for 0, 90, 180 and 270 degrees clockwise.
    virtual int rotation() = 0;
    virtual void setModelName(QString name) = 0;
    /// The device model assigned to the element, empty if none.
    virtual QString modelName() = 0;

protected:
    ~ICircuitElement() = default;
};

Q_DECLARE_INTERFACE(ICircuitElement, "com.tesmira.ICircuitElement/1.0")
