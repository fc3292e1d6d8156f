#pragma once

#include "IContainer.h"

#include <QString>

/// Numbers as engineers write them.
class IMathUtils : public virtual IContainer {
public:
    /// Reads a number with an optional engineering suffix ("4.7k", "100n", "1Meg"). On text that is
    /// no finite number, answers 0 and sets `*ok` (if given) to false.
    virtual double toNumber(const QString& text, bool* ok) = 0;
    /// The shortest engineering notation that reads back as the same double.
    virtual QString toEngineering(double value) = 0;
};

Q_DECLARE_INTERFACE(IMathUtils, "com.tesmira.IMathUtils/1.0")
