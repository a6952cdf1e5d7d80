#include <optional>

#include "core/Blocks.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;
constexpr int IdBytes = 8;
constexpr int ConfigurationOffset = MemoryImage::ConfigurationWord - MemoryImage::IdLocations;

// Bytes of a block, and the image index that the first of them is compared with.
struct Stretch {
    int First = 0;
    int End = 0;
    int Index = 0;
    int Step = 1;  // 2 compares the low bytes only
};

std::uint8_t ByteOf(std::uint16_t word, int index) {
    return static_cast<std::uint8_t>(index % 2 == 0 ? word & 0xFF : word >> 8);
}

// Bits of the image's byte at `index` that the device does not implement.
std::uint8_t SparedBits(const FunctionRun& run, int index) {
    constexpr int ids = MemoryImage::IdLocations;
    if (index >= ids && index < ids + IdBytes)
        return ByteOf(run.Spared.IdBits, index);
    return index / 2 == MemoryImage::ConfigurationWord / 2
               ? ByteOf(run.Spared.ConfigurationBits, index)
               : 0x00;
}

// Bits of it that are the factory's.
std::uint8_t FactoryBits(const FunctionRun& run, int index) {
    if (index / 2 == MemoryImage::ConfigurationWord / 2)
        return ByteOf(run.Spared.KeepMask, index);
    const bool last = run.ProgramWords() > 0 && index / 2 == run.ProgramWords() - 1;
    return last && run.Spared.CalibrationWord && !run.HasCalibrationWord() ? 0xFF : 0x00;
}

// The first byte of `reply` that differs from the image; its Address is its offset in the block.
std::optional<RegionFinding> FirstDifference(FunctionRun& run, const BlockReply& reply,
                                             const Stretch& stretch) {
    for (int offset = stretch.First; offset < stretch.End; offset += stretch.Step) {
        const int index = stretch.Index + offset - stretch.First;
        const std::uint8_t expected = run.Image().Byte(index);
        const std::uint8_t found = reply.Data[static_cast<std::size_t>(offset)];
        const int different = (found ^ expected) & ~FactoryBits(run, index);
        const int spared = SparedBits(run, index);
        if ((different & ~spared) != 0)
            return RegionFinding{offset, expected, found};
        run.SparedBits = run.SparedBits || different != 0;
    }
    return std::nullopt;
}

// The same at `address` plus the offset in the block.
std::optional<RegionFinding> Shifted(std::optional<RegionFinding> finding, int address) {
    if (finding)
        finding->Address += address;
    return finding;
}

void EndRegion(FunctionRun& run, Region region, const std::optional<RegionFinding>& difference) {
    if (difference)
        run.FailRegion(region, *difference);
    else
        run.EndRegion(region);
}

void EndStopped(FunctionRun& run) {
    run.Link().EndRead();
    run.EndRegionStopped();
}

// What distinguishes the two regions that are compared block by block.
struct VerifyRegion {
    Region Where;
    int Size;   // words, or EEPROM bytes
    int Start;  // byte address
    int Step;
};

// False when the board stopped answering or the run is to end.
bool VerifyBlocks(FunctionRun& run, const VerifyRegion& region) {
    const int blocks = BlockCount(region.Size);
    std::optional<RegionFinding> difference;
    if (run.StopRequested())
        return false;
    run.BeginRegion(region.Where);
    for (int block = 0; !difference && block < blocks; ++block) {
        if (run.StopRequested()) {
            EndStopped(run);
            return false;
        }
        run.ShowProgress(Percent(block, blocks));
        const int offset = MemoryImage::BlockBytes * block;
        const auto reply = run.RequestBlock(region.Start + offset);
        if (!reply)
            return false;
        const Stretch whole{0, reply->Length, region.Start + offset, region.Step};
        difference = Shifted(FirstDifference(run, *reply, whole), offset);
    }
    run.Link().EndRead();
    if (!difference)
        run.ShowProgress(100);
    EndRegion(run, region.Where, difference);
    run.NextLine();
    run.Pause(PauseMilliseconds);
    return true;
}

