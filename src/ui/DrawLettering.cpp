// Runs while the program is built: draws the texts of the about box as outlines, into the file that
// is named to it.

#include <QFile>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QTransform>
#include <cstdio>

#include "platform/qt/WindowDesign.hpp"
#include "ui/AboutTexts.hpp"

namespace {

using namespace Tamber;

// A text that is too wide in the narrowest letters is made smaller: the maker's lines may be of any
// length.
QPainterPath Outline(const AboutText& about) {
    const QString text = QString::fromUtf8(about.text);
    const double width = Pixels(about.width);
    const QFont font = Fitted(ComicFont(about.points), text, Pixels(about.width));
    const QFontMetricsF measures(font);
    const double advance = measures.horizontalAdvance(text);
    const double scale = advance > width ? width / advance : 1;
    QPainterPath outline;
    outline.addText(0, measures.ascent(), font, text);
    return QTransform::fromTranslate((width - advance * scale) / 2, 0)
        .scale(scale, scale)
        .map(outline);
}

int Fail(const char* reason) {
    std::fprintf(stderr, "tamber-lettering: %s\n", reason);
    return 1;
}

}  // namespace

int main(int count, char** values) {
    QGuiApplication application(count, values);
    QList<QPainterPath> outlines;
    for (const AboutText& about : AboutTexts) {
        outlines.append(Outline(about));
        if (outlines.last().isEmpty() && *about.text)
            return Fail("no font is installed that has outlines");
    }
    QFile file(count == 2 ? values[1] : "");
    if (!file.open(QIODevice::WriteOnly))
        return Fail("the file that is named to it cannot be opened");
    WriteLettering(file, outlines);
    return file.flush() ? 0 : Fail("the file that is named to it cannot be written");
}
