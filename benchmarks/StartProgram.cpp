// The program's own start, in the order of its main: the splash, the main window, and the box that
// tells of the board.

#include <QTimer>
#include <QWidget>
#include <filesystem>
#include <memory>

#include "FirstPaint.hpp"
#include "Measure.hpp"
#include "StartUp.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "ui/Opening.hpp"

namespace Tamber::Bench {
namespace {

// The desktop of the program with two differences: the time is taken that its waits sleep, and a
// box is closed a tenth of a second after it has opened.
class StartPlatform final : public Platform, private EventDelivery, private MessageBoxes {
  public:
    explicit StartPlatform(Platform& platform) : platform_(platform) {}

    EventDelivery& Events() override { return *this; }
    MessageBoxes& Boxes() override { return *this; }
    ViewerStarter& Viewer() override { return platform_.Viewer(); }
    std::unique_ptr<WindowTimer> NewTimer() override { return platform_.NewTimer(); }
    std::unique_ptr<SerialControl> NewSerialControl() override {
        return platform_.NewSerialControl();
    }
    std::unique_ptr<FileDialog> NewFileDialog() override { return platform_.NewFileDialog(); }

    double SleptNanoseconds() const { return slept_ * 1e9; }

  private:
    // Work done between the waits counts; only what the processor did not use is left out.
    void DeliverEvents() override {
        const Moment begin = Moment::Now();
        platform_.Events().DeliverEvents();
        const Spent spent = Moment::Now().Since(begin);
        slept_ += spent.Wall - spent.Processor;
    }

    void Show(const std::string& text, const std::string& title, BoxIcon icon) override {
        QTimer::singleShot(100, [] {
            if (QWidget* box = QApplication::activeModalWidget())
                box->close();
        });
        platform_.Boxes().Show(text, title, icon);
    }

    Platform& platform_;
    double slept_ = 0;
};

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber;
    modFunc program;
    std::error_code error;
    if (const auto failure = StartUp(std::filesystem::current_path(error), program)) {
        std::fprintf(stderr, "%s\n", Describe(*failure).c_str());
        return EXIT_FAILURE;
    }
    Bench::FirstPaintApplication application(count, values);
    QtPlatform qt(program.AppPath);
    Bench::StartPlatform platform(qt);
    QApplication::setQuitOnLastWindowClosed(false);
    double splashStood = 0;
    application.Waited = [&] { return splashStood + platform.SleptNanoseconds(); };
    application.DialogGoes = [&] {
        if (splashStood == 0)
            splashStood = Bench::Nanoseconds() - application.FirstPainted();
    };
    Opening opening(program, platform);
    opening.Begin();
    return QApplication::exec();
}
