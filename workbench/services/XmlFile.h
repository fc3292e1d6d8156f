#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

#include <functional>
#include <optional>

class QXmlStreamReader;

// Reading XML files that may come from anywhere. Reasons are told without the file's name and
// continue a sentence that begins with it: "is empty".

/// The bytes of a regular file; nothing, with the reason, if it can't be read.
std::optional<QByteArray> readRegularFile(const QString& fileName, QString* reason);

/// What a file of one kind must be.
struct XmlKind {
    /// As users are told: "circuit file".
    const char* name;
    const char* rootTag;
};

/// Parses a text that must be of the kind. Refuses what no such file has and could harm the XML
/// reader: entity declarations and elements nested more than 1000 deep.
std::optional<QDomDocument> parseXmlFile(const QString& text, const XmlKind& kind, QString* reason);

/// Goes over a text that should be of the kind without making a document of it, which takes a
/// fraction of the time and no memory. `visit` is called at the start of every element with its
/// depth, 0 for the root. False if the text isn't of the kind, or for what only `parseXmlFile` can
/// judge, which tells the reason; some elements may then have been visited.
bool skimXmlFile(const QString& text, const XmlKind& kind,
                 const std::function<void(const QXmlStreamReader& reader, int depth)>& visit);

/// The same for bytes as they are in a file. False as well for any that aren't plain ASCII.
bool skimXmlFile(const QByteArray& bytes, const XmlKind& kind,
                 const std::function<void(const QXmlStreamReader& reader, int depth)>& visit);
