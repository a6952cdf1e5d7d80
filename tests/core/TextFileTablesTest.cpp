#include <gtest/gtest.h>

#include "StartUp.hpp"
#include "TestFolder.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;

const fs::path Data = TEST_DATA;

template <typename Load>
void ExpectFailures(const std::string& folder, const Load& load) {
    for (const auto& row : Expectations(Data / folder)) {
        const fs::path file = Data / folder / row[0];
        const auto loaded = load(file);
        ASSERT_FALSE(loaded) << file;
        const FileFailure& failure = loaded.error();
        EXPECT_EQ(failure.File, file.string());
        const std::string place =
            "line " + std::to_string(failure.Line) + ", field " + std::to_string(failure.Field);
        const std::string expected = failure.Expected.substr(0, failure.Expected.find(','));
        EXPECT_EQ((std::vector{row[0], place, failure.Found, expected}), row);
    }
}

TEST(BrokenFiles, AreRefusedAtTheValueThatIsWrong) {
    ExpectFailures("devices", [](const fs::path& file) { return DeviceCatalogue::Load(file, 3); });
    ExpectFailures("settings", LoadSettings);
    ExpectFailures("series", LoadAutoSequence);
    ExpectFailures("facts", DeviceFacts::Load);
}

TEST(WellFormedFiles, ADeviceListReadsTheSameInEveryLayout) {
    const std::vector<DeviceRecord> expected{{"", 0, 0, 0, 0},
                                             {"PIC16F84A", 7, 1024, 64, 1},
                                             {"PIC12C508A, boxed", 1, 512, 0, 0},
                                             {"Largest", 32767, 2147483647, -32768, -1},
                                             {"", 0, 0, 0, 0}};
    for (const auto& entry : fs::directory_iterator(Data / "devices/well-formed")) {
        const auto catalogue = DeviceCatalogue::Load(entry.path(), 3);
        ASSERT_TRUE(catalogue) << Describe(catalogue.error());
        for (int slot = 0; slot < std::ssize(expected); ++slot)
            EXPECT_EQ(catalogue->Record(slot), expected[static_cast<std::size_t>(slot)])
                << entry.path() << " " << slot;
    }
}

