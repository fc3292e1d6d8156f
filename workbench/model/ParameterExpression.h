#pragma once

#include "IMathUtils.h"

/// Values that refer to global parameters: an expression in braces, such as "{2*Rload + 1k}". Names
/// are ASCII letters, digits and underscores and don't begin with a digit. All of these take time
/// that grows with the text and no faster, and any text at all.
namespace ParameterExpression {

/// Whether the text is such an expression, whatever its names may stand for.
bool isWellFormed(const QString& text);

/// See `IMathUtils::evaluate`.
IMathUtils::Evaluation evaluate(const QString& text, const IMathUtils::Lookup& lookup);

/// The text with another name for a parameter. It comes back as it is if it isn't an expression,
/// or if no expression can hold the new name.
QString renamed(const QString& text, const QString& from, const QString& to);

}  // namespace ParameterExpression
