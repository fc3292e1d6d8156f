#pragma once

#include "ProjectFile.h"

#include <QStringList>

#include <optional>

class ElementLibrary;
class SpiceModels;

/// A drawing of another program as a project, and what became of what has no counterpart.
struct ImportedProject {
    ProjectFile project;
    /// One sentence each; those on an element begin with its name.
    QStringList remarks;
};

/// Whether the file's name says that it is another program's.
bool isForeignFile(const QString& fileName);

/// Makes a project of an LTspice schematic (`.asc`), with the symbols (`.asy`) and the
/// drawings of sub-circuits that lie beside it.
/// Wires are laid as they were drawn, 20 scene units for each 16 of the file. Elements get the
/// nearest place at which their terminals fit, and pieces of wire to where those of the symbols
/// were. What has no element type becomes a box, what is a drawing of its own a sub-circuit.
/// Nothing, with the reason, which continues a sentence that begins with the file's name, if that
/// is no schematic.
std::optional<ImportedProject> importAsc(const QString& fileName, const ElementLibrary& library,
                                         const SpiceModels& models, QString* reason);
