#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

class ICircuit;
class ProjectFile;
class QDomElement;

/// What the records of a circuit say, as far as it takes to tell afterwards what became of them.
struct CircuitRecords {
    struct Terminal {
        int elementId = 0;
        QString name;
    };

    int elementCount = 0;
    /// One entry per node record.
    QVector<QVector<Terminal>> nodes;
};

/// The records among the children of the element.
CircuitRecords circuitRecords(const QDomElement& parent);

/// Reads a circuit file's records. The editor itself skips in silence what it can't use; this finds
/// out beforehand whether the file is one at all. Nothing if it isn't, with the reason.
std::optional<CircuitRecords> readCircuitFile(const QString& fileName, QString* reason);

/// What else of a file has not become part of the project.
struct FurtherLosses {
    int textBoxes = 0;
    int outputVariables = 0;
    /// Records of which a part isn't known.
    int strangers = 0;
    /// As `ObjectLoadSave` tells them.
    QStringList values;
};

/// Compares the records with the circuit that was loaded from them: "2 elements and 1 node could
/// not be restored", or nothing if all are there. A node that lacks one of its terminals counts as
/// not restored.
QString lossesOf(const CircuitRecords& records, ICircuit& circuit, const FurtherLosses& further);

/// Takes out of the circuit's part the elements whose types nobody knows, what is joined to them of
/// its nodes and the text boxes that belong to them, and numbers what refers to the others by their
/// places accordingly. Returns how many text boxes went. Makes the document the file's own first.
int dropUnknownElements(ProjectFile* file, const std::function<bool(const QString&)>& isKnown);

/// What of the project a circuit file can't hold: "2 text boxes and 1 parameter", or nothing. Boxes
/// that the elements of `captioned` get by themselves when the file is opened don't count; null if
/// they get none.
QString beyondCircuitFile(const ProjectFile& project, ICircuit* captioned);
