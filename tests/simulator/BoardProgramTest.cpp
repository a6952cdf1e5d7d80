#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "core/TestFolder.hpp"
#include "endtoend/Desktop.hpp"
#include "simulator/BoardBench.hpp"
#include "simulator/DeviceFile.hpp"

namespace Tamber::Simulator {
namespace {

namespace fs = std::filesystem;

// Reads until `length` bytes have come or the other end has gone; patience is far above what
// anything here takes.
Bytes ReadFrom(int descriptor, std::size_t length) {
    constexpr int patienceMilliseconds = 20'000;
    Bytes bytes;
    pollfd wanted{descriptor, POLLIN, 0};
    while (bytes.size() < length && ::poll(&wanted, 1, patienceMilliseconds) == 1) {
        std::array<std::uint8_t, 4096> portion{};
        const auto count = ::read(descriptor, portion.data(), portion.size());
        if (count <= 0)
            break;
        bytes.insert(bytes.end(), portion.begin(), portion.begin() + count);
    }
    return bytes;
}

// The built program, and what it says on either stream, in "log".
struct BoardProgramTest : testing::Test {
    TestFolder folder;
    std::string link = folder / "com1";
    std::string saved = folder / "device.hex";
    std::optional<Process> program;

    void Start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), BOARD_PROGRAM);
        program.emplace(arguments, folder.Path(), folder / "log");
    }

    void StartOnLink(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--link", "com1"});
        Start(arguments);
        ASSERT_TRUE(Await([&] { return Said("ready /dev/pts/") || program->Ended(); }));
    }

    // A host that comes, sends `request`, reads `length` bytes of answers and goes.
    Bytes Ask(const Bytes& request, std::size_t length) const {
        const int port = ::open(link.c_str(), O_RDWR | O_NOCTTY);
        const auto count = ::write(port, request.data(), request.size());
        const Bytes reply = count > 0 ? ReadFrom(port, length) : Bytes{};
        ::close(port);
        return reply;
    }

    bool Said(const std::string& text) const {
        return Contents(folder / "log").find(text) != std::string::npos;
    }

    int Finish() {
        return Await([&] { return program->Ended(); }) ? program->Wait() : -1;
    }

    bool LinkThere() const { return fs::is_symlink(fs::symlink_status(link)); }
};

TEST_F(BoardProgramTest, ServesOneHostAfterAnotherAndSavesTheDeviceInTheEnd) {
    fs::create_symlink(folder / "gone", link);  // a stale link is replaced
    StartOnLink({"--words", "16", "--eeprom", "8", "--save", saved, "--trace"});
    EXPECT_TRUE(Said("ready " + fs::read_symlink(link).string() + "\n"));

    // Every byte value must pass unchanged, those a terminal might take for its own above all.
    const Bytes awkward{0, 3, 4, 8, 10, 13, 17, 19, 21, 23, 26, 28, 127, 128, 254, 255};
    EXPECT_EQ(Ask(Command('T'), 10), Identity);
    EXPECT_EQ(Ask(Command('W') + Addressed(20, 0x10, 8) + awkward, 3), (Bytes{3, 0, 0}));
    EXPECT_EQ(Ask(Command('W') + Command('I') + ReadRequest(0x10), 17), Bytes{17} + awkward);
    program->Signal(SIGTERM);
    EXPECT_EQ(Finish(), 0);
    EXPECT_TRUE(Said(" > 01 54 ; identify\n"));
    EXPECT_FALSE(LinkThere());
    DeviceMemory memory({7, 16, 8});
    EXPECT_TRUE(LoadDevice(Contents(saved), memory));
    EXPECT_THAT(memory.Block(0x10), testing::ElementsAreArray(awkward));
}

TEST_F(BoardProgramTest, StartsFromAFileAndSavesOnRequestAtTheLinesPace) {
    fs::create_symlink("/dev/pts/ptmx", link);
    folder.Write("start.hex", ":02001000ABCD76\n:00000001FF\n");
    StartOnLink({"--words", "16", "--load", "start.hex", "--save", saved, "--pace", "9600"});
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask(ReadRequest(0x10), 17).at(2), 0xCD);
    EXPECT_GE(std::chrono::steady_clock::now() - before, 24ms);
    program->Signal(SIGUSR1);
    EXPECT_TRUE(Await([&] { return fs::exists(saved); }));
    EXPECT_EQ(Ask(Command('T'), 10), Identity) << "and goes on";
    fs::create_symlink("/dev/pts/elsewhere", folder / "other");
    fs::rename(folder / "other", link);
    program->Signal(SIGINT);
    EXPECT_EQ(Finish(), 0);
    EXPECT_TRUE(LinkThere()) << "it leads elsewhere by now and is not ours to remove";
}

TEST_F(BoardProgramTest, ATraceNoOneReadsHoldsNothingUp) {
    const std::string log = folder / "log";
    ASSERT_EQ(::mkfifo(log.c_str(), 0600), 0);
    const int reader = ::open(log.c_str(), O_RDONLY | O_NONBLOCK);
    Start({"--link", link, "--trace"});
    EXPECT_EQ(ReadFrom(reader, 6).at(0), 'r');
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(Ask(ReadRequest(0), 17).size(), 17u) << i;
    program->Signal(SIGTERM);
    const Bytes trace = ReadFrom(reader, SIZE_MAX);
    EXPECT_EQ(std::count(trace.begin(), trace.end(), '<'), 1000) << "none is lost";
    EXPECT_EQ(Finish(), 0);
    ::close(reader);
}

TEST_F(BoardProgramTest, RefusesToStartWithAReason) {
    folder.Write("com1", "somebody's file");
    fs::create_symlink(link, folder / "com2");
    folder.Write("bad.hex", ":02000000ABCD87\n:00000001FF\n");
    folder.Write("trace.txt", "0.000000 > 01 54 ; identify\nwhat is this\n");
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string reason;
    } cases[] = {
        {{"--link", "com1"}, 1, "cannot make the link " + link},
        {{"--link", "com2"}, 1, "cannot make the link " + link.substr(0, link.size() - 1) + "2"},
        {{"--load", "none.hex"}, 2, "cannot read none.hex: No such file"},
        {{"--load", "bad.hex"}, 2, "bad.hex:1: wrong checksum"},
        {{"--replay", "trace.txt"}, 2, "trace.txt:2: no ; before a gloss"},
        {{"--replay", "trace.txt", "--delay", "1"}, 2, "--replay"},
        {{"--replay", "trace.txt", "--save", "x"}, 2, "--replay"},
        {{"--type", "0"}, 2, "--type 0 is not valid: Device type in the socket, 1 to 26"},
        {{"--words", "8193"}, 2, "--words 8193 is not valid"},
        {{"--name", "TAMBER"}, 2, "--name TAMBER is not valid"},
        {{"--link", ""}, 2, "--link"},
        {{"--version"}, 0, "tamber-board " TAMBER_VERSION "\n"},
        {{"--help"}, 0, "--hang-up-in-reply K"},
    };
    for (const auto& [arguments, status, reason] : cases) {
        fs::remove(folder / "log");
        Start(arguments);
        EXPECT_EQ(Finish(), status) << reason;
        const std::string log = Contents(folder / "log");
        EXPECT_THAT(log, testing::HasSubstr(reason));
        EXPECT_TRUE(status == 0 || std::ranges::count(log, '\n') == 1) << log;
    }
    EXPECT_TRUE(fs::is_regular_file(link));
}

}  // namespace
}  // namespace Tamber::Simulator
