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

void FunctionRun::TellDeviceType() {
    if (link_.State().ProgrammerFound)
        link_.SendCommand(TypeLetter(device_.TypeCode));
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
    if (watch_)
        watch_->FunctionBegins(functionCode);
    switch (functionCode) {
        case FunctionRead:
            return ReadDevice(*this);
        case FunctionErase:
            return EraseDevice(*this);
        case FunctionBlank:
            return BlankCheckDevice(*this);
        case FunctionProgram:
            return ProgramDevice(*this);
        case FunctionVerify:
            return VerifyDevice(*this);
        default:
            return;
    }
}

int FunctionRun::ProgramWords() const {
    return std::clamp(device_.ProgramWords, 0, MemoryImage::ProgramWordsMax);
}

int FunctionRun::EepromBytes() const {
    return std::clamp<int>(device_.EepromBytes, 0, MemoryImage::EepromBytesMax);
}

std::uint8_t FunctionRun::ReplyByte(int index) const {
    const auto& reply = link_.State().ReplyBytes;
    const auto position = static_cast<std::size_t>(index);
    return position < reply.size() ? reply[position] : std::uint8_t{0};
}

int FunctionRun::ReplyLength() const {
    const int came = static_cast<int>(link_.State().ReplyBytes.size());
    return std::min({static_cast<int>(ReplyByte(0)), came, int{ReadReplyLength}});
}

void FunctionRun::BeginLine(std::string_view text) {
    line_ = text;
    display_.LineBegins(MessageLine, line_);
}

void FunctionRun::EndLineOk() {
    EndLine(line_ + OkText);
}

void FunctionRun::EndLine(std::string_view text) {
    line_ = std::string(text);
    display_.LineEnds(MessageLine, line_);
}

void FunctionRun::EndLineFailed(std::string_view text) {
    EndLine(text);
    ErrorFlag = true;
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
    DeliverEventsUntil(events_, [this] { return waitDone_ || StopWanted(); });
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

void FunctionRun::ReportDeviceFault() {
    DeviceFault = true;
    boxes_.Show(NoReplyText, NoReplyTitle, BoxIcon::Critical);
    EndLine(line_ + DeviceFaultText);
}

bool FunctionRun::StopWanted() const {
    return watch_ && watch_->StopRequested();
}

bool FunctionRun::StopRequested() {
    Stopped = Stopped || StopWanted();
    return Stopped;
}

void FunctionRun::EndLineStopped() {
    EndLine(line_ + InterruptedText);
}

void FunctionRun::ClearLines() {
    line_.clear();
    MessageLine = 0;
    display_.LinesCleared();
}

}  // namespace Tamber
