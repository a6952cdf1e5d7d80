#include <nlohmann/json.hpp>

#include "cli/BoardSession.hpp"
#include "cli/Commands.hpp"
#include "cli/HexInput.hpp"
#include "cli/VerifyReport.hpp"
#include "files/HexSave.hpp"
#include "link/BoardIdentity.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber::Cli {
namespace {

// The regions that take part, by the rules of the function dialog.
Outcome ChooseRegions(const Context& context, Regions& regions) {
    const DeviceRecord& device = context.Device();
    if (!context.Asked.Only) {
        regions = {};
        regions.Eeprom = device.EepromBytes != 0;
        return {};
    }
    regions = *context.Asked.Only;
    if (device.TypeCode == StreamTypeCode)
        return Failed(ExitStatus::WrongUsage,
                      device.Name + " is read as one stream; --only cannot divide it.");
    if (regions.Eeprom && device.EepromBytes == 0)
        return Failed(ExitStatus::WrongUsage, device.Name + " has no EEPROM.");
    return {};
}

std::int16_t FunctionOf(Command command) {
    switch (command) {
        case Command::Erase:
            return FunctionErase;
        case Command::Blank:
            return FunctionBlank;
        case Command::Program:
            return FunctionProgram;
        case Command::Verify:
            return FunctionVerify;
        case Command::Auto:
            return FunctionAuto;
        default:
            return FunctionRead;
    }
}

// What the session leaves behind is kept whatever came of the run.
Outcome Both(Outcome run, Outcome close) {
    return run.Done() ? close : run;
}

// From the opening of the port to its closing. After a verify that is not sure to have seen every
// word the same, the device is read again for the list of differences.
Outcome RunFunction(Context& context) {
    Regions regions;
    if (auto outcome = ChooseRegions(context, regions); !outcome.Done())
        return outcome;
    BoardSession session(context);
    if (auto outcome = session.Open(); !outcome.Done())
        return outcome;
    Outcome outcome = session.Run(FunctionOf(context.Asked.Asked), regions);
    const bool stream = context.Device().TypeCode == StreamTypeCode;
    const bool compared =
        outcome.Status == ExitStatus::DifferencesFound || (stream && outcome.Done());
    if (compared && session.RanLast(FunctionVerify))
        outcome = TellDifferences(context, session, regions, std::move(outcome));
    return Both(std::move(outcome), session.Close());
}

// The first entry of the series that needs an image there is none for; empty when none does.
std::string_view EntryWithoutImage(const AutoSequence& series) {
    for (const std::int16_t code : series.Codes()) {
        const DeviceFunction* function = FindSeriesFunction(code);
        if (code == FunctionRead)
            return {};
        if (function && function->NeedsImage)
            return function->Name;
    }
    return {};
}

}  // namespace

Outcome Identify(Context& context) {
    BoardSession session(context);
    if (auto outcome = session.Open(); !outcome.Done())
        return outcome;
    context.Screen.Asked(Describe(context.Program.link.Board));
    return {};
}

Outcome RunOneFunction(Context& context) {
    BlankImage(context);
    if (!context.Asked.File.empty())
        if (auto outcome = LoadHexInput(context); !outcome.Done())
            return outcome;
    return RunFunction(context);
}

Outcome RunAutoSeries(Context& context) {
    const AutoSequence& series = context.Program.autoSequence;
    if (series.AutoCount < 1)
        return Failed(ExitStatus::FileUnusable, "The Auto series of the working folder is empty.");
    const std::string_view entry = EntryWithoutImage(series);
    if (context.Asked.File.empty() && !entry.empty())
        return Failed(ExitStatus::WrongUsage, "The Auto series holds " + std::string(entry) +
                                                  "; name the HEX file it is to work with.");
    return RunOneFunction(context);
}

Outcome ReadToFile(Context& context) {
    const std::string& file = context.Asked.File;
    if (file == "-")
        context.Screen.KeepOutputForData();
    BlankImage(context);
    if (auto outcome = RunFunction(context); !outcome.Done())
        return outcome;
    const int words = context.Device().ProgramWords;
    if (file == "-" && !context.Screen.Data(HexFileText(context.Program.image, words)))
        return Failed(ExitStatus::FileUnusable, "Standard output cannot be written.");
    if (file == "-")
        return {};
    if (const auto saved = SaveHexFile(file, context.Program.image, words); !saved)
        return Failed(ExitStatus::FileUnusable, file + ": " + saved.error());
    return {};
}

}  // namespace Tamber::Cli
