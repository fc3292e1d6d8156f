#pragma once

#include "ProjectFile.h"

#include <QByteArray>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QXmlStreamWriter>

#include <utility>
#include <vector>

/// Writes a project file as `ProjectFile::toBytes` tells, all at once or with the first part, which
/// is that of the circuit, in pieces: then its document never holds more than one of them.
class ProjectWriter {
public:
    /// The file must live as long, and may get further parts.
    explicit ProjectWriter(const ProjectFile& file);
    ProjectWriter(const ProjectWriter&) = delete;
    ProjectWriter& operator=(const ProjectWriter&) = delete;

    /// Writes what the first part holds, and takes it out. The root and the part must have their
    /// attributes. Records of elements come before those of nodes.
    void takePiece();
    /// Writes what is left; everything that has been written.
    QByteArray finish();

    /// Sorted: the document itself keeps attributes in the order of a hash.
    static std::vector<std::pair<QString, QString>> attributesOf(const QDomNode& element);

private:
    void number(QDomElement record);
    void begin(const QDomNode& element);
    void write(const QDomNode& node);
    void writeChildren(const QDomNode& parent);

    const ProjectFile& m_file;
    QByteArray m_bytes;
    QXmlStreamWriter m_out;
    // What the elements of the circuit are numbered by in the document, and by now.
    QHash<QString, int> m_numbers;
    int m_next = 0;
    // The part that has been begun, if any.
    QDomElement m_part;
};
