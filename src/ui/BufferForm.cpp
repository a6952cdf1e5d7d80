#include "ui/BufferForm.hpp"

#include <QWheelEvent>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {

bool ForLetters(const QEvent& wheel) {
    return wheel.type() == QEvent::Wheel &&
           static_cast<const QWheelEvent&>(wheel).modifiers() & Qt::ControlModifier;
}

BufferForm::BufferForm(const char* name, const char* caption, int width, int height)
    : width_(width), height_(height) {
    setObjectName(name);
    setWindowTitle(caption);
}

void BufferForm::ShowLetters(int percent) {
    percent_ = percent;
    Arrange();
}

QSize BufferForm::DesignSize() const {
    return {Scaled(width_), Scaled(height_)};
}

void BufferForm::Put(QWidget& control, const char* name, int left, int top, int width,
                     int height) const {
    control.setObjectName(name);
    control.setGeometry(Scaled(left), Scaled(top), Scaled(width), Scaled(height));
}

int BufferForm::Scaled(int twips) const {
    return Pixels(twips * percent_ / 100);
}

QFont BufferForm::CaptionFont() const {
    return SansSerifFont(8.25 * percent_ / 100);
}

QFont BufferForm::DumpFont(bool bold) const {
    return CourierFont(9.75 * percent_ / 100, bold);
}

void BufferForm::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

}  // namespace Tamber
