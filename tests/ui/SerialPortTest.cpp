#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>

#include "platform/qt/QtSerialControl.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber {
namespace {

// A port whose line ends in the test.
class SerialPort : public testing::Test {
  protected:
    SerialPort() : line_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        ::grantpt(line_);
        ::unlockpt(line_);
        path = ::ptsname(line_);
    }
    ~SerialPort() override { HangUp(); }

    void HangUp() {
        if (line_ >= 0)
            ::close(line_);
        line_ = -1;
    }

    // Lets events run for `time`; returns how often something woke the program.
    int Wakings(std::chrono::milliseconds time) {
        QtWindowTimer timer;
        bool ticked = false;
        int wakings = 0;
        timer.OnTick([&] { ticked = true; });
        timer.SetInterval(time);
        timer.Enable();
        for (; !ticked; ++wakings)
            events.DeliverEvents();
        return wakings;
    }

    QtEventDelivery events;
    QtSerialControl control{events};
    std::filesystem::path path;
    int line_;
};

TEST_F(SerialPort, CarriesEveryByteUnchanged) {
    ASSERT_TRUE(control.PortOpen(path));
    std::vector<std::uint8_t> all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<std::uint8_t>(byte));
    control.Output(all);
    std::vector<std::uint8_t> came(all.size());
    ASSERT_EQ(::read(line_, came.data(), came.size()), 256);
    EXPECT_EQ(came, all);
    ASSERT_EQ(::write(line_, all.data(), all.size()), 256);
    while (control.InBufferCount() < 256)
        events.DeliverEvents();
    control.Input(came);
    EXPECT_EQ(came, all);
    EXPECT_EQ(control.InBufferCount(), 0);
    EXPECT_FALSE(control.PortLost());
}

// A hung-up line can be read from at any time, and has nothing to read.
TEST_F(SerialPort, ALineThatIsHungUpIsClosedAndWakesNobodyAgain) {
    ASSERT_TRUE(control.PortOpen(path));
    HangUp();
    errno = 0;  // that of an earlier call would be taken for a fault of the port
    EXPECT_LT(Wakings(std::chrono::milliseconds(20)), 30);
    EXPECT_TRUE(control.PortLost());
    EXPECT_EQ(control.InBufferCount(), 0);
}

TEST_F(SerialPort, WhatIsNoPortSaysSo) {
    EXPECT_EQ(control.PortOpen("/no/such/port").error(),
              "No such file or directory (/no/such/port)");
    EXPECT_FALSE(control.PortOpen("/dev/null"));
    EXPECT_FALSE(control.PortLost());
}

}  // namespace
}  // namespace Tamber
