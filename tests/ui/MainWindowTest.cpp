#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTextEdit>
#include <fstream>

#include "WindowBench.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;

std::filesystem::path WriteHex(const WindowBench& bench, const std::string& text) {
    const std::filesystem::path file = bench.program.AppPath / "window-test.hex";
    std::ofstream(file, std::ios::binary) << text;
    return file;
}

TEST(MainWindow, StartsByOpeningThePortAndIdentifyingTheBoard) {
    WindowBench bench(Device);
    bench.Start();
    EXPECT_THAT(bench.desktop.record, ElementsAre("open ttyS0", "> 01 54", "tick 1000",
                                                  "box [Tamber] Device: TAMBR\r\nVersion 1.0"));
    EXPECT_EQ(bench.window->windowTitle(), "Tamber ~ PIC Programmer");
    EXPECT_EQ(bench.Panel(1), "COM1");
    EXPECT_EQ(bench.Panel(2), "Device: PIC16F84A");
    EXPECT_EQ(bench.Panel(3), "Size: 400H");
    EXPECT_EQ(bench.Panel(4), "File:");
    EXPECT_EQ(bench.window->findChild<QMdiArea*>()->subWindowList().size(), 3);
    EXPECT_EQ(bench.program.image.Byte(0x400F), 0x3F) << "the image is blank";
}

TEST(MainWindow, ActivatedAgainShowsNothingFurther) {
    WindowBench bench(Device);
    bench.Start();
    bench.desktop.record.clear();
    bench.window->hide();
    bench.window->show();
    Settle();
    EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
}

TEST(MainWindow, BoardThatDoesNotAnswerWell) {
    for (const std::size_t length : {0U, 9U, 11U}) {
        Simulator::FaultPlan faults;
        faults.IdentificationLength = length;
        WindowBench bench(Device, faults);
        bench.Start();
        EXPECT_EQ(bench.desktop.record.back(),
                  "box [Device Error] Communication Error! (critical)");
        EXPECT_FALSE(bench.program.link.ProgrammerFound);
        EXPECT_EQ(bench.desktop.received.size(), length);
        EXPECT_EQ(bench.Panel(1), "COM1");
    }
}

TEST(MainWindow, PortThatCannotBeOpened) {
    WindowBench bench(Device);
    bench.program.settings.CommPortNumber = 2;
    bench.desktop.portFailure = "No such file or directory (/dev/ttyS1)";
    bench.Start();
    EXPECT_THAT(bench.desktop.record,
                ElementsAre("open ttyS1",
                            "box [Communication Port Error] COM2, No such file or directory "
                            "(/dev/ttyS1) (critical)",
                            "box [Device Error] Communication Error! (critical)"));
    EXPECT_EQ(bench.Panel(1), "FAIL");
    EXPECT_EQ(bench.program.image, MemoryImage()) << "the image was not cleared";
    EXPECT_EQ(bench.window->findChild<QMdiArea*>()->subWindowList().size(), 3)
        << "the views open all the same";
}

TEST(MainWindow, TextsFromOutsideStayWhatTheyAre) {
    WindowBench bench({"A&B <b>c</b>", 7, 0x2000, 0, 1});
    bench.Start();
    EXPECT_EQ(bench.Panel(2), "Device: A&B <b>c</b>");
    EXPECT_EQ(bench.Panel(3), "Size: 2000H");
}

TEST(MainWindow, LoadShowsTheFile) {
    WindowBench bench(Device);
    bench.Start();
    bench.desktop.chosenFile = WriteHex(bench, ":040000004128422829\r\n:00000001FF\r\n");
    bench.Choose("FileLoad");
    EXPECT_EQ(bench.Panel(4),
              QString::fromStdString("File: " + bench.desktop.chosenFile->string()));
    const auto* text = WindowBench::Find<QTextEdit>(bench.Find<QWidget>("frmBuffer"), "txtBuffer");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->toPlainText().section('\n', 1, 1),
              "0000=2841 2842 3FFF 3FFF 3FFF 3FFF 3FFF 3FFF AB......");
}

TEST(MainWindow, LoadThatFailsLeavesEverythingAsItWas) {
    struct Case {
        std::optional<std::string> text;  // none: the user cancels
        std::vector<std::string> boxes;
    };
    const Case cases[] = {
        {std::nullopt, {}},
        {":0400000041284228FF\n:00000001FF\n",
         {"box [File Load Error] Checksum Error in hex file! (critical)"}},
        {":040000004128422829\n", {"box [File Load Error] No end record in hex file! (critical)"}},
        {"\n:00000001FF\n", {}},
    };
    for (const auto& [text, boxes] : cases) {
        WindowBench bench(Device);
        bench.Start();
        bench.desktop.record.clear();
        const MemoryImage before = bench.program.image;
        if (text)
            bench.desktop.chosenFile = WriteHex(bench, *text);
        const QPointer<QWidget> view = bench.Find<QWidget>("frmBuffer");
        bench.Choose("FileLoad");
        EXPECT_EQ(bench.desktop.record, boxes);
        EXPECT_EQ(bench.program.image, before);
        EXPECT_EQ(bench.Panel(4), "File:");
        EXPECT_FALSE(view.isNull()) << "the views were not made anew";
    }
}

