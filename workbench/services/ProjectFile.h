#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

#include <optional>

/// The document of a project file: the root `VortelProject` with the number of its format, and
/// under it one `ProjectPart` per part with its `ID`. Copies share the document.
class ProjectFile {
public:
    /// The format that is written, and the newest that is read.
    static constexpr int Format = 1;
    /// The part that holds the circuit and its drawing.
    static constexpr char CircuitPart[] = "VortelCircuit";

    /// A project without parts.
    ProjectFile();

    /// Nothing if that is no project file or one of a newer format. The reason continues a sentence
    /// that begins with the file's name: "is empty".
    static std::optional<ProjectFile> read(const QString& fileName, QString* reason);
    static std::optional<ProjectFile> fromBytes(const QByteArray& bytes, QString* reason);
    /// Whether `fromBytes` would take them, which costs more.
    static bool isReadable(const QByteArray& bytes, QString* reason);

    QDomDocument document() const { return m_document; }
    QDomElement root() const { return m_document.documentElement(); }
    /// The first part with the ID; a null element if there is none.
    QDomElement part(const QString& id) const;
    QDomElement addPart(const QString& id);

    /// A project with a document of its own.
    ProjectFile clone() const;

    /// Takes over copies of what `earlier` holds and this doesn't: parts, and attributes and
    /// records of parts, of programs that know more than this one.
    void keepStrangers(const ProjectFile& earlier);
    /// Of that the attributes only.
    void keepStrangeAttributes(const ProjectFile& earlier);
    /// How many of the records hold what is not known and nobody keeps. Records of elements and
    /// nodes are their objects' to keep, other parts are kept as a whole.
    int strangersThatGo() const;

    /// UTF-8 with an XML declaration: the same bytes for the same content. Numbers the elements of
    /// the circuit from 0, for what they were numbered by depends on earlier saves. Characters that
    /// XML can't hold are left out.
    QByteArray toBytes() const;

private:
    QDomDocument m_document;
};
