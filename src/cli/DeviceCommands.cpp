#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/Calibration.hpp"
#include "cli/Commands.hpp"
#include "cli/Differences.hpp"
#include "cli/HexInput.hpp"
#include "core/Utf8.hpp"
#include "files/HexInspect.hpp"
#include "files/HexSave.hpp"
#include "link/BoardIdentity.hpp"
#include "operations/DeviceFunctions.hpp"

namespace Tamber::Cli {
namespace {

// The regions that take part, by the rules of the function dialog.
tl::expected<Regions, Failure> ChooseRegions(const Context& context) {
    const DeviceRecord& device = context.Device();
    if (!context.Asked.Only)
        return Regions{.Eeprom = device.EepromBytes != 0};
    if (device.TypeCode == StreamTypeCode)
        return Failed(ExitStatus::WrongUsage,
                      device.Name + " is read as one stream; --only cannot divide it.");
    if (context.Asked.Only->Eeprom && device.EepromBytes == 0)
        return Failed(ExitStatus::WrongUsage, device.Name + " has no EEPROM.");
    return *context.Asked.Only;
}

// After a verify that is not sure to have seen every word the same, the device is read again for
// the list of differences.
Outcome RunAndCompare(Context& context, BoardSession& session, const Regions& regions) {
    Outcome outcome = session.Run(*context.Asked.Command->Function, regions);
    const bool stream = context.Device().TypeCode == StreamTypeCode;
    const bool compare = outcome ? stream : outcome.error().Status == ExitStatus::DifferencesFound;
    if (!compare || !session.Verified())
        return outcome;
    return ReportDifferences(context, session, regions, std::move(outcome));
}

// From the opening of the port to its closing. The socket is kept whatever came of the run.
Outcome RunFunction(Context& context) {
    const auto regions = ChooseRegions(context);
    if (!regions)
        return tl::unexpected(regions.error());
    if (auto outcome = Calibration::Check(context); !outcome)
        return outcome;
    BoardSession session(context);
    if (auto outcome = session.Open(); !outcome)
        return outcome;
    Calibration calibration(context, session);
    const Outcome ran = calibration.Keep(*regions).and_then(
        [&] { return calibration.GiveBack(*regions, RunAndCompare(context, session, *regions)); });
    if (session.SparedAny())
        context.Screen.Note("What the factory wrote is in the device and was left out.");
    if (session.SparedBits()) {
        context.Facts["unimplementedBitsDiffer"] = true;
        context.Screen.Note("note: Bits that " + context.Device().Name +
                            " does not implement differ and do not count; --exact compares them.");
    }
    const Outcome closed = session.Close();
    return ran ? closed : ran;
}

// The series fills the image from the device before it uses it.
bool ReadsFirst(const AutoSequence& series) {
    for (const std::int16_t code : series.Codes()) {
        const DeviceFunction* function = FindSeriesFunction(code);
        if (code == FunctionRead || (function && function->NeedsImage))
            return code == FunctionRead;
    }
    return false;
}

// The first entry of the series that needs an image when there is none; empty when none does.
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

// `file` may be "-", standard output.
Outcome WriteImage(Context& context, const std::string& file) {
    const MemoryImage& image = context.Program.image;
    const int words = context.Device().ProgramWords;
    if (file != "-")
        return SaveHexFile(file, image, words).map_error([&](const std::string& reason) {
            return Failure{ExitStatus::FileUnusable, VisibleText(file) + ": " + reason};
        });
    if (!context.Screen.Data(HexFileText(image, words)))
        return Failed(ExitStatus::FileUnusable, "Standard output cannot be written.");
    return {};
}

}  // namespace

Outcome Identify(Context& context) {
    BoardSession session(context);
    return session.Open().map([&] { context.Screen.Asked(Describe(context.Program.link.Board)); });
}

Outcome RunOneFunction(Context& context) {
    context.Program.image = BlankImage(context.Device());
    if (!context.Asked.File.empty())
        if (auto outcome = LoadHexInput(context); !outcome)
            return outcome;
    return RunFunction(context);
}

Outcome RunAutoSeries(Context& context) {
    const AutoSequence& series = context.Program.autoSequence;
    if (series.AutoCount < 1)
        return Failed(ExitStatus::FileUnusable, "The Auto series of the working folder is empty.");
    if (!context.Asked.File.empty() && ReadsFirst(series))
        return Failed(ExitStatus::WrongUsage,
                      "The Auto series reads the device first, and what the HEX file says would be "
                      "lost; leave the file out.");
    const std::string_view entry = EntryWithoutImage(series);
    if (context.Asked.File.empty() && !entry.empty())
        return Failed(
            ExitStatus::WrongUsage,
            fmt::format("The Auto series holds {}; name the HEX file it is to work with.", entry));
    return RunOneFunction(context);
}

Outcome ReadToFile(Context& context) {
    const std::string& file = context.Asked.File;
    if (file == "-")
        context.Screen.KeepOutputForData();
    context.Program.image = BlankImage(context.Device());
    return RunFunction(context).and_then([&] { return WriteImage(context, file); });
}

Outcome ConvertFile(Context& context) {
    return LoadHexInput(context).and_then(
        [&] { return WriteImage(context, context.Asked.Output); });
}

}  // namespace Tamber::Cli
