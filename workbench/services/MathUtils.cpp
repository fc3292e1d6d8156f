#include "MathUtils.h"

#include "EngineeringNumber.h"

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
