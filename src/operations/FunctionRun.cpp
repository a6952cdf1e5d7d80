#include "operations/FunctionRun.hpp"

#include <algorithm>
#include <chrono>

#include "link/BoardIdentity.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber {

FunctionRun::FunctionRun(const DeviceRecord& device, MemoryImage& image, const AutoSequence& series,
                         ProgrammerLink& link, WindowTimer& tmrWait, EventDelivery& events,
                         MessageBoxes& boxes, FunctionDisplay& display)
    : device_(device),
      image_(image),
      series_(series),
      link_(link),
      tmrWait_(tmrWait),
      events_(events),
      boxes_(boxes),
      display_(display) {
    tmrWait_.SetInterval(std::chrono::milliseconds(1000));
    tmrWait_.OnTick([this] {
        waitDone_ = true;
        tmrWait_.Disable();
    });
}

void FunctionRun::Run(std::int16_t functionCode, const Regions& regions) {
    regions_ = regions;
    ShowProgress(0);
    display_.RunBegins();
    ClearLines();
    ErrorFlag = false;
    DeviceFault = false;
    Stopped = false;
    if (functionCode == FunctionAuto)
        RunAuto(*this);
    else
        RunDeviceFunction(functionCode);
    display_.RunEnds();
}

void FunctionRun::RunDeviceFunction(std::int16_t functionCode) {
    const DeviceFunction* function = FindSeriesFunction(functionCode);
    if (!function)
        return;
    function_ = function->Code;
    display_.FunctionBegins(function_);
    function->Run(*this);
}

int FunctionRun::ProgramWords() const {
    return std::clamp(device_.ProgramWords, 0, MemoryImage::ProgramWordsMax);
}

int FunctionRun::EepromBytes() const {
    return std::clamp<int>(device_.EepromBytes, 0, MemoryImage::EepromBytesMax);
}

bool FunctionRun::HasCalibrationWord() const {
    return ProgramWords() > 0 &&
           IsCalibrationWord(image_.Word(2 * (ProgramWords() - 1)), device_.TypeCode);
}

void FunctionRun::BeginRegion(Region region) {
    region_ = region;
    line_ = HeadingText(function_, region);
    display_.LineBegins(MessageLine, line_);
}

void FunctionRun::EndRegion(Region region) {
    EndLine(HeadingText(function_, region) + OkText, {function_, region, RegionOutcome::Good, {}});
}

void FunctionRun::FailRegion(Region region, const RegionFinding& finding) {
    const RegionResult result{function_, region, RegionOutcome::Failed, finding};
    EndLine(FailureText(result), result);
    ErrorFlag = true;
}

void FunctionRun::EndRegionStopped() {
    EndLine(line_ + InterruptedText, {function_, region_, RegionOutcome::Interrupted, {}});
}

void FunctionRun::EndLine(const std::string& text, const RegionResult& result) {
    line_ = text;
    display_.LineEnds(MessageLine, line_, result);
}

void FunctionRun::NextLine() {
    ++MessageLine;
    line_.clear();
}

void FunctionRun::ShowProgress(std::int16_t percent) {
    display_.ProgressMoves(percent);
}

void FunctionRun::Pause(int milliseconds) {
    tmrWait_.SetInterval(std::chrono::milliseconds(milliseconds));
    BeginPeriod();
    DeliverEventsUntil(events_, [this] { return waitDone_ || display_.StopRequested(); });
    tmrWait_.Disable();
}

void FunctionRun::BeginPeriod() {
    waitDone_ = false;
    tmrWait_.Enable();
}

void FunctionRun::WaitOnePeriod() {
    BeginPeriod();
    DeliverEventsUntil(events_, [this] { return waitDone_; });
}

tl::expected<BlockReply, NoReply> FunctionRun::RequestBlock(int address) {
    auto reply = link_.RequestBlock(address);
    if (!reply)
        ReportDeviceFault();
    return reply;
}

tl::expected<WriteReply, NoReply> FunctionRun::WriteBlock(int address, std::uint8_t count) {
    auto reply = link_.WriteBlock(address, count, image_.Block(address));
    if (!reply)
        ReportDeviceFault();
    return reply;
}

void FunctionRun::ReportDeviceFault() {
    DeviceFault = true;
    boxes_.Show(NoReplyText, NoReplyTitle, BoxIcon::Critical);
    EndLine(line_ + DeviceFaultText, {function_, region_, RegionOutcome::DeviceFault, {}});
}

bool FunctionRun::StopRequested() {
    Stopped = Stopped || display_.StopRequested();
    return Stopped;
}

void FunctionRun::ClearLines() {
    line_.clear();
    MessageLine = 0;
    display_.LinesCleared();
}

}  // namespace Tamber
