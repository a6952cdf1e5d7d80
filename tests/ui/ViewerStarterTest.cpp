#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <filesystem>
#include <fstream>

#include "WindowBench.hpp"
#include "platform/qt/QtViewerStarter.hpp"

namespace Tamber {
namespace {

// A folder that is the program's current one and the only one that programs are looked for in, with
// a stand-in for the help viewer.
class ViewerStarterTest : public testing::Test {
  protected:
    ViewerStarterTest() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
        qputenv("PATH", folder.c_str());
    }
    ~ViewerStarterTest() override {
        qputenv("PATH", pathBefore);
        std::filesystem::current_path(directoryBefore);
        std::filesystem::remove_all(folder);
    }

    // The stand-in tells who it is, where it is and what it was given, then ends so.
    void MakeViewer(const std::string& end) const {
        std::ofstream(viewer) << "#!/bin/sh\n"
                                 "echo \"$$ $PWD $*\" >told.part\n"
                                 "/bin/mv told.part told\n"
                              << end << '\n';
        std::filesystem::permissions(viewer, std::filesystem::perms::owner_all);
    }

    void Start(QtViewerStarter& starter) {
        starter.Start("winhlp32.exe", {"TAMBER.HLP"}, [this] { ++failures; });
    }

    // Lets events run until `done`; whatever is waited for here takes far less than the limit.
    template <typename Condition>
    static bool Until(Condition done) {
        const QDeadlineTimer limit(20'000);
        while (!done() && !limit.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return done();
    }

    // What the stand-in has told: its number, then the rest.
    bool HasTold() {
        std::ifstream told(folder / "told");
        return told >> pid && std::getline(told >> std::ws, rest);
    }

    const std::filesystem::path directoryBefore = std::filesystem::current_path();
    const QByteArray pathBefore = qgetenv("PATH");
    const std::filesystem::path folder = std::filesystem::canonical(testing::TempDir()) /
                                         ("tamber-viewer-" + std::to_string(getpid()));
    const std::filesystem::path viewer = folder / "winhlp32.exe";
    int failures = 0;
    pid_t pid = 0;
    std::string rest;
};

TEST_F(ViewerStarterTest, ViewerThatCannotBeStarted) {
    const auto tryIt = [this](const char* how) {
        failures = 0;
        QtViewerStarter starter;
        Start(starter);
        EXPECT_TRUE(Until([this] { return failures == 1; })) << how;
    };
    tryIt("there is none");
    std::ofstream(viewer) << "MZ no program of this system";
    tryIt("it may not be run");
    std::filesystem::permissions(viewer, std::filesystem::perms::owner_all);
    tryIt("the system cannot run it");
}

TEST_F(ViewerStarterTest, ViewerThatEndsBadlyAtOnceHasFailedOnce) {
    for (const char* end : {"exit 1", "kill -9 $$"}) {
        failures = 0;
        MakeViewer(end);
        QtViewerStarter starter;
        Start(starter);
        EXPECT_TRUE(Until([this] { return failures > 0; })) << end;
        Settle();
        EXPECT_EQ(failures, 1) << end;
    }
}

TEST_F(ViewerStarterTest, ViewerThatHandsOnItsWorkOrFailsLaterHasNotFailed) {
    struct Case {
        const char* end;
        std::chrono::milliseconds firstMoments;
    };
    for (const auto& [end, firstMoments] :
         {Case{"exit 0", std::chrono::seconds(2)}, Case{"exit 1", std::chrono::seconds(0)}}) {
        std::filesystem::remove(folder / "told");
        MakeViewer(end);
        QtViewerStarter starter(firstMoments);
        Start(starter);
        ASSERT_TRUE(Until([this] { return HasTold() && kill(pid, 0) != 0; })) << end;
        Settle();
        EXPECT_EQ(failures, 0) << end;
    }
}

TEST_F(ViewerStarterTest, ViewerThatIsThereRunsInTheCurrentDirectoryAndOutlivesTheProgram) {
    MakeViewer("while :; do /bin/sleep 1; done");
    {
        QtViewerStarter starter;
        Start(starter);
        ASSERT_TRUE(Until([this] { return HasTold(); }));
    }
    EXPECT_EQ(rest, folder.string() + " TAMBER.HLP");
    EXPECT_EQ(getpgid(pid), pid) << "keys at the program's terminal do not end it";
    EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), 0) << "it still runs";
    EXPECT_EQ(failures, 0);
    kill(-pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

}  // namespace
}  // namespace Tamber
