#include "ui/NoticeText.hpp"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace Tamber {
namespace {

constexpr int FewestPixels = 100;

}  // namespace

NoticeText::NoticeText(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void NoticeText::SetText(const QString& text) {
    text_ = text;
    updateGeometry();
    update();
}

// The last line takes all that is left and is shortened when it is drawn.
QStringList NoticeText::Lines(int width) const {
    QTextLayout layout(text_, font(), this);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < LinesMax;
         line = layout.createLine()) {
        line.setLineWidth(width);
        const bool last = lines.size() == LinesMax - 1;
        lines.append(text_.mid(line.textStart(), last ? -1 : line.textLength()));
    }
    layout.endLayout();
    return lines;
}

int NoticeText::heightForWidth(int width) const {
    return fontMetrics().lineSpacing() * std::max<int>(1, static_cast<int>(Lines(width).size()));
}

QSize NoticeText::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_), fontMetrics().lineSpacing()};
}

QSize NoticeText::minimumSizeHint() const {
    return {FewestPixels, fontMetrics().lineSpacing()};
}

void NoticeText::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int spacing = fontMetrics().lineSpacing();
    const QStringList lines = Lines(width());
    int top = (height() - spacing * static_cast<int>(lines.size())) / 2;
    for (const QString& line : lines) {
        painter.drawText(QRect(0, top, width(), spacing), Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(line.trimmed(), Qt::ElideRight, width()));
        top += spacing;
    }
}

}  // namespace Tamber
