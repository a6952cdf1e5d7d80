#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "StartUp.hpp"
#include "cli/Commands.hpp"

namespace Tamber::Cli {
namespace {

using Json = nlohmann::ordered_json;

Outcome Unusable(const FileFailure& failure) {
    return Failed(ExitStatus::FileUnusable, Describe(failure));
}

// Ports and boards can be looked for without a working folder.
Outcome OpenFolder(const Arguments& asked, modFunc& program) {
    std::error_code error;
    program.AppPath = std::filesystem::absolute(asked.Folder, error).lexically_normal();
    const bool portGiven = !asked.Port.empty() || asked.Simulate;
    if (asked.Asked == Command::Ports || (asked.Asked == Command::Identify && portGiven))
        return {};
    if (asked.Asked != Command::Identify) {
        const auto started = StartUp(program.AppPath, program);
        return started ? Outcome{} : Unusable(started.error());
    }
    const auto settings = LoadSettings(SettingsFile(program));
    if (!settings)
        return Unusable(settings.error());
    program.settings = *settings;
    return {};
}

std::string UpperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return text;
}

Outcome ChooseDevice(const Arguments& asked, modFunc& program) {
    if (asked.Device.empty())
        return {};
    for (int slot = 1; slot <= program.settings.DeviceCount; ++slot) {
        if (UpperCase(program.catalogue.Record(slot).Name) != UpperCase(asked.Device))
            continue;
        program.settings.SelectedDevice = static_cast<std::int16_t>(slot);
        return {};
    }
    return Failed(ExitStatus::WrongUsage, "The working folder knows no device \"" + asked.Device +
                                              "\"; tamber-cli devices lists them.");
}

bool NeedsDevice(Command command) {
    return command != Command::Identify && command != Command::Devices && command != Command::Ports;
}

Outcome CheckDevice(Context& context) {
    const DeviceRecord& device = context.Device();
    if (device.TypeCode < 1)
        return Failed(ExitStatus::FileUnusable,
                      "The settings select no device; name one with --device.");
    context.Facts["device"] = {{"name", device.Name},
                               {"type", device.TypeCode},
                               {"words", device.ProgramWords},
                               {"eeprom", device.EepromBytes},
                               {"erase", device.EraseSupported != 0}};
    return {};
}

Outcome Carry(Context& context) {
    if (!context.Asked.File.empty())
        context.Facts["file"] = context.Asked.File;
    switch (context.Asked.Asked) {
        case Command::Identify:
            return Identify(context);
        case Command::Devices:
            return ListDevices(context);
        case Command::Ports:
            return ShowPorts(context);
        case Command::Read:
            return ReadToFile(context);
        case Command::Auto:
            return RunAutoSeries(context);
        case Command::Inspect:
            return InspectFile(context);
        default:
            return RunOneFunction(context);
    }
}

Outcome Do(Context& context) {
    if (auto outcome = OpenFolder(context.Asked, context.Program); !outcome.Done())
        return outcome;
    if (auto outcome = ChooseDevice(context.Asked, context.Program); !outcome.Done())
        return outcome;
    if (NeedsDevice(context.Asked.Asked))
        if (auto outcome = CheckDevice(context); !outcome.Done())
            return outcome;
    return Carry(context);
}

void TellOutcome(Json& facts, const Outcome& outcome) {
    facts["status"] = static_cast<int>(outcome.Status);
    facts["outcome"] = MeaningOf(outcome.Status).Name;
    if (!outcome.Done())
        facts["message"] = Harmless(outcome.Message);
}

// Names may come from anywhere; a byte that is no UTF-8 is replaced.
std::string Text(const Json& facts) {
    return facts.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

ExitStatus RunCommand(const Arguments& arguments, Machine& machine, const Streams& streams) {
    Terminal terminal(streams, arguments.Json, arguments.Quiet);
    const auto program = std::make_unique<modFunc>();
    Json facts{{"command", NameOf(arguments.Asked)}};
    Context context{arguments, machine, terminal, *program, facts};
    Outcome outcome = Do(context);
    TellOutcome(facts, outcome);
    if (arguments.Json && !terminal.Data(Text(facts)) && outcome.Done())
        outcome = Failed(ExitStatus::FileUnusable, "Standard output cannot be written.");
    if (!outcome.Done())
        terminal.Complain("tamber-cli: " + outcome.Message);
    return outcome.Status;
}

ExitStatus Give(const Answer& answer, const Streams& streams) {
    Terminal terminal(streams, answer.Json, false);
    if (answer.Status == ExitStatus::Done)
        return terminal.Data(answer.Text) ? ExitStatus::Done : ExitStatus::FileUnusable;
    Json facts{{"command", nullptr}};
    TellOutcome(facts, {answer.Status, answer.Text});
    if (answer.Json && !terminal.Data(Text(facts)))
        return ExitStatus::FileUnusable;
    terminal.Complain("tamber-cli: " + answer.Text);
    return answer.Status;
}

}  // namespace Tamber::Cli
