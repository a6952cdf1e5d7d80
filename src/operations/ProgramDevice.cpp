#include <string>

#include "core/Blocks.hpp"
#include "core/HexText.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr std::uint8_t BlockWordCount = 8;
constexpr std::uint8_t HalfBlockWordCount = 4;
constexpr std::uint8_t StatusWritten = 0x00;

// What distinguishes the two regions that are written block by block.
struct WriteRegion {
    const char* heading;
    int size;  // words, or EEPROM bytes
    BlockAddress (*address)(int block);
    int imageStart;  // image index of block 0
    int wordStart;   // word address shown as 0
};

// The word address at which the board refused a block, from the block's address and the low byte
// in the acknowledgement.
int FailedWord(const FunctionRun& run, std::uint8_t addrHi) {
    return (addrHi * 256 + run.ReplyByte(2)) / 2;
}

void ShowFailure(FunctionRun& run, int word) {
    run.EndLineFailed("Program Error at " + HexWord(static_cast<std::uint32_t>(word)));
}

void EndSequence(FunctionRun& run) {
    run.Link().SendCommand(CommandWrite);
    run.Link().SendCommand(CommandEnd);
}

// False when the board stopped answering or the run is to end.
bool WriteBlocks(FunctionRun& run, const WriteRegion& region) {
    if (run.StopRequested())
        return false;
    run.BeginLine(region.heading);
    run.Link().SendCommand(CommandWrite);
    bool written = true;
    BlockAddress address;
    for (int block = 0; written && block <= LastBlock(region.size); ++block) {
        if (run.StopRequested()) {
            EndSequence(run);
            run.EndLineStopped();
            return false;
        }
        run.ShowProgress(Percent(block, BlockCount(region.size)));
        address = region.address(block);
        const int index = region.imageStart + block * MemoryImage::BlockBytes;
        if (!run.Link().WriteBlock(address, BlockWordCount, run.Image().Block(index))) {
            run.ReportDeviceFault();
            return false;
        }
        written = run.ReplyByte(1) == StatusWritten;
    }
    EndSequence(run);
    if (written) {
        run.ShowProgress(100);
        run.EndLineOk();
    } else {
        ShowFailure(run, FailedWord(run, address.AddrHi) - region.wordStart);
    }
    run.NextLine();
    run.Pause(1000);
    return true;
}

void WriteConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return;
    const bool both = run.Ticked().IdLocations && run.Ticked().ConfigurationWord;
    run.BeginLine("Programming ID and Config...");
    run.Link().SendCommand(CommandWrite);
    if (!run.Link().WriteBlock(ConfigurationBlock, both ? BlockWordCount : HalfBlockWordCount,
                               run.Image().Block(MemoryImage::IdLocations))) {
        run.ReportDeviceFault();
        return;
    }
    EndSequence(run);
    if (run.ReplyByte(1) == StatusWritten) {
        run.ShowProgress(100);
        run.EndLineOk();
    } else {
        ShowFailure(run, FailedWord(run, ConfigurationBlock.AddrHi) - MemoryImage::IdLocations / 2);
    }
}

}  // namespace

void ProgramDevice(FunctionRun& run) {
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory && !WriteBlocks(run, {"Programming Program Memory...",
                                                   run.ProgramWords(), ProgramBlock, 0, 0}))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !WriteBlocks(run, {"Programming EEPROM...", run.EepromBytes(), EepromBlock,
                           MemoryImage::Eeprom, MemoryImage::Eeprom / 2}))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        WriteConfiguration(run);
}

}  // namespace Tamber
