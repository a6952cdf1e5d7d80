#include <optional>

#include "core/Blocks.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;
constexpr std::uint8_t BlankLow = 0xFF;
constexpr std::uint8_t BlankConfigurationHigh = 0x3F;
constexpr std::size_t ConfigurationOffset =
    MemoryImage::ConfigurationWord - MemoryImage::IdLocations;

struct BlankRegion {
    Region Where;
    int Size;                               // words, or EEPROM bytes
    int Start;                              // byte address
    std::optional<std::uint8_t> BlankHigh;  // none: high bytes are not tested
};

// The first word of `reply` that is not blank; `firstWord` is the address of its first one.
std::optional<RegionFinding> FirstNotBlank(const BlockReply& reply, const BlankRegion& region,
                                           int firstWord) {
    for (int offset = 0; offset < reply.Length; offset += 2) {
        const std::uint8_t low = reply.Data[static_cast<std::size_t>(offset)];
        const std::uint8_t high = reply.Data[static_cast<std::size_t>(offset) + 1];
        const std::uint8_t blankHigh = region.BlankHigh.value_or(0);
        const std::uint8_t tested = region.BlankHigh ? high : blankHigh;
        if (low != BlankLow || tested != blankHigh)
            return RegionFinding{firstWord + offset / 2,
                                 static_cast<std::uint16_t>(blankHigh << 8 | BlankLow),
                                 static_cast<std::uint16_t>(tested << 8 | low)};
    }
    return std::nullopt;
}

// It is the factory's word.
bool IsSpared(const FunctionRun& run, const RegionFinding& finding) {
    return finding.Address == run.ProgramWords() - 1 && run.MayStay(*finding.Found);
}

// False when the board stopped answering or the run is to end.
bool CheckBlocks(FunctionRun& run, const BlankRegion& region) {
    const int blocks = BlockCount(region.Size);
    std::optional<RegionFinding> notBlank;
    if (run.StopRequested())
        return false;
    run.BeginRegion(region.Where);
    for (int block = 0; !notBlank && block < blocks; ++block) {
        if (run.StopRequested()) {
            run.Link().EndRead();
            run.EndRegionStopped();
            return false;
        }
        run.ShowProgress(Percent(block, blocks));
        const auto reply = run.RequestBlock(region.Start + block * MemoryImage::BlockBytes);
        if (!reply)
            return false;
        notBlank = FirstNotBlank(*reply, region, block * BlockWords);
        if (notBlank && region.Where == Region::ProgramMemory && IsSpared(run, *notBlank)) {
            run.SparedAny = true;  // it is the last word, with nothing after it
            notBlank.reset();
        }
    }
    run.Link().EndRead();
    if (notBlank) {
        run.FailRegion(region.Where, *notBlank);
    } else {
        run.ShowProgress(100);
        run.EndRegion(region.Where);
    }
    run.NextLine();
    run.Pause(PauseMilliseconds);
    return true;
}

// Both parts are tested whichever of the two boxes is ticked.
void CheckConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return;
    run.BeginRegion(Region::IdAndConfiguration);
    const auto reply = run.RequestBlock(MemoryImage::IdLocations);
    if (!reply)
        return;
    const auto& data = reply->Data;
    const LeftOut& spared = run.Spared;
    const auto blankId = [&](std::size_t low) {
        run.SparedBits = run.SparedBits || (~data[low] & spared.IdBits & BlankLow) != 0;
        return ((data[low] | spared.IdBits) & BlankLow) == BlankLow;
    };
    const bool idBlank = blankId(0) && blankId(2) && blankId(4) && blankId(6);
    const int word = data[ConfigurationOffset + 1] << 8 | data[ConfigurationOffset];
    const int lacking = word ^ (BlankConfigurationHigh << 8 | BlankLow);
    const bool configurationBlank = (lacking & ~(spared.KeepMask | spared.ConfigurationBits)) == 0;
    run.SparedAny = run.SparedAny || (configurationBlank && (lacking & spared.KeepMask) != 0);
    run.SparedBits =
        run.SparedBits || (configurationBlank && (lacking & spared.ConfigurationBits) != 0);
    run.Link().EndRead();
    if (idBlank && configurationBlank) {
        run.ShowProgress(100);
        run.EndRegion(Region::IdAndConfiguration);
    } else {
        run.FailRegion(idBlank              ? Region::ConfigurationWord
                       : configurationBlank ? Region::IdLocations
                                            : Region::IdAndConfiguration);
    }
}

}  // namespace

void BlankCheckDevice(FunctionRun& run) {
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory && !CheckBlocks(run, {Region::ProgramMemory, run.ProgramWords(), 0,
                                                   BlankWordHigh(run.Device().TypeCode)}))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !CheckBlocks(run, {Region::Eeprom, run.EepromBytes(), MemoryImage::Eeprom, std::nullopt}))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        CheckConfiguration(run);
}

}  // namespace Tamber
