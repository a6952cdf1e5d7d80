#include <algorithm>

#include "core/Blocks.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;
constexpr int IdBytes = 8;
constexpr int ConfigurationOffset = MemoryImage::ConfigurationWord - MemoryImage::IdLocations;

// False when the board stopped answering or the run is to end.
bool ReadBlocks(FunctionRun& run, int size, int start) {
    for (int block = 0; block <= LastBlock(size); ++block) {
        if (run.StopRequested()) {
            run.Link().EndRead();
            run.EndRegionStopped();
            return false;
        }
        run.ShowProgress(Percent(block, BlockCount(size)));
        const int address = start + block * MemoryImage::BlockBytes;
        const auto reply = run.RequestBlock(address);
        if (!reply)
            return false;
        run.Image().Store(address, std::span(reply->Data).first(std::size_t(reply->Length)));
    }
    return true;
}

void EndBlocks(FunctionRun& run, Region region) {
    run.Link().EndRead();
    run.ShowProgress(100);
    run.EndRegion(region);
    run.Pause(PauseMilliseconds);
}

// Turns the stream that program memory now holds (configuration word, then all program words but
// the last) into the layout of the image. The closing block has what is missing.
bool ConvertStream(FunctionRun& run) {
    const int words = run.ProgramWords();
    MemoryImage& image = run.Image();
    const auto closing = run.RequestBlock(2 * words);
    if (!closing)
        return false;
    image.SetByte(MemoryImage::ConfigurationWord, image.Byte(0));
    image.SetByte(MemoryImage::ConfigurationWord + 1, image.Byte(1));
    for (int index = 0; index < 2 * words - 2; ++index)
        image.SetByte(index, image.Byte(index + 2));
    const std::span data(closing->Data);
    if (words > 0)
        image.Store(2 * words - 2, data.first(2));
    image.Store(MemoryImage::IdLocations, data.subspan(2, IdBytes));
    return true;
}

bool ReadProgramMemory(FunctionRun& run) {
    if (run.StopRequested())
        return false;
    run.BeginRegion(Region::ProgramMemory);
    if (!ReadBlocks(run, run.ProgramWords(), 0))
        return false;
    if (run.Device().TypeCode == StreamTypeCode && !ConvertStream(run))
        return false;
    EndBlocks(run, Region::ProgramMemory);
    return true;
}

bool ReadEeprom(FunctionRun& run) {
    if (run.StopRequested())
        return false;
    run.BeginRegion(Region::Eeprom);
    if (!ReadBlocks(run, run.EepromBytes(), MemoryImage::Eeprom))
        return false;
    EndBlocks(run, Region::Eeprom);
    return true;
}

bool ReadConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return false;
    run.BeginQuietRegion(Region::IdAndConfiguration);
    const auto reply = run.RequestBlock(MemoryImage::IdLocations);
    if (!reply)
        return false;
    const std::span data(reply->Data);
    if (run.Ticked().IdLocations)
        run.Image().Store(MemoryImage::IdLocations, data.first(IdBytes));
    if (run.Ticked().ConfigurationWord)
        run.Image().Store(MemoryImage::ConfigurationWord, data.subspan(ConfigurationOffset));
    run.Link().EndRead();
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
