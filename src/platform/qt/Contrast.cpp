#include "platform/qt/Contrast.hpp"

#include <algorithm>
#include <cmath>

namespace Tamber {
namespace {

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor Readable(QColor ink, const QColor& ground, double contrast) {
    constexpr int lightest = 255;
    const int step = Contrast(ground, Qt::white) > Contrast(ground, Qt::black) ? 1 : -1;
    for (int lightness = ink.lightness();
         Contrast(ink, ground) < contrast && lightness >= 0 && lightness <= lightest;
         lightness += step)
        ink.setHsl(std::max(ink.hslHue(), 0), ink.hslSaturation(), lightness);
    return ink;
}

}  // namespace Tamber
