// The program's own start, in the order of its main: the splash, the main window, and the box that
// names the board, which is closed as soon as it is seen.

#include <QMessageBox>
#include <QTimer>
#include <filesystem>

#include "FirstPaint.hpp"
#include "StartUp.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "ui/Opening.hpp"

int main(int count, char** values) {
    using namespace Tamber;
    modFunc program;
    if (!StartUp(std::filesystem::current_path(), program))
        return EXIT_FAILURE;
    Bench::FirstPaintApplication application(count, values);
    QtPlatform platform(program.AppPath);
    QApplication::setQuitOnLastWindowClosed(false);
    QTimer boxes;
    QObject::connect(&boxes, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->close();
    });
    boxes.start(100);
    Opening opening(program, platform);
    opening.Begin();
    return QApplication::exec();
}
