#pragma once

class QDomElement;
class QObject;
class QString;

// What records of elements and nodes hold that this version doesn't know. It stays with the object
// that was read from the record, through clipboard and history too, and is written back with it.

namespace StrangeRecords {

/// True for an entry `<Property Name="..."/>` or `<Parameter Name="..."/>` that means something.
using IsKnownEntry = bool (*)(QObject* object, const QString& tag, const QString& name);

void remember(QObject* object, const QDomElement& record, IsKnownEntry isKnown);
/// Call it when all that is known stands in the record.
void write(QObject* object, QDomElement record);

}  // namespace StrangeRecords
