#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

class ICircuit;
class QObject;

/// One line of the property panel: where its value lives in an object and how it is read and
/// written there. Holds no pointer to the object, which may die between two uses.
struct PropertyRow {
    QString group;
    QString name;
    /// Place among the object's `IEditableProperties`; -1 for a Qt property.
    int index = -1;
    bool writable = true;

    bool operator==(const PropertyRow& other) const;
    bool operator!=(const PropertyRow& other) const { return !(*this == other); }

    /// Whether it is a parameter of an element's type.
    bool isParameter() const;
    QVariant value(QObject* object) const;
    /// As the panel shows it.
    QString text(QObject* object) const;
    void setValue(QObject* object, const QVariant& value) const;

    /// For a number that refers to global parameters: its value, or why it has none.
    struct Note {
        QString text;
        bool isProblem = false;
    };
    Note note(QObject* object) const;

    /// The texts of a property that holds a small number with named values; else empty.
    QStringList choices() const;
    /// The values to choose from, of a text that takes no others: a device model, or a choice of
    /// the element's type; else empty.
    QStringList texts(QObject* object) const;
};

/// First the object's Qt properties, then its editable properties in their own order, without those
/// that are Qt properties too.
QVector<PropertyRow> propertyRowsOf(QObject* object);

/// The circuit whose global parameters the object's values may refer to; null if there is none.
ICircuit* circuitOf(QObject* object);

/// What the object is, such as "R1 (Resistor)"; for null, that there is none.
QString propertyTitleOf(QObject* object);
