#include "ui/Opening.hpp"

#include <QApplication>
#include <QFontMetrics>
#include <QIcon>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

// Work that the main window would take time for, done while the splash is on the screen: loading
// the readers of picture files, and the letters of the fonts that the windows use.
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
    qApp->installEventFilter(this);
}

void Opening::Begin() {
    splash_.show();
}

void Opening::End() {
    if (window_)
        window_->EndProgram();
    else
        QCoreApplication::exit(0);
}

bool Opening::eventFilter(QObject* application, QEvent* event) {
    if (application != qApp || event->type() != QEvent::Quit)
        return false;
    End();
    return true;
}

// The window is not made any earlier: its time-out timer runs from then on, and the board gets the
// whole of the first interval.
void Opening::ShowMainWindow() {
    window_ = std::make_unique<mdiMain>(program_, platform_);
    window_->MDIForm_Load();
    window_->show();
}

}  // namespace Tamber