TEST(MainWindow, SaveWritesWhatLoadReadsBack) {
    WindowBench bench(Device);
    bench.Start();
    bench.program.image.SetByte(0, 0x41);
    bench.program.image.SetByte(0x4200, 0x42);
    const MemoryImage saved = bench.program.image;
    bench.desktop.chosenFile = bench.program.AppPath / "window-save.hex";
    bench.Choose("FileSave");
    EXPECT_EQ(bench.Panel(4),
              QString::fromStdString("File: " + bench.desktop.chosenFile->string()));
    bench.Choose("BufferClearAll");
    bench.Choose("FileLoad");
    EXPECT_EQ(bench.program.image, saved);
}

TEST(MainWindow, SaveThatIsCancelledOrFailsEndsQuietly) {
    WindowBench bench(Device);
    bench.Start();
    bench.desktop.record.clear();
    bench.Choose("FileSave");
    bench.desktop.chosenFile = "/nowhere/at/all.hex";
    bench.Choose("FileSave");
    EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
    EXPECT_EQ(bench.Panel(4), "File:");
}

TEST(MainWindow, MissingFileEndsTheLoadQuietly) {
    WindowBench bench(Device);
    bench.Start();
    bench.desktop.record.clear();
    bench.desktop.chosenFile = "/nowhere/at/all.hex";
    bench.Choose("FileLoad");
    EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
    EXPECT_EQ(bench.Panel(4), "File:");
}

TEST(MainWindow, ClearCommandsBlankTheirRegionsAndReopenTheirViews) {
    struct Case {
        const char* item;
        bool pm, dm, config;
    };
    for (const auto& [item, pm, dm, config] :
         {Case{"BufferClearPM", true, false, false}, Case{"BufferClearDM", false, true, false},
          Case{"BufferClearConfig", false, false, true},
          Case{"BufferClearAll", true, true, true}}) {
        WindowBench bench(Device);
        bench.Start();
        for (int index = 0; index < MemoryImage::Size; ++index)
            bench.program.image.SetByte(index, 0x12);
        const QPointer<QWidget> views[] = {bench.Find<QWidget>("frmBuffer"),
                                           bench.Find<QWidget>("frmEEPROM"),
                                           bench.Find<QWidget>("frmConfig")};
        bench.Choose(item);
        EXPECT_EQ(bench.program.image.Byte(0x3FFF), pm ? 0x3F : 0x12);
        EXPECT_EQ(bench.program.image.Byte(0x43FF), dm ? 0xFF : 0x12);
        EXPECT_EQ(bench.program.image.Byte(0x400F), config ? 0x3F : 0x12);
        EXPECT_EQ(bench.program.image.Byte(0x4010), 0x12);
        EXPECT_EQ(bench.program.image.Byte(70'000), 0x12);
        EXPECT_EQ(views[0].isNull(), pm);
        EXPECT_EQ(views[1].isNull(), dm);
        EXPECT_EQ(views[2].isNull(), config);
    }
}

TEST(MainWindow, ExitWritesTheSettings) {
    WindowBench bench(Device);
    bench.Start();
    bench.program.settings.CommPortNumber = 3;
    bench.Choose("FileExit");
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(ReadTextFile(bench.program.AppPath / "tamber.cfg").value(), "3\r\n1\r\n1\r\n");
}

TEST(MainWindow, SettingsThatCannotBeWrittenAreReportedAndTheProgramEnds) {
    WindowBench bench(Device);
    bench.Start();
    bench.desktop.record.clear();
    std::filesystem::remove_all(bench.program.AppPath);
    bench.Choose("FileExit");
    ASSERT_EQ(bench.desktop.record.size(), 1U);
    EXPECT_TRUE(bench.desktop.record[0].starts_with("box [Tamber] ")) << bench.desktop.record[0];
    EXPECT_NE(bench.desktop.record[0].find("tamber.cfg"), std::string::npos);
    EXPECT_FALSE(bench.window->isVisible());
}

TEST(MainWindow, MenusAsDesigned) {
    WindowBench bench(Device);
    bench.Start();
    struct Case {
        const char* name;
        const char* caption;
        const char* key;
    };
    for (const auto& [name, caption, key] :
         {Case{"FileLoad", "&Load", ""}, Case{"FileSave", "&Save", ""},
          Case{"FileExit", "E&xit", ""}, Case{"BufferView", "View", ""},
          Case{"BufferClearPM", "Clear Program Memory", ""},
          Case{"BufferClearDM", "Clear Data Memory", ""},
          Case{"BufferClearConfig", "Clear Configuration", ""},
          Case{"BufferClearAll", "Clear All", ""}, Case{"DeviceSelect", "Select", ""},
          Case{"DeviceFunction", "Function", "F5"}, Case{"OptionsEditAuto", "Edit Auto", ""},
          Case{"OptionsSettings", "Settings", ""}, Case{"HelpContents", "Contents", "F1"},
          Case{"HelpAbout", "About", ""}}) {
        const auto* item = bench.Find<QAction>(name);
        ASSERT_NE(item, nullptr) << name;
        EXPECT_EQ(item->text(), caption);
        EXPECT_EQ(item->shortcut().toString(), key);
    }
}

}  // namespace
}  // namespace Tamber
