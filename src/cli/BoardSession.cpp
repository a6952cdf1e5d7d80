#include "cli/BoardSession.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <utility>

#include "link/BoardIdentity.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber::Cli {
namespace {

// No byte may follow an identification, or the last reply of a region, for this long.
constexpr std::chrono::milliseconds Silence(20);

constexpr char LostText[] = "The port went away.";

}  // namespace

LeftOut LeftOutBy(const Context& context) {
    const Arguments& asked = context.Asked;
    const DeviceFact& fact = context.Fact();
    if (asked.Exact)
        return {};
    const bool factory = asked.Calibration != CalibrationUse::Drop;
    const auto others = [](const std::optional<std::uint16_t>& mask) {
        return static_cast<std::uint16_t>(mask ? ~*mask : 0);
    };
    return {.CalibrationWord = factory && fact.HasCalibrationWord.value_or(false),
            .KeepMask = factory ? fact.KeepMask.value_or(0) : std::uint16_t{0},
            .ConfigurationBits = others(fact.ConfigurationMask),
            .IdBits = others(fact.IdMask)};
}

BoardSession::BoardSession(Context& context) : context_(context), port_(context) {}

Outcome BoardSession::Open() {
    if (auto outcome = port_.Make(); !outcome)
        return outcome;
    totmr_ = context_.Host.NewTimer();
    tmrWait_ = context_.Host.NewTimer();
    silence_ = context_.Host.NewTimer();
    silence_->SetInterval(Silence);
    link_.emplace(context_.Program.link, port_.Control(), *totmr_, context_.Host.Events());
    return OpenPort().and_then([this] { return Identify(); });
}

Outcome BoardSession::OpenPort() {
    return link_->OpenPort(port_.Path()).map_error([this](const std::string& reason) {
        const auto commPort = port_.CommPort();
        return Failure{ExitStatus::PortNotOpened,
                       fmt::format("{}: {}", PortFailureTitle,
                                   commPort ? PortFailureText(*commPort, reason) : reason)};
    });
}

Outcome BoardSession::Identify() {
    link_->EmptyLine();
    link_->IdentifyProgrammerAtOnce(*silence_, [this] { return Ended(); });
    if (context_.Host.Interrupted())
        return Failed(ExitStatus::Interrupted);
    if (port_.Control().PortLost())
        return Failed(ExitStatus::BoardSilent, LostText);
    if (!context_.Program.link.ProgrammerFound) {
        const int came = port_.Control().InBufferCount();
        const std::string what =
            came == 0 ? fmt::format("Nothing answers at {}.", port_.Name())
                      : fmt::format("At {}, {} bytes came in answer; a board sends {}.",
                                    port_.Name(), came, IdentificationLength);
        return Failed(ExitStatus::NoBoard,
                      fmt::format("{}: {}\n{}\nIs the board connected and switched on?",
                                  NoReplyTitle, NoReplyText, what));
    }
    const BoardIdentity& identity = context_.Program.link.Board;
    context_.Facts["board"] = {{"name", identity.Name}, {"version", identity.Version}};
    return {};
}

Outcome BoardSession::Run(FunctionCode function, const Regions& regions) {
    Outcome outcome = RunInto(context_.Program.image, function, regions);
    auto& functions = context_.Facts["functions"];
    functions = nlohmann::ordered_json::array();
    for (const FunctionReport& report : reports_)
        functions.push_back(
            {{"name", FindFunction(report.Function)->Name}, {"lines", report.Lines}});
    return outcome;
}

Outcome BoardSession::ReadQuietly(const Regions& regions, MemoryImage& image,
                                  const std::string& heading) {
    return RunQuietly(image, FunctionRead, regions, heading);
}

Outcome BoardSession::WriteUndisturbed(const Regions& regions, MemoryImage& image,
                                       const std::string& heading) {
    undisturbed_ = true;
    Outcome outcome = RunQuietly(image, FunctionProgram, regions, heading);
    undisturbed_ = false;
    return outcome;
}

