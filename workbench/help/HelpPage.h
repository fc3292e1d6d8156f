#pragma once

#include <QString>

class ElementDescription;

/// Writes the help page of an element type, on A5 paper, as
/// FOLDER/<Library>/<Library>_<Element>.pdf, where the editor looks for it. False if it can't be
/// written.
bool writeHelpPage(ElementDescription& description, const QString& folder);
