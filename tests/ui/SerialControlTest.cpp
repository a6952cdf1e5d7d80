// What every serial port promises, and what only the system's own does.

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <numeric>

#include "WindowBench.hpp"
#include "cli/TracedSerialControl.hpp"
#include "platform/qt/QtSerialControl.hpp"

namespace Tamber {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Each line is a port with a far end: what it sends arrives at the port, what the port sends is
// noted there.

// The system's port, on a pseudo-terminal.
struct SystemLine {
    SystemLine() {
        ::grantpt(farEnd);
        ::unlockpt(farEnd);
        path = ::ptsname(farEnd);
    }
    ~SystemLine() { Lose(); }

    void Send(const Bytes& bytes) {
        EXPECT_EQ(::write(farEnd, bytes.data(), bytes.size()), std::ssize(bytes));
    }
    std::string Noted() {
        Bytes bytes(1000);
        bytes.resize(static_cast<std::size_t>(::read(farEnd, bytes.data(), bytes.size())));
        return "> " + HexBytes(bytes);
    }
    void Lose() {
        if (farEnd >= 0)
            ::close(std::exchange(farEnd, -1));
    }
    // Returns how often something woke the program meanwhile.
    int LetEventsRun() {
        bool over = false;
        int wakings = 0;
        QTimer::singleShot(20, [&] { over = true; });
        for (; !over; ++wakings)
            events.DeliverEvents();
        return wakings;
    }

    int farEnd = ::posix_openpt(O_RDWR | O_NOCTTY);
    std::filesystem::path path;
    QtEventDelivery events;
    std::unique_ptr<SerialControl> control = std::make_unique<QtSerialControl>(events);
};

// The port of the fake desktop.
struct FakeLine {
    void Send(const Bytes& bytes) {
        desktop.received.insert(desktop.received.end(), bytes.begin(), bytes.end());
    }
    std::string Noted() { return desktop.record.back(); }
    void Lose() { desktop.portLost = true; }
    void LetEventsRun() {}

    FakeDesktop desktop;
    std::filesystem::path path = "com1";
    EventDelivery& events = desktop.Events();
    std::unique_ptr<SerialControl> control = desktop.NewSerialControl();
};

// The same, traced.
struct TracedLine : FakeLine {
    TracedLine() {
        control = std::make_unique<Cli::TracedSerialControl>(
            std::move(control), [this] { return desktop.now; }, [](const std::string&) {});
    }
};

template <typename Line>
struct EverySerialControl : testing::Test, Line {
    // Nothing comes from the port, and what is sent is lost, without a word.
    void ExpectSilence() {
        this->control->Output(Bytes(32));
        EXPECT_EQ(this->control->InBufferCount(), 0);
        Bytes bytes(3);
        this->control->Input(bytes);
        EXPECT_THAT(bytes, testing::IsEmpty());
    }
};
using Lines = testing::Types<SystemLine, FakeLine, TracedLine>;
TYPED_TEST_SUITE(EverySerialControl, Lines, );

TYPED_TEST(EverySerialControl, CarriesEveryByteUnchangedAndInOrder) {
    ASSERT_TRUE(this->control->PortOpen(this->path));
    Bytes all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    for (std::size_t from = 0; from < all.size(); from += 32) {
        const auto frame = std::span(all).subspan(from, 32);
        this->control->Output(frame);
        EXPECT_EQ(this->Noted(), "> " + HexBytes(frame));
    }
    for (const int count : {256, 512}) {  // counting takes nothing
        this->Send(all);
        while (this->control->InBufferCount() < count)
            this->events.DeliverEvents();
    }
    Bytes came(1);
    this->control->Input(came);
    EXPECT_EQ(HexBytes(came), HexBytes(all) + " " + HexBytes(all));
    this->ExpectSilence();
    EXPECT_FALSE(this->control->PortLost());
}

TYPED_TEST(EverySerialControl, IsSilentWhenItIsLost) {
    ASSERT_TRUE(this->control->PortOpen(this->path));
    this->Lose();
    this->LetEventsRun();
    EXPECT_TRUE(this->control->PortLost());
    this->ExpectSilence();
}

using SystemPort = EverySerialControl<SystemLine>;

TEST_F(SystemPort, IsSilentBeforeItIsOpen) {
    ExpectSilence();
    EXPECT_FALSE(control->PortLost());
}

// A hung-up line can be read from at any time, and has nothing to read.
TEST_F(SystemPort, DoesNotWakeTheProgramAgainAfterALineIsHungUp) {
    ASSERT_TRUE(control->PortOpen(path));
    Lose();
    errno = 0;  // that of an earlier call would be taken for a fault of the port
    EXPECT_LT(LetEventsRun(), 30);
}

TEST_F(SystemPort, RunsAt57600BaudWithEightBitsAndNoParity) {
    ASSERT_TRUE(control->PortOpen(path));
    termios line{};
    ASSERT_EQ(::tcgetattr(farEnd, &line), 0);
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
    EXPECT_EQ(line.c_cflag & (CSIZE | PARENB | CSTOPB), tcflag_t{CS8});
}

TEST_F(SystemPort, SaysWhatIsNoPort) {
    EXPECT_EQ(control->PortOpen("/no/such/port").error(),
              "No such file or directory (/no/such/port)");
    EXPECT_FALSE(control->PortOpen("/dev/null"));
    EXPECT_FALSE(control->PortLost());
}

}  // namespace
}  // namespace Tamber
