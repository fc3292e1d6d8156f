#pragma once

#include "ElementTypeData.h"

#include <QPoint>
#include <QString>
#include <QVector>

#include <optional>

/// The type of a box: an element that stands for something the library has no type for, as in a
/// drawing that comes from another program. The complete name of the type tells all there is to
/// know, "Label;Device;terminal,x,y;terminal,x,y.Box", so that a file needs nothing beside it.
struct BoxType {
    struct Terminal {
        QString name;
        QPoint place;  ///< from the middle of the box, on multiples of 10
    };

    /// The part of a type's name behind the dot.
    static constexpr char Library[] = "Box";

    QString label;
    /// The letter by which the simulator knows the device, whose line names the terminals in their
    /// order and ends with the box's value; null for one that can't be simulated.
    QChar device;
    QVector<Terminal> terminals;

    /// Letters, digits and "_+-" of the text, and no more than a label needs.
    static QString plain(const QString& text);
    /// A name for a terminal like the wanted one that no other terminal has.
    QString freeName(const QString& wanted) const;

    QString name() const;
    /// Nothing if that names no box.
    static std::optional<BoxType> fromName(const QString& name);
    ElementTypeData data() const;
};
