#pragma once

#include <QByteArray>
#include <QMetaType>

class ICircuitOutputVariable;
class QObject;

/// What a row of the output variables list holds, under `Qt::UserRole` in column 0. None of the
/// pointers is owned. The two objects serve only to tell by their address whose property changed:
/// they are compared and never looked at.
class ItemData {
public:
    /// Bytes of a saved value.
    static constexpr int SavedSize = 3 * int(sizeof(void*)) + 1;

    ICircuitOutputVariable* outputVariable = nullptr;
    bool acCapable = false;
    QObject* nodeObject = nullptr;
    QObject* elementObject = nullptr;

    /// Writes the fields as they lie in memory, so that only this process can read them.
    void save(QByteArray& array);
    /// Reads what `save` wrote; an array of any other size changes nothing. The addresses are taken
    /// unchecked.
    void load(QByteArray& array);
};

Q_DECLARE_METATYPE(ItemData)
