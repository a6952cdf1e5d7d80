#include <fstream>

#include "WindowBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MainWindow : public testing::Test {
  protected:
    void ChooseHex(const std::string& text) {
        bench.desktop.chosenFile = bench.program.AppPath / "window-test.hex";
        std::ofstream(*bench.desktop.chosenFile, std::ios::binary) << text;
    }

    WindowBench bench;
};

TEST_F(MainWindow, StartsByOpeningThePortAndIdentifyingTheBoard) {
    bench.Start();
    EXPECT_THAT(bench.startRecord, ElementsAre("open ttyS0", "> 01 54", "tick 1000",
                                               "box [Tamber] Device: TAMBR\r\nVersion 1.0"));
    EXPECT_EQ(bench.Panels(), "COM1 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(bench.program.image.Byte(0x400F), 0x3F) << "the image is blank";
    bench.window->hide();
    bench.window->show();
    Settle();
    EXPECT_THAT(bench.desktop.record, IsEmpty()) << "it is identified once";
}

TEST_F(MainWindow, PortThatCannotBeOpened) {
    bench.program.settings.CommPortNumber = 2;
    bench.desktop.portFailure = "No such file or directory (/dev/ttyS1)";
    bench.Start();
    EXPECT_THAT(bench.startRecord,
                ElementsAre("open ttyS1",
                            "box [Communication Port Error] COM2, No such file or directory "
                            "(/dev/ttyS1) (critical)",
                            "box [Device Error] Communication Error! (critical)"));
    EXPECT_TRUE(bench.Panels().starts_with("FAIL "));
    EXPECT_EQ(bench.program.image, MemoryImage()) << "the image was not cleared";
    EXPECT_NE(bench.Find("frmBuffer"), nullptr) << "the views open all the same";
}

TEST_F(MainWindow, LoadShowsTheFileAndSaveWritesItBack) {
    bench.Start();
    ChooseHex(":040000004128422829\r\n:02840000420038\r\n:00000001FF\r\n");
    bench.Choose("FileLoad");
    EXPECT_TRUE(bench.Panels().ends_with("File: " + bench.desktop.chosenFile->string()));
    EXPECT_TRUE(Find<QTextEdit>(bench.Find("frmBuffer"), "txtBuffer")
                    ->toPlainText()
                    .contains("\n0000=2841 2842 3FFF "));
    const MemoryImage loaded = bench.program.image;
    bench.desktop.chosenFile = bench.program.AppPath / "window-save.hex";
    bench.Choose("FileSave");
    EXPECT_TRUE(bench.Panels().ends_with("/window-save.hex"));
    bench.Choose("BufferClearAll");
    bench.Choose("FileLoad");
    EXPECT_EQ(bench.program.image, loaded);
}

TEST_F(MainWindow, LoadOrSaveThatFailsLeavesEverythingAsItWas) {
    bench.Start();
    const MemoryImage before = bench.program.image;
    const QPointer<QWidget> view = bench.Find("frmBuffer");
    const auto expectUnchanged = [&](const char* item, const std::vector<std::string>& boxes) {
        bench.desktop.record.clear();
        bench.Choose(item);
        EXPECT_EQ(bench.desktop.record, boxes);
        EXPECT_EQ(bench.program.image, before);
        EXPECT_TRUE(bench.Panels().ends_with("File:"));
        EXPECT_FALSE(view.isNull()) << "the views were not made anew";
    };
    expectUnchanged("FileLoad", {});  // the user cancels
    expectUnchanged("FileSave", {});
    ChooseHex(":0400000041284228FF\n:00000001FF\n");
    expectUnchanged("FileLoad", {"box [File Load Error] Checksum Error in hex file! (critical)"});
    ChooseHex("\n:00000001FF\n");
    expectUnchanged("FileLoad", {});
    bench.desktop.chosenFile = "/nowhere/at/all.hex";
    expectUnchanged("FileLoad", {});
    expectUnchanged("FileSave", {});
}

TEST_F(MainWindow, ClearCommandsBlankTheirRegionsAndReopenTheirViews) {
    bench.Start();
    const auto expectCleared = [&](const char* item, const std::set<std::string>& views) {
        for (const auto& [name, last, blank] : {std::tuple{"frmBuffer", 0x3FFF, 0x3F},
                                                {"frmEEPROM", 0x43FF, 0xFF},
                                                {"frmConfig", 0x400F, 0x3F}}) {
            const QPointer<QWidget> view = bench.Find(name);
            for (int index = 0; index < MemoryImage::Size; ++index)
                bench.program.image.SetByte(index, 0x12);
            bench.Choose(item);
            EXPECT_EQ(bench.program.image.Byte(last), views.contains(name) ? blank : 0x12) << item;
            EXPECT_EQ(view.isNull(), views.contains(name)) << item << " " << name;
            EXPECT_EQ(bench.program.image.Byte(0x4010), 0x12) << item;
        }
    };
    expectCleared("BufferClearPM", {"frmBuffer"});
    expectCleared("BufferClearDM", {"frmEEPROM"});
    expectCleared("BufferClearConfig", {"frmConfig"});
    expectCleared("BufferClearAll", {"frmBuffer", "frmEEPROM", "frmConfig"});
}

}  // namespace
}  // namespace Tamber
