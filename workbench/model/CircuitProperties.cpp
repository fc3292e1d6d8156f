// The circuit's global parameters as properties that the user edits.

#include "Circuit.h"
#include "EngineeringNumber.h"
#include "ParameterExpression.h"

#include <cmath>

int Circuit::propertyCount() {
    return m_globals.size();
}

QString Circuit::propertyName(int index) {
    return globalVariableName(index);
}

QString Circuit::propertyGroup(int) {
    return QStringLiteral("globals");
}

QVariant Circuit::propertyValue(int index) {
    return globalVariableValue(index);
}

QString Circuit::propertyValueString(int index) {
    return globalVariableValue(index).toString();
}

void Circuit::setPropertyValue(int index, QVariant value) {
    const QString text = value.toString().trimmed();
    bool isValid = index >= 0 && index < m_globals.size();
    if (isValid && !isStringGlobalVariable(index) && !ParameterExpression::isWellFormed(text)) {
        const double number = EngineeringNumber::parse(text, &isValid);
        isValid = isValid && (isRealGlobalVariable(index) || number == std::floor(number));
    }
    if (isValid) {
        setGlobalVariableValue(index, isStringGlobalVariable(index) ? value.toString() : text);
    }
}
