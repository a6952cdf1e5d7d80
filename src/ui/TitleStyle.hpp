#pragma once

#include <QProxyStyle>

namespace Tamber {

/// The desktop's style for the titles of the views, made readable: a title too long for its bar is
/// shortened in its middle, and an inactive one stands out on dark palettes too.
class TitleStyle final : public QProxyStyle {
  public:
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

}  // namespace Tamber
