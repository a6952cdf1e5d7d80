#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "simulator/BoardBench.hpp"
#include "simulator/HexFile.hpp"

extern char** environ;

namespace Tamber::Simulator {
namespace {

namespace fs = std::filesystem;

// Far more than anything here takes; only a failing test waits that long.
constexpr int PatienceMilliseconds = 20'000;

// Reads until `enough` says so, the other end has gone or patience is over.
template <typename Enough>
Bytes ReadUntil(int descriptor, Enough enough) {
    Bytes bytes;
    pollfd wanted{descriptor, POLLIN, 0};
    while (!enough(bytes) && ::poll(&wanted, 1, PatienceMilliseconds) == 1) {
        std::array<std::uint8_t, 256> portion{};
        const auto count = ::read(descriptor, portion.data(), portion.size());
        if (count <= 0)
            break;
        bytes.insert(bytes.end(), portion.begin(), portion.begin() + count);
    }
    return bytes;
}

// The program, started with the given arguments, and what it says on each of its outputs.
class Program {
  public:
    explicit Program(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), BOARD_PROGRAM);
        std::vector<char*> values;
        for (auto& argument : arguments)
            values.push_back(argument.data());
        values.push_back(nullptr);
        std::array<int, 2> output{}, errors{};
        if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
        ::posix_spawn(&process_, BOARD_PROGRAM, &actions, nullptr, values.data(), environ);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(output[1]);
        ::close(errors[1]);
        output_ = output[0];
        errors_ = errors[0];
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
        }
        ::close(output_);
        ::close(errors_);
    }

    // The first line on standard output; empty when there is none.
    std::string FirstLine() const {
        const auto bytes =
            ReadUntil(output_, [](const Bytes& b) { return !b.empty() && b.back() == '\n'; });
        return {bytes.begin(), bytes.end()};
    }

    void Signal(int signal) const { ::kill(process_, signal); }

    // Everything it says on standard error until it ends; then its exit status.
    int Finish(std::string& errors) {
        const auto bytes = ReadUntil(errors_, [](const Bytes&) { return false; });
        errors.assign(bytes.begin(), bytes.end());
        pollfd ended{errors_, POLLIN, 0};
        if (::poll(&ended, 1, 0) != 1)
            ::kill(process_, SIGKILL);
        int status = -1;
        ::waitpid(std::exchange(process_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    pid_t process_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

// A host on the link.
class Host {
  public:
    explicit Host(const std::string& port) : port_(::open(port.c_str(), O_RDWR | O_NOCTTY)) {}
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { ::close(port_); }

    Bytes Ask(const Bytes& request, std::size_t length) const {
        if (::write(port_, request.data(), request.size()) != static_cast<ssize_t>(request.size()))
            return {};
        return ReadUntil(port_, [&](const Bytes& bytes) { return bytes.size() >= length; });
    }

  private:
    int port_;
};

struct BoardProgramTest : testing::Test {
    fs::path folder = fs::path(testing::TempDir()) / ("tamber-board-" + std::to_string(::getpid()));
    std::string link = folder / "com1";
    std::string saved = folder / "device.hex";
    std::string errors;

    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }
};

TEST_F(BoardProgramTest, ServesOneHostAfterAnotherAndSavesTheDeviceWhenTold) {
    fs::create_symlink(folder / "gone", link);
    Program program({"--link", link, "--words", "16", "--eeprom", "8", "--save", saved, "--trace"});
    const auto ready = program.FirstLine();
    ASSERT_EQ(ready, "ready " + fs::read_symlink(link).string() + "\n")
        << "a stale link is replaced";

    // Every byte value must pass unchanged, those a terminal might take for its own above all.
    const Bytes awkward{0, 3, 4, 8, 10, 13, 17, 19, 21, 23, 26, 28, 127, 128, 254, 255};
    EXPECT_EQ(Host(link).Ask(Command('T'), 10), Identity);
    {
        const Host host(link);
        EXPECT_EQ(host.Ask(Command('W') + WriteRequest(0x10, 8, awkward), 3), (Bytes{3, 0, 0}));
        EXPECT_EQ(host.Ask(Command('W') + Command('I') + ReadRequest(0x10), 17),
                  Bytes{17} + awkward);
    }
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Finish(errors), 0) << errors;
    EXPECT_NE(errors.find(" > 01 54 ; identify\n"), std::string::npos) << errors;
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    DeviceMemory memory({7, 16, 8});
    std::ifstream file(saved);
    EXPECT_FALSE(LoadHex(file, memory));
    EXPECT_THAT(memory.Block(0x10), testing::ElementsAreArray(awkward));
}

TEST_F(BoardProgramTest, StartsFromAFileAndSavesOnRequestAtTheLinesPace) {
    fs::create_symlink("/dev/pts/ptmx", link);
    const std::string start = folder / "start.hex";
    std::ofstream(start) << ":02001000ABCD76\n:00000001FF\n";
    Program program({"--link", link, "--words", "16", "--load", start, "--save", saved, "--pace",
                     "9600", "--silent-from", "9"});
    ASSERT_TRUE(program.FirstLine().starts_with("ready "));
    const Host host(link);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(host.Ask(ReadRequest(0x10), 17).at(2), 0xCD);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(24));
    fs::create_symlink("/dev/pts/elsewhere", folder / "other");
    fs::rename(folder / "other", link);
    program.Signal(SIGUSR1);
    const auto deadline = before + std::chrono::milliseconds(PatienceMilliseconds);
    while (!fs::exists(saved) && std::chrono::steady_clock::now() < deadline)
        ::poll(nullptr, 0, 5);
    EXPECT_TRUE(fs::exists(saved));
    EXPECT_EQ(host.Ask(Command('T'), 10), Identity) << "and goes on";
    program.Signal(SIGINT);
    EXPECT_EQ(program.Finish(errors), 0) << errors;
    EXPECT_TRUE(fs::is_symlink(link)) << "it leads elsewhere by now and is not ours to remove";
}

