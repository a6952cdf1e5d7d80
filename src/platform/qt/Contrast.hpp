#pragma once

#include <QColor>

namespace Tamber {

/// The contrast of two colours, 1 (none) to 21 (black and white), as the Web Content Accessibility
/// Guidelines define it.
double Contrast(const QColor& one, const QColor& other);

/// What large texts and the parts of controls need to be made out.
constexpr double ReadableContrast = 3;

/// `ink`, made lighter or darker until it stands out from `ground` by `contrast`, as far as it can.
QColor Readable(QColor ink, const QColor& ground, double contrast = ReadableContrast);

}  // namespace Tamber
