#include "FirstPaint.hpp"

#include <time.h>
#include <unistd.h>

#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace Tamber::Bench {
namespace {

constexpr int SettledAfter = 500;  // milliseconds

long PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::atol(line.c_str() + 6);
    return 0;
}

}  // namespace

double Nanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

FirstPaintApplication::FirstPaintApplication(int& count, char** values)
    : QApplication(count, values), start_(count > 1 ? std::atof(values[1]) : Nanoseconds()) {}

// The widgets of a window are painted one behind the other. The first event that is none of their
// paintings comes when all of them, and the way to the screen, are done.
bool FirstPaintApplication::notify(QObject* receiver, QEvent* event) {
    const bool paint = event->type() == QEvent::Paint && receiver->isWidgetType();
    if (paint)
        NotePainting(receiver);
    else if (painting_ && paintDepth_ == 0)
        PaintingEnds();
    if (event->type() == QEvent::Hide && qobject_cast<QDialog*>(receiver))
        DialogGoes();
    paintDepth_ += paint;
    const bool handled = QApplication::notify(receiver, event);
    paintDepth_ -= paint;
    return handled;
}

// The event posted here is the one that comes at once.
void FirstPaintApplication::NotePainting(QObject* receiver) {
    if (main_)
        return;
    if (!painting_)
        postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
    painting_ = true;
    paintingMain_ |=
        qobject_cast<QMainWindow*>(static_cast<QWidget*>(receiver)->window()) != nullptr;
}

void FirstPaintApplication::PaintingEnds() {
    painting_ = false;
    const double now = Nanoseconds();
    if (!first_)
        first_ = now;
    if (!paintingMain_ || main_)
        return;
    main_ = now - Waited();
    QTimer::singleShot(SettledAfter, [this] { Report(); });
}

void FirstPaintApplication::Report() const {
    std::printf("%.0f %.0f %ld\n", *first_ - start_, *main_ - start_, PeakMemory());
    std::fflush(stdout);
    ::_exit(0);
}

}  // namespace Tamber::Bench
