#include <fstream>

#include "WindowBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct MainWindow : testing::Test, WindowBench {
    void ChooseHex(const std::string& text) {
        desktop.chosenFile = program.AppPath / "window-test.hex";
        std::ofstream(*desktop.chosenFile, std::ios::binary) << text;
    }
};

TEST_F(MainWindow, StartsByOpeningThePortAndIdentifyingTheBoard) {
    Start();
    EXPECT_THAT(startRecord, ElementsAre("open ttyS0", "> 01 54", "tick 1000",
                                         "box [Tamber] Device: TAMBR\r\nVersion 1.0"));
    EXPECT_EQ(Panels(), "COM1 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(program.image.Byte(0x400F), 0x3F) << "the image is blank";
    window->hide();
    window->show();
    Settle();
    EXPECT_THAT(desktop.record, IsEmpty()) << "it is identified once";
}

TEST_F(MainWindow, PortThatCannotBeOpened) {
    program.settings.CommPortNumber = 2;
    desktop.portFailure = "No such file or directory (/dev/ttyS1)";
    Start();
    EXPECT_THAT(startRecord,
                ElementsAre("open ttyS1",
                            "box [Communication Port Error] COM2, No such file or directory "
                            "(/dev/ttyS1) (critical)",
                            "box [Device Error] Communication Error! (critical)"));
    EXPECT_TRUE(Panels().starts_with("FAIL "));
    EXPECT_EQ(program.image, MemoryImage()) << "the image was not cleared";
    EXPECT_NE(Find("frmBuffer"), nullptr) << "the views open all the same";
}

TEST_F(MainWindow, LoadShowsTheFileAndSaveWritesItBack) {
    Start();
    ChooseHex(":040000004128422829\r\n:02840000420038\r\n:00000001FF\r\n");
    Choose("FileLoad");
    EXPECT_TRUE(Panels().ends_with("File: " + desktop.chosenFile->string()));
    EXPECT_TRUE(Find("frmBuffer")
                    ->findChild<QTextEdit*>("txtBuffer")
                    ->toPlainText()
                    .contains("\n0000=2841 2842 3FFF "));
    const MemoryImage loaded = program.image;
    desktop.chosenFile = program.AppPath / "window-save.hex";
    Choose("FileSave");
    EXPECT_TRUE(Panels().ends_with("/window-save.hex"));
    Choose("BufferClearAll");
    Choose("FileLoad");
    EXPECT_EQ(program.image, loaded);
}

TEST_F(MainWindow, LoadOrSaveThatFailsLeavesEverythingAsItWas) {
    Start();
    const MemoryImage before = program.image;
    const QPointer<QWidget> view = Find("frmBuffer");
    const auto expectUnchanged = [&](const char* item, const std::vector<std::string>& boxes) {
        desktop.record.clear();
        Choose(item);
        EXPECT_EQ(desktop.record, boxes);
        EXPECT_EQ(program.image, before);
        EXPECT_TRUE(Panels().ends_with("File:"));
        EXPECT_FALSE(view.isNull()) << "the views were not made anew";
    };
    expectUnchanged("FileLoad", {});  // the user cancels
    expectUnchanged("FileSave", {});
    ChooseHex(":0400000041284228FF\n:00000001FF\n");
    expectUnchanged("FileLoad", {"box [File Load Error] Checksum Error in hex file! (critical)"});
    ChooseHex("\n:00000001FF\n");
    expectUnchanged("FileLoad", {});
    desktop.chosenFile = "/nowhere/at/all.hex";
    expectUnchanged("FileLoad", {});
    expectUnchanged("FileSave", {});
}

TEST_F(MainWindow, ClearCommandsBlankTheirRegionsAndReopenTheirViews) {
    Start();
    const auto expectCleared = [&](const char* item, const std::set<std::string>& views) {
        for (const auto& [name, last, blank] : {std::tuple{"frmBuffer", 0x3FFF, 0x3F},
                                                {"frmEEPROM", 0x43FF, 0xFF},
                                                {"frmConfig", 0x400F, 0x3F}}) {
            const QPointer<QWidget> view = Find(name);
            for (int index = 0; index < MemoryImage::Size; ++index)
                program.image.SetByte(index, 0x12);
            Choose(item);
            EXPECT_EQ(program.image.Byte(last), views.contains(name) ? blank : 0x12) << item;
            EXPECT_EQ(view.isNull(), views.contains(name)) << item << " " << name;
            EXPECT_EQ(program.image.Byte(0x4010), 0x12) << item;
        }
    };
    expectCleared("BufferClearPM", {"frmBuffer"});
    expectCleared("BufferClearDM", {"frmEEPROM"});
    expectCleared("BufferClearConfig", {"frmConfig"});
    expectCleared("BufferClearAll", {"frmBuffer", "frmEEPROM", "frmConfig"});
}

}  // namespace
}  // namespace Tamber
