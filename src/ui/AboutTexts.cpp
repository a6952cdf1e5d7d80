#include "ui/AboutTexts.hpp"

#include <QDataStream>

namespace Tamber {
namespace {

constexpr QColor Blue(0, 0, 0xFF);
constexpr QColor DarkBlue(0, 0, 0x80);

// The build and the run may have different releases of Qt.
constexpr QDataStream::Version StreamVersion = QDataStream::Qt_6_0;

}  // namespace

const std::array<AboutText, 5> AboutTexts{{
    {"PIC Programmer", 720, 120, 3495, 615, 20.25, Qt::black},
    {"ver.1.01, 14/03/05", 720, 720, 3495, 375, 9.75, Qt::black},
    {TAMBER_MAKER, 240, 1320, 4455, 495, 15.75, Blue},
    {TAMBER_EMAIL, 720, 1800, 3495, 495, 9.75, DarkBlue},
    {TAMBER_WEB, 720, 2160, 3495, 495, 9.75, DarkBlue},
}};

QList<QPainterPath> ReadLettering(QIODevice& from) {
    QDataStream stream(&from);
    stream.setVersion(StreamVersion);
    QList<QPainterPath> outlines;
    stream >> outlines;
    return outlines;
}

void WriteLettering(QIODevice& to, const QList<QPainterPath>& outlines) {
    QDataStream stream(&to);
    stream.setVersion(StreamVersion);
    stream << outlines;
}

}  // namespace Tamber
