#include "platform/qt/WindowDesign.hpp"

#include <QApplication>
#include <QDialog>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>

#include "core/Utf8.hpp"
#include "platform/qt/Contrast.hpp"

namespace Tamber {
namespace {

constexpr double PixelsPerPoint = 96.0 / 72.0;
constexpr int NarrowestStretch = 75;

// From the first of these sizes on, the system's font counts as large; at the second, the windows
// are as designed.
constexpr double LargePoints = 12;
constexpr double DesignPoints = 9;
constexpr QSizeF RoomForDialogs(520, 320);  // pixels, with the frame of the largest one

// The first family that is installed, else none: the system chooses its own substitutes by kind
// (any script face for a comic one), not by measures. The list of all families is fetched once and
// searched here: asking for a family by name first looks for substitutes.
QString InstalledOf(const QStringList& families) {
    static const QStringList all = QFontDatabase::families();
    const auto installed = std::ranges::find_if(
        families, [](const QString& family) { return all.contains(family, Qt::CaseInsensitive); });
    return installed != families.end() ? *installed : QString();
}

QFont FontOf(const QString& family, QFont::StyleHint hint, double points, bool bold) {
    QFont font;
    if (!family.isEmpty())
        font.setFamily(family);
    font.setStyleHint(hint);
    font.setPixelSize(qRound(points * PixelsPerPoint * DesignFactor()));
    font.setBold(bold);
    return font;
}

// One object for all controls. It goes with the application.
QStyle* BuiltInStyle(const char* name) {
    QStyle* style = qApp->findChild<QStyle*>(name, Qt::FindDirectChildrenOnly);
    if (!style && (style = QStyleFactory::create(name))) {
        style->setObjectName(name);
        style->setParent(qApp);
    }
    return style;
}

}  // namespace

double DesignFactor() {
    const QFont font = QApplication::font();
    const double points =
        font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() / PixelsPerPoint;
    if (points < LargePoints)
        return 1;
    const QSizeF screen = QGuiApplication::primaryScreen()->availableSize();
    const double fits = std::min(screen.width() / RoomForDialogs.width(),
                                 screen.height() / RoomForDialogs.height());
    return std::max(1.0, std::min(points / DesignPoints, fits));
}

int Pixels(int twips) {
    constexpr int twipsPerPixel = 15;
    const double factor = DesignFactor();
    return factor > 1 ? qRound(twips * factor / twipsPerPixel)
                      : (twips + twipsPerPixel / 2) / twipsPerPixel;
}

void Place(QWidget& control, const char* name, int left, int top, int width, int height) {
    control.setObjectName(name);
    control.setGeometry(Pixels(left), Pixels(top), Pixels(width), Pixels(height));
}

void DesignDialog(QDialog& dialog, const char* name, const char* caption, int width, int height) {
    dialog.setObjectName(name);
    dialog.setWindowTitle(caption);
    dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    dialog.setFont(SansSerifFont());
    dialog.setFixedSize(Pixels(width), Pixels(height));
}

void CentreOnScreen(QWidget& window) {
    // The frame that the desktop will give it is most likely its owner's.
    QSize size = window.size();
    if (const QWidget* owner = window.parentWidget(); owner && owner->isVisible())
        size += owner->window()->frameSize() - owner->window()->size();
    QRect place(QPoint(), size);
    place.moveCenter(window.screen()->availableGeometry().center());
    window.move(place.topLeft());
}

int HighlightedRow(const QListWidget& list) {
    const QList<QListWidgetItem*> highlighted = list.selectedItems();
    return highlighted.isEmpty() ? -1 : list.row(highlighted.first());
}

QIcon ApplicationIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 256})
        icon.addFile(QStringLiteral(":/icon/tamber-%1.png").arg(size), QSize(size, size));
    return icon;
}

QFont SansSerifFont(double points) {
    static const QString family =
        InstalledOf({"MS Sans Serif", "Microsoft Sans Serif", "Liberation Sans", "Arimo", "Arial",
                     "Nimbus Sans", "DejaVu Sans Condensed"});
    return FontOf(family, QFont::SansSerif, points, false);
}

QFont CourierFont(double points, bool bold) {
    static const QString family = InstalledOf({"Courier", "Courier New", "Liberation Mono",
                                               "Cousine", "Nimbus Mono PS", "DejaVu Sans Mono"});
    return FontOf(family, QFont::Monospace, points, bold);
}

QFont ComicFont(double points) {
    static const QString family =
        InstalledOf({"Comic Sans MS", "Comic Neue", "Comic Relief", "Humor Sans"});
    QFont font = FontOf(family, QFont::SansSerif, points, true);
    font.setItalic(true);
    return font;
}

QGroupBox* MakeFrame(const QString& caption, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setStyle(BuiltInStyle("Windows"));
    // The style writes a disabled caption twice, in these two colours.
    QPalette palette = frame->palette();
    const QColor ground = palette.color(QPalette::Disabled, QPalette::Window);
    const QColor ink = palette.color(QPalette::Disabled, QPalette::WindowText);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Readable(ink, ground));
    palette.setColor(QPalette::Disabled, QPalette::Light, ground);
    frame->setPalette(palette);
    return frame;
}

void DrawAsDesigned(QWidget& control) {
    control.setStyle(BuiltInStyle("Fusion"));
}

QString OutsideText(const std::string& bytes) {
    return QString::fromStdString(VisibleText(bytes));
}

QString OutsideToolTip(const std::string& bytes) {
    const QString text = OutsideText(bytes);
    return Qt::mightBeRichText(text) ? "<qt>" + text.toHtmlEscaped() + "</qt>" : text;
}

QFont Fitted(QFont font, const QString& text, int width) {
    font.setStretch(QFont::Unstretched);
    const int needed = QFontMetrics(font).horizontalAdvance(text);
    if (needed > width && width > 0)
        font.setStretch(std::max(NarrowestStretch, 100 * width / needed));
    return font;
}

QFont FittedWhole(QFont font, const QString& text, int width) {
    font = Fitted(font, text, width);
    while (font.pixelSize() > 1 && QFontMetrics(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

void ShowFitted(QLabel& label, const QString& text) {
    if (label.text() == text)
        return;
    const QFont font = Fitted(label.font(), text, label.width());
    if (font != label.font())
        label.setFont(font);
    label.setText(QFontMetrics(font).elidedText(text, Qt::ElideMiddle, label.width()));
    label.setAccessibleName(label.text() == text ? QString() : text);
}

}  // namespace Tamber