TEST_F(BoardProgramTest, ATraceNobodyReadsHoldsNothingUp) {
    Program program({"--link", link, "--trace"});
    ASSERT_TRUE(program.FirstLine().starts_with("ready "));
    const Host host(link);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(host.Ask(ReadRequest(0), 17).size(), 17u) << i;
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Finish(errors), 0);
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '<'), 1000) << "none is lost";
}

TEST_F(BoardProgramTest, HangsUpOnTheHostAndEnds) {
    Program program({"--link", link, "--hang-up-in-reply", "2"});
    ASSERT_TRUE(program.FirstLine().starts_with("ready "));
    const Host host(link);
    EXPECT_EQ(host.Ask(Command('T'), 10), Identity);
    EXPECT_LE(host.Ask(ReadRequest(0), 17).size(), 8u);
    EXPECT_EQ(program.Finish(errors), 0) << errors;
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(BoardProgramTest, RefusesToStartWithAReason) {
    const std::string linkToFile = folder / "com2";
    std::ofstream(link) << "somebody's file";
    fs::create_symlink(link, linkToFile);
    std::ofstream(folder / "bad.hex") << ":00000001FE\n";
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string reason;
    } cases[] = {
        {{"--link", link}, 1, "cannot make the link " + link},
        {{"--link", linkToFile}, 1, "cannot make the link " + linkToFile},
        {{"--load", folder / "none.hex"}, 2, "cannot read"},
        {{"--load", folder / "bad.hex"}, 2, "bad.hex:1: wrong checksum"},
        {{"--words", "many"}, 2, "--words many will not do"},
    };
    for (const auto& refused : cases) {
        Program program(refused.arguments);
        EXPECT_EQ(program.Finish(errors), refused.status) << errors;
        EXPECT_NE(errors.find(refused.reason), std::string::npos) << errors;
    }
    EXPECT_TRUE(fs::is_regular_file(link));
}

}  // namespace
}  // namespace Tamber::Simulator
