#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <numeric>

#include "WindowBench.hpp"
#include "cli/SimulatedControl.hpp"
#include "cli/TracedSerialControl.hpp"
#include "platform/qt/QtSerialControl.hpp"

namespace Tamber {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Each line is a port with a far end: what the one sends comes out at the other.
struct SystemLine {
    SystemLine() {
        ::grantpt(farEnd);
        ::unlockpt(farEnd);
        path = ::ptsname(farEnd);
    }
    ~SystemLine() { Lose(); }

    void Send(const Bytes& bytes) { ASSERT_EQ(::write(farEnd, bytes.data(), bytes.size()), 256); }
    std::string Arrived() {
        Bytes bytes(1000);
        bytes.resize(static_cast<std::size_t>(::read(farEnd, bytes.data(), bytes.size())));
        return "> " + HexBytes(bytes);
    }
    void Lose() { ::close(std::exchange(farEnd, -1)); }

    // How often something wakes the program in 20 ms.
    int Wakings() {
        int wakings = 0;
        bool over = false;
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

// The port of the desktop with a clock of its own.
struct FakeLine {
    void Send(const Bytes& bytes) { desktop.received = bytes; }
    std::string Arrived() { return desktop.record.back(); }
    void Lose() { desktop.portLost = true; }
    int Wakings() { return 0; }

    FakeDesktop desktop;
    std::filesystem::path path = "com1";
    EventDelivery& events = desktop.Events();
    std::unique_ptr<SerialControl> control = desktop.NewSerialControl();
};

struct TracedLine : FakeLine {
    TracedLine() {
        control = std::make_unique<Cli::TracedSerialControl>(
            std::move(control), [this] { return desktop.now; }, [](const std::string&) {});
    }
};

// A board that sends what the test says.
struct SimulatedLine : Simulator::BoardLine {
    void Send(const Bytes& bytes) { toHost = bytes; }
    std::string Arrived() { return "> " + HexBytes(fromHost); }
    void Lose() { lost = true; }
    int Wakings() { return 0; }

    void Receive(std::span<const std::uint8_t> bytes) override {
        fromHost.insert(fromHost.end(), bytes.begin(), bytes.end());
    }
    std::optional<std::chrono::microseconds> NextDue() const override { return {}; }
    void Take(Bytes& bytes) override {
        const Bytes taken = std::exchange(toHost, {});
        bytes.insert(bytes.end(), taken.begin(), taken.end());
    }
    bool HungUp() const override { return lost; }

    Bytes fromHost, toHost;
    bool lost = false;
    std::filesystem::path path = "com1";
    FakeDesktop desktop;
    EventDelivery& events = desktop.Events();
    std::unique_ptr<SerialControl> control = std::make_unique<Cli::SimulatedControl>(*this);
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
using Lines = testing::Types<SystemLine, FakeLine, TracedLine, SimulatedLine>;
TYPED_TEST_SUITE(EverySerialControl, Lines, );

TYPED_TEST(EverySerialControl, CarriesEveryByteUnchangedAndInOrder) {
    ASSERT_TRUE(this->control->PortOpen(this->path));
    Bytes all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    this->control->Output(all);
    EXPECT_EQ(this->Arrived(), "> " + HexBytes(all));
    this->Send(all);
    DeliverEventsUntil(this->events, [&] { return this->control->InBufferCount() >= 256; });
    Bytes came;
    this->control->Input(came);
    EXPECT_EQ(came, all);
    this->ExpectSilence();
    EXPECT_FALSE(this->control->PortLost());
}

TYPED_TEST(EverySerialControl, IsSilentBeforeItIsOpenAndAfterItHasGone) {
    this->ExpectSilence();
    ASSERT_TRUE(this->control->PortOpen(this->path));
    this->Lose();
    errno = 0;  // that of an earlier call would be taken for a fault of the port
    EXPECT_LT(this->Wakings(), 30) << "a line that is hung up can be read from all the time";
    EXPECT_TRUE(this->control->PortLost());
    this->ExpectSilence();
}

using SerialPort = EverySerialControl<SystemLine>;

TEST_F(SerialPort, RunsAt57600Baud) {
    ASSERT_TRUE(control->PortOpen(path));
    termios line{};
    ASSERT_EQ(::tcgetattr(farEnd, &line), 0);
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
}

// The far end's driver has stopped the output, as a board does that is busy.
TEST_F(SerialPort, SendsTheWholeFrameOnceAStoppedLineFlows) {
    ASSERT_TRUE(control->PortOpen(path));
    const int line = ::open(path.c_str(), O_RDWR | O_NOCTTY);
    ::tcflow(line, TCOOFF);
    control->Output(Bytes(21, 0x14));
    EXPECT_LT(Wakings(), 5) << "it waits without being woken again and again";
    EXPECT_FALSE(control->PortLost());
    ::tcflow(line, TCOON);
    Wakings();
    EXPECT_EQ(Arrived(), "> " + HexBytes(Bytes(21, 0x14)));
    ::close(line);
}

TEST_F(SerialPort, TakesInWhatTheDriverHolds) {
    ASSERT_TRUE(control->PortOpen(path));
    Send(Bytes(256));
    control->TakeIn();
    EXPECT_EQ(control->InBufferCount(), 256);
}

TEST_F(SerialPort, SaysWhatIsNoPort) {
    EXPECT_EQ(control->PortOpen("/no/such/port").error(),
              "No such file or directory (/no/such/port)");
    EXPECT_FALSE(control->PortOpen("/dev/null"));
}

}  // namespace
}  // namespace Tamber
