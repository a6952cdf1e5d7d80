#include <signal.h>
#include <sys/wait.h>

#include <fstream>

#include "WindowBench.hpp"
#include "platform/qt/QtViewerStarter.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;

class ViewerStarterTest : public testing::Test {
  protected:
    ViewerStarterTest() { fs::remove(viewer); }

    // The stand-in writes down its number, its folder and what it was given, then ends so.
    void MakeViewer(const std::string& end) const {
        fs::remove(log);
        std::ofstream(viewer) << "#!/bin/sh\necho \"$$ $PWD $*\" >$0.part; mv $0.part $0.log\n"
                              << end << '\n';
        fs::permissions(viewer, fs::perms::owner_all);
    }
    bool HasStarted() {
        std::ifstream stream(log);
        return stream >> pid && std::getline(stream >> std::ws, rest);
    }
    void Start(QtViewerStarter& starter) {
        starter.Start(viewer, {"TAMBER.HLP"}, [this] { ++failures; });
    }
    void ExpectFailures(int expected, const char* how, int firstMoments = 2) {
        failures = 0;
        QtViewerStarter starter{std::chrono::seconds(firstMoments)};
        Start(starter);
        const auto ended = [&] { return failures > 0 || (HasStarted() && kill(pid, 0) != 0); };
        EXPECT_TRUE(QTest::qWaitFor(ended, 20'000)) << how;
        QTest::qWait(1);
        EXPECT_EQ(failures, expected) << how;
    }

    const std::string viewer =
        testing::TempDir() + "viewer-" + std::to_string(QCoreApplication::applicationPid());
    const std::string log = viewer + ".log";
    int failures = 0;
    pid_t pid = 0;
    std::string rest;
};

TEST_F(ViewerStarterTest, FailsOnceWhenItCannotBeStartedOrEndsBadlyAtOnce) {
    ExpectFailures(1, "there is none");
    std::ofstream(viewer) << "MZ no program of this system";
    ExpectFailures(1, "it may not be run");
    fs::permissions(viewer, fs::perms::owner_all);
    ExpectFailures(1, "the system cannot run it");
    MakeViewer("kill -9 $$");
    ExpectFailures(1, "it crashes");
    MakeViewer("exit 0");
    ExpectFailures(0, "it hands on its work");
    MakeViewer("exit 1");
    ExpectFailures(1, "it fails");
    MakeViewer("exit 1");
    ExpectFailures(0, "it fails later", 0);
}

TEST_F(ViewerStarterTest, ViewerThatIsThereRunsInTheCurrentDirectoryAndOutlivesTheProgram) {
    MakeViewer("while :; do sleep 1; done");
    {
        QtViewerStarter starter;
        Start(starter);
        ASSERT_TRUE(QTest::qWaitFor([this] { return HasStarted(); }, 20'000));
    }
    EXPECT_EQ(rest, fs::current_path().string() + " TAMBER.HLP");
    EXPECT_EQ(getpgid(pid), pid) << "keys at the program's terminal do not end it";
    EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), 0) << "it still runs";
    EXPECT_EQ(failures, 0);
    kill(-pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

}  // namespace
}  // namespace Tamber
