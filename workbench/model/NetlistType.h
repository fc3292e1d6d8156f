#pragma once

#include "ElementTypeData.h"

#include <QString>

/// Element types that a text netlist of the simulator describes: the pins of its first ".subckt"
/// are the terminals. Such a type carries its text in its name, so that files, copies and undo keep
/// it without knowing.
namespace NetlistType {

/// The library that all types of a user's own text belong to.
constexpr char Library[] = "Netlists";
/// The type that a text is given to.
constexpr char Blank[] = "Netlist.Subcircuits";

/// The complete name of the type for the text.
QString nameFor(const QString& text);
/// The text behind a complete name; empty if it is no such name.
QString textOf(const QString& type);

/// Fills in what the text tells: terminals, parameters, outputs, the lines for the simulator, and a
/// picture if there is none. False, with the reason as half a sentence, if it is no sub-circuit.
bool describe(const QString& text, ElementTypeData* data, QString* reason);

}  // namespace NetlistType
