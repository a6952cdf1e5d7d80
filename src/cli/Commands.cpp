#include "cli/Commands.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "StartUp.hpp"
#include "core/Utf8.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber::Cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr char DeviceRow[] = "{} {:<15} {:>7}{:>7}{:>7}  {}";

Json DeviceFacts(const DeviceRecord& device) {
    return {{"name", device.Name},
            {"type", device.TypeCode},
            {"words", device.ProgramWords},
            {"eeprom", device.EepromBytes},
            {"erase", device.EraseSupported != 0}};
}

Outcome ListDevices(Context& context) {
    const modFunc& program = context.Program;
    Json& list = context.Facts["devices"] = Json::array();
    context.Screen.Note(fmt::format(DeviceRow, ' ', "name", "type", "words", "EEPROM", "erase"));
    for (int slot = 1; slot <= program.settings.DeviceCount; ++slot) {
        const DeviceRecord& device = program.catalogue.Record(slot);
        const bool selected = slot == program.settings.SelectedDevice;
        context.Screen.Asked(fmt::format(DeviceRow, selected ? '*' : ' ', device.Name,
                                         device.TypeCode, device.ProgramWords, device.EepromBytes,
                                         device.EraseSupported != 0 ? "yes" : "no"));
        list.push_back(DeviceFacts(device));
        list.back()["selected"] = selected;
    }
    return {};
}

// A command that has the board run a device function.
CommandForm FunctionForm(FunctionCode code, const char* meaning, Outcome (*carry)(Context&),
                         FileUse file = FileUse::None, const char* fileName = "") {
    return {.Name = FindFunction(code)->Command,
            .Meaning = meaning,
            .Carry = carry,
            .File = file,
            .FileName = fileName,
            .RefusesFiles = file != FileUse::None && code != FunctionRead,
            .KeepsCalibration =
                code == FunctionErase || code == FunctionProgram || code == FunctionAuto,
            .Compares = code == FunctionVerify || code == FunctionBlank || code == FunctionAuto,
            .Function = code};
}

Outcome OpenFolder(Context& context) {
    const Arguments& asked = context.Asked;
    modFunc& program = context.Program;
    std::error_code error;
    program.AppPath = std::filesystem::absolute(asked.Folder, error).lexically_normal();
    const bool portGiven = !asked.Port.empty() || asked.Simulate;
    const FolderUse use = asked.Command->Folder;
    if (use == FolderUse::None || (use == FolderUse::Port && portGiven))
        return {};
    const auto opened = use == FolderUse::All
                            ? StartUp(program.AppPath, program)
                            : LoadSettings(SettingsFile(program)).map([&](const Settings& read) {
                                  program.settings = read;
                              });
    if (program.factsFailure)
        context.Screen.Complain("tamber-cli: " + Describe(*program.factsFailure));
    return opened.map_error([](const FileFailure& failure) {
        return Failure{ExitStatus::FileUnusable, Describe(failure)};
    });
}

std::string UpperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return text;
}

std::optional<std::int16_t> SlotOf(const std::string& device, const modFunc& program) {
    for (std::int16_t slot = 1; slot <= program.settings.DeviceCount; ++slot)
        if (UpperCase(program.catalogue.Record(slot).Name) == UpperCase(device))
            return slot;
    return std::nullopt;
}

Outcome ChooseDevice(Context& context) {
    if (const std::string& asked = context.Asked.Device; !asked.empty()) {
        const auto slot = SlotOf(Utf8From(asked), context.Program);
        if (!slot)
            return Failed(ExitStatus::WrongUsage,
                          fmt::format("The working folder has no device \"{}\"; tamber-cli devices "
                                      "lists those it has.",
                                      asked));
        context.Program.settings.SelectedDevice = *slot;
    }
    if (!context.Asked.Command->NeedsDevice)
        return {};
    if (context.Device().TypeCode < 1)
        return Failed(ExitStatus::FileUnusable,
                      "The settings select no device; name one with --device.");
    context.Facts["device"] = DeviceFacts(context.Device());
    return {};
}

Outcome Carry(Context& context) {
    if (!context.Asked.File.empty())
        context.Facts["file"] = context.Asked.File;
    return context.Asked.Command->Carry(context);
}

