#include "CircuitGenerator.h"

#include <cmath>
#include <vector>

namespace {

constexpr int CellSize = 4;
constexpr int ColumnStep = 160;
constexpr int RowStep = 120;

struct Part {
    const char* type;
    const char* namePrefix;
    const char* parameter;
    const char* value;
};

/// A terminal, seen from a cell: `cell` is 0 for the cell itself and 1 for the next of its kind.
struct Pin {
    int part;
    const char* name;
    int cell = 0;
};

struct Cell {
    Part parts[CellSize];
    std::vector<std::vector<Pin>> nets;
};

const Cell& digitalCell() {
    static const Cell cell = {{{"DFlipFlop.Digital", "FF", "delay", "10n"},
                               {"Nand.Digital", "U", "delay", "10n"},
                               {"Nor.Digital", "U", "delay", "12n"},
                               {"DFlipFlop.Digital", "FF", "delay", "10n"}},
                              {{{0, "q"}, {1, "a"}, {2, "a"}},
                               {{0, "qn"}, {1, "b"}},
                               {{1, "y"}, {3, "d"}},
                               {{2, "y"}, {0, "d"}},
                               {{3, "q"}, {2, "b", 1}},
                               {{3, "qn"}, {0, "clk", 1}, {3, "clk", 1}}}};
    return cell;
}

const Cell& analogCell() {
    static const Cell cell = {{{"OpAmp.Analog", "OP", "A", "100k"},
                               {"NPN.Semiconductors", "Q", "BF", "100"},
                               {"NPN.Semiconductors", "Q", "BF", "120"},
                               {"NPN.Semiconductors", "Q", "BF", "80"}},
                              {{{0, "out"}, {1, "B"}},
                               {{1, "C"}, {2, "B"}},
                               {{1, "E"}, {2, "E"}},
                               {{2, "C"}, {3, "B"}},
                               {{3, "E"}, {0, "inn"}},
                               {{3, "C"}, {0, "inp", 1}}}};
    return cell;
}

const Cell& cellAt(int index) {
    return index % 2 == 0 ? digitalCell() : analogCell();
}

/// The next cell of the same kind; the last one leads back to the first.
int nextOfKind(int index, int cellCount) {
    return index + 2 < cellCount ? index + 2 : index % 2;
}

QByteArray record(const char* tag, const char* name, const QByteArray& value) {
    return QByteArray("    <") + tag + " Name=\"" + name + "\" Value=\"" + value + "\"/>\n";
}

QByteArray elementRecord(const Part& part, int id, int column, int row) {
    const QByteArray name = part.namePrefix + QByteArray::number(id);
    return "  <CircuitElement ElementType=\"" + QByteArray(part.type) + "\" ID=\"" +
           QByteArray::number(id) + "\" X=\"" + QByteArray::number(column * ColumnStep) +
           ".00\" Y=\"" + QByteArray::number(row * RowStep) + ".00\" ModelName=\"\">\n" +
           record("Property", "Name", name) + record("Property", "Caption", name) +
           record("Property", "Rotation", "0") + record("Property", "Flip", "0") +
           record("Parameter", part.parameter, part.value) + "  </CircuitElement>\n";
}

QByteArray nodeRecord(const std::vector<Pin>& pins, int number, int cell, int nextCell) {
    QByteArray text =
        "  <CircuitNode Name=\"n" + QByteArray::number(number) + "\" X=\"0\" Y=\"0\">\n";
    for (const Pin& pin : pins) {
        const int id = (pin.cell == 0 ? cell : nextCell) * CellSize + pin.part;
        text += QByteArray("    <ElementNode Name=\"") + pin.name + "\" ElementID=\"" +
                QByteArray::number(id) + "\"/>\n";
    }
    return text + record("Property", "WireClearance", "20") + "  </CircuitNode>\n";
}

}  // namespace

QByteArray circuitFileText(int elementCount) {
    const int cellCount = (elementCount + CellSize - 1) / CellSize;
    const int cellsPerRow =
        static_cast<int>(std::ceil(std::sqrt(double(cellCount) * RowStep / ColumnStep / CellSize)));
    QByteArray text = "<!DOCTYPE VortelCircuit>\n<VortelCircuit>\n";
    for (int cell = 0; cell < cellCount; ++cell) {
        for (int part = 0; part < CellSize; ++part) {
            text += elementRecord(cellAt(cell).parts[part], cell * CellSize + part,
                                  cell % cellsPerRow * CellSize + part, cell / cellsPerRow);
        }
    }
    int number = 0;
    for (int cell = 0; cell < cellCount; ++cell) {
        for (const std::vector<Pin>& pins : cellAt(cell).nets) {
            text += nodeRecord(pins, ++number, cell, nextOfKind(cell, cellCount));
        }
    }
    return text + "</VortelCircuit>\n";
}

QByteArray bigNetFileText(int terminalCount) {
    const Part resistor = {"Resistor.Basic", "R", "R", "1k"};
    const int perRow = static_cast<int>(std::ceil(std::sqrt(double(terminalCount))));
    QByteArray text = "<!DOCTYPE VortelCircuit>\n<VortelCircuit>\n";
    QByteArray net = "  <CircuitNode Name=\"n1\" X=\"0\" Y=\"0\">\n";
    for (int id = 0; id < terminalCount; ++id) {
        text += elementRecord(resistor, id, id % perRow, id / perRow);
        net += "    <ElementNode Name=\"p\" ElementID=\"" + QByteArray::number(id) + "\"/>\n";
    }
    return text + net + "  </CircuitNode>\n</VortelCircuit>\n";
}
