#pragma once

#include <QByteArray>

/// A circuit file with as many elements as asked for, rounded up to whole cells of four, and one
/// and a half times as many nets. The same count gives the same bytes.
///
/// The cells stand in rows that make a nearly square sheet. Digital and analog cells take turns,
/// and every cell is wired in itself and to the next one of its kind, so that most wires are short.
/// Every terminal is connected, the nets hold two or three terminals, and all wires are automatic:
/// each has to be routed. It draws like a circuit but isn't one that works.
QByteArray circuitFileText(int elementCount);

/// A circuit file with resistors whose one ends are all on one net, of as many terminals as asked
/// for.
QByteArray bigNetFileText(int terminalCount);
