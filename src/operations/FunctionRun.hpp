#pragma once

#include <cstdint>
#include <string>

#include "core/AutoSequence.hpp"
#include "core/DeviceCatalogue.hpp"
#include "core/DeviceFacts.hpp"
#include "core/MemoryImage.hpp"
#include "link/ProgrammerLink.hpp"
#include "operations/FunctionDisplay.hpp"
#include "platform/EventDelivery.hpp"
#include "platform/MessageBoxes.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

/// What a run leaves out of account. What a device has from its factory: Blank always, Verify where
/// the image has no calibration word to compare with. Bits that it does not implement: both.
struct LeftOut {
    bool CalibrationWord = false;         ///< the last program word, in its right form
    std::uint16_t KeepMask = 0;           ///< bits of the configuration word from the factory
    std::uint16_t ConfigurationBits = 0;  ///< bits of it that are not implemented
    std::uint16_t IdBits = 0;             ///< the same of an ID location
};

/// What the device functions share from the opening of the function dialog to its closing: the
/// device, the image and the link they work on, the message lines, the progress and the pause
/// timer.
class FunctionRun {
  public:
    static constexpr int MessageLines = 6;

    /// Takes over the tick of `tmrWait`, whose period is 1000 ms until the first pause. The
    /// selected device and the series are those of the moment and must outlive the run.
    FunctionRun(const DeviceRecord& device, MemoryImage& image, const AutoSequence& series,
                ProgrammerLink& link, WindowTimer& tmrWait, EventDelivery& events,
                MessageBoxes& boxes, FunctionDisplay& display);

    /// Runs a function from RunBegins to RunEnds; a code that is none runs nothing. The outcome is
    /// in the message lines and in ErrorFlag.
    void Run(std::int16_t functionCode, const Regions& regions);

    // For the device functions.

    /// Runs one device function (0..4) without the beginning and end of a run; any other code runs
    /// nothing.
    void RunDeviceFunction(std::int16_t functionCode);

    const DeviceRecord& Device() const { return device_; }
    MemoryImage& Image() { return image_; }
    const AutoSequence& Series() const { return series_; }
    ProgrammerLink& Link() { return link_; }
    MessageBoxes& Boxes() { return boxes_; }
    FunctionDisplay& Display() { return display_; }
    const Regions& Ticked() const { return regions_; }

    /// The image has a calibration word for the device.
    bool HasCalibrationWord() const;

    /// `word`, which the device has in its last program word, is the factory's and may stay.
    bool MayStay(std::uint16_t word) const {
        return Spared.CalibrationWord && IsCalibrationWord(word, device_.TypeCode);
    }

    /// The size of the device's program memory in words and of its EEPROM in bytes, cut to what the
    /// image has room for; never negative.
    int ProgramWords() const;
    int EepromBytes() const;

    /// Begins a region on the current message line.
    void BeginRegion(Region region);

    /// Begins a region that has no heading; the current message line keeps its text.
    void BeginQuietRegion(Region region) { region_ = region; }

    /// Ends a region, begun or not, on the current message line.
    void EndRegion(Region region);

    /// The same for one in which something was found wrong in the data; sets ErrorFlag.
    void FailRegion(Region region, const RegionFinding& finding = {});

    /// Goes on to the next message line.
    void NextLine();

    /// Shows `percent`, 0..100.
    void ShowProgress(std::int16_t percent);

    /// Lets events run for `milliseconds`, or until the front end wants the run to end; the pause
    /// timer keeps that period.
    void Pause(int milliseconds);

    /// Lets events run for one period of the pause timer, whatever it was last set to. An
    /// interruption does not end it: the board needs that time to erase.
    void WaitOnePeriod();

    /// Reads the eight words at byte address `address`. When the reply does not come, that has been
    /// reported, and the function must end at once and send nothing more; so with WriteBlock.
    [[nodiscard]] tl::expected<BlockReply, NoReply> RequestBlock(int address);

    /// Writes the image's eight words at byte address `address`, of which the board is to take
    /// `count`.
    [[nodiscard]] tl::expected<WriteReply, NoReply> WriteBlock(int address, std::uint8_t count);

    /// Asked before every region and every block. True: the function closes the sequence it is in,
    /// as at the end of a region, and ends at once; Stopped is set.
    bool StopRequested();

    /// Ends the current message line for a function that was stopped.
    void EndRegionStopped();

    /// Empties all message lines and goes back to the first.
    void ClearLines();

    std::int16_t MessageLine = 0;  ///< 0..5, the line that receives the next message
    bool ErrorFlag = false;        ///< a failure in the data was found since the run began
    bool DeviceFault = false;      ///< a reply did not come since the run began
    bool Stopped = false;          ///< the run was ended before it was through
    LeftOut Spared;                ///< nothing unless the front end says so
    bool SparedAny = false;        ///< Blank has found something from the factory
    bool SparedBits = false;       ///< bits that are not implemented made a difference

  private:
    void ReportDeviceFault();
    void EndLine(const std::string& text, const RegionResult& result);
    void BeginPeriod();

    const DeviceRecord& device_;
    MemoryImage& image_;
    const AutoSequence& series_;
    ProgrammerLink& link_;
    WindowTimer& tmrWait_;
    EventDelivery& events_;
    MessageBoxes& boxes_;
    FunctionDisplay& display_;
    Regions regions_;
    FunctionCode function_ = FunctionRead;   // the device function that runs
    Region region_ = Region::ProgramMemory;  // the region begun last
    std::string line_;                       // what the current message line reads
    bool waitDone_ = false;
};

}  // namespace Tamber
