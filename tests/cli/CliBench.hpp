#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/Commands.hpp"
#include "core/TestFolder.hpp"
#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber::Cli {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// The machine as the fake desktop gives it, on its clock.
class FakeMachine final : public Machine {
  public:
    explicit FakeMachine(FakeDesktop& fake) : desktop(fake) {}

    EventDelivery& Events() override { return desktop.Events(); }
    std::unique_ptr<WindowTimer> NewTimer() override { return desktop.NewTimer(); }
    std::unique_ptr<SerialControl> NewSerialControl() override {
        return desktop.NewSerialControl();
    }
    std::vector<SerialPortEntry> SerialPorts() override { return ports; }
    std::chrono::microseconds Now() const override { return desktop.now; }
    bool Interrupted() const override;

    /// Interrupts the program when `time` has passed from now.
    void InterruptIn(std::chrono::milliseconds time);

    FakeDesktop& desktop;
    std::vector<SerialPortEntry> ports;
    int interruptAfter = -1;  ///< frames sent; below 0: never

  private:
    std::unique_ptr<WindowTimer> interruption_;
    bool interrupted_ = false;
};

/// What stands at `pointer` ("/board/name") of a JSON text: a string without its quotes, anything
/// else as JSON writes it. Nothing there is an exception, which fails the test.
std::string JsonFact(const std::string& json, const std::string& pointer);

/// What a run of the program left behind.
struct Ran {
    int Status = 0;
    std::string Out;
    std::string Errors;

    std::string Fact(const std::string& pointer) const { return JsonFact(Out, pointer); }
};

/// The program in the sample working folder, with a board on a clock of its own.
class CliTest : public testing::Test {
  protected:
    CliTest();

    /// Puts a device with faults into the socket; before that, it is a blank PIC16F84A.
    void Socket(const Simulator::DeviceShape& shape, const Simulator::FaultPlan& faults = {});

    Ran Run(std::vector<std::string> words, const std::string& input = {});

    /// The frames that went to the board since the last Run began.
    std::vector<std::string> Wire() const;

    std::string Sample(const std::string& name) const {
        return folder / "samples" / (name + ".hex");
    }

    TestFolder folder;
    FakeDesktop desktop;
    FakeMachine machine{desktop};
    std::unique_ptr<Simulator::BoardEngine> engine;
    std::unique_ptr<Simulator::FaultyBoard> board;
    bool terminal = false;  ///< the streams are one
    bool colour = false;
};

}  // namespace Tamber::Cli
