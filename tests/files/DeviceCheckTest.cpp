#include <gtest/gtest.h>

#include "StartUp.hpp"
#include "core/TestFolder.hpp"
#include "files/DeviceCheck.hpp"
#include "files/HexSave.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;

// The devices and facts that come with the program.
class DeviceCheck : public testing::Test {
  protected:
    DeviceCheck() { EXPECT_TRUE(StartUp(SAMPLE_DATA, *program_)); }

    const DeviceRecord& Device(const std::string& name) {
        int slot = program_->settings.DeviceCount;
        while (slot > 0 && program_->catalogue.Record(slot).Name != name)
            --slot;
        return program_->catalogue.Record(slot);
    }

    std::vector<DeviceFinding> Check(const DeviceRecord& device, std::string text) {
        std::ranges::replace(text, '/', '\n');
        const DeviceFact& fact = program_->facts.Of(device.Name);
        const HexInspection inspection = InspectHexText(text, device, fact);
        EXPECT_FALSE(inspection.Refusal) << text;
        return CheckForDevice(inspection, device, program_->facts, program_->catalogue,
                              program_->settings.DeviceCount);
    }

    static std::string Text(const DeviceFinding& finding, const DeviceRecord& device) {
        const auto [cause, remedy] = WordsOf(finding, device);
        const bool harmful = SeverityOf(finding.Kind) == HexSeverity::Harmful;
        return (harmful ? "harmful: " : "note: ") + cause + " " + remedy;
    }

    std::unique_ptr<modFunc> program_ = std::make_unique<modFunc>();
};

// Each row of the table: a device, a text with "/" for its line ends, and all that is found.
TEST_F(DeviceCheck, FindsEveryKindAndPassesWhatLooksNearlyLikeIt) {
    std::set<DeviceFindingKind> kinds;
    for (const auto& row : Expectations(fs::path(TEST_DATA) / "hex/check")) {
        if (row[0].starts_with('#'))
            continue;
        std::vector<std::string> found{row[0], row[1]};
        for (const DeviceFinding& finding : Check(Device(row[0]), row[1])) {
            kinds.insert(finding.Kind);
            found.push_back(Text(finding, Device(row[0])));
        }
        EXPECT_EQ(found, row);
    }
    kinds.insert(DeviceFindingKind::ElsewhereInFile);
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(DeviceFindingKind::LinesAfterEnd) + 1);
}

TEST_F(DeviceCheck, AGoodFileOfEveryListedDeviceHasNoFinding) {
    for (int slot = 1; slot <= program_->settings.DeviceCount; ++slot) {
        const DeviceRecord& device = program_->catalogue.Record(slot);
        const DeviceFact& fact = program_->facts.Of(device.Name);
        const auto high = BlankWordHigh(device.TypeCode);
        MemoryImage image = BlankImage(device);
        for (int word = 0; word < device.ProgramWords; ++word)
            image.Store(2 * word, std::array{static_cast<std::uint8_t>(word),
                                             static_cast<std::uint8_t>(word >> 2 & high)});
        if (fact.HasCalibrationWord.value())
            image.SetByte(2 * device.ProgramWords - 1, high == 0x0F ? 0x0C : 0x34);
        for (int byte = 0; byte < device.EepromBytes; ++byte)
            image.SetByte(MemoryImage::Eeprom + 2 * byte, static_cast<std::uint8_t>(byte));
        for (const DeviceFinding& finding : Check(device, HexFileText(image, device.ProgramWords)))
            ADD_FAILURE() << Text(finding, device);
    }
}

TEST_F(DeviceCheck, AssumesNothingThatIsNotKnown) {
    const auto notes = [&] {
        std::vector<DeviceFindingKind> kinds;
        for (const DeviceFinding& finding :
             Check(Device("PIC12F509"), ":04000000250000CD0A/:021FFE00A50F2D/:00000001FF"))
            kinds.push_back(finding.Kind);
        return kinds;
    };
    using enum DeviceFindingKind;
    const std::vector known{WideWords, ElsewhereInFile, UnimplementedBits, NoCalibrationWord};
    EXPECT_EQ(notes(), known);
    program_->facts = {};
    EXPECT_EQ(notes(), (std::vector{WideWords, ElsewhereInFile}));
}

TEST_F(DeviceCheck, NamesTheOnlyListedDeviceThatFits) {
    const std::string text = ":020000001228C4/:02200000052BAE/:02400E00F13F80/:00000001FF";
    EXPECT_EQ(Check(Device("PIC16F84A"), text).front().Better, "") << "several do";
    program_->settings.DeviceCount = 18;
    EXPECT_EQ(Check(Device("PIC16F84A"), text).front().Better, "PIC16F76");
}

}  // namespace
}  // namespace Tamber
