#pragma once

#include "CUndoRedo.h"

#include <QPointer>
#include <QString>

class ICircuitElement;

/// What the creation and the deletion of an element have in common: making the element anew from a
/// snapshot of its properties and position, and taking it out of the circuit. Connections are not
/// recorded. Each time it is made anew it is another object.
class CElementExistenceCmd : public CUndoRedoCmdBase {
protected:
    /// Takes the snapshot of the element, which is whole and in the circuit.
    CElementExistenceCmd(ICircuitElement* element, bool staysInCircuit);

    void recreateElement();
    void removeElement();

private:
    bool isInCircuit() const;

    // Null while the element is out of the circuit.
    ICircuitElement* m_element = nullptr;
    QObject* m_elementObject = nullptr;
    // Nobody tells this command of a death: a circuit may be cleared while it waits.
    QPointer<QObject> m_elementGuard;
    QString m_snapshot;
    QString m_elementType;
};