void AddOutcome(Json& facts, const Outcome& outcome) {
    const ExitStatus status = outcome ? ExitStatus::Done : outcome.error().Status;
    facts["status"] = static_cast<int>(status);
    facts["outcome"] = MeaningOf(status).Name;
    if (!outcome)
        facts["message"] = Harmless(outcome.error().Message);
}

// The names of files may be anything: what is not ASCII is escaped, for the sake of terminals, and
// a byte that is not UTF-8 is replaced.
std::string Text(const Json& facts) {
    return facts.dump(2, ' ', true, Json::error_handler_t::replace) + "\n";
}

// Reports how it ended, the last thing a run of the program does.
ExitStatus Conclude(Terminal& terminal, Json& facts, Outcome outcome) {
    AddOutcome(facts, outcome);
    if (terminal.Json() && !terminal.Data(Text(facts)) && outcome)
        outcome = Failed(ExitStatus::FileUnusable, "Standard output cannot be written.");
    if (outcome)
        return ExitStatus::Done;
    terminal.Complain("tamber-cli: " + outcome.error().Message);
    return outcome.error().Status;
}

}  // namespace

std::span<const CommandForm> CommandForms() {
    static const std::array forms{
        CommandForm{.Name = "identify",
                    .Meaning = "Ask the board for its name and version",
                    .Carry = Identify,
                    .Folder = FolderUse::Port,
                    .NeedsDevice = false},
        CommandForm{.Name = "devices",
                    .Meaning = "List the devices of the working folder",
                    .Carry = ListDevices,
                    .NeedsDevice = false},
        CommandForm{.Name = "ports",
                    .Meaning = "Show what COM1 to COM4 are, and the machine's ports",
                    .Carry = ShowPorts,
                    .Folder = FolderUse::None,
                    .NeedsDevice = false,
                    .SetsPorts = true},
        FunctionForm(FunctionRead, "Read the device into a HEX file", ReadToFile, FileUse::Required,
                     "OUT.hex"),
        FunctionForm(FunctionProgram, "Write a HEX file into the device", RunOneFunction,
                     FileUse::Required, "IN.hex"),
        FunctionForm(FunctionVerify, "Compare the device with a HEX file", RunOneFunction,
                     FileUse::Required, "IN.hex"),
        FunctionForm(FunctionErase, "Erase the device", RunOneFunction),
        FunctionForm(FunctionBlank, "Check that the device is erased", RunOneFunction),
        FunctionForm(FunctionAuto, "Run the Auto series of the working folder", RunAutoSeries,
                     FileUse::Optional, "IN.hex"),
        CommandForm{.Name = "inspect",
                    .Meaning = "Look through a HEX file; no board is needed",
                    .Carry = InspectFile,
                    .File = FileUse::Required,
                    .FileName = "IN.hex",
                    .Strict = true},
        CommandForm{.Name = "convert",
                    .Meaning = "Write a HEX file anew, each word where the device's image has it",
                    .Carry = ConvertFile,
                    .File = FileUse::Required,
                    .FileName = "IN.hex",
                    .RefusesFiles = true,
                    .OutputName = "OUT.hex"},
    };
    return forms;
}

ExitStatus RunCommand(const Arguments& arguments, Machine& machine, const Streams& streams) {
    Terminal terminal(streams, arguments.Json, arguments.Quiet);
    const auto program = std::make_unique<modFunc>();
    Json facts{{"command", arguments.Command->Name}};
    Context context{arguments, machine, terminal, *program, facts};
    Outcome outcome =
        OpenFolder(context).and_then([&] { return ChooseDevice(context); }).and_then([&] {
            return Carry(context);
        });
    return Conclude(terminal, facts, std::move(outcome));
}

ExitStatus Give(const Answer& answer, const Streams& streams) {
    Terminal terminal(streams, answer.Json, false);
    if (answer.Status == ExitStatus::Done)
        return terminal.Data(answer.Text) ? ExitStatus::Done : ExitStatus::FileUnusable;
    Json facts{{"command", nullptr}};
    const ExitStatus status = Conclude(terminal, facts, Failed(answer.Status, answer.Text));
    return streams.Out.good() ? status : ExitStatus::FileUnusable;
}

}  // namespace Tamber::Cli
