#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <array>

class QIODevice;

namespace Tamber {

/// A text of the about box, centred at the top of its place. Measures are in twips and points.
struct AboutText {
    const char* text;
    int left, top, width, height;
    double points;
    QColor color;
};

/// The texts `lblAbout0` to `lblAbout4`, in this order.
extern const std::array<AboutText, 5> AboutTexts;

/// The outlines of the texts, in the same order and in pixels of their places. They are drawn while
/// the program is built: the splash is the first thing on the screen, and the system's fonts, which
/// may be thousands, can be read behind it. The letters are the same on every machine, too.
/// What a broken stream still holds is returned; a device that cannot be written tells so itself.
QList<QPainterPath> ReadLettering(QIODevice& from);
void WriteLettering(QIODevice& to, const QList<QPainterPath>& outlines);

}  // namespace Tamber
