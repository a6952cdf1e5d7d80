#include <signal.h>
#include <sys/wait.h>

#include <fstream>

#include "WindowBench.hpp"
#include "platform/qt/QtFileDialog.hpp"
#include "platform/qt/QtMessageBoxes.hpp"
#include "platform/qt/QtViewerStarter.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber {
namespace {

using namespace std::chrono_literals;

constexpr int Patience = 20'000;  // milliseconds

TEST(MessageBoxes, BearTheirIcons) {
    for (const auto& [icon, shown] : {std::pair{BoxIcon::Critical, QMessageBox::Critical},
                                      {BoxIcon::None, QMessageBox::NoIcon}}) {
        QTimer::singleShot(0, qApp, [expected = shown] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_EQ(box->icon(), expected);
            box->accept();
        });
        QtMessageBoxes().Show("Text", "Title", icon);
    }
}

TEST(FileDialogs, BeginInTheWorkingFolderAndSaveAsHex) {
    const std::string folder = std::filesystem::canonical(testing::TempDir()).string();
    QtFileDialog dialog(folder);
    QTimer::singleShot(0, qApp, [&] {
        auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        EXPECT_EQ(shown->directory().path().toStdString(), folder);
        shown->selectFile("no such file yet");
        static_cast<QDialog*>(shown)->accept();
    });
    EXPECT_TRUE(dialog.ShowSave());
    EXPECT_EQ(dialog.FileName(), folder + "/no such file yet.hex");
}

TEST(WindowTimer, TicksAtTheEndOfEachPeriodThatHasNotBegunAnew) {
    QtWindowTimer timer;
    timer.SetInterval(1h);
    timer.Enable();
    timer.SetInterval(40ms);
    QTest::qWait(20);
    int ticks = 0;
    timer.OnTick([&] { ++ticks; });
    QElapsedTimer anew;
    anew.start();
    timer.SetInterval(40ms);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks == 2; }, Patience));
    EXPECT_GE(anew.elapsed(), 80);
}

int FailuresOf(const std::string& viewer, const std::string& script = {},
               std::chrono::milliseconds firstMoments = 20s) {
    int failures = 0;
    QtViewerStarter starter(firstMoments);
    starter.Start(viewer, {"-c", script}, [&] { ++failures; });
    siginfo_t ignored;
    const auto ended = [&] {
        return waitid(P_ALL, 0, &ignored, WEXITED | WNOHANG | WNOWAIT | __WALL) != 0;
    };
    EXPECT_TRUE(QTest::qWaitFor(ended, Patience));
    QTest::qWait(1);
    return failures;
}

TEST(ViewerStarter, FailsOnceWhenItCannotBeStartedOrEndsBadlyAtOnce) {
    EXPECT_EQ(FailuresOf("/no/such/viewer"), 1);
    EXPECT_EQ(FailuresOf(TEST_DATA "/README.md"), 1) << "it may not be run";
    EXPECT_EQ(FailuresOf("sh", "kill -9 $$"), 1);
    EXPECT_EQ(FailuresOf("sh", "exit 0"), 0) << "it hands on its work";
    EXPECT_EQ(FailuresOf("sh", "exit 1"), 1);
    EXPECT_EQ(FailuresOf("sh", "exit 1", 0s), 0) << "it fails later";
}

TEST(ViewerStarter, ViewerRunsInTheCurrentDirectoryAndOutlivesTheProgram) {
    const std::string log = testing::TempDir() + "viewer-" + std::to_string(getpid());
    std::filesystem::remove(log);
    pid_t pid = 0;
    std::string folder;
    {
        QtViewerStarter starter;
        starter.Start("sh", {"-c", "echo $$ $PWD >$0; exec sleep 600", log}, [] { ADD_FAILURE(); });
        const auto hasStarted = [&] { return bool(std::ifstream(log) >> pid >> folder); };
        ASSERT_TRUE(QTest::qWaitFor(hasStarted, Patience));
    }
    EXPECT_EQ(folder, std::filesystem::current_path());
    EXPECT_EQ(getpgid(pid), pid) << "keys at the program's terminal do not end it";
    EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), 0) << "it still runs";
    kill(-pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

}  // namespace
}  // namespace Tamber
