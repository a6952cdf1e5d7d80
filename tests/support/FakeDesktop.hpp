#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.hpp"
#include "simulator/BoardLine.hpp"

namespace Tamber {

class FakeTimer;

/// A desktop with a clock of its own. It stands still while the program works and jumps to the next
/// thing that is due (a timer's tick, a byte from the board) when the program lets events run, so
/// that a time-out takes no time. What goes over the wire and what boxes say is kept in one record.
class FakeDesktop : public Platform,
                    private EventDelivery,
                    private MessageBoxes,
                    private ViewerStarter {
  public:
    using Time = std::chrono::microseconds;

    EventDelivery& Events() override { return *this; }
    MessageBoxes& Boxes() override { return *this; }
    ViewerStarter& Viewer() override { return *this; }
    std::unique_ptr<WindowTimer> NewTimer() override;
    std::unique_ptr<SerialControl> NewSerialControl() override;
    std::unique_ptr<FileDialog> NewFileDialog() override;

    Simulator::BoardClock Clock() {
        return [this] { return now; };
    }

    Time now{0};
    Simulator::BoardLine* board = nullptr;   ///< what hangs on the port; null: nothing does
    std::filesystem::path openedPath;        ///< the port that was opened last
    std::optional<std::string> portFailure;  ///< why the port cannot be opened
    bool portLost = false;                   ///< the port has gone away
    std::vector<std::uint8_t> received;      ///< waiting at the port
    std::vector<std::string> record;         ///< "> 01 52", "tick 100", "box ...", in order
    std::function<void()> intrude;           ///< runs whenever events are delivered
    std::function<void()> whileBoxIsOpen;    ///< runs while a message box is on the screen
    std::function<void()> failViewer;        ///< tells that the viewer started last has failed
    std::optional<std::filesystem::path> chosenFile;  ///< what the user picks; none: Cancel

  protected:
    void DeliverEvents() override;

  private:
    friend class FakeTimer;
    friend class FakeSerialControl;
    friend class FakeFileDialog;

    void Show(const std::string& text, const std::string& title, BoxIcon icon) override;
    void Start(const std::string& program, const std::vector<std::string>& arguments,
               std::function<void()> failed) override;
    std::optional<Time> NextDue() const;

    std::vector<FakeTimer*> timers_;
};

/// `bytes` in hexadecimal with a blank between them.
std::string HexBytes(std::span<const std::uint8_t> bytes);

}  // namespace Tamber
