#pragma once

#include <Plexa/DataStore.h>

#include <QDomDocument>
#include <QMap>
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
    /// Of "47 kΩ" or "47 kOhm" the "47k" that `accepts` takes; any other text as it is.
    QString withoutUnit(const QString& text) const;
    /// The value with its unit, as a person writes it: "4.7 kΩ".
    QString display(const QString& text) const;
};

/// How an element is written for the simulator. In its texts `${x}` stands for the element's name
/// ("name"), the net of a terminal, the value of a parameter, the name of its model ("model") or a
/// choice, and `$(x)` for a value inside an expression.
struct SpiceData {
    /// Picks a text by the value of a parameter.
    struct Choice {
        QString name;
        QString parameter;
        QMap<QString, QString> texts;
    };

    /// False for a type that can't be simulated.
    bool known = false;
    /// The lines of the element; none for one that only names or shows something.
    QStringList lines;
    /// Instead of them, for an element whose model is a sub-circuit of the simulator's.
    QStringList subcircuitLines;
    /// Kind and parameters of the model that an element has which isn't given one of the library.
    QString model;
    /// A ".subckt" block that the lines name as their model, whose head has the model's name as
    /// `${model}`; mostly empty.
    QStringList definition;
    QVector<Choice> choices;
    /// By output variable: its value, over `v(terminal)` and `i(terminal)`, the current into it. A
    /// result "x" serves "x_ac", too.
    QMap<QString, QString> results;
    /// Terminals that direct current can flow between, in groups; "0" in a group is ground. Without
    /// any, it flows between all of them.
    QVector<QStringList> paths;
    /// Whether direct current flows between no terminals at all, as in a capacitor.
    bool blocks = false;
    /// Whether the type stands for the name of its net: that several nets bear it is meant then.
    bool joinsNets = false;
};

/// All that the library tells of an element type.
struct ElementTypeData {
    /// Complete name, "Element.Library".
    QString type;
    QString label;
    QString description;
    /// Other words that people look for it by.
    QStringList keywords;
    /// The letter or digit that starts placing one; mostly empty.
    QString shortcut;
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
    /// Absolute file name of an SVG or a bitmap; empty if the picture is `drawing`.
    QString picture;
    /// The picture itself, as SVG.
    QByteArray drawing;
    QPointF pictureOffset;
    /// Of a sub-circuit: see `SubCircuitProject`; else null.
    QDomDocument inside;
    SpiceData spice;
    /// The text of a type that is made of a text netlist; else empty.
    QString netlist;
};
