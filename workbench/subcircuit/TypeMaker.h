#pragma once

#include <QString>

class ElementLibrary;

/// Makes a sub-circuit type of a project: `target` is FOLDER/Name, to which ".json", ".svg" and
/// ".vprj" are added; the folder is made if there is none. The terminals are the nets that bear a
/// port, on the side of the picture to which the port stands, in the order of their places. Writes
/// nothing over a type that is there. Answers why it could not, else an empty text.
QString makeSubCircuitType(const ElementLibrary& library, const QString& project,
                           const QString& target);
