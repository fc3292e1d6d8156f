#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <QVector>

/// An element type as the palette, the menu and the chooser show it.
struct PaletteEntry {
    /// Complete type name, "Element.Library".
    QString type;
    QString label;
    QString library;
    QString description;
    QIcon icon;
    /// Other words that it is looked for by.
    QStringList keywords = {};
    /// The letter that starts placing it, or empty.
    QString shortcut = {};
};

/// How well the entry fits what was typed, the best first: 0 if its label begins with it, and so
/// on; -1 if it doesn't fit. Of several words each must fit. Everything fits an empty text.
int paletteRank(const PaletteEntry& entry, const QString& text);

/// The entries that fit, the best first; those that fit alike stay in their order.
QVector<PaletteEntry> bestEntries(const QVector<PaletteEntry>& entries, const QString& text);
