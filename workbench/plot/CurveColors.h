#pragma once

#include <QColor>

/// The colour of a curve by its number: neighbours differ in hue, and all stand out from the
/// background, be it dark or light.
QColor curveColor(int number, const QColor& background);

/// How much two colours differ in brightness, from 1 to 21, as WCAG 2 defines it.
double contrast(const QColor& one, const QColor& other);
