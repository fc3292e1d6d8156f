#pragma once

#include "ElementTypeData.h"
#include "ElementVisual.h"
#include "ICircuitElementDesc.h"
#include "IElementBasicParametersDesc.h"

#include <QObject>

class CircuitElement;

/// An element type. The library owns it and keeps it as long as elements of the type may live; it
/// owns the type's picture.
class ElementDescription : public QObject,
                           public ICircuitElementDesc,
                           public IElementBasicParametersDesc {
    Q_OBJECT
    Q_INTERFACES(ICircuitElementDesc IElementBasicParametersDesc)

public:
    explicit ElementDescription(ElementTypeData data, QObject* parent = nullptr);
    ~ElementDescription() override;

    const ElementTypeData& data() const { return m_data; }
    ElementVisual* visual() { return &m_visual; }
    /// A new element of this type. The caller owns it until it is added to a circuit.
    virtual CircuitElement* createElement();

    // IContainer
    QObject* containerObject() override { return this; }

    // IInterfaceQuery
    /// Knows "IElementBasicParametersDesc", and for a type whose terminals are of several kinds
    /// "IGeneralMixedElementDesc", which is a mark without operations.
    void queryInterface(const QString& name, void** result) override;

    // ICircuitElementDesc
    QString label() override;
    QString elementType() override;
    int category() override;
    Plexa::DataStore info() override;

    // IElementBasicParametersDesc
    Plexa::DataStore realParameters() override;
    Plexa::DataStore outputVariables() override;
    Plexa::DataStore outputACVariables() override;

private:
    ElementTypeData m_data;
    ElementVisual m_visual;
};
