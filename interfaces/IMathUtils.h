#pragma once

#include "IContainer.h"

#include <QString>

#include <functional>

/// Numbers as engineers write them.
class IMathUtils : public virtual IContainer {
public:
    /// Answers the text of a parameter's value; a null string if there is no such parameter.
    using Lookup = std::function<QString(const QString& name)>;

    /// What a text amounts to.
    struct Evaluation {
        bool ok = false;
        /// 0 unless `ok`.
        double value = 0;
        /// Why there is no value, for people; empty if `ok`.
        QString problem;
        /// The first name that `Lookup` didn't know, if that is the reason.
        QString missing;
    };

    /// Reads a number with an optional engineering suffix ("4.7k", "100n", "1Meg"). On text that is
    /// no finite number, answers 0 and sets `*ok` (if given) to false.
    virtual double toNumber(const QString& text, bool* ok) = 0;
    /// The shortest engineering notation that reads back as the same double.
    virtual QString toEngineering(double value) = 0;
    /// The value of such a number, or of an expression in braces: numbers and names of parameters,
    /// joined by + - * / and parentheses, as in "{2*Rload + 1k}". The value of a parameter may be
    /// an expression, too.
    virtual Evaluation evaluate(const QString& text, const Lookup& lookup) = 0;

protected:
    ~IMathUtils() = default;
};

Q_DECLARE_INTERFACE(IMathUtils, "com.tesmira.IMathUtils/1.0")
