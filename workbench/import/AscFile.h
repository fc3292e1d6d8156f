#pragma once

#include <QByteArray>
#include <QHash>
#include <QLine>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// What an LTspice schematic (`.asc`) says, as it stands there: its coordinates are multiples of
/// 16, some of 8, with x to the right and y down.
struct AscSchematic {
    struct Flag {
        QPoint place;
        QString name;
        bool isPort = false;

        bool isGround() const;
    };
    struct Symbol {
        QString name;  ///< with its folders
        QPoint place;
        QString orientation;
        QHash<QString, QString> attributes;

        QString instance() const { return attributes.value(QStringLiteral("InstName")); }
    };
    struct Text {
        QPoint place;
        QString text;  ///< lines are parted by "\n"
        bool isDirective = false;
    };

    QVector<QLine> wires;
    QVector<Flag> flags;
    QVector<Symbol> symbols;
    QVector<Text> texts;
    /// What was passed over, a sentence each.
    QStringList remarks;
};

/// A symbol's file (`.asy`), as far as it matters for the circuit.
struct AscSymbolFile {
    struct Pin {
        QPoint place;  ///< in the symbol's own coordinates
        QString name;
        int order = 0;
    };

    QVector<Pin> pins;  ///< in the simulator's order
    bool isBlock = false;
    QHash<QString, QString> attributes;
};

/// UTF-8 or UTF-16, each with or without a mark, or else Windows-1252.
QString decodeAsc(const QByteArray& bytes);

/// Nothing if that is no schematic.
std::optional<AscSchematic> parseAsc(const QString& text);
AscSymbolFile parseAsy(const QString& text);

/// The pin's place in the schematic.
QPoint placeOfPin(const QPoint& pin, const AscSchematic::Symbol& symbol);
