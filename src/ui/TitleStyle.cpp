#include "ui/TitleStyle.hpp"

#include <QStyleOptionTitleBar>
#include <QWidget>

#include "platform/qt/Contrast.hpp"

namespace Tamber {
namespace {

// Some styles draw the buttons of an inactive title in black, whatever the palette.
void Lighten(QPalette& palette) {
    constexpr double onGradient = 5;  // the ground is a little darker in places
    constexpr double ofText = 4.5;
    const QColor ground = Readable(palette.color(QPalette::Window), Qt::black, onGradient);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::Text, Readable(palette.color(QPalette::Text), ground, ofText));
}

}  // namespace

void TitleStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || !title || !widget)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    QStyleOptionTitleBar readable = *title;
    const int width = subControlRect(control, title, SC_TitleBarLabel, widget).width();
    readable.text = title->fontMetrics.elidedText(widget->windowTitle(), Qt::ElideMiddle, width);
    if (!(title->titleBarState & State_Active))
        Lighten(readable.palette);
    QProxyStyle::drawComplexControl(control, &readable, painter, widget);
}

}  // namespace Tamber
