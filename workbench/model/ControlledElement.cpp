#include "ControlledElement.h"

#include "Circuit.h"

ControlledElement::ControlledElement(ElementDescription* description, QObject* parent)
    : CircuitElement(description, parent) {
    connect(this, &CircuitElement::propertyChanged, this, [this](const QString& name) {
        if (name == QLatin1String("control") && isInCircuit()) {
            resolveControlNodesAndBranches();
        }
    });
}

ControlledElement::~ControlledElement() = default;

void ControlledElement::resolveControlNodesAndBranches() {
    const QString name = parameter(QStringLiteral("control"));
    if (name.isEmpty()) {
        m_controlling = this;
    } else {
        m_controlling = model() ? model()->elementNamed(name) : nullptr;
    }
}
