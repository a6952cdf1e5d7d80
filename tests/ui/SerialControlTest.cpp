#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <numeric>

#include "WindowBench.hpp"
#include "platform/qt/QtSerialControl.hpp"

namespace Tamber {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The system's port on a pseudo-terminal.
struct SerialPort : testing::Test {
    SerialPort() {
        ::grantpt(farEnd);
        ::unlockpt(farEnd);
        path = ::ptsname(farEnd);
    }
    ~SerialPort() override { ::close(farEnd); }

    // Nothing comes from the port, and what is sent is lost, without a word.
    void ExpectSilence() {
        control.Output(Bytes(32));
        EXPECT_EQ(control.InBufferCount(), 0);
        Bytes bytes(3);
        control.Input(bytes);
        EXPECT_THAT(bytes, testing::IsEmpty());
    }

    int farEnd = ::posix_openpt(O_RDWR | O_NOCTTY);
    std::filesystem::path path;
    QtEventDelivery events;
    QtSerialControl control{events};
};

TEST_F(SerialPort, CarriesEveryByteUnchangedAndInOrder) {
    ASSERT_TRUE(control.PortOpen(path));
    termios line{};
    ASSERT_EQ(::tcgetattr(farEnd, &line), 0);
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
    EXPECT_EQ(line.c_cflag & (CSIZE | PARENB | CSTOPB), tcflag_t{CS8});
    Bytes all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    control.Output(all);
    Bytes came(1000);
    came.resize(static_cast<std::size_t>(::read(farEnd, came.data(), came.size())));
    EXPECT_EQ(came, all);
    ASSERT_EQ(::write(farEnd, all.data(), all.size()), 256);
    DeliverEventsUntil(events, [&] { return control.InBufferCount() >= 256; });
    control.Input(came);
    EXPECT_EQ(came, all);
    ExpectSilence();
    EXPECT_FALSE(control.PortLost());
}

TEST_F(SerialPort, IsSilentBeforeItIsOpenAndAfterItHasGone) {
    ExpectSilence();
    ASSERT_TRUE(control.PortOpen(path));
    ::close(std::exchange(farEnd, -1));
    errno = 0;  // that of an earlier call would be taken for a fault of the port
    int wakings = 0;
    bool over = false;
    QTimer::singleShot(20, [&] { over = true; });
    for (; !over; ++wakings)
        events.DeliverEvents();
    EXPECT_LT(wakings, 30) << "a line that is hung up can be read from all the time";
    EXPECT_TRUE(control.PortLost());
    ExpectSilence();
}

TEST_F(SerialPort, SaysWhatIsNoPort) {
    EXPECT_EQ(control.PortOpen("/no/such/port").error(),
              "No such file or directory (/no/such/port)");
    EXPECT_FALSE(control.PortOpen("/dev/null"));
    EXPECT_FALSE(control.PortLost());
}

}  // namespace
}  // namespace Tamber
