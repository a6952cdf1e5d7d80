#include <fstream>

#include "StartUp.hpp"
#include "WindowBench.hpp"

namespace Tamber {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const DeviceRecord WithCalibrationWord{"PIC12F509", 2, 1024, 0, 1};
constexpr int LastWord = 2046;  // byte address

// The devices and the facts that come with the program, and one of those devices in the socket.
struct FileCheck : testing::Test, WindowBench {
    explicit FileCheck(const DeviceRecord& device = WithCalibrationWord) : WindowBench(device) {
        for (const char* file : {"tamber.dev", "tamber.cfg", "tamber.inf"})
            std::filesystem::copy_file(std::filesystem::path(SAMPLE_DATA) / file,
                                       program.AppPath / file,
                                       std::filesystem::copy_options::overwrite_existing);
        Start(device.Name);
    }

    void Start(const std::string& device) {
        EXPECT_TRUE(StartUp(program.AppPath, program));
        for (std::int16_t slot = 1; slot <= program.settings.DeviceCount; ++slot)
            if (program.catalogue.Record(slot).Name == device)
                program.settings.SelectedDevice = slot;
        window = std::make_unique<mdiMain>(program, desktop);
        window->MDIForm_Load();
        window->show();
        Settle();
        desktop.record.clear();
    }

    void Load(const std::string& text) {
        desktop.chosenFile = program.AppPath / "check.hex";
        std::ofstream(*desktop.chosenFile, std::ios::binary) << text;
        Choose("FileLoad");
    }

    void PutIntoSocket(int word) {
        engine.Memory().SetByte(LastWord, static_cast<std::uint8_t>(word & 0xFF));
        engine.Memory().SetByte(LastWord + 1, static_cast<std::uint8_t>(word >> 8));
    }

    std::vector<std::string> Sent() {
        std::erase_if(desktop.record, [](const std::string& line) { return line[0] != '>'; });
        return std::exchange(desktop.record, {});
    }

    std::string Remedy() {
        const auto* button = Find<QPushButton>("cmdRemedyOfFirst");
        return button->isVisible() ? button->text().toStdString() : "";
    }

