#include "ElementDescription.h"

#include "ControlledElement.h"

ElementDescription::ElementDescription(ElementTypeData data, QObject* parent)
    : QObject(parent),
      m_data(std::move(data)),
      m_visual(m_data.picture, m_data.drawing, m_data.pictureOffset) {}

ElementDescription::~ElementDescription() = default;

CircuitElement* ElementDescription::createElement() {
    return m_data.resolvesControls ? new ControlledElement(this) : new CircuitElement(this);
}

void ElementDescription::queryInterface(const QString& name, void** result) {
    // A void pointer keeps no type: each answer is first made a pointer of exactly the type asked.
    if (name == QLatin1String("IElementBasicParametersDesc")) {
        *result = static_cast<IElementBasicParametersDesc*>(this);
    } else if (name == QLatin1String("IGeneralMixedElementDesc") && m_data.mixed) {
        *result = static_cast<ICircuitElementDesc*>(this);
    }
}

QString ElementDescription::label() {
    return m_data.label;
}

QString ElementDescription::elementType() {
    return m_data.type;
}

int ElementDescription::category() {
    return m_data.category;
}

Plexa::DataStore ElementDescription::info() {
    Plexa::DataStore facts;
    facts.insert(QStringLiteral("#display"), m_data.display.join(QLatin1Char(' ')));
    facts.insert(QStringLiteral("description"), m_data.description);
    facts.insert(QStringLiteral("models"), m_data.models);
    for (const ParameterData& parameter : m_data.parameters) {
        if (parameter.kind == ParameterData::Choice) {
            facts.insert(QStringLiteral("choices.") + parameter.name, parameter.choices);
        }
    }
    return facts;
}

Plexa::DataStore ElementDescription::realParameters() {
    Plexa::DataStore result;
    for (const ParameterData& parameter : m_data.parameters) {
        if (parameter.kind == ParameterData::Number) {
            result.insert(parameter.name, parameter.description);
        }
    }
    return result;
}

Plexa::DataStore ElementDescription::outputVariables() {
    return m_data.outputVariables;
}

Plexa::DataStore ElementDescription::outputACVariables() {
    return m_data.outputACVariables;
}
