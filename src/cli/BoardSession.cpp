#include "cli/BoardSession.hpp"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "link/BoardIdentity.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber::Cli {
namespace {

// Behind an identification nothing may follow for this long.
constexpr std::chrono::milliseconds Silence(20);

constexpr char LostText[] = "The port went away.";

}  // namespace

BoardSession::BoardSession(Context& context)
    : context_(context),
      display_(context.Screen, [this] { return StopRequested(); }),
      boxes_(context.Screen),
      port_(context) {}

bool BoardSession::RanLast(FunctionCode function) const {
    return !display_.Reports().empty() && display_.Reports().back().Function == function;
}

bool BoardSession::Ended() const {
    return context_.Host.Interrupted() || port_.Control().PortLost();
}

bool BoardSession::StopRequested() const {
    return Ended() || (running_ && running_->DeviceFault);
}

Outcome BoardSession::Open() {
    if (auto outcome = port_.Make(); !outcome.Done())
        return outcome;
    totmr_ = context_.Host.NewTimer();
    tmrWait_ = context_.Host.NewTimer();
    link_.emplace(context_.Program.link, port_.Control(), *totmr_, context_.Host.Events());
    if (auto outcome = OpenPort(); !outcome.Done())
        return outcome;
    return Identify();
}

Outcome BoardSession::OpenPort() {
    const auto opened = link_->OpenPort(port_.Path());
    if (opened)
        return {};
    const std::string text =
        port_.CommPort() ? PortFailureText(*port_.CommPort(), opened.error()) : opened.error();
    return Failed(ExitStatus::PortNotOpened, std::string(PortFailureTitle) + ": " + text);
}

Outcome BoardSession::Identify() {
    const auto silence = context_.Host.NewTimer();
    silence->SetInterval(Silence);
    link_->IdentifyProgrammerAtOnce(*silence, [this] { return Ended(); });
    if (context_.Host.Interrupted())
        return Failed(ExitStatus::Interrupted);
    if (port_.Control().PortLost())
        return Failed(ExitStatus::BoardSilent, LostText);
    if (!context_.Program.link.ProgrammerFound) {
        const int came = port_.Control().InBufferCount();
        const std::string what = came == 0 ? "Nothing answers at " + port_.Name() + "."
                                           : "At " + port_.Name() + ", " + std::to_string(came) +
                                                 " bytes came in answer; a board sends " +
                                                 std::to_string(IdentificationLength) + ".";
        return Failed(ExitStatus::NoBoard, std::string(NoReplyTitle) + ": " + NoReplyText + "\n" +
                                               what + "\nIs the board connected and switched on?");
    }
    const BoardIdentity& identity = context_.Program.link.Board;
    context_.Facts["board"] = {{"name", identity.Name}, {"version", identity.Version}};
    return {};
}

Outcome BoardSession::Run(std::int16_t functionCode, const Regions& regions) {
    FunctionRun run(context_.Device(), context_.Program.image, context_.Program.autoSequence,
                    *link_, *tmrWait_, context_.Host.Events(), boxes_, display_);
    running_ = &run;
    link_->SelectDeviceType(context_.Device().TypeCode);
    run.Run(functionCode, regions);
    running_ = nullptr;
    TellReports();
    return OutcomeOf(run);
}

Outcome BoardSession::ReadQuietly(const Regions& regions, MemoryImage& image,
                                  const std::string& heading) {
    BarDisplay display(context_.Screen, heading, [this] { return StopRequested(); });
    FunctionRun run(context_.Device(), image, context_.Program.autoSequence, *link_, *tmrWait_,
                    context_.Host.Events(), boxes_, display);
    running_ = &run;
    run.Run(FunctionRead, regions);
    running_ = nullptr;
    return OutcomeOf(run);
}

Outcome BoardSession::Silent() const {
    return port_.Control().PortLost() ? Failed(ExitStatus::BoardSilent, LostText)
                                      : Failed(ExitStatus::BoardSilent);
}

// A silent board comes first: what else went wrong, it made go wrong.
Outcome BoardSession::OutcomeOf(const FunctionRun& run) const {
    if (run.DeviceFault || port_.Control().PortLost())
        return Silent();
    if (run.Stopped)
        return Failed(ExitStatus::Interrupted);
    if (run.ErrorFlag)
        return Failed(RanLast(FunctionProgram)  ? ExitStatus::ProgrammingFailed
                      : RanLast(FunctionVerify) ? ExitStatus::DifferencesFound
                                                : ExitStatus::NotBlank);
    const bool eraseRefused =
        context_.Device().EraseSupported == 0 &&
        std::ranges::find(display_.Reports(), FunctionErase, &FunctionReport::Function) !=
            display_.Reports().end();
    return eraseRefused ? Failed(ExitStatus::EraseUnavailable) : Outcome{};
}

void BoardSession::TellReports() {
    auto& functions = context_.Facts["functions"];
    functions = nlohmann::ordered_json::array();
    for (const FunctionReport& report : display_.Reports())
        functions.push_back(
            {{"name", FindFunction(report.Function)->Name}, {"lines", report.Lines}});
}

}  // namespace Tamber::Cli