// One request serves both. Each has its own line, which has a result but no heading.
void VerifyConfiguration(FunctionRun& run) {
    if (run.StopRequested())
        return;
    run.BeginQuietRegion(Region::IdAndConfiguration);
    const auto reply = run.RequestBlock(MemoryImage::IdLocations);
    if (!reply)
        return;
    if (run.Ticked().IdLocations) {
        run.Link().EndRead();
        EndRegion(run, Region::IdLocations,
                  FirstDifference(run, *reply, {0, IdBytes, MemoryImage::IdLocations}));
        run.NextLine();
        run.Pause(PauseMilliseconds);
    }
    if (run.Ticked().ConfigurationWord) {
        run.Link().EndRead();
        EndRegion(run, Region::ConfigurationWord,
                  FirstDifference(run, *reply,
                                  {ConfigurationOffset, ConfigurationOffset + 2,
                                   MemoryImage::ConfigurationWord}));
    }
}

// The stream of a type-1 device is shifted by one word: block 0 begins with the configuration word,
// and the block after the last has the last program word and the ID locations.
class StreamVerify {
  public:
    explicit StreamVerify(FunctionRun& run) : run_(run), words_(run.ProgramWords()) {}

    void Run() {
        const int blocks = BlockCount(words_);
        if (run_.StopRequested())
            return;
        run_.BeginRegion(Region::StreamConfigurationWord);
        for (int block = 0; block <= blocks; ++block) {
            if (run_.StopRequested())
                return EndStopped(run_);
            run_.ShowProgress(Percent(block, blocks));
            const auto reply = run_.RequestBlock(MemoryImage::BlockBytes * block);
            if (!reply)
                return;
            if (block == 0)
                VerifyConfigurationWord(*reply);
            if (block < blocks)
                VerifyMiddle(*reply, block);
            if (BlockWords * block == words_)
                VerifyClosingBlock(*reply, block);
        }
        run_.Link().EndRead();
        run_.ShowProgress(100);
    }

  private:
    void VerifyConfigurationWord(const BlockReply& reply) {
        EndRegion(run_, Region::StreamConfigurationWord,
                  FirstDifference(run_, reply, {0, 2, MemoryImage::ConfigurationWord}));
        run_.NextLine();
        run_.BeginRegion(Region::ProgramMemory);
    }

    // The first two bytes are the word before the block and are not looked at.
    void VerifyMiddle(const BlockReply& reply, int block) {
        const int start = MemoryImage::BlockBytes * block;
        Note(Region::ProgramMemory,
             Shifted(FirstDifference(run_, reply, {2, reply.Length, start}), start - 2));
    }

    void VerifyClosingBlock(const BlockReply& reply, int block) {
        const int lastWord = 2 * words_ - 2;
        if (words_ > 0)
            if (auto difference = FirstDifference(run_, reply, {0, 2, lastWord})) {
                difference->Address = lastWord;
                Note(Region::ProgramMemory, difference);
            }
        EndUnlessFailed(Region::ProgramMemory);
        run_.NextLine();
        run_.BeginRegion(Region::StreamIdLocations);
        Note(Region::StreamIdLocations,
             Shifted(FirstDifference(run_, reply, {2, 2 + IdBytes, MemoryImage::IdLocations}),
                     MemoryImage::BlockBytes * block - 2));
        EndUnlessFailed(Region::StreamIdLocations);
    }

    // Only the first difference of a region is shown.
    void Note(Region region, const std::optional<RegionFinding>& difference) {
        if (difference && !ErrorReported)
            run_.FailRegion(region, *difference);
        ErrorReported = ErrorReported || difference;
    }

    void EndUnlessFailed(Region region) {
        if (!ErrorReported)
            run_.EndRegion(region);
        ErrorReported = false;
    }

    FunctionRun& run_;
    int words_;
    bool ErrorReported = false;
};

}  // namespace

void VerifyDevice(FunctionRun& run) {
    if (run.Device().TypeCode == StreamTypeCode)
        return StreamVerify(run).Run();
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory &&
        !VerifyBlocks(run, {Region::ProgramMemory, run.ProgramWords(), 0, 1}))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !VerifyBlocks(run, {Region::Eeprom, run.EepromBytes(), MemoryImage::Eeprom, 2}))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        VerifyConfiguration(run);
}

}  // namespace Tamber
