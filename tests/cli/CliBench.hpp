#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include "cli/Commands.hpp"
#include "core/TestFolder.hpp"
#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber::Cli {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// The machine as the fake desktop gives it, on its clock.
class FakeMachine final : public Machine {
  public:
    explicit FakeMachine(FakeDesktop& desktop) : desktop_(desktop) {}

    EventDelivery& Events() override { return desktop_.Events(); }
    std::unique_ptr<WindowTimer> NewTimer() override { return desktop_.NewTimer(); }
    std::unique_ptr<SerialControl> NewSerialControl() override {
        return desktop_.NewSerialControl();
    }
    std::vector<SerialPortEntry> SerialPorts() override { return ports; }
    std::chrono::microseconds Now() const override { return desktop_.now; }
    bool AwaitInput(int descriptor) override {
        pollfd wanted{descriptor, POLLIN, 0};
        return !Interrupted() && poll(&wanted, 1, -1) == 1;
    }
    bool Interrupted() const override { return interrupted && interrupted(); }

    std::vector<SerialPortEntry> ports;
    std::function<bool()> interrupted;  ///< not set: never

  private:
    FakeDesktop& desktop_;
};

/// What stands at `pointer` ("/board/name") of a JSON text: a string without its quotes, anything
/// else as JSON writes it. Nothing there is an exception, which fails the test.
std::string JsonFact(const std::string& json, const std::string& pointer);

/// What a run of the program left behind.
struct Ran {
    int Status = 0;
    std::string Out;
    std::string Errors;
};

/// The program in a copy of the sample working folder, which is the current one, with a board on a
/// clock of its own and a blank PIC16F84A in its socket.
class CliBench {
  public:
    CliBench();

    /// Puts another, blank device into the socket.
    void Insert(const Simulator::DeviceShape& shape, const Simulator::Identification& board = {});

    /// Lets the board have faults, with the device as it is; its requests count from 1 again.
    void Spoil(const Simulator::FaultPlan& faults);

    /// Has the port go away once that many frames are sent.
    void LosePortAfter(std::size_t frames);

    /// Has the user interrupt the program when that many frames are sent, or that time has passed.
    void InterruptAfter(std::size_t frames);
    void InterruptIn(std::chrono::milliseconds time);

    /// Has the board answer as the one in a trace did.
    void Replay(const std::string& trace);

    /// Runs the program with these words.
    Ran Run(const std::vector<std::string>& words, const std::string& input = {});

    /// Since the last Run began, the port opened and the frames sent: "open ttyS0", "01 54".
    std::vector<std::string> Wire() const;

    TestFolder folder;
    FakeDesktop desktop;
    FakeMachine machine{desktop};
    std::unique_ptr<Simulator::BoardEngine> engine;
    std::unique_ptr<Simulator::BoardLine> board;
    bool terminal = false;  ///< the streams are one, with colours

  private:
    std::unique_ptr<WindowTimer> interruption_;
};

}  // namespace Tamber::Cli
