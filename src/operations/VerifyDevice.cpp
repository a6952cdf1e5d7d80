#include <string>

#include "core/Blocks.hpp"
#include "core/HexText.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;

std::string ErrorAt(int address) {
    return "Verify Error at " + HexWord(static_cast<std::uint32_t>(address));
}

// True when reply byte `position` is image byte `index`.
bool Same(FunctionRun& run, int index, int position) {
    return run.Image().Byte(index) == run.ReplyByte(position);
}

// The first position from `first` to `last`, by `step`, at which the last reply differs from the
// image, whose byte `index` belongs to `first`; 0 when there is none.
int FirstDifference(FunctionRun& run, int index, int first, int last, int step = 1) {
    for (int position = first; position <= last; position += step)
        if (!Same(run, index + position - first, position))
            return position;
    return 0;
}

bool SameConfigurationWord(FunctionRun& run, int position) {
    return FirstDifference(run, MemoryImage::ConfigurationWord, position, position + 1) == 0;
}

bool Request(FunctionRun& run, BlockAddress address) {
    if (run.Link().RequestBlock(address))
        return true;
    run.ReportDeviceFault();
    return false;
}

void EndStopped(FunctionRun& run) {
    run.Link().SendCommand(CommandEnd);
    run.EndLineStopped();
}

// What distinguishes the two regions that are compared block by block.
struct VerifyRegion {
    const char* heading;
    int size;  // words, or EEPROM bytes
    BlockAddress (*address)(int block);
    int imageStart;
    int step;  // 2 compares the low bytes only
};

// False when the board stopped answering or the run is to end.
bool VerifyBlocks(FunctionRun& run, const VerifyRegion& region) {
    const int blocks = BlockCount(region.size);
    int difference = -1;
    if (run.StopRequested())
        return false;
    run.BeginLine(region.heading);
    for (int block = 0; difference < 0 && block < blocks; ++block) {
        if (run.StopRequested()) {
            EndStopped(run);
            return false;
        }
        run.ShowProgress(Percent(block, blocks));
        if (!Request(run, region.address(block)))
            return false;
        const int offset = MemoryImage::BlockBytes * block;
        if (const int position = FirstDifference(run, region.imageStart + offset, 1,
                                                 run.ReplyLength() - 1, region.step))
            difference = offset + position - 1;
    }
    run.Link().SendCommand(CommandEnd);
    if (difference < 0) {
        run.ShowProgress(100);
        run.EndLineOk();
    } else {
        run.EndLineFailed(ErrorAt(difference));
    }
    run.NextLine();
    run.Pause(PauseMilliseconds);
    return true;
}

// One request serves both; each has a line of its own, and only a result.
void VerifyConfiguration(FunctionRun& run) {
    if (run.StopRequested() || !Request(run, ConfigurationBlock))
        return;
    if (run.Ticked().IdLocations) {
        const bool same = FirstDifference(run, MemoryImage::IdLocations, 1, 8) == 0;
        run.Link().SendCommand(CommandEnd);
        if (same)
            run.EndLine("Verifying ID Locs...   OK!");
        else
            run.EndLineFailed("Verify Error at ID Locs");
        run.NextLine();
        run.Pause(PauseMilliseconds);
    }
    if (run.Ticked().ConfigurationWord) {
        const bool same = SameConfigurationWord(run, 15);
        run.Link().SendCommand(CommandEnd);
        if (same)
            run.EndLine("Verifying Conig Word...   OK!");
        else
            run.EndLineFailed("Verify Error at Config. Word");
    }
}

// The stream of a type-1 device is shifted by one word: block 0 begins with the configuration word,
// and the block behind the last has the last program word and the ID locations.
class StreamVerify {
  public:
    explicit StreamVerify(FunctionRun& run) : run_(run), words_(run.ProgramWords()) {}

    void Run() {
        const int blocks = BlockCount(words_);
        if (run_.StopRequested())
            return;
        run_.BeginLine("Verifying CW...");
        for (int block = 0; block <= blocks; ++block) {
            if (run_.StopRequested())
                return EndStopped(run_);
            run_.ShowProgress(Percent(block, blocks));
            if (!Request(run_, ProgramBlock(block)))
                return;
            if (block == 0)
                VerifyConfigurationWord();
            if (block < blocks)
                VerifyMiddle(block);
            if (BlockWords * block == words_)
                VerifyClosingBlock(block);
        }
        run_.Link().SendCommand(CommandEnd);
        run_.ShowProgress(100);
    }

  private:
    void VerifyConfigurationWord() {
        if (SameConfigurationWord(run_, 1))
            run_.EndLineOk();
        else
            run_.EndLineFailed("Verify Error at CW");
        run_.NextLine();
        run_.BeginLine("Verifying Program Memory...");
        errorReported_ = false;
    }

    void Report(int address) {
        if (!errorReported_)
            run_.EndLineFailed(ErrorAt(address));
        errorReported_ = true;
    }

    // Bytes 1 and 2 are the word before the block and are not looked at.
    void VerifyMiddle(int block) {
        const int start = MemoryImage::BlockBytes * block;
        if (const int position = FirstDifference(run_, start, 3, run_.ReplyLength() - 1))
            Report(start + position - 3);
    }

    void VerifyClosingBlock(int block) {
        const int lastWord = 2 * words_ - 2;
        if (words_ > 0 && FirstDifference(run_, lastWord, 1, 2) != 0)
            Report(lastWord);
        if (!errorReported_)
            run_.EndLineOk();
        run_.NextLine();
        errorReported_ = false;
        run_.BeginLine("Verifying ID Locs...");
        if (const int position = FirstDifference(run_, MemoryImage::IdLocations, 3, 10))
            Report(MemoryImage::BlockBytes * block + position - 3);
        if (!errorReported_)
            run_.EndLineOk();
    }

    FunctionRun& run_;
    int words_;
    bool errorReported_ = false;
};

}  // namespace

void VerifyDevice(FunctionRun& run) {
    if (run.Device().TypeCode == StreamTypeCode)
        return StreamVerify(run).Run();
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory &&
        !VerifyBlocks(run, {"Verifying Program Memory...", run.ProgramWords(), ProgramBlock, 0, 1}))
        return;
    if (ticked.Eeprom && run.EepromBytes() != 0 &&
        !VerifyBlocks(
            run, {"Verifying EEPROM...", run.EepromBytes(), EepromBlock, MemoryImage::Eeprom, 2}))
        return;
    if (ticked.IdLocations || ticked.ConfigurationWord)
        VerifyConfiguration(run);
}

}  // namespace Tamber