    void PressRemedy() {
        Click("cmdRemedyOfFirst");
        Settle();
    }
};

// A word above the 14 bits and one beyond program memory, for a device that the comment names.
constexpr char ForALargerDevice[] =
    ":020010001228B4\n:02200000052BAE\n:02400E00F13F80\n:00000001FF\n;PIC16F877A\n";

TEST_F(FileCheck, ShowsTheWorstWithItsRemedyWhichSelectsTheDeviceAndLoadsAgain) {
    Start("PIC16F84A");
    EXPECT_EQ(Said(), "");
    Load(ForALargerDevice);
    EXPECT_EQ(program.image.Word(0x10), 0x2812) << "nothing is blocked";
    EXPECT_THAT(Said(), StartsWith("Warning: Line 5: a comment says that the file is for "
                                   "PIC16F877A, which is programmed in another way"));
    EXPECT_EQ(Find<QPushButton>("cmdShowAll")->text(), "Show all (3)");
    EXPECT_EQ(Remedy(), "Select PIC16F877A");
    program.image.SetByte(0, 0x00);
    PressRemedy();
    EXPECT_THAT(Panels(), HasSubstr("| Device: PIC16F877A | Size: 2000H | File: "));
    EXPECT_EQ(program.image.Word(0), 0x3FFF) << "the image was cleared before";
    EXPECT_EQ(program.image.Word(0x2000), 0x2B05);
    EXPECT_THAT(Said(), StartsWith("Note: Line 5: 1 line after the end record"));
    Choose("FileSave");
    EXPECT_EQ(Said(), "") << "the file is now what the image is";
    Load(ForALargerDevice);
    InDialog("DeviceSelect", [&] { Press(Qt::Key_Return); });
    EXPECT_EQ(Said(), "") << "nothing is loaded";
}

TEST_F(FileCheck, RowOfAWordGoesToIt) {
    Start("PIC16F84A");
    Load(":020000000128D5\n:0207F0000040C7\n:02400E00F13F80\n:00000001FF\n");
    EXPECT_THAT(Said(), StartsWith("Warning: Line 2, column 10: word 03F8 (byte address 07F0, "
                                   "4000) is wider than"));
    Click("cmdShowAll");
    auto* list = Find<QTreeWidget>("lstNotices");
    emit list->itemActivated(list->topLevelItem(0), 0);
    EXPECT_EQ(Dump()->textCursor().selectedText(), "4000");
    EXPECT_THAT(Dump()->toPlainText().toStdString(), HasSubstr("\n03F8=4000 "));
}

TEST_F(FileCheck, TakesConfigurationAndIdsOfATwelveBitFileToWhereTheyAreProgrammedFrom) {
    const std::string file = ":0207FE00240CC9\n:08080000010002000300040" +
                             std::string("0E6\n:021FFE00EA0FE8\n") + ":00000001FF\n";
    Load(file);
    EXPECT_EQ(program.image.Word(0x400E), 0x3FFF);
    EXPECT_EQ(Remedy(), "Use its configuration word and IDs") << Said();
    PressRemedy();
    EXPECT_EQ(program.image.Word(0x400E), 0x0FEA);
    EXPECT_EQ(Find<QLineEdit>("txtIDLOCS")->text(), "01020304");
    EXPECT_EQ(Find<QLineEdit>("txtConfig")->text(), "0FEA");
    EXPECT_EQ(Said(), "");
    Load(file);
    EXPECT_EQ(Said(), "") << "the image has them already";
}

TEST_F(FileCheck, CalibrationWordIsReadOnlyWhenTheUserWantsItAndOutlivesTheLoad) {
    const std::string offer =
        "Note: PIC12F509 has a calibration word from its factory, which an erase loses. Read "
        "first, then Load, and the word stays.";
    const std::string file = ":020000000102FB\n:02400E00EA0FB7\n:00000001FF\n";
    EXPECT_EQ(Said(), offer);
    PutIntoSocket(0x0FFF);
    PressRemedy();
    EXPECT_EQ(Said(),
              "Warning: The device in the socket has no calibration word; its last word reads "
              "0FFF.");
    PutIntoSocket(0x0C24);
    Load(file);
    EXPECT_THAT(Said(), StartsWith("Note: The file has no calibration word"));
    EXPECT_EQ(Remedy(), "Keep it");
    desktop.record.clear();
    PressRemedy();
    std::vector<std::string> expected{"> 01 62"};
    for (int address = 0; address < 2 * 1024; address += 16) {
        expected.emplace_back("> 01 52");
        expected.push_back("> 04 " +
                           HexBytes(std::array{static_cast<std::uint8_t>(address >> 8),
                                               static_cast<std::uint8_t>(address)}) +
                           " 00 01");
    }
    expected.emplace_back("> 01 49");
    EXPECT_EQ(Sent(), expected);
    EXPECT_EQ(program.image.Word(LastWord), 0x0C24);
    EXPECT_EQ(program.image.Word(0), 0x0201) << "the rest is the file's";
    EXPECT_EQ(Said(), "Note: The calibration word 0C24 is in the image now.");
    Load(file);
    EXPECT_EQ(Said(), "");
    EXPECT_EQ(program.image.Word(LastWord), 0x0C24);
    Start("PIC12F509");
    InDialog("DeviceFunction", [&] { Click("cmdRun"); });
    EXPECT_THAT(Said(), StartsWith("Note: Read: all good")) << "it needs no more keeping";
}

TEST_F(FileCheck, CalibrationReadThatIsEndedOrUnansweredChangesNothing) {
    PutIntoSocket(0x0C24);
    const MemoryImage before = program.image;
    const auto requests = [&] { return std::exchange(desktop.record, {}); };
    desktop.intrude = [&] {
        if (QWidget* open = QApplication::activeModalWidget()) {
            EXPECT_FALSE(window->close()) << "it needs its window";
            QTest::keyClick(open, Qt::Key_Escape);
        }
    };
    PressRemedy();
    EXPECT_EQ(requests().back(), "> 01 49") << "the sequence is closed";
    desktop.intrude = nullptr;
    desktop.board = nullptr;
    PressRemedy();
    EXPECT_EQ(requests().back(), "box [Device Error] Communication Error! (critical)");
    EXPECT_EQ(program.image, before);
    EXPECT_EQ(Remedy(), "Keep it");
}

TEST_F(FileCheck, AfterAnEraseItIsSaidWhetherTheImageHasTheCalibrationWord) {
    const auto erase = [&] {
        InDialog("DeviceFunction", [&] {
            Find<QListWidget>("listFunction")->setCurrentRow(1);
            Click("cmdRun");
        });
        return Said();
    };
    EXPECT_EQ(erase(), "Warning: The image has no calibration word.");
    EXPECT_EQ(Remedy(), "");
    program.image.SetWord(LastWord, 0x0C24);
    erase();
    Click("cmdCloseNotice");
    EXPECT_EQ(Said(), "Note: The image has the calibration word 0C24.");
}

TEST_F(FileCheck, BrokenFactsAreToldAtTheStartAndNotUsed) {
    std::ofstream(program.AppPath / "tamber.inf") << "\"PIC12F509\",1,001F\r\n\"PIC12F509\",1\r\n";
    Start("PIC12F509");
    EXPECT_THAT(Said(), HasSubstr("tamber.inf, line 2, field 1. Found: \"PIC12F509\" a second "
                                  "time. Expected: Name, one line for each device. Correct"));
    Click("cmdCloseNotice");
    EXPECT_EQ(Said(), "");
}

}  // namespace
}  // namespace Tamber
