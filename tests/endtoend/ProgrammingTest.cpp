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

constexpr char MainWindow[] = "Tamber ~ PIC Programmer";

class Programming : public testing::Test {
  protected:
    // A fresh one, or what a display that has gone has left there would be taken for the new one's.
    static std::filesystem::path MakeFolder() {
        const std::filesystem::path folder =
            testing::TempDir() + "tamber-programming-" + std::to_string(getpid());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        for (const char* name : {"tamber.cfg", "tamber.dev", "auto.cfg"})
            std::filesystem::copy(std::filesystem::path(SAMPLE_DATA) / name, folder / name);
        return folder;
    }

    // The toolkit, its fonts and its display keep memory to the end by design.
    void StartProgram(std::vector<std::string> settings) {
        settings.insert(settings.begin(), "env");
        settings.insert(settings.end(), {"ASAN_OPTIONS=detect_leaks=0", TAMBER_PROGRAM});
        program.emplace(settings, folder, folder / "log");
    }
    void StartProgram() { StartProgram({"DISPLAY=" + desktop.Display(), "QT_QPA_PLATFORM=xcb"}); }

    int StatusAfter(const std::string& keys) {
        EXPECT_TRUE(desktop.PressUntil(keys, [&] { return program->Ended(); })) << Log();
        return program->Wait();
    }

    std::string Log() const { return Contents(folder / "log"); }
    bool Logged(const char* text) const { return Log().find(text) != std::string::npos; }

    const std::filesystem::path folder = MakeFolder();
    const Desktop desktop{folder};
    std::optional<Process> program;
};

// Load, Function, Program, Run, with keys alone, on a display without a window manager.
TEST_F(Programming, FromTheHexFileToTheDevice) {
    Process board({BOARD_PROGRAM, "--link", "com1", "--type", "7", "--words", "1024", "--eeprom",
                   "64", "--save", "device.hex", "--trace"},
                  folder, folder / "log");
    ASSERT_TRUE(Await([&] { return Logged("ready"); })) << Log();
    StartProgram();
    ASSERT_TRUE(desktop.AwaitWindow("Tamber")) << "no identification\n" << Log();
    ASSERT_TRUE(desktop.PressUntil("Return", MainWindow)) << Log();

    const std::string file = SAMPLE_DATA "/samples/greeting-16f84a.hex";
    ASSERT_TRUE(desktop.PressUntil("Escape alt+f l", "Load")) << Log();
    desktop.Type(file);
    ASSERT_TRUE(desktop.PressUntil("Return", MainWindow)) << Log();

    ASSERT_TRUE(desktop.PressUntil("F5", "Function")) << Log();
    desktop.Press("Home Down Down Down Return");
    // The last acknowledged block, then the end of its sequence.
    ASSERT_TRUE(Await([&] {
        return Logged("> 14 40 00") &&
               Log().find("> 01 49", Log().find("> 14 40 00")) < Log().size();
    })) << Log();
    const std::string settings = Contents(folder / "tamber.cfg");
    std::filesystem::remove(folder / "tamber.cfg");
    program->Signal(SIGTERM);  // with the dialog open
    EXPECT_EQ(program->Wait(), 0) << Log();
    EXPECT_EQ(Contents(folder / "tamber.cfg"), settings);

    board.Signal(SIGTERM);
    EXPECT_EQ(board.Wait(), 0) << Log();
    Simulator::DeviceMemory device({7, 1024, 64});
    ASSERT_TRUE(Simulator::LoadDevice(Contents(folder / "device.hex"), device)) << Log();
    MemoryImage image;
    image.ClearProgramMemory(7);
    image.ClearEeprom();
    image.ClearConfiguration();
    ASSERT_TRUE(LoadHexFile(file, image));
    for (const auto& [from, to] : {std::pair{0, 2 * 1024}, {0x4000, 0x4010}, {0x4200, 0x4280}})
        for (int index = from; index < to; ++index)
            ASSERT_EQ(device.ByteAt(static_cast<std::uint32_t>(index)), image.Byte(index)) << index;
}

TEST_F(Programming, StartThatFailsSaysWhyAndWritesNothing) {
    std::ofstream(folder / "tamber.cfg") << "1\r\nmany\r\n1\r\n";
    StartProgram();
    ASSERT_TRUE(desktop.AwaitWindow("Tamber")) << Log();
    EXPECT_EQ(StatusAfter("Return"), 1);
    EXPECT_TRUE(Logged("tamber.cfg, line 2, field 1")) << Log();
    EXPECT_EQ(Contents(folder / "tamber.cfg"), "1\r\nmany\r\n1\r\n");
}

TEST_F(Programming, StartWithoutADisplaySaysWhy) {
    StartProgram({"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM"});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_TRUE(Logged("no display")) << Log();
}

}  // namespace
}  // namespace Tamber
