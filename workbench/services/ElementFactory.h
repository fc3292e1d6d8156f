#pragma once

#include "ICircuitElementFactory.h"

#include <QObject>

class ElementLibrary;

/// Makes elements of the types of a library, which outlives the factory and all that it makes.
class ElementFactory : public QObject, public ICircuitElementFactory {
    Q_OBJECT
    Q_INTERFACES(ICircuitElementFactory)

public:
    explicit ElementFactory(const ElementLibrary& library, QObject* parent = nullptr);
    ~ElementFactory() override;

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitElementFactory
    ICircuitElement* createElement(const QString& elementType) override;

private:
    const ElementLibrary& m_library;
};
