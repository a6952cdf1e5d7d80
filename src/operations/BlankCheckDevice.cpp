#include <optional>
#include <string>

#include "core/Blocks.hpp"
#include "core/HexText.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;
constexpr std::uint8_t BlankLow = 0xFF;
constexpr std::uint8_t BlankConfigurationHigh = 0x3F;

struct BlankRegion {
    const char* heading;
    const char* failure;
    int size;  // words, or EEPROM bytes
    BlockAddress (*address)(int block);
    std::optional<std::uint8_t> blankHigh;  // none: high bytes are not tested
};

// The position in the last reply of the first word that is not blank, 0 when all are.
int FirstNotBlank(const FunctionRun& run, std::optional<std::uint8_t> blankHigh) {
    for (int position = 1; position < run.ReplyLength(); position += 2)
        if (run.ReplyByte(position) != BlankLow ||
            (blankHigh && run.ReplyByte(position + 1) != *blankHigh))
            return position;
    return 0;
}

// False when the board stopped answering or the run is to end.
bool CheckBlocks(FunctionRun& run, const BlankRegion& region) {
    const int blocks = BlockCount(region.size);
    int notBlank = -1;
    if (run.StopRequested())
        return false;
    run.BeginLine(region.heading);
    for (int block = 0; notBlank < 0 && block < blocks; ++block) {
        if (run.StopRequested()) {
            run.Link().SendCommand(CommandEnd);
            run.EndLineStopped();
            return false;
        }
        run.ShowProgress(Percent(block, blocks));
        if (!run.Link().RequestBlock(region.address(block))) {
            run.ReportDeviceFault();
            return false;
        }
        if (const int position = FirstNotBlank(run, region.blankHigh))
            notBlank = (MemoryImage::BlockBytes * block + position - 1) / 2;
    }
    run.Link().SendCommand(CommandEnd);
    if (notBlank < 0) {
        run.ShowProgress(100);
        run.EndLineOk();
    } else {
        run.EndLineFailed(region.failure + HexWord(static_cast<std::uint32_t>(notBlank)));
    }
    run.NextLine();
    run.Pause(PauseMilliseconds);
    return true;
}

// Both parts are tested whichever of the two boxes is ticked.
void CheckConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return;
    run.BeginLine("Blank Checking Config...");
    if (!run.Link().RequestBlock(ConfigurationBlock)) {
        run.ReportDeviceFault();
        return;
    }
    const bool idBlank = run.ReplyByte(1) == BlankLow && run.ReplyByte(3) == BlankLow &&
                         run.ReplyByte(5) == BlankLow && run.ReplyByte(7) == BlankLow;
    const bool configurationBlank =
        run.ReplyByte(15) == BlankLow && run.ReplyByte(16) == BlankConfigurationHigh;
    run.Link().SendCommand(CommandEnd);
    if (idBlank && configurationBlank) {
        run.ShowProgress(100);
        run.EndLineOk();
    } else if (idBlank) {
        run.EndLineFailed("Config. not blank at CW ");
    } else {
        run.EndLineFailed(std::string("Config. not blank at ID Locs ") +
                          (configurationBlank ? "" : "and CW"));
    }
}

}  // namespace

void BlankCheckDevice(FunctionRun& run) {
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory &&
        !CheckBlocks(run, {"Blank Checking Program Memory...", "PM not blank at ",
                           run.ProgramWords(), ProgramBlock, BlankWordHigh(run.Device().TypeCode)}))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !CheckBlocks(run, {"Blank Checking EEPROM...", "EEPROM not blank at ", run.EepromBytes(),
                           EepromBlock, std::nullopt}))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        CheckConfiguration(run);
}

}  // namespace Tamber
