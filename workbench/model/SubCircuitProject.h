#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QString>

/// The project that a sub-circuit type has inside, as a document of root "ProjectPart" with the
/// records of the circuit's project part: "CircuitElement", "CircuitNode", "GlobalVar" and the text
/// boxes.
namespace SubCircuitProject {

/// Takes a project file (of which only the circuit's part counts), a file with that part alone, or
/// a "CircuitInfo" document as `pack` makes it. A file that is none of these gives a null document
/// and the reason in `*problem`.
QDomDocument read(const QString& fileName, QString* problem);

/// A document of root "CircuitInfo" whose child "VortelProjectFile" holds the part, compressed.
QDomDocument pack(const QDomDocument& part);

/// The part that `qCompress` has made of a document, if it is no larger than that, in bytes; else a
/// null document and the reason in `*problem`.
QDomDocument unpack(const QByteArray& packed, quint32 largest, QString* problem);

/// The records of a tag, in the order of the document.
QList<QDomElement> records(const QDomDocument& part, const char* tag);

}  // namespace SubCircuitProject
