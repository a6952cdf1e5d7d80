#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <fstream>

#include "WindowBench.hpp"
#include "platform/qt/QtFileDialog.hpp"
#include "platform/qt/QtMessageBoxes.hpp"
#include "platform/qt/QtViewerStarter.hpp"
#include "platform/qt/QtWindowTimer.hpp"
#include "platform/qt/UserMemory.hpp"

namespace Tamber {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr int Patience = 20'000;  // milliseconds

TEST(MessageBoxes, BearTheirIconsAndShowTheirTextPlainly) {
    for (const auto& [icon, shown] : {std::pair{BoxIcon::Critical, QMessageBox::Critical},
                                      {BoxIcon::None, QMessageBox::NoIcon}}) {
        QTimer::singleShot(0, qApp, [expected = shown] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_EQ(box->icon(), expected);
            EXPECT_EQ(box->text(), "<b>\nText\uFFFD\u241B");
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            box->accept();
        });
        QtMessageBoxes().Show("<b>\r\nText\u202E\x1B", "Title", icon);
    }
}

// A folder with all that a file dialog may meet, in which the user chooses by name.
struct FileDialogs : testing::Test {
    FileDialogs() {
        UserMemory().clear();
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        std::ofstream(folder / "good.hex") << "text";
        EXPECT_EQ(mkfifo((folder / "<b>\n.hex").c_str(), 0600), 0);
    }

    // Chooses one name after the other until the dialog closes; what the boxes over it say.
    std::vector<std::string> Choose(QtFileDialog& dialog, const QStringList& names,
                                    bool (QtFileDialog::*show)()) {
        std::vector<std::string> said;
        QTimer::singleShot(0, qApp, [&] {
            auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            begin = shown->directory().path().toStdString();
            for (const QUrl& url : shown->sidebarUrls())
                sidebar.insert(url.toLocalFile().toStdString());
            EXPECT_TRUE(shown->screen()->availableGeometry().contains(shown->geometry()));
            for (const QString& name : names) {
                EXPECT_TRUE(shown->isVisible()) << name.toStdString();
                QTimer::singleShot(0, shown, [&] {
                    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                    if (!box)
                        return;
                    said.push_back(box->text().toStdString());
                    EXPECT_EQ(box->textFormat(), Qt::PlainText);
                    box->buttons().first()->click();
                });
                shown->selectFile(name);
                if (QDir::isRelativePath(name))  // once the dialog has the keyboard
                    shown->findChild<QLineEdit*>("fileNameEdit")->setText(name);
                static_cast<QDialog*>(shown)->accept();
            }
            EXPECT_FALSE(shown->isVisible());
            if (shown->isVisible())
                shown->reject();
        });
        EXPECT_TRUE((dialog.*show)());
        return said;
    }

    const std::filesystem::path folder = std::filesystem::canonical(testing::TempDir()) /
                                         ("tamber-choose-" + std::to_string(getpid()) + " \xE4");
    std::string begin;
    std::set<std::string> sidebar;
};

TEST_F(FileDialogs, StayOpenOverWhatCannotBeUsedAndSaveAsHexInAFolderOfAnyName) {
    QtFileDialog dialog(folder);
    EXPECT_THAT(Choose(dialog, {"none.hex", "<b>\n.hex", "good.hex"}, &QtFileDialog::ShowOpen),
                ElementsAre("none.hex cannot be loaded: No such file or directory",
                            "<b>\u240A.hex cannot be loaded: Not a regular file"));
    EXPECT_EQ(dialog.FileName(), folder / "good.hex");
    EXPECT_THAT(Choose(dialog, {"<b>\n", "none/x", "good"}, &QtFileDialog::ShowSave),
                ElementsAre("<b>\u240A.hex cannot be saved: Not a regular file",
                            "x.hex cannot be saved: No such file or directory",
                            "good.hex already exists.\nDo you want to replace it?"));
    EXPECT_EQ(dialog.FileName(), folder / "good.hex");
    EXPECT_TRUE(Choose(dialog, {"new"}, &QtFileDialog::ShowSave).empty());
    EXPECT_EQ(dialog.FileName(), folder / "new.hex");
}

TEST_F(FileDialogs, BeginInTheWorkingFolderAndRememberFromOneStartToTheNext) {
    const std::filesystem::path root = testing::TempDir();
    const auto other = std::filesystem::canonical(root) / "tamber-chosen";
    std::filesystem::create_directory(other);
    std::ofstream(other / "file.hex") << "text";
    QtFileDialog first(root);
    (void)Choose(first, {QString::fromStdString(other / "file.hex")}, &QtFileDialog::ShowOpen);
    EXPECT_EQ(begin + "/", root);
    sidebar.clear();
    QtFileDialog second(root);
    (void)Choose(second, {"file.hex"}, &QtFileDialog::ShowOpen);
    EXPECT_EQ(begin, other);
    EXPECT_TRUE(sidebar.contains(other));
    EXPECT_FALSE(QSettings("QtProject")
                     .value("FileDialog/shortcuts")
                     .toStringList()
                     .join(' ')
                     .contains("tamber-chosen"))
        << "other programs share it";
    std::filesystem::remove_all(other);
    QtFileDialog third(root);
    std::ofstream(root / "tamber-third.hex") << "text";
    (void)Choose(third, {"tamber-third.hex"}, &QtFileDialog::ShowOpen);
    EXPECT_EQ(begin + "/", root) << "what is gone is forgotten";
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
