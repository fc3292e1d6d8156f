#pragma once

#include <QString>

/// Numbers as engineers write them: a decimal number, an optional exponent, and an optional suffix
/// directly behind it: f p n u (or µ) m k (or K) M (or Meg) G T. "m" is milli and "M" mega, in
/// every locale. The suffix may take the place of the point, as in "4k7"; so may "R", as in "4R7".
namespace EngineeringNumber {

/// A valid text, cut where its suffix begins.
struct Parts {
    QString mantissa;  ///< with sign and exponent, without blanks around
    QString suffix;    ///< in its one canonical spelling, such as "M" or "µ"; may be empty
};

/// False for text that isn't wholly such a notation; the parts are then left alone.
bool split(const QString& text, Parts* parts);

/// 0 and false for text that is no such notation, or whose value no finite double can hold.
double parse(const QString& text, bool* ok);

/// A mantissa from 1 to 999 with its suffix, or an exponent where no suffix reaches; the fewest
/// digits that read back as the same double. Empty for a number that isn't finite.
QString format(double value);

}  // namespace EngineeringNumber
