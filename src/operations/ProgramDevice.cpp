#include <optional>

#include "core/Blocks.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 1000;
constexpr std::uint8_t WholeBlock = 8;  // words
constexpr std::uint8_t HalfBlock = 4;

// The word at which the board refused a block, counted from byte address `start`.
RegionFinding RefusedAt(const WriteReply& reply, int start) {
    return {reply.FailedAddress / 2 - start / 2, {}, {}};
}

// Ends a region in which the board refused nothing, or a block.
void EndBlocks(FunctionRun& run, Region region, const std::optional<RegionFinding>& refused) {
    run.Link().EndWrite();
    if (refused) {
        run.FailRegion(region, *refused);
    } else {
        run.ShowProgress(100);
        run.EndRegion(region);
    }
}

// Writes `size` words or EEPROM bytes from byte address `start` on. False when the board stopped
// answering or the run is to end.
bool WriteBlocks(FunctionRun& run, Region region, int size, int start) {
    if (run.StopRequested())
        return false;
    run.BeginRegion(region);
    run.Link().BeginWrite();
    std::optional<RegionFinding> refused;
    for (int block = 0; !refused && block <= LastBlock(size); ++block) {
        if (run.StopRequested()) {
            run.Link().EndWrite();
            run.EndRegionStopped();
            return false;
        }
        run.ShowProgress(Percent(block, BlockCount(size)));
        const auto reply = run.WriteBlock(start + block * MemoryImage::BlockBytes, WholeBlock);
        if (!reply)
            return false;
        if (!reply->Written)
            refused = RefusedAt(*reply, start);
    }
    EndBlocks(run, region, refused);
    run.NextLine();
    run.Pause(PauseMilliseconds);
    return true;
}

void WriteConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return;
    const bool both = run.Ticked().IdLocations && run.Ticked().ConfigurationWord;
    run.BeginRegion(Region::IdAndConfiguration);
    run.Link().BeginWrite();
    const auto reply = run.WriteBlock(MemoryImage::IdLocations, both ? WholeBlock : HalfBlock);
    if (!reply)
        return;
    std::optional<RegionFinding> refused;
    if (!reply->Written)
        refused = RefusedAt(*reply, MemoryImage::IdLocations);
    EndBlocks(run, Region::IdAndConfiguration, refused);
}

}  // namespace

void ProgramDevice(FunctionRun& run) {
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory && !WriteBlocks(run, Region::ProgramMemory, run.ProgramWords(), 0))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !WriteBlocks(run, Region::Eeprom, run.EepromBytes(), MemoryImage::Eeprom))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        WriteConfiguration(run);
}

}  // namespace Tamber
