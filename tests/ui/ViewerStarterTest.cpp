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
    void ExpectOneFailure(const char* how) {
        failures = 0;
        QtViewerStarter starter;
        Start(starter);
        EXPECT_TRUE(QTest::qWaitFor([this] { return failures > 0; }, 20'000)) << how;
        Settle();
        EXPECT_EQ(failures, 1) << how;
    }

    const std::string viewer =
        testing::TempDir() + "viewer-" + std::to_string(QCoreApplication::applicationPid());
    const std::string log = viewer + ".log";
    int failures = 0;
    pid_t pid = 0;
    std::string rest;
};

TEST_F(ViewerStarterTest, ViewerThatCannotBeStartedOrEndsBadlyAtOnceHasFailed) {
    ExpectOneFailure("there is none");
    std::ofstream(viewer) << "MZ no program of this system";
    ExpectOneFailure("it may not be run");
    fs::permissions(viewer, fs::perms::owner_all);
    ExpectOneFailure("the system cannot run it");
    for (const char* end : {"exit 1", "kill -9 $$"}) {
        MakeViewer(end);
        ExpectOneFailure(end);
    }
}

TEST_F(ViewerStarterTest, ViewerThatHandsOnItsWorkOrFailsLaterHasNotFailed) {
    for (const auto& [end, firstMoments] : {std::pair{"exit 0", 2}, {"exit 1", 0}}) {
        MakeViewer(end);
        QtViewerStarter starter{std::chrono::seconds(firstMoments)};
        Start(starter);
        const auto ended = [this] { return HasStarted() && kill(pid, 0) != 0; };
        ASSERT_TRUE(QTest::qWaitFor(ended, 20'000)) << end;
        Settle();
        EXPECT_EQ(failures, 0) << end;
    }
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
