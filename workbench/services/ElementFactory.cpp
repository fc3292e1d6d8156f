#include "ElementFactory.h"

#include "ControlledElement.h"
#include "ElementLibrary.h"

ElementFactory::ElementFactory(const ElementLibrary& library, QObject* parent)
    : QObject(parent), m_library(library) {}

ElementFactory::~ElementFactory() = default;

ICircuitElement* ElementFactory::createElement(const QString& elementType) {
    ElementDescription* description = m_library.description(elementType);
    if (!description) {
        return nullptr;
    }
    if (description->data().resolvesControls) {
        return new ControlledElement(description);
    }
    return new CircuitElement(description);
}
