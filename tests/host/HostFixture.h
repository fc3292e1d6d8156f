#pragma once

#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "CircuitSolver.h"
#include "ControlledElement.h"
#include "ElementDescription.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>

#include <ostream>

// Readable values in the messages of failed expectations.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << qPrintable(text) << '"';
}
inline void PrintTo(const QStringList& lines, std::ostream* os) {
    *os << "\n  " << qPrintable(lines.join(QStringLiteral("\n  ")));
}
inline void PrintTo(const QPointF& p, std::ostream* os) {
    *os << '(' << p.x() << ", " << p.y() << ')';
}

/// Runs the destructions that `deleteLater` has asked for.
inline void destroyDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The signals of a circuit and of the nodes and elements it was told of, one line each.
class SignalLog : public QObject {
public:
    explicit SignalLog(Circuit& circuit);
    void watch(CircuitElement* element);
    void watch(CircuitNode* node);
    /// The lines since the last call.
    QStringList take();

private:
    QStringList m_lines;
};

/// A circuit with its solver, and a handful of element types made in code.
class CircuitTest : public testing::Test {
protected:
    CircuitTest();

    /// A new element of the type, added to the circuit.
    CircuitElement* add(ElementDescription& type);
    static CircuitElementNode* terminal(CircuitElement* element, const char* name);
    /// Joins through the solver's interface, as an editor does.
    CircuitNode* join(CircuitElement* a, const char* aName, CircuitElement* b, const char* bName);
    QStringList elementNames();
    QStringList nodeNames();
    /// "R1.p R2.n" in the net's order.
    static QString members(CircuitNode* node);

    ElementDescription resistor;    ///< p and n on the x axis; number R, choice mode, text note
    ElementDescription transistor;  ///< C, B, E of type "e"
    ElementDescription ground;      ///< gnd, which names its net "gnd"
    ElementDescription supply;      ///< vcc, which names its net "vcc"
    ElementDescription gate;        ///< a and y of type "d"
    ElementDescription sensor;      ///< p and n; its text parameter "control" names an element
    Circuit circuit;
    CircuitSolver solver{&circuit};
};
