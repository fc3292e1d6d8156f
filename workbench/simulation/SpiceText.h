#pragma once

#include <QSet>
#include <QString>

/// Texts of the drawing as the simulator's netlist takes them.
namespace SpiceText {

/// A value as the user writes it, in the netlist's notation: "4.7M" is "4.7Meg", "10µ" is "10u".
/// An expression keeps its braces. What is neither comes back as it is.
QString value(const QString& text);

/// Whether the text is a number or an expression.
bool isNumeric(const QString& text);

/// The same as `value` for use within an expression: in parentheses, without braces.
QString operand(const QString& text);

/// Puts the letter that tells the kind of an element before its name, unless the name begins with
/// it.
QString designator(QChar kind, const QString& name);

}  // namespace SpiceText

/// Gives names that the simulator can tell apart: letters, digits and underscores, and no two that
/// differ in the case of letters only.
class SpiceNames {
public:
    /// A name like `wanted` that wasn't given before.
    QString unique(const QString& wanted);
    bool isTaken(const QString& name) const { return m_taken.contains(name.toLower()); }

private:
    QSet<QString> m_taken;
};