Outcome BoardSession::RunQuietly(MemoryImage& image, FunctionCode function, const Regions& regions,
                                 const std::string& heading) {
    quiet_ = true;
    heading_ = heading;
    Outcome outcome = RunInto(image, function, regions);
    heading_.clear();
    quiet_ = false;
    return outcome;
}

Outcome BoardSession::RunInto(MemoryImage& image, FunctionCode function, const Regions& regions) {
    FunctionRun run(context_.Device(), image, context_.Program.autoSequence, *link_, *tmrWait_,
                    context_.Host.Events(), *this, *this);
    link_->EmptyLine();
    (void)link_->TakeFinding();
    if (!std::exchange(typeNamed_, true))
        link_->SelectDeviceType(context_.Device().TypeCode);
    run.Spared = LeftOutBy(context_);
    running_ = &run;
    run.Run(function, regions);
    running_ = nullptr;
    if (!run.DeviceFault)
        link_->WatchSilence(*silence_, [this] { return Ended(); });
    sparedAny_ = sparedAny_ || run.SparedAny;
    sparedBits_ = sparedBits_ || run.SparedBits;
    return OutcomeOf(run);
}

// A silent board comes first: it has caused whatever else went wrong.
Outcome BoardSession::OutcomeOf(const FunctionRun& run) {
    if (port_.Control().PortLost())
        return Failed(ExitStatus::BoardSilent, LostText);
    if (const auto finding = link_->TakeFinding())
        return Failed(ExitStatus::BoardSilent, "the line is out of step: " + Describe(*finding));
    if (run.DeviceFault)
        return Failed(ExitStatus::BoardSilent);
    if (run.Stopped)
        return Failed(ExitStatus::Interrupted);
    if (run.ErrorFlag)
        return Failed(failed_ == FunctionProgram  ? ExitStatus::ProgrammingFailed
                      : failed_ == FunctionVerify ? ExitStatus::DifferencesFound
                                                  : ExitStatus::NotBlank);
    const bool erased =
        std::ranges::find(reports_, FunctionErase, &FunctionReport::Function) != reports_.end();
    if (erased && context_.Device().EraseSupported == 0)
        return Failed(ExitStatus::EraseUnavailable);
    return {};
}

void BoardSession::FunctionBegins(FunctionCode function) {
    if (!quiet_)
        reports_.push_back({function, {}});
}

void BoardSession::LineBegins(int, const std::string& text) {
    if (quiet_)
        return;
    heading_ = text;
    context_.Screen.ShowBar(heading_, 0);
}

void BoardSession::LineEnds(int, const std::string& text, const RegionResult& result) {
    if (quiet_)
        return;
    heading_.clear();
    results_.push_back(result);
    if (result.Outcome == RegionOutcome::Failed && !failed_)
        failed_ = result.Function;
    const bool good = result.Outcome == RegionOutcome::Good;
    const std::string doubt = good ? Doubt() : "";
    const std::string shown =
        text.substr(0, text.size() - (doubt.empty() ? 0 : std::string_view(OkText).size())) + doubt;
    reports_.back().Lines.push_back(shown);
    context_.Screen.Result(shown, good && doubt.empty() ? Tone::Good : Tone::Bad);
}

std::string BoardSession::Doubt() {
    link_->WatchSilence(*silence_, [this] { return Ended(); });
    if (port_.Control().PortLost())
        return DeviceFaultText;
    return link_->HasFinding() ? InterruptedText : "";
}

void BoardSession::ProgressMoves(std::int16_t percent) {
    if (!heading_.empty())
        context_.Screen.ShowBar(heading_, percent);
}

bool BoardSession::StopRequested() {
    const bool ended = undisturbed_ ? port_.Control().PortLost() : Ended();
    return ended || running_->DeviceFault || link_->HasFinding();
}

bool BoardSession::Ended() const {
    return context_.Host.Interrupted() || port_.Control().PortLost();
}

void BoardSession::Show(const std::string& text, const std::string& title, BoxIcon) {
    context_.Screen.Complain(title + ": " + text);
}

}  // namespace Tamber::Cli
