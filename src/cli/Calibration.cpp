#include "cli/Calibration.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/Commands.hpp"
#include "files/HexInspect.hpp"

namespace Tamber::Cli {
namespace {

using Word = std::optional<std::uint16_t>;

constexpr char LogName[] = "calibration.log";

nlohmann::ordered_json FactOf(const Word& word) {
    return word ? nlohmann::ordered_json(*word) : nlohmann::ordered_json();
}

}  // namespace

Calibration::Calibration(Context& context, BoardSession& session)
    : context_(context), session_(session) {}

Outcome Calibration::Check(const Context& context) {
    const DeviceRecord& device = context.Device();
    const Arguments& asked = context.Asked;
    if (asked.Calibration == CalibrationUse::File && asked.File.empty())
        return Failed(ExitStatus::WrongUsage, "--calibration file needs a file.");
    if (asked.Calibration != CalibrationUse::Given)
        return {};
    if (!context.Fact().HasCalibrationWord.value_or(false))
        return Failed(ExitStatus::WrongUsage,
                      fmt::format("Nothing says that {} has a calibration word.", device.Name));
    const int first = HasTwelveBitWords(device.TypeCode) ? 0x0C00 : 0x3400;
    if (!IsCalibrationWord(asked.CalibrationWord, device.TypeCode))
        return Failed(
            ExitStatus::WrongUsage,
            fmt::format("{:04X} is no calibration word of {}; those are {:04X} to {:04X}.",
                        asked.CalibrationWord, device.Name, first, first + 0xFF));
    return {};
}

int Calibration::LastWord() const {
    return 2 * (std::clamp(context_.Device().ProgramWords, 1, MemoryImage::ProgramWordsMax) - 1);
}

bool Calibration::Runs(FunctionCode function) const {
    if (context_.Asked.Command->Function != FunctionAuto)
        return context_.Asked.Command->Function == function;
    const auto codes = context_.Program.autoSequence.Codes();
    return std::ranges::find(codes, function) != codes.end();
}

Outcome Calibration::Keep(const Regions& regions) {
    const bool erases = Runs(FunctionErase) && context_.Device().EraseSupported != 0;
    const bool writes = erases || Runs(FunctionProgram);
    keepsWord_ = HasWord() && regions.ProgramMemory;
    // ID locations are programmed in one block with the configuration word.
    const bool bits = KeepMask() != 0 && (regions.ConfigurationWord || regions.IdLocations);
    kept_ = writes && (keepsWord_ || bits) && context_.Asked.Calibration != CalibrationUse::Drop;
    if (!kept_)
        return {};
    device_ = BlankImage(context_.Device());
    if (auto read = session_.ReadQuietly({keepsWord_, false, bits, bits}, device_,
                                         "Reading the calibration word...");
        !read)
        return read;
    const std::uint16_t last = device_.Word(LastWord());
    const bool valid = keepsWord_ && IsCalibrationWord(last, context_.Device().TypeCode);
    const Word fromDevice = valid ? Word(last) : std::nullopt;
    if (bits)
        KeepBits();
    context_.Facts["calibration"] = {{"read", FactOf(fromDevice)}, {"keptBits", bits_}};
    if (fromDevice || bits)
        if (auto logged = Log(fromDevice); !logged)
            return logged;
    return Choose(fromDevice);
}

void Calibration::KeepBits() {
    constexpr int configuration = MemoryImage::ConfigurationWord;
    MemoryImage& image = context_.Program.image;
    bits_ = device_.Word(configuration) & KeepMask();
    image.SetWord(configuration,
                  static_cast<std::uint16_t>((image.Word(configuration) & ~KeepMask()) | bits_));
}

Outcome Calibration::Log(Word word) {
    if (context_.Asked.Simulate)
        return {};
    const auto log = context_.Program.AppPath / LogName;
    const BoardIdentity& board = context_.Program.link.Board;
    return AppendToLog(log, {context_.Device().Name, board.Name + " " + board.Version, word, bits_})
        .map([this] { logged_ = true; })
        .map_error([&](const std::string& reason) {
            return Failure{ExitStatus::FileUnusable,
                           fmt::format("{}: {}\nNothing was erased.", log.string(), reason)};
        });
}

// Decides on the word that the device is to have.
Outcome Calibration::Choose(Word fromDevice) {
    if (!keepsWord_)
        return {};
    MemoryImage& image = context_.Program.image;
    const std::uint16_t inImage = image.Word(LastWord());
    const CalibrationUse use = context_.Asked.Calibration;
    if (use == CalibrationUse::Given)
        word_ = context_.Asked.CalibrationWord;
    else if (IsCalibrationWord(inImage, context_.Device().TypeCode))
        word_ = inImage;
    else if (use == CalibrationUse::Keep)
        word_ = fromDevice;
    if (word_)
        image.SetWord(LastWord(), *word_);
    context_.Facts["calibration"]["used"] = FactOf(word_);
    return word_ || use != CalibrationUse::Keep ? Outcome() : ReportMissing();
}

Outcome Calibration::ReportMissing() const {
    const std::string& device = context_.Device().Name;
    const std::string missing =
        fmt::format("The {} in the socket has no calibration word; its last word reads {:04X}.",
                    device, device_.Word(LastWord()));
    if (!Runs(FunctionProgram) || context_.Asked.Force) {
        context_.Screen.Warn("note: " + missing);
        return {};
    }
    const auto log = context_.Program.AppPath / LogName;
    const Word logged = LastLoggedWord(log, device);
    return Failed(ExitStatus::FileNotForDevice,
                  missing + " The file has none either." +
                      (logged ? fmt::format("\n{} had {:04X} last for such a device: --calibration "
                                            "{:04X} writes it.",
                                            log.string(), *logged, *logged)
                              : "") +
                      "\n--force programs the device without one.");
}

// What a run has erased and not programmed since.
Regions Calibration::Lost() const {
    Regions lost{false, false, false, false};
    for (const RegionResult& result : session_.Results()) {
        if (result.Outcome != RegionOutcome::Good)
            continue;
        const bool erased = result.Function == FunctionErase;
        if (!erased && result.Function != FunctionProgram)
            continue;
        if (result.Where == Region::ProgramMemory)
            lost.ProgramMemory =
                word_ && (erased || context_.Program.image.Word(LastWord()) != *word_);
        else if (result.Where == Region::ConfigurationWord ||
                 result.Where == Region::IdAndConfiguration)
            lost.ConfigurationWord = erased && KeepMask() != 0;
    }
    lost.IdLocations = lost.ConfigurationWord;  // they travel in one block
    return lost;
}

Outcome Calibration::GiveBack(const Regions& regions, Outcome ran) {
    const Regions lost = kept_ ? Lost() : Regions{false, false, false, false};
    if (!lost.ProgramMemory && !lost.ConfigurationWord)
        return ran;
    const bool silent = !ran && ran.error().Status == ExitStatus::BoardSilent;
    const Outcome written = silent ? ran : Write(regions, lost);
    context_.Facts["calibration"]["writtenBack"] = written.has_value();
    if (written) {
        context_.Screen.Note("What the factory wrote is back in the device.");
        return ran;
    }
    Failure failure = ran ? written.error() : ran.error();
    if (failure.Status == ExitStatus::NotBlank)
        failure = {ExitStatus::ProgrammingFailed, "programming failed"};
    failure.Message += fmt::format("\nWhat the factory wrote is not back in the device{}{}.",
                                   word_ ? fmt::format(": calibration word {:04X}", *word_) : "",
                                   logged_ ? std::string("; ") + LogName + " has it" : "");
    return tl::unexpected(failure);
}

// Everything else is written as it is after an erase.
Outcome Calibration::Write(const Regions& regions, const Regions& lost) {
    MemoryImage image = BlankImage(context_.Device());
    if (word_)
        image.SetWord(LastWord(), *word_);
    if (!regions.IdLocations)
        image.Store(MemoryImage::IdLocations, device_.Bytes(MemoryImage::IdLocations, 8));
    image.SetWord(MemoryImage::ConfigurationWord,
                  static_cast<std::uint16_t>((0x3FFF & ~KeepMask()) | bits_));
    return session_.WriteUndisturbed(lost, image, "Writing the calibration word...");
}

}  // namespace Tamber::Cli
