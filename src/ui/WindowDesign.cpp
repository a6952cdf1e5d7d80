#include "ui/WindowDesign.hpp"

#include <QFontMetrics>
#include <QLabel>
#include <QStringDecoder>
#include <QWidget>

namespace Tamber {
namespace {

constexpr double PixelsPerPoint = 96.0 / 72.0;
constexpr int NarrowestStretch = 75;

QFont FontOf(const QStringList& families, QFont::StyleHint hint, double points, bool bold) {
    QFont font(families);
    font.setStyleHint(hint);
    font.setPixelSize(qRound(points * PixelsPerPoint));
    font.setBold(bold);
    return font;
}

}  // namespace

void Place(QWidget& control, const char* name, int left, int top, int width, int height) {
    control.setObjectName(name);
    control.setGeometry(Pixels(left), Pixels(top), Pixels(width), Pixels(height));
}

QFont SansSerifFont(double points) {
    return FontOf({"MS Sans Serif", "Microsoft Sans Serif", "Liberation Sans", "Arimo", "Arial",
                   "Nimbus Sans", "DejaVu Sans Condensed"},
                  QFont::SansSerif, points, false);
}

QFont CourierFont(double points, bool bold) {
    return FontOf({"Courier", "Courier New", "Liberation Mono", "Cousine", "Nimbus Mono PS",
                   "DejaVu Sans Mono"},
                  QFont::Monospace, points, bold);
}

QString OutsideText(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return utf8.hasError() ? QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()))
                           : text;
}

void ShowFitted(QLabel& label, const QString& text) {
    if (label.text() == text)
        return;
    QFont font = label.font();
    font.setStretch(QFont::Unstretched);
    const int needed = QFontMetrics(font).horizontalAdvance(text);
    if (needed > label.width() && label.width() > 0)
        font.setStretch(std::max(NarrowestStretch, 100 * label.width() / needed));
    if (font != label.font())
        label.setFont(font);
    label.setText(text);
}

}  // namespace Tamber