TEST(WellFormedFiles, NamesAreUtf8WhateverTheListsEncoding) {
    const TestFolder folder;
    for (const auto& [name, expected] :
         {std::pair{"Ger\xC3\xA4t", "Ger\xC3\xA4t"},
          {"Ger\xE4t", "Ger\xC3\xA4t"},
          {"\xE2\x82\xAC \xF0\x9F\x94\x8C", "\xE2\x82\xAC \xF0\x9F\x94\x8C"},
          {"\xC0\xAF", "\xC3\x80\xC2\xAF"},
          {"\xE0\x80\xAF", "\xC3\xA0\xC2\x80\xC2\xAF"},
          {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"}}) {
        folder.Write("tamber.dev", std::string(name) + ",7,1,0,0");
        EXPECT_EQ(DeviceCatalogue::Load(folder / "tamber.dev", 1)->Record(1).Name, expected);
    }
}

TEST(WellFormedFiles, SettingsReadTheSameInEveryLayoutAndAreSavedInOne) {
    const TestFolder folder;
    for (const auto& entry : fs::directory_iterator(Data / "settings/well-formed")) {
        folder.Write("tamber.cfg", FileText(entry.path()));
        const auto settings = LoadSettings(folder / "tamber.cfg");
        ASSERT_TRUE(settings) << Describe(settings.error());
        EXPECT_TRUE(SaveSettings(folder / "tamber.cfg", *settings));
        EXPECT_EQ(FileText(folder / "tamber.cfg"), "2\r\n-1\r\n50\r\n") << entry.path();
    }
    EXPECT_EQ(SaveSettings(folder / "none/tamber.cfg", {1, 12, 3}).error().Found,
              "No such file or directory");
}

TEST(WellFormedFiles, AnAutoSeriesIsTakenAsItStandsAndSavedInOneForm) {
    const std::string ones = "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n";
    const std::pair<std::string, std::string> table[] = {
        {"4\r\n1\r\n2\r\n3\r\n4\r\n", "4\r\n1\r\n2\r\n3\r\n4\r\n"},
        {"2,0 , 1,x,x", "2\r\n0\r\n1\r\n"},
        {"0\r\n", "0\r\n"},
        {"-7", "-7\r\n"},
        {"3\n32767\n-32768\n5", "3\r\n32767\r\n-32768\r\n5\r\n"},
        {"20" + std::string(18, '\n') + "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,4,2",
         "20\r\n" + ones + ones + "1\r\n4\r\n"},
    };
    const TestFolder folder;
    for (const auto& [text, saved] : table) {
        folder.Write("auto.cfg", text);
        const auto series = LoadAutoSequence(folder / "auto.cfg");
        ASSERT_TRUE(series) << Describe(series.error());
        EXPECT_TRUE(SaveAutoSequence(folder / "auto.cfg", *series));
        EXPECT_EQ(FileText(folder / "auto.cfg"), saved);
    }
}

TEST(WellFormedFiles, FactsReadTheSameInEveryLayoutAndWhatIsLeftOutIsNotKnown) {
    const TestFolder folder;
    for (const std::string text :
         {"\"PIC12F675\",1,31FF,0,007F,400E,4000,3000\r\n\"PIC16F628A\",0,21FF,,7F\r\n\"Bare\"\r\n",
          "\xEF\xBB\xBF\n  PIC12F675 , 1,31ff , 0 ,7f,400e,4000,3000,\n\n"
          "\"PIC16F628A\",0,21FF,,007F,,,\n\"Bare\",,,,,,,"}) {
        folder.Write("tamber.inf", text);
        const auto facts = DeviceFacts::Load(folder / "tamber.inf");
        ASSERT_TRUE(facts) << Describe(facts.error());
        EXPECT_EQ(facts->Of("PIC12F675"),
                  (DeviceFact{"PIC12F675", true, 0x31FF, false, 0x7F, 0x400E, 0x4000, 0x3000}));
        EXPECT_EQ(facts->Of("PIC16F628A"),
                  (DeviceFact{"PIC16F628A", false, 0x21FF, {}, 0x7F, {}, {}, {}}));
        EXPECT_EQ(facts->Of("Bare"), DeviceFact{"Bare"});
        EXPECT_EQ(facts->Of("pic12f675"), DeviceFact{}) << "no other device";
    }
}

TEST(StartUp, GoesOnWithoutFactsAndKeepsWhyTheyCannotBeUsed) {
    const TestFolder folder;
    const auto program = std::make_unique<modFunc>();
    folder.Write("tamber.cfg", "1,1,1");
    folder.Write("tamber.dev", "\"PIC16F84A\",7,1024,64,1");
    folder.Write("auto.cfg", "0");
    folder.Write("tamber.inf", "\"PIC16F84A\",0,3FFF\r\n");
    EXPECT_TRUE(StartUp(folder.Path(), *program));
    EXPECT_EQ(SelectedFact(*program).ConfigurationMask, 0x3FFF);
    folder.Write("tamber.inf", "\"PIC16F84A\",0,3FFF\r\n\"PIC12F675\",yes\r\n");
    EXPECT_TRUE(StartUp(folder.Path(), *program));
    EXPECT_EQ(SelectedFact(*program), DeviceFact{}) << "a broken file gives no facts at all";
    EXPECT_EQ(Describe(program->factsFailure.value()),
              (folder / "tamber.inf").string() +
                  ", line 2, field 2\nFound: \"yes\"\nExpected: the calibration word, a "
                  "hexadecimal number from 0 to 1\n"
                  "Correct the file and start Tamber again; until then it is not used.");
    std::filesystem::remove(folder / "tamber.inf");
    EXPECT_TRUE(StartUp(folder.Path(), *program));
    EXPECT_FALSE(program->factsFailure) << "the file may be missing";
}

std::string Devices(int count) {
    std::string text;
    for (int device = 1; device <= count; ++device)
        text += "\"Device " + std::to_string(device) + "\",7,1024,64,1\r\n";
    return text;
}

struct StartUpTest : testing::Test {
    // The file that start-up blames, "" for a start; whatever happens, nothing is written.
    std::string Blamed() {
        const auto before = folder.Files();
        const auto started = StartUp(folder.Path(), *program);
        EXPECT_EQ(folder.Files(), before);
        return started ? "" : fs::path(started.error().File).filename().string();
    }
    // What start-up says of a settings file that it cannot use, without the folder.
    std::string SaidOf(const std::string& settings) {
        folder.Write("tamber.cfg", settings);
        return Describe(StartUp(folder.Path(), *program).error())
            .substr(folder.Path().string().size());
    }

    const TestFolder folder;
    const std::unique_ptr<modFunc> program = std::make_unique<modFunc>();
};

TEST_F(StartUpTest, ReadsSettingsThenDeviceListThenAutoSeriesAndStopsAtTheFirstFailure) {
    EXPECT_EQ(Blamed(), "tamber.cfg");
    folder.Write("auto.cfg", "not a series");
    folder.Write("tamber.dev", Devices(1));
    folder.Write("tamber.cfg", "1\r\n2\r\nx\r\n");
    EXPECT_EQ(Blamed(), "tamber.cfg");
    folder.Write("tamber.cfg", "1\r\n2\r\n1\r\n");
    EXPECT_EQ(Blamed(), "tamber.dev");
    folder.Write("tamber.dev", Devices(3));
    EXPECT_EQ(Blamed(), "auto.cfg");
    folder.Write("auto.cfg", "1\r\n4\r\n");
    EXPECT_EQ(Blamed(), "");

    EXPECT_EQ(SelectedRecord(*program).Name, "Device 1");
    EXPECT_EQ(program->catalogue.Record(2).Name, "Device 2");
    EXPECT_EQ(program->catalogue.Record(3).Name, "") << "only as many as the settings count";
    EXPECT_EQ(program->autoSequence.Entries[1], FunctionVerify);
}

TEST_F(StartUpTest, TheDeviceListMustExistAndMayHoldNoneToFiftyDevices) {
    folder.Write("tamber.cfg", "2,0,0");
    folder.Write("auto.cfg", "0");
    EXPECT_EQ(Blamed(), "tamber.dev");
    folder.Write("tamber.dev", "");
    EXPECT_EQ(Blamed(), "");

    folder.Write("tamber.dev", Devices(51));
    folder.Write("tamber.cfg", "2,50,50");
    EXPECT_EQ(Blamed(), "");
    EXPECT_EQ(SelectedRecord(*program).Name, "Device 50");
    EXPECT_EQ(SaidOf("2,51,50"),
              "/tamber.dev\nFound: 51 devices asked for by the settings\nExpected: at most 50 "
              "devices\nCorrect the device count, the second value of the settings file, and start "
              "Tamber again.");
    EXPECT_EQ(SaidOf("1, COM2"),
              "/tamber.cfg, line 1, field 2\nFound: \"COM2\"\nExpected: the device count, a whole "
              "number from -32768 to 32767\nCorrect the file and start Tamber again.");
}

TEST_F(StartUpTest, TheDataFilesThatComeWithTheProgramFitTheImage) {
    const auto started = StartUp(SAMPLE_DATA, *program);
    ASSERT_TRUE(started) << Describe(started.error());
    std::set<std::string> names;
    for (int slot = 1; slot <= program->settings.DeviceCount; ++slot) {
        const DeviceRecord& record = program->catalogue.Record(slot);
        EXPECT_TRUE(names.insert(record.Name).second && record.TypeCode >= 1 &&
                    record.ProgramWords > 0 &&
                    record.ProgramWords <= MemoryImage::ProgramWordsMax &&
                    record.EepromBytes >= 0 && record.EepromBytes <= MemoryImage::EepromBytesMax)
            << record.Name;
        const DeviceFact& fact = program->facts.Of(record.Name);
        const bool twelveBit = BlankWordHigh(record.TypeCode) == 0x0F;
        EXPECT_EQ(fact.FileConfiguration, twelveBit ? 0x1FFE : 0x400E) << record.Name;
        EXPECT_EQ(fact.FileIds, twelveBit ? 2 * record.ProgramWords : 0x4000) << record.Name;
        EXPECT_EQ(fact.KeepMask.value() & ~fact.ConfigurationMask.value(), 0) << record.Name;
    }
    EXPECT_EQ(names.size(), 24u);
}

}  // namespace
}  // namespace Tamber
