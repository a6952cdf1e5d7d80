#include "cli/BoardSession.hpp"

#include <chrono>
#include <nlohmann/json.hpp>

#include "link/BoardIdentity.hpp"

namespace Tamber::Cli {
namespace {

// Behind an identification nothing may follow for this long.
constexpr std::chrono::milliseconds Silence(20);

constexpr char LostText[] = "The port went away.";

bool NoErase(const DeviceRecord& device) {
    return device.EraseSupported == 0;
}

}  // namespace

BoardSession::BoardSession(Context& context)
    : context_(context), display_(context.Screen), boxes_(context.Screen), port_(context) {}

void BoardSession::FunctionBegins(std::int16_t functionCode) {
    lastFunction_ = functionCode;
    if (functionShown_)
        display_.BeginFunction(FunctionName(functionCode));
    if (functionCode == FunctionErase && NoErase(context_.Device()))
        eraseRefused_ = true;
}

bool BoardSession::Ended() const {
    return context_.Host.Interrupted() || port_.Control().PortLost();
}

bool BoardSession::StopRequested() {
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
    const int commPort = port_.CommPort().value_or(0);
    const auto reason = link_->OpenPort(static_cast<std::int16_t>(commPort));
    if (!reason)
        return {};
    const std::string text = port_.CommPort() ? PortFailureText(commPort, *reason) : *reason;
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
    const BoardIdentity identity = IdentityOf(context_.Program.link.ReplyBytes);
    context_.Facts["board"] = {{"name", identity.Name}, {"version", identity.Version}};
    return {};
}

Outcome BoardSession::Run(std::int16_t functionCode, const Regions& regions) {
    FunctionRun run(context_.Device(), context_.Program.image, context_.Program.autoSequence,
                    *link_, *tmrWait_, context_.Host.Events(), boxes_, display_);
    run.SetWatch(*this);
    running_ = &run;
    functionShown_ = true;
    run.TellDeviceType();
    run.Run(functionCode, regions);
    functionShown_ = false;
    running_ = nullptr;
    TellReports();
    return OutcomeOf(run);
}

Outcome BoardSession::ReadQuietly(const Regions& regions, MemoryImage& image,
                                  const std::string& heading) {
    BarDisplay display(context_.Screen, heading);
    const std::int16_t before = lastFunction_;
    FunctionRun run(context_.Device(), image, context_.Program.autoSequence, *link_, *tmrWait_,
                    context_.Host.Events(), boxes_, display);
    run.SetWatch(*this);
    running_ = &run;
    run.Run(FunctionRead, regions);
    running_ = nullptr;
    lastFunction_ = before;
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
    return eraseRefused_ ? Failed(ExitStatus::EraseUnavailable) : Outcome{};
}

void BoardSession::TellReports() {
    auto& functions = context_.Facts["functions"];
    functions = nlohmann::ordered_json::array();
    for (const auto& [name, lines] : display_.Reports())
        functions.push_back({{"name", name}, {"lines", lines}});
}

}  // namespace Tamber::Cli
