#pragma once

#include "ElementDescription.h"
#include "ISubCircuitElementDesc.h"

#include <QVector>

#include <functional>

/// The type of an element that is itself a circuit. Its data carry the project that the element has
/// inside; it must be bound before elements are made.
class SubCircuitDescription final : public ElementDescription, public ISubCircuitElementDesc {
    Q_OBJECT
    Q_INTERFACES(ISubCircuitElementDesc)

public:
    explicit SubCircuitDescription(ElementTypeData data, QObject* parent = nullptr);
    ~SubCircuitDescription() override;

    /// The types of the inside's elements, by record.
    QStringList innerTypes() const;
    /// Finds the descriptions of these types, once and for all, and draws a straight wire for each
    /// net that the project has no drawing of. Answers the types that `find` doesn't know.
    QStringList bind(const std::function<ElementDescription*(const QString&)>& find);
    /// By element record; null for a type that isn't known. They outlive this one's elements.
    const QVector<ElementDescription*>& innerDescriptions() const { return m_inner; }

    // IInterfaceQuery
    /// Knows "ISubCircuitElementDesc", too.
    void queryInterface(const QString& name, void** result) override;

    // ElementDescription
    CircuitElement* createElement() override;

    // ISubCircuitElementDesc
    /// A copy, which the caller may change.
    QDomDocument subCircuitInfo() override;

private:
    void drawMissingWires();

    QVector<ElementDescription*> m_inner;
    QDomDocument m_info;
};
