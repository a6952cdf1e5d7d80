#include <fstream>

#include "WindowBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;

struct MainWindow : testing::Test, WindowBench {
    void ChooseHex(const std::string& text) {
        desktop.chosenFile = program.AppPath / "window-test.hex";
        std::ofstream(*desktop.chosenFile, std::ios::binary) << text;
    }

    // Says it before long, or goes on saying it for longer than a file must be left alone.
    void ExpectToSay(const std::string& text, const char* why = "") const {
        if (Said() == text)
            QTest::qWait(500);
        else
            (void)QTest::qWaitFor([&] { return Said() == text; }, 20'000);
        EXPECT_EQ(Said(), text) << why;
    }
};

TEST_F(MainWindow, StartsByOpeningThePortAndIdentifyingTheBoard) {
    EXPECT_THAT(startRecord, ElementsAre("open ttyS1", "> 01 54", "tick 1000",
                                         "box [Tamber] Device: TAMBR\r\nVersion 1.0"));
    EXPECT_EQ(Panels(), "COM2 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(program.image.Byte(0x400F), 0x3F) << "the image is blank";
    window->hide();
    window->show();
    Settle();
    EXPECT_THAT(desktop.record, ElementsAre()) << "it is identified once";
}

TEST(MainWindowWithoutAPort, SaysSoOpensItsViewsAndSendsNothing) {
    WindowBench bench({"PIC16F84A", 7, 1024, 64, 1}, {}, "No such file or directory (/dev/ttyS1)");
    EXPECT_THAT(bench.startRecord,
                ElementsAre("open ttyS1",
                            "box [Communication Port Error] COM2, No such file or directory "
                            "(/dev/ttyS1) (critical)",
                            "box [Device Error] Communication Error! (critical)"));
    EXPECT_TRUE(bench.Panels().starts_with("FAIL "));
    EXPECT_EQ(bench.program.image, MemoryImage()) << "the image was not cleared";
    EXPECT_NE(bench.Find("frmBuffer"), nullptr);
    bench.InDialog("DeviceFunction", [&] {
        EXPECT_FALSE(bench.Enabled("cmdRun"));
        bench.Press(Qt::Key_Return);
    });
    EXPECT_THAT(bench.desktop.record, ElementsAre());
}

TEST_F(MainWindow, LoadShowsTheFileAndSaveWritesItBack) {
    ChooseHex(":040000004128422829\r\n:02840000420038\r\n:00000001FF\r\n");
    Choose("FileLoad");
    EXPECT_TRUE(Panels().ends_with("File: " + desktop.chosenFile->string()));
    EXPECT_TRUE(Dump()->toPlainText().contains("\n0000=2841 2842 3FFF "));
    const MemoryImage loaded = program.image;
    desktop.chosenFile = program.AppPath / "window-save.hex";
    Choose("FileSave");
    EXPECT_TRUE(Panels().ends_with("/window-save.hex"));
    Choose("BufferClearAll");
    Choose("FileLoad");
    EXPECT_EQ(program.image, loaded);

    Choose("BufferClearAll");
    desktop.chosenFile.reset();
    Choose("FileLoad");
    EXPECT_NE(program.image, loaded) << "the dialog was cancelled";
}

TEST_F(MainWindow, LoadOrSaveThatFailsLeavesEverythingAsItWas) {
    const MemoryImage before = program.image;
    const QPointer<QWidget> view = Find("frmBuffer");
    const auto expectUnchanged = [&](const char* item, const std::vector<std::string>& boxes) {
        Choose(item);
        EXPECT_EQ(std::exchange(desktop.record, {}), boxes);
        EXPECT_EQ(program.image, before);
        EXPECT_TRUE(Panels().ends_with("File:"));
        EXPECT_FALSE(view.isNull()) << "the views were not made anew";
    };
    expectUnchanged("FileLoad", {});  // the user cancels
    expectUnchanged("FileSave", {});
    ChooseHex(":0400000041284228FF\n:00000001FF\n");
    expectUnchanged("FileLoad", {"box [File Load Error] Checksum Error in hex file! (critical)"});
    EXPECT_EQ(Said(), "") << "the box has said it";
    ChooseHex("\n:00000001FF\n");
    expectUnchanged("FileLoad", {});
    EXPECT_EQ(Said(),
              "Failure: window-test.hex was not loaded: Line 1: The line is empty. Delete it; the "
              "loader takes no line without a record.");
    desktop.chosenFile = "/nowhere/at/all\n\xE4.hex";
    expectUnchanged("FileLoad", {});
    EXPECT_EQ(Said(), "Failure: all\u240A\u00E4.hex was not loaded: No such file or directory");
    expectUnchanged("FileSave", {});
    EXPECT_EQ(Said(), "Failure: all\u240A\u00E4.hex was not saved: No such file or directory");
    ChooseHex(":00000001FF\n");
    Choose("FileSave");
    Choose("FileLoad");
    EXPECT_EQ(Said(), "");
}

// A compiler writes a file in steps or puts another in its place; either way it is offered, never
// loaded, when it is whole.
TEST_F(MainWindow, OffersTheLoadedFileAgainWhenItHasChangedOnTheDisk) {
    const std::string end = ":02400E00F13F80\n:00000001FF\n";
    const std::string first = ":020000000102FB\n" + end;
    const std::string second = ":020000000304F7\n" + end;
    const std::string offer = "Warning: window-test.hex has changed on the disk.";
    ChooseHex(first);
    const std::filesystem::path file = *desktop.chosenFile;
    const auto write = [&](const std::string& text) {
        std::ofstream(file, std::ios::binary) << text;
    };
    Choose("FileLoad");
    Choose("FileSave");  // a change of our own
    ExpectToSay("");
    Choose("FileLoad");
    write(second.substr(0, 20));
    ExpectToSay("", "it is not whole");
    write(second);
    ExpectToSay(offer);
    EXPECT_EQ(program.image.Byte(0), 0x01) << "nobody has asked for it";
    const std::filesystem::path beside = program.AppPath / "beside";
    std::ofstream(beside, std::ios::binary) << ":020000000506F3\n" + end;
    Click("cmdRemedyOfFirst");
    EXPECT_EQ(program.image.Byte(0), 0x03);
    EXPECT_EQ(Said(), "");
    std::filesystem::rename(beside, file);
    ExpectToSay(offer);
    write(second);
    ExpectToSay("", "it is what was loaded");
}

TEST_F(MainWindow, LoadsADroppedHexFileAndRefusesWhatElseIsDropped) {
    ChooseHex(":020000000102FB\n:02400E00F13F80\n:00000001FF\n");
    const std::filesystem::path file = program.AppPath / "dropped \xE4.HEX";
    std::filesystem::rename(*desktop.chosenFile, file);
    const auto drop = [&](const QList<QByteArray>& names) {
        QMimeData dropped;
        QList<QUrl> urls;
        for (const QByteArray& name : names)
            urls.append(QUrl::fromEncoded(name));
        dropped.setUrls(urls);
        const QPoint onDump = Dump()->mapTo(window.get(), QPoint(50, 50));
        QDragEnterEvent enter(onDump, Qt::MoveAction | Qt::CopyAction, &dropped, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window->windowHandle(), &enter);
        QDropEvent event(onDump, Qt::MoveAction | Qt::CopyAction, &dropped, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(window->windowHandle(), &event);
        EXPECT_EQ(enter.isAccepted() && enter.dropAction() == Qt::CopyAction,
                  !QApplication::activeModalWidget());
        Settle();
    };
    const QByteArray url =
        "file://" + QByteArray::fromStdString(program.AppPath.string()) + "/dropped%20%E4.HEX";
    InDialog("OptionsSettings", [&] { drop({url}); });
    drop({url, url});
    EXPECT_EQ(Said(), "Failure: 2 files were dropped: drop a single HEX file (*.hex) to load it");
    for (const char* other : {"file:///a.txt", "http://a.b/a.hex"}) {
        drop({other});
        EXPECT_TRUE(
            Said().ends_with(" was not loaded: drop a HEX file (*.hex) that is on this machine"));
    }
    EXPECT_EQ(program.image.Byte(0), 0xFF);
    drop({url});
    EXPECT_EQ(program.image.Byte(0), 0x01);
    EXPECT_EQ(Said(), "");
    EXPECT_TRUE(Panels().ends_with("/dropped \u00E4.HEX"));
}

TEST_F(MainWindow, ComesBackWhereItWasButNeverLargerThanTheScreen) {
    const QSize screen = window->screen()->availableSize();
    for (const QRect left : {QRect(90, 80, 500, 400), QRect({-4000, -4000}, 2 * screen)}) {
        window->setGeometry(left);
        Choose("FileExit");
        window = std::make_unique<mdiMain>(program, desktop);
        EXPECT_EQ(window->geometry() == left, left.width() == 500);
        const QRect available = window->screen()->availableGeometry();
        EXPECT_TRUE(available.contains(window->geometry()));
    }
}

TEST_F(MainWindow, ClearCommandsBlankTheirRegionsAndReopenTheirViews) {
    for (const auto& [item, regions] : {std::pair{"BufferClearPM", "Buffer"},
                                        {"BufferClearDM", "EEPROM"},
                                        {"BufferClearConfig", "Config"},
                                        {"BufferClearAll", "Buffer EEPROM Config"}})
        for (const auto& [region, index] :
             {std::pair{"Buffer", 0}, {"EEPROM", 0x4200}, {"Config", 0x4000}}) {
            const QPointer<QWidget> view = Find(std::string("frm") + region);
            program.image.SetByte(index, 0x12);
            Choose(item);
            const bool cleared = QString(regions).contains(region);
            EXPECT_EQ(program.image.Byte(index) == 0xFF, cleared) << item << " " << region;
            EXPECT_EQ(view.isNull(), cleared) << item << " " << region;
        }
}

}  // namespace
}  // namespace Tamber
