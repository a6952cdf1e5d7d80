#include <gtest/gtest.h>

#include <optional>

#include "TestFolder.hpp"
#include "core/AutoSequence.hpp"
#include "core/DeviceCatalogue.hpp"
#include "core/Settings.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;

const fs::path Data = TEST_DATA;

template <typename Load>
void ExpectFailures(const std::string& folder, const Load& load) {
    for (const auto& row : Expectations(Data / folder)) {
        const fs::path file = Data / folder / row[0];
        const std::optional<FileFailure> failure = load(file);
        ASSERT_TRUE(failure) << file;
        EXPECT_EQ(failure->File, file.string());
        const std::string place =
            "line " + std::to_string(failure->Line) + ", field " + std::to_string(failure->Field);
        const std::string expected = failure->Expected.substr(0, failure->Expected.find(','));
        EXPECT_EQ((std::vector{row[0], place, failure->Found, expected}), row);
    }
}

TEST(BrokenFiles, AreRefusedAtTheValueThatIsWrong) {
    ExpectFailures("devices", [](const fs::path& file) { return DeviceCatalogue().Load(file, 3); });
    ExpectFailures("settings", [](const fs::path& file) {
        Settings settings;
        return LoadSettings(file, settings);
    });
    ExpectFailures("series", [](const fs::path& file) {
        AutoSequence sequence;
        return LoadAutoSequence(file, sequence);
    });
}

TEST(WellFormedFiles, ADeviceListReadsTheSameInEveryLayout) {
    for (const auto& entry : fs::directory_iterator(Data / "devices/well-formed")) {
        const fs::path& name = entry.path();
        DeviceCatalogue catalogue;
        const auto failure = catalogue.Load(name, 3);
        ASSERT_FALSE(failure) << Describe(*failure);
        const auto expect = [&](int slot, const char* device, int type, int words, int eeprom,
                                int erase) {
            const DeviceRecord& record = catalogue.Record(slot);
            EXPECT_EQ(record.Name, device) << name;
            EXPECT_EQ(record.TypeCode, type) << name;
            EXPECT_EQ(record.ProgramWords, words) << name;
            EXPECT_EQ(record.EepromBytes, eeprom) << name;
            EXPECT_EQ(record.EraseSupported, erase) << name;
        };
        expect(0, "", 0, 0, 0, 0);
        expect(1, "PIC16F84A", 7, 1024, 64, 1);
        expect(2, "PIC12C508A, boxed", 1, 512, 0, 0);
        expect(3, "Largest", 32767, 2147483647, -32768, -1);
        expect(4, "", 0, 0, 0, 0);
    }
}

TEST(WellFormedFiles, SettingsReadTheSameInEveryLayoutAndAreSavedInOne) {
    for (const auto& entry : fs::directory_iterator(Data / "settings/well-formed")) {
        const fs::path& name = entry.path();
        const TestFolder folder;
        folder.Write("tamber.cfg", FileText(name));
        Settings settings;
        const auto failure = LoadSettings(folder / "tamber.cfg", settings);
        ASSERT_FALSE(failure) << Describe(*failure);
        EXPECT_EQ(settings.CommPortNumber, 2) << name;
        EXPECT_EQ(settings.DeviceCount, -1) << name;
        EXPECT_EQ(settings.SelectedDevice, 50) << name;
        EXPECT_FALSE(SaveSettings(folder / "tamber.cfg", settings));
        EXPECT_EQ(FileText(folder / "tamber.cfg"), "2\r\n-1\r\n50\r\n") << name;
    }
    const TestFolder folder;
    const auto failure = SaveSettings(folder / "none/tamber.cfg", {1, 12, 3});
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Found, "No such file or directory");
}

TEST(WellFormedFiles, AnAutoSeriesIsTakenAsItStands) {
    const struct {
        std::string text;
        std::vector<int> entries;
        int count;
    } table[] = {
        {"4\r\n1\r\n2\r\n3\r\n4\r\n", {1, 2, 3, 4}, 4},
        {"2,0 , 1,x,x", {0, 1}, 2},
        {"0\r\n", {}, 0},
        {"-7", {}, -7},
        {"3\n32767\n-32768\n5", {32767, -32768, 5}, 3},
        {"20" + std::string(18, '\n') + "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,4,2",
         {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 4},
         20},
    };
    for (const auto& row : table) {
        const TestFolder folder;
        folder.Write("auto.cfg", row.text);
        AutoSequence sequence;
        const auto failure = LoadAutoSequence(folder / "auto.cfg", sequence);
        ASSERT_FALSE(failure) << Describe(*failure);
        EXPECT_EQ(sequence.AutoCount, row.count);
        for (std::size_t entry = 0; entry < row.entries.size(); ++entry)
            EXPECT_EQ(sequence.Entries[entry + 1], row.entries[entry]) << row.text;
    }
}

}  // namespace
}  // namespace Tamber
