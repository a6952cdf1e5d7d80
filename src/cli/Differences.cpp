#include "cli/Differences.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace Tamber::Cli {
namespace {

using Words = std::vector<std::uint16_t>;

constexpr char BlankCause[] =
    "everything reads blank: it was erased or never programmed, or the socket is empty";
constexpr char ZeroCause[] =
    "everything reads zero: the device is protected against reading, or has no contact or supply";
constexpr char LowerCause[] =
    "every word is one address too low: another device type may have been chosen";
constexpr char HigherCause[] =
    "every word is one address too high: another device type may have been chosen";

constexpr char UnsteadyText[] =
    "A second reading shows no difference: the connection or the supply is not steady.";

struct Difference {
    int Address = 0;  // word address in the region, or number of the EEPROM byte
    std::uint16_t Expected = 0;
    std::uint16_t Found = 0;
};

// The differences of one memory region.
struct RegionDifferences {
    std::string Region;
    int Words = 0;  // compared in all
    std::vector<Difference> List;
    std::string LikelyCause;  // empty when none can be seen
};

struct RegionForm {
    const char* Name;
    int Start;  // image index
    int Words;
    std::uint16_t Mask;
    std::uint16_t Blank;
};

Words Take(const MemoryImage& image, const RegionForm& form) {
    Words words;
    const auto bytes = image.Bytes(form.Start, 2 * form.Words);
    for (std::size_t index = 0; index < bytes.size(); index += 2)
        words.push_back(
            static_cast<std::uint16_t>((bytes[index + 1] << 8 | bytes[index]) & form.Mask));
    return words;
}

bool Everything(const Words& words, std::uint16_t value) {
    return std::ranges::all_of(words, [value](std::uint16_t word) { return word == value; });
}

std::string LikelyCause(const Words& expected, const Words& found, std::uint16_t blank) {
    if (Everything(found, blank))
        return BlankCause;
    if (Everything(found, 0))
        return ZeroCause;
    if (Everything(expected, expected.front()))
        return {};
    if (std::equal(expected.begin() + 1, expected.end(), found.begin()))
        return LowerCause;
    if (std::equal(found.begin() + 1, found.end(), expected.begin()))
        return HigherCause;
    return {};
}

RegionDifferences Compare(const MemoryImage& expectedImage, const MemoryImage& foundImage,
                          const RegionForm& form) {
    const Words expected = Take(expectedImage, form);
    const Words found = Take(foundImage, form);
    RegionDifferences differences{form.Name, form.Words, {}, {}};
    for (std::size_t index = 0; index < expected.size(); ++index)
        if (expected[index] != found[index])
            differences.List.push_back({static_cast<int>(index), expected[index], found[index]});
    // One word alone shows no cause.
    if (!differences.List.empty() && form.Words > 1)
        differences.LikelyCause = LikelyCause(expected, found, form.Blank);
    return differences;
}

std::vector<RegionForm> Forms(const DeviceRecord& device, const Regions& regions) {
    std::vector<RegionForm> forms;
    const auto blank = static_cast<std::uint16_t>(BlankWordHigh(device.TypeCode) << 8 | 0xFF);
    if (regions.ProgramMemory)
        forms.push_back({"program memory", 0,
                         std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax), 0xFFFF,
                         blank});
    if (regions.Eeprom)
        forms.push_back({"EEPROM", MemoryImage::Eeprom,
                         std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax), 0xFF,
                         0xFF});
    if (regions.IdLocations)
        forms.push_back({"ID locations", MemoryImage::IdLocations, 4, 0xFFFF, 0xFFFF});
    if (regions.ConfigurationWord)
        forms.push_back({"configuration word", MemoryImage::ConfigurationWord, 1, 0xFFFF, 0x3FFF});
    return forms;
}

void Show(Terminal& screen, const RegionDifferences& region) {
    screen.Asked(fmt::format("{}: {} of {} {}", region.Region, region.List.size(), region.Words,
                             region.Words == 1 ? "word differs" : "words differ"));
    screen.Asked("  address  expected  found");
    for (const Difference& difference : region.List)
        screen.Asked(fmt::format("     {:04X}      {:04X}   {:04X}", difference.Address,
                                 difference.Expected, difference.Found));
    if (!region.LikelyCause.empty())
        screen.Asked("  likely cause: " + region.LikelyCause);
}

nlohmann::ordered_json Facts(const RegionDifferences& region) {
    nlohmann::ordered_json facts{
        {"region", region.Region}, {"words", region.Words}, {"count", region.List.size()}};
    if (!region.LikelyCause.empty())
        facts["cause"] = region.LikelyCause;
    facts["list"] = nlohmann::ordered_json::array();
    for (const auto& [address, expected, found] : region.List)
        facts["list"].push_back({{"address", address}, {"expected", expected}, {"found", found}});
    return facts;
}

// The image, with what was found wherever that is left out of account.
MemoryImage Expected(const Context& context, const MemoryImage& found) {
    MemoryImage expected = context.Program.image;
    const DeviceRecord& device = context.Device();
    const LeftOut spared = LeftOutBy(context);
    const auto take = [&](int index, int bits) {
        expected.SetWord(index, static_cast<std::uint16_t>((expected.Word(index) & ~bits) |
                                                           (found.Word(index) & bits)));
    };
    const int words = std::clamp(device.ProgramWords, 1, MemoryImage::ProgramWordsMax);
    const int last = 2 * (words - 1);
    if (spared.CalibrationWord && !IsCalibrationWord(expected.Word(last), device.TypeCode))
        take(last, 0xFFFF);
    take(MemoryImage::ConfigurationWord, spared.KeepMask | spared.ConfigurationBits);
    for (int location = 0; location < 4; ++location)
        take(MemoryImage::IdLocations + 2 * location, spared.IdBits);
    return expected;
}

}  // namespace

Outcome ReportDifferences(Context& context, BoardSession& session, Regions regions,
                          Outcome verified) {
    if (context.Device().TypeCode == StreamTypeCode)
        regions = {true, false, true, true};
    MemoryImage found = context.Program.image;
    if (auto outcome = session.ReadQuietly(regions, found, "Reading for the differences...");
        !outcome)
        return outcome;
    const MemoryImage expected = Expected(context, found);
    auto& facts = context.Facts["differences"] = nlohmann::ordered_json::array();
    for (const RegionForm& form : Forms(context.Device(), regions)) {
        const RegionDifferences region = Compare(expected, found, form);
        if (region.List.empty())
            continue;
        Show(context.Screen, region);
        facts.push_back(Facts(region));
    }
    if (!facts.empty())
        return Failed(ExitStatus::DifferencesFound);
    if (!verified)
        verified.error().Message.append("\n").append(UnsteadyText);
    return verified;
}

}  // namespace Tamber::Cli
