#pragma once

#include "CircuitElement.h"

#include <QPointer>

/// A source that the current of a branch controls. Its parameter "control" names the element whose
/// current that is; left empty, it is the source's own sensing branch.
class ControlledElement : public CircuitElement {
    Q_OBJECT

public:
    explicit ControlledElement(ElementDescription* description, QObject* parent = nullptr);
    ~ControlledElement() override;

    /// The element whose current controls this one, this element itself for its own branch. Null
    /// for a name that no element bears, and once the element has died.
    CircuitElement* controllingElement() const { return m_controlling; }

    /// Ties the name in "control" to an element. Called by whoever has loaded a circuit, when all
    /// elements exist; a later edit of "control" comes here by itself.
    Q_INVOKABLE void resolveControlNodesAndBranches();

private:
    QPointer<CircuitElement> m_controlling;
};
