#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <fstream>

#include "Desktop.hpp"
#include "core/MemoryImage.hpp"
#include "files/HexFile.hpp"
#include "simulator/DeviceFile.hpp"

namespace Tamber {
namespace {

const std::filesystem::path Samples = std::filesystem::path(SAMPLE_DATA) / "samples";

constexpr char MainWindow[] = "Tamber ~ PIC Programmer";

class Programming : public testing::Test {
  protected:
    Programming() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        for (const char* name : {"tamber.cfg", "tamber.dev", "auto.cfg"})
            std::filesystem::copy(std::filesystem::path(SAMPLE_DATA) / name, folder / name);
    }

    bool StartBoard() {
        board = std::make_unique<Process>(
            std::vector<std::string>{BOARD_PROGRAM, "--link", "com1", "--type", "7", "--words",
                                     "1024", "--eeprom", "64", "--save", "device.hex", "--trace"},
            folder, folder / "board.log");
        return Await(
            [&] { return Contents(folder / "board.log").find("ready") != std::string::npos; });
    }

    void StartProgram() {
        // The toolkit, its fonts and its display keep memory to the end by design.
        program = std::make_unique<Process>(
            std::vector<std::string>{TAMBER_PROGRAM}, folder, folder / "program.log",
            std::vector<std::string>{"DISPLAY=" + desktop.Display(), "QT_QPA_PLATFORM=xcb",
                                     "ASAN_OPTIONS=detect_leaks=0"});
    }

    bool PressUntilEnded(const std::string& keys) {
        constexpr int LooksPerPress = 60;  // some seconds
        int looks = 0;
        return Await([&] {
            if (looks++ % LooksPerPress == 0)
                desktop.Press(keys);
            return program->Ended();
        });
    }

    std::string Log() const {
        return Contents(folder / "program.log") + Contents(folder / "board.log");
    }

    std::filesystem::path folder =
        testing::TempDir() + "tamber-programming-" + std::to_string(getpid());
    Desktop desktop{(std::filesystem::create_directories(folder), folder)};
    std::unique_ptr<Process> board;
    std::unique_ptr<Process> program;
};

// Load, Function, Program, Run, with keys alone, on a display without a window manager.
TEST_F(Programming, FromTheHexFileToTheDevice) {
    ASSERT_TRUE(StartBoard()) << Log();
    StartProgram();
    ASSERT_TRUE(desktop.AwaitWindow("Tamber")) << "no identification\n" << Log();
    ASSERT_TRUE(desktop.PressUntil("Return", MainWindow)) << Log();

    const std::filesystem::path file = Samples / "greeting-16f84a.hex";
    ASSERT_TRUE(desktop.PressUntil("Escape alt+f l", "Load")) << Log();
    desktop.Type(file.string());
    ASSERT_TRUE(desktop.PressUntil("Return", MainWindow)) << Log();

    ASSERT_TRUE(desktop.PressUntil("F5", "Function")) << Log();
    desktop.Press("Home Down Down Down Return");
    // The last acknowledged block, then the end of its sequence.
    ASSERT_TRUE(Await([&] {
        const std::string trace = Contents(folder / "board.log");
        const auto block = trace.find("> 14 40 00");
        return block != std::string::npos && trace.find("> 01 49", block) != std::string::npos;
    })) << Log();
    ASSERT_TRUE(desktop.PressUntil("Escape", MainWindow)) << Log();
    ASSERT_TRUE(PressUntilEnded("Escape alt+f x")) << Log();
    EXPECT_EQ(program->Wait(), 0) << Log();

    board->Signal(SIGTERM);
    EXPECT_EQ(board->Wait(), 0) << Log();
    Simulator::DeviceMemory device({7, 1024, 64});
    ASSERT_TRUE(Simulator::LoadDevice(Contents(folder / "device.hex"), device)) << Log();
    MemoryImage image;
    image.ClearProgramMemory(7);
    image.ClearEeprom();
    image.ClearConfiguration();
    ASSERT_TRUE(LoadHexFile(file, image));
    const auto expectSame = [&](int from, int to) {
        for (int index = from; index < to; ++index)
            ASSERT_EQ(device.ByteAt(static_cast<std::uint32_t>(index)), image.Byte(index)) << index;
    };
    expectSame(0x0000, 2 * 1024);
    expectSame(0x4000, 0x4010);
    expectSame(0x4200, 0x4200 + 2 * 64);
}

TEST_F(Programming, StartThatFailsSaysWhyAndWritesNothing) {
    std::ofstream(folder / "tamber.cfg") << "1\r\nmany\r\n1\r\n";
    StartProgram();
    ASSERT_TRUE(desktop.AwaitWindow("Tamber")) << Log();
    ASSERT_TRUE(PressUntilEnded("Return")) << Log();
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_NE(Log().find("tamber.cfg, line 2, field 1"), std::string::npos) << Log();
    EXPECT_EQ(Contents(folder / "tamber.cfg"), "1\r\nmany\r\n1\r\n");
}

TEST_F(Programming, StartWithoutADisplaySaysWhy) {
    program = std::make_unique<Process>(
        std::vector<std::string>{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u",
                                 "QT_QPA_PLATFORM", "ASAN_OPTIONS=detect_leaks=0", TAMBER_PROGRAM},
        folder, folder / "program.log");
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_NE(Log().find("no display"), std::string::npos) << Log();
}

}  // namespace
}  // namespace Tamber
