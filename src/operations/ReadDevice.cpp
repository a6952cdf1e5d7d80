#include <algorithm>

#include "core/Blocks.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;

// Stores the data bytes of the last reply from image byte `index` on.
void StoreBlock(FunctionRun& run, int index) {
    for (int byteIndex = 1; byteIndex < run.ReplyLength(); ++byteIndex)
        run.Image().SetByte(index + byteIndex - 1, run.ReplyByte(byteIndex));
}

// Requests a block; false when the board stopped answering, which is then reported.
bool Request(FunctionRun& run, BlockAddress address) {
    if (run.Link().RequestBlock(address))
        return true;
    run.ReportDeviceFault();
    return false;
}

// False when the board stopped answering or the run is to end.
bool ReadBlocks(FunctionRun& run, int size, BlockAddress (*address)(int), int imageStart) {
    for (int block = 0; block <= LastBlock(size); ++block) {
        if (run.StopRequested()) {
            run.Link().SendCommand(CommandEnd);
            run.EndLineStopped();
            return false;
        }
        run.ShowProgress(Percent(block, BlockCount(size)));
        if (!Request(run, address(block)))
            return false;
        StoreBlock(run, imageStart + block * MemoryImage::BlockBytes);
    }
    return true;
}

void EndRegion(FunctionRun& run) {
    run.Link().SendCommand(CommandEnd);
    run.ShowProgress(100);
    run.EndLineOk();
    run.Pause(PauseMilliseconds);
}

// Turns the stream that now stands in program memory (configuration word, then all program words
// but the last) into the layout of the image. The closing block has what is missing.
bool ConvertStream(FunctionRun& run) {
    const int words = run.ProgramWords();
    MemoryImage& image = run.Image();
    if (!Request(run, {static_cast<std::uint8_t>(2 * words / 256),
                       static_cast<std::uint8_t>(2 * words % 256)}))
        return false;
    image.SetByte(MemoryImage::ConfigurationWord, image.Byte(0));
    image.SetByte(MemoryImage::ConfigurationWord + 1, image.Byte(1));
    for (int index = 0; index < 2 * words - 2; ++index)
        image.SetByte(index, image.Byte(index + 2));
    for (int byteIndex = 0; words > 0 && byteIndex < 2; ++byteIndex)
        image.SetByte(2 * words - 2 + byteIndex, run.ReplyByte(1 + byteIndex));
    for (int byteIndex = 0; byteIndex < 8; ++byteIndex)
        image.SetByte(MemoryImage::IdLocations + byteIndex, run.ReplyByte(3 + byteIndex));
    return true;
}

bool ReadProgramMemory(FunctionRun& run) {
    if (run.StopRequested())
        return false;
    run.BeginLine("Reading Program Memory...");
    if (!ReadBlocks(run, run.ProgramWords(), ProgramBlock, 0))
        return false;
    if (run.Device().TypeCode == StreamTypeCode && !ConvertStream(run))
        return false;
    EndRegion(run);
    return true;
}

bool ReadEeprom(FunctionRun& run) {
    if (run.StopRequested())
        return false;
    run.BeginLine("Reading EEPROM...");
    if (!ReadBlocks(run, run.EepromBytes(), EepromBlock, MemoryImage::Eeprom))
        return false;
    EndRegion(run);
    return true;
}

bool ReadConfiguration(FunctionRun& run) {
    if (run.StopRequested() || !Request(run, ConfigurationBlock))
        return false;
    if (run.Ticked().IdLocations)
        for (int byteIndex = 0; byteIndex < 8; ++byteIndex)
            run.Image().SetByte(MemoryImage::IdLocations + byteIndex, run.ReplyByte(1 + byteIndex));
    if (run.Ticked().ConfigurationWord) {
        run.Image().SetByte(MemoryImage::ConfigurationWord, run.ReplyByte(15));
        run.Image().SetByte(MemoryImage::ConfigurationWord + 1, run.ReplyByte(16));
    }
    run.Link().SendCommand(CommandEnd);
    return true;
}

}  // namespace

void ReadDevice(FunctionRun& run) {
    const Regions ticked = run.Ticked();
    const bool stream = run.Device().TypeCode == StreamTypeCode;
    const bool eeprom = ticked.Eeprom && run.EepromBytes() != 0;
    if (ticked.ProgramMemory && !ReadProgramMemory(run))
        return;
    if (!stream && eeprom && !ReadEeprom(run))
        return;
    if (!stream && (ticked.IdLocations || ticked.ConfigurationWord) && !ReadConfiguration(run))
        return;
    run.Display().ReadCompletes();
    run.Display().ImageChanged(
        {ticked.ProgramMemory, eeprom, ticked.IdLocations, ticked.ConfigurationWord});
}

}  // namespace Tamber
