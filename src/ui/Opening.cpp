#include "ui/Opening.hpp"

#include <QApplication>
#include <QFontMetrics>
#include <QIcon>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

// What the main window takes time for, done while the splash stands: the readers of pictures, the
// system's list of fonts, and the letters of those that the windows show.
void MakeReady() {
    QApplication::setWindowIcon(ApplicationIcon());
    const QString letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz :/.()";
    for (const QFont& font :
         {QApplication::font(), SansSerifFont(), CourierFont(9.75, true), CourierFont(9.75, false)})
        QFontMetrics(font).horizontalAdvance(letters);
}

}  // namespace

Opening::Opening(modFunc& program, Platform& platform)
    : program_(program),
      platform_(platform),
      splash_(nullptr, platform, [this] { ShowMainWindow(); }) {
    splash_.OnceOnScreen([] { MakeReady(); });
}

void Opening::Begin() {
    splash_.show();
}

// The window is not made any earlier: its time-out timer runs from then on, and the board gets the
// whole of its first interval.
void Opening::ShowMainWindow() {
    window_ = std::make_unique<mdiMain>(program_, platform_);
    window_->MDIForm_Load();
    window_->show();
}

}  // namespace Tamber
