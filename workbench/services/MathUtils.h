#pragma once

#include "IMathUtils.h"

#include <QObject>

/// Engineering notation as a service; see `EngineeringNumber` for what it is. Parameters that refer
/// to one another in a circle have no value, and neither has what refers to them.
class MathUtils : public QObject, public IMathUtils {
    Q_OBJECT
    Q_INTERFACES(IMathUtils)

public:
    explicit MathUtils(QObject* parent = nullptr);
    ~MathUtils() override;

    // IContainer
    QObject* containerObject() override { return this; }

    // IMathUtils
    double toNumber(const QString& text, bool* ok) override;
    /// Empty for a number that isn't finite.
    QString toEngineering(double value) override;
    /// See `ParameterExpression`.
    Evaluation evaluate(const QString& text, const Lookup& lookup) override;
};
