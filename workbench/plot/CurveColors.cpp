#include "CurveColors.h"

#include <algorithm>
#include <cmath>

namespace {

/// Far apart for neighbours, in degrees.
constexpr int Hues[] = {215, 20, 130, 325, 45, 185, 270, 95, 0, 240};
constexpr int HueCount = static_cast<int>(sizeof Hues / sizeof Hues[0]);
constexpr double LeastContrast = 3.5;

double luminance(const QColor& color) {
    const auto linear = [](double share) {
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, brighter] = std::minmax({luminance(one), luminance(other)});
    return (brighter + 0.05) / (darker + 0.05);
}

QColor curveColor(int number, const QColor& background) {
    const bool onDark = luminance(background) < 0.18;
    // A second round through the hues is paler.
    const double saturation = (number / HueCount) % 2 == 0 ? 0.85 : 0.45;
    double lightness = 0.5;
    QColor color;
    do {
        color = QColor::fromHslF(Hues[number % HueCount] / 360.0, saturation, lightness);
        lightness += onDark ? 0.02 : -0.02;
    } while (contrast(color, background) < LeastContrast && lightness > 0.05 && lightness < 0.95);
    return color;
}
