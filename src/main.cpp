#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "StartUp.hpp"
#include "platform/qt/Interruption.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/Opening.hpp"

namespace {

using namespace Tamber;

// Where no display can be opened, Qt would end the program by itself. A platform without a display,
// named after the desktop's own, lets the program say what is wrong. The user's choice goes first.
void LetDisplayBeMissing() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
                                       ? "wayland;xcb;offscreen"
                                       : "xcb;offscreen");
}

// What to do about a start that failed in a folder without its files.
std::string WorkingFolderHint() {
    std::string hint = "\n\nTamber works in the folder that it is started in.";
    const QFileInfo sample(QCoreApplication::applicationDirPath() + "/../share/tamber/data");
    if (!sample.isDir())
        return hint;
    return hint +
           " tamber-start, or the desktop's menu, starts it in a folder of your own and makes that "
           "folder the first time. For another folder, copy the sample folder " +
           sample.canonicalFilePath().toStdString() + " and start it there.";
}

}  // namespace

int main(int, char** argv) {
    int argumentCount = 1;  // the program takes no options, Qt's own included
    modFunc program;
    std::error_code error;
    const auto started = StartUp(std::filesystem::current_path(error), program);

    const bool displayChosen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    LetDisplayBeMissing();
    QApplication application(argumentCount, argv);
    QGuiApplication::setDesktopFileName("tamber");
    const bool display = displayChosen || QGuiApplication::platformName() != "offscreen";

    if (!started)
        std::cerr << "Tamber: " << Describe(started.error()) << std::endl;
    if (!display)
        std::cerr << "Tamber: no display can be opened; start it on a desktop." << std::endl;

    QtPlatform platform(program.AppPath);
    if (!started && display) {
        QApplication::setWindowIcon(ApplicationIcon());
        platform.Boxes().Show(Describe(started.error()) + WorkingFolderHint(), ProgramTitle,
                              BoxIcon::Critical);
    }
    if (!started || !display)
        return EXIT_FAILURE;

    // The main window says when the program ends; a box closed before it appears does not.
    QApplication::setQuitOnLastWindowClosed(false);
    Opening opening(program, platform);
    Interruption interruption(EXIT_FAILURE, "");
    interruption.OnNoted([&opening] { opening.End(); });
    opening.Begin();
    return QApplication::exec();
}
