#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/AutoSequence.hpp"
#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"
#include "link/ProgrammerLink.hpp"
#include "operations/FunctionDisplay.hpp"
#include "operations/FunctionWatch.hpp"
#include "platform/EventDelivery.hpp"
#include "platform/MessageBoxes.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

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

    /// Has `watch` told of the functions and asked whether to go on; it must outlive the run.
    void SetWatch(FunctionWatch& watch) { watch_ = &watch; }

    /// Tells the board the device type, if the board was found.
    void TellDeviceType();

    /// Runs the function of a row of the dialog's list, from RunBegins to RunEnds; any other code
    /// runs nothing. The outcome is in the message lines and in ErrorFlag.
    void Run(std::int16_t functionCode, const Regions& regions);

    /// Runs one device function (0..4) without the beginning and end of a run.
    void RunDeviceFunction(std::int16_t functionCode);

    // For the device functions.

    const DeviceRecord& Device() const { return device_; }
    MemoryImage& Image() { return image_; }
    const AutoSequence& Series() const { return series_; }
    ProgrammerLink& Link() { return link_; }
    MessageBoxes& Boxes() { return boxes_; }
    FunctionDisplay& Display() { return display_; }
    const Regions& Ticked() const { return regions_; }

    /// Byte `index` of the last reply; 0 where the reply has none.
    std::uint8_t ReplyByte(int index) const;

    /// The length of the last read reply, by its byte 0; a reply that promises more than came, or
    /// more than 17, counts as what came, at most 17.
    int ReplyLength() const;

    /// The size of the device's program memory in words and of its EEPROM in bytes, cut to what the
    /// image has room for; never negative.
    int ProgramWords() const;
    int EepromBytes() const;

    /// Replaces the current message line by a region's heading.
    void BeginLine(std::string_view text);

    /// Ends the current message line: by "   OK!" behind what it reads, or by another text.
    void EndLineOk();
    void EndLine(std::string_view text);

    /// Ends the current message line with what was found wrong in the data, and sets ErrorFlag.
    void EndLineFailed(std::string_view text);

    /// Goes on to the next message line.
    void NextLine();

    /// Shows `percent`, 0..100.
    void ShowProgress(std::int16_t percent);

    /// Lets events run for `milliseconds`, or until the front end wants the run to end; the pause
    /// timer keeps that period.
    void Pause(int milliseconds);

    /// Lets events run for one period of the pause timer, whatever it was last set to. An
    /// interruption does not end it: the board needs that time for what it was told.
    void WaitOnePeriod();

    /// The reaction to a reply that did not come: the box, then "   Device Fault!" behind the
    /// current line. The function must then end at once and send nothing more.
    void ReportDeviceFault();

    /// Asked before every region and every block. True: the function closes the sequence it is in,
    /// as at the end of a region, and ends at once; Stopped is set.
    bool StopRequested();

    /// Ends the current message line by "   Interrupted!" behind what it reads.
    void EndLineStopped();

    /// Empties all message lines and goes back to the first.
    void ClearLines();

    std::int16_t MessageLine = 0;  ///< 0..5, the line that receives the next message
    bool ErrorFlag = false;        ///< a failure in the data was found since the run began
    bool DeviceFault = false;      ///< a reply did not come since the run began
    bool Stopped = false;          ///< the run was ended before it was through

  private:
    void BeginPeriod();
    bool StopWanted() const;

    const DeviceRecord& device_;
    MemoryImage& image_;
    const AutoSequence& series_;
    ProgrammerLink& link_;
    WindowTimer& tmrWait_;
    EventDelivery& events_;
    MessageBoxes& boxes_;
    FunctionDisplay& display_;
    FunctionWatch* watch_ = nullptr;
    Regions regions_;
    std::string line_;  // what the current message line reads
    bool waitDone_ = false;
};

/// Texts that several functions use.
constexpr char OkText[] = "   OK!";
constexpr char DeviceFaultText[] = "   Device Fault!";
constexpr char InterruptedText[] = "   Interrupted!";

}  // namespace Tamber
