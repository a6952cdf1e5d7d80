#pragma once

#include <memory>
#include <string>

#include "Measure.hpp"
#include "platform/Platform.hpp"

namespace Tamber::Bench {

/// What passed through the seams of the platform, and when.
struct Notes {
    int Last = 0;     ///< the reply, counted from 1, whose taking ends the time
    int Outputs = 0;  ///< the first begins the time
    int Inputs = 0;
    Moment Begin;
    Moment End;
    std::string BoxText;  ///< of the last message box

    /// Forgets what passed and counts from here.
    void Arm(int last);
};

/// The desktop of the program with notes taken of the serial port's traffic. Message boxes are
/// noted and count as closed by the user at once.
class NotedPlatform final : public Platform, private MessageBoxes {
  public:
    NotedPlatform(Platform& platform, Notes& notes) : platform_(platform), notes_(notes) {}

    EventDelivery& Events() override { return platform_.Events(); }
    MessageBoxes& Boxes() override { return *this; }
    ViewerStarter& Viewer() override { return platform_.Viewer(); }
    std::unique_ptr<WindowTimer> NewTimer() override { return platform_.NewTimer(); }
    std::unique_ptr<SerialControl> NewSerialControl() override;
    std::unique_ptr<FileDialog> NewFileDialog() override { return platform_.NewFileDialog(); }

  private:
    void Show(const std::string& text, const std::string& title, BoxIcon icon) override;

    Platform& platform_;
    Notes& notes_;
};

}  // namespace Tamber::Bench
