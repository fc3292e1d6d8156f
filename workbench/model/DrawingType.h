#pragma once

#include "BoxType.h"
#include "ElementTypeData.h"

#include <QDomDocument>
#include <QString>

#include <optional>

/// Sub-circuit types of a project's own, as an imported drawing brings them: a box whose terminals
/// bear the names of the inside's nets. Such a type carries its inside in its name, so that files,
/// copies and undo keep it without knowing.
namespace DrawingType {

/// The library that all these types belong to.
constexpr char Library[] = "Drawings";

/// The complete name of the type; `part` is the circuit's part of a project.
QString nameFor(const BoxType& box, const QDomDocument& part);

/// What the complete name tells. Nothing if it is no such name, or a terminal has no net inside.
std::optional<ElementTypeData> dataOf(const QString& type);

/// By which the simulator knows it: no longer than a line can be.
QString shortName(const QString& type);

}  // namespace DrawingType
