#include "ElementFactory.h"

#include "CircuitElement.h"
#include "ElementLibrary.h"
#include "LongWork.h"

ElementFactory::ElementFactory(const ElementLibrary& library, QObject* parent)
    : QObject(parent), m_library(library) {}

ElementFactory::~ElementFactory() = default;

ICircuitElement* ElementFactory::createElement(const QString& elementType) {
    if (!LongWork::step()) {
        return nullptr;
    }
    ElementDescription* description = m_library.description(elementType);
    return description ? description->createElement() : nullptr;
}
