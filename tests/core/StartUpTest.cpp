#include <set>

#include "StartUp.hpp"
#include "TestFolder.hpp"

namespace Tamber {
namespace {

std::string Devices(int count) {
    std::string text;
    for (int device = 1; device <= count; ++device)
        text += "\"Device " + std::to_string(device) + "\",7,1024,64,1\r\n";
    return text;
}

// The file that start-up blames, "" for a start; whatever happens, nothing is written.
std::string Blamed(const TestFolder& folder, modFunc& program) {
    const auto before = folder.Files();
    const auto failure = StartUp(folder.Path(), program);
    EXPECT_EQ(folder.Files(), before);
    return failure ? std::filesystem::path(failure->File).filename().string() : "";
}

TEST(StartUp, ReadsSettingsThenDeviceListThenAutoSeriesAndStopsAtTheFirstFailure) {
    const TestFolder folder;
    const auto program = std::make_unique<modFunc>();
    EXPECT_EQ(Blamed(folder, *program), "tamber.cfg");
    folder.Write("auto.cfg", "not a series");
    folder.Write("tamber.dev", Devices(1));
    folder.Write("tamber.cfg", "1\r\n2\r\nx\r\n");
    EXPECT_EQ(Blamed(folder, *program), "tamber.cfg");
    folder.Write("tamber.cfg", "1\r\n2\r\n1\r\n");
    EXPECT_EQ(Blamed(folder, *program), "tamber.dev");
    folder.Write("tamber.dev", Devices(3));
    EXPECT_EQ(Blamed(folder, *program), "auto.cfg");
    folder.Write("auto.cfg", "1\r\n4\r\n");
    EXPECT_EQ(Blamed(folder, *program), "");

    EXPECT_EQ(program->AppPath, folder.Path());
    EXPECT_EQ(program->catalogue.Record(program->settings.SelectedDevice).Name, "Device 1");
    EXPECT_EQ(program->catalogue.Record(2).Name, "Device 2");
    EXPECT_EQ(program->catalogue.Record(3).Name, "") << "only as many as the settings count";
    EXPECT_EQ(program->autoSequence.Entries[1], FunctionVerify);
    EXPECT_EQ(program->image, MemoryImage());
}

TEST(StartUp, TheDeviceListMustExistAndMayHoldNoneToFiftyDevices) {
    const TestFolder folder;
    const auto program = std::make_unique<modFunc>();
    folder.Write("tamber.cfg", "2,0,0");
    folder.Write("auto.cfg", "0");
    EXPECT_EQ(Blamed(folder, *program), "tamber.dev");
    folder.Write("tamber.dev", "");
    EXPECT_EQ(Blamed(folder, *program), "");
    EXPECT_EQ(program->catalogue.Record(0).Name, "");

    folder.Write("tamber.dev", Devices(51));
    folder.Write("tamber.cfg", "2,50,50");
    EXPECT_EQ(Blamed(folder, *program), "");
    EXPECT_EQ(program->catalogue.Record(50).Name, "Device 50");
    folder.Write("tamber.cfg", "2,51,50");
    const auto failure = StartUp(folder.Path(), *program);
    ASSERT_TRUE(failure);
    EXPECT_EQ(Describe(*failure), (folder / "tamber.dev").string() +
                                      "\nFound: 51 devices asked for by the settings\n"
                                      "Expected: at most 50 devices\n"
                                      "Correct the device count, the second value of the settings "
                                      "file, and start Tamber again.");
}

TEST(StartUp, AFailureNamesFileLineAndFieldForAPerson) {
    const TestFolder folder;
    folder.Write("tamber.cfg", "1, COM2");
    modFunc program;
    EXPECT_EQ(Describe(StartUp(folder.Path(), program).value()),
              (folder / "tamber.cfg").string() +
                  ", line 1, field 2\nFound: \"COM2\"\n"
                  "Expected: the device count, a whole number from -32768 to 32767\n"
                  "Correct the file and start Tamber again.");
}

TEST(StartUp, TheDataFilesThatComeWithTheProgramFitTheImage) {
    const auto program = std::make_unique<modFunc>();
    const auto failure = StartUp(SAMPLE_DATA, *program);
    ASSERT_FALSE(failure) << Describe(*failure);
    EXPECT_GT(program->settings.SelectedDevice, 0);
    EXPECT_LE(program->settings.SelectedDevice, program->settings.DeviceCount);
    std::set<std::string> names;
    for (int slot = 1; slot <= program->settings.DeviceCount; ++slot) {
        const DeviceRecord& record = program->catalogue.Record(slot);
        EXPECT_TRUE(names.insert(record.Name).second) << record.Name << " comes twice";
        EXPECT_GE(record.TypeCode, 1) << record.Name;
        EXPECT_GT(record.ProgramWords, 0) << record.Name;
        EXPECT_LE(record.ProgramWords, MemoryImage::ProgramWordsMax) << record.Name;
        EXPECT_GE(record.EepromBytes, 0) << record.Name;
        EXPECT_LE(record.EepromBytes, MemoryImage::EepromBytesMax) << record.Name;
    }
    for (int entry = 1; entry <= program->autoSequence.AutoCount; ++entry)
        EXPECT_LE(program->autoSequence.Entries[static_cast<std::size_t>(entry)], FunctionVerify);
}

}  // namespace
}  // namespace Tamber
