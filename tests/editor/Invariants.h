#pragma once

#include <QStringList>

class CCircuitEditor;

/// What must hold in an editor between any two calls; empty if it does, else one sentence for each
/// breach: maps and scene agree, items show what the model holds, the ends of automatic wires lie
/// on their terminals, lists and the history hold no strangers.
QStringList invariantBreaches(const CCircuitEditor& editor);
