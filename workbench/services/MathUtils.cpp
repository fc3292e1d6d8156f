#include "MathUtils.h"

#include "EngineeringNumber.h"
#include "ParameterExpression.h"

MathUtils::MathUtils(QObject* parent) : QObject(parent) {}

MathUtils::~MathUtils() = default;

double MathUtils::toNumber(const QString& text, bool* ok) {
    bool read = false;
    const double value = EngineeringNumber::parse(text, &read);
    if (ok) {
        *ok = read;
    }
    return value;
}

QString MathUtils::toEngineering(double value) {
    return EngineeringNumber::format(value);
}

IMathUtils::Evaluation MathUtils::evaluate(const QString& text, const Lookup& lookup) {
    return ParameterExpression::evaluate(text, lookup);
}
