#pragma once

#include <Plexa/DataStore.h>

#include <QDomDocument>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVector>

/// A terminal of an element type, in the type's own coordinates (scene units, y down).
struct TerminalData {
    QString name;
    QString type;
    QPointF position;
    /// The name that every net on this terminal bears, such as "gnd"; mostly empty.
    QString netName;
    /// Of a sub-circuit's terminal: the net of the inside that it is tied to.
    QString innerNet = {};
};

/// A parameter of an element type with its default. Values are text as the user writes them.
struct ParameterData {
    enum Kind { Number, Text, Choice };

    QString name;
    QString value;
    QString unit;
    QString description;
    Kind kind = Number;
    QStringList choices;

    /// Whether the parameter takes the text: an engineering number or an expression on global
    /// parameters in braces; one of the choices; any text.
    bool accepts(const QString& text) const;
    /// The value with its unit, as a person writes it: "4.7 kΩ".
    QString display(const QString& text) const;
};

/// All that the library tells of an element type.
struct ElementTypeData {
    /// Complete name, "Element.Library".
    QString type;
    QString label;
    QString description;
    /// Start of automatic instance names.
    QString namePrefix;
    int category = 0;
    QStringList display;
    QStringList models;
    QVector<TerminalData> terminals;
    QVector<ParameterData> parameters;
    Plexa::DataStore outputVariables;
    Plexa::DataStore outputACVariables;
    bool mixed = false;
    bool resolvesControls = false;
    /// Absolute file name of an SVG or a bitmap.
    QString picture;
    QPointF pictureOffset;
    /// Of a sub-circuit: see `SubCircuitProject`; else null.
    QDomDocument inside;
};
