#include "cli/VerifyReport.hpp"

#include <nlohmann/json.hpp>

#include "cli/Differences.hpp"
#include "core/HexText.hpp"

namespace Tamber::Cli {
namespace {

constexpr char UnsteadyText[] =
    "A second reading shows no difference: the connection or the supply is not steady.";

std::string Column(std::string text, std::size_t width) {
    text.insert(0, width > text.size() ? width - text.size() : 0, ' ');
    return text;
}

void Tell(Terminal& screen, const RegionDifferences& region) {
    screen.Asked(region.Region + ": " + std::to_string(region.List.size()) + " of " +
                 std::to_string(region.Words) +
                 (region.Words == 1 ? " word differs" : " words differ"));
    screen.Asked("  address  expected  found");
    for (const Difference& difference : region.List)
        screen.Asked(Column(HexWord(static_cast<std::uint32_t>(difference.Address)), 9) +
                     Column(HexWord(difference.Expected), 10) +
                     Column(HexWord(difference.Found), 7));
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

}  // namespace

Outcome TellDifferences(Context& context, BoardSession& session, Regions regions,
                        Outcome verified) {
    if (context.Device().TypeCode == StreamTypeCode)
        regions = {true, false, true, true};
    MemoryImage found = context.Program.image;
    if (auto outcome = session.ReadQuietly(regions, found, "Reading for the differences...");
        !outcome.Done())
        return outcome;
    const auto differences =
        FindDifferences(context.Program.image, found, context.Device(), regions);
    context.Facts["differences"] = nlohmann::ordered_json::array();
    for (const RegionDifferences& region : differences) {
        Tell(context.Screen, region);
        context.Facts["differences"].push_back(Facts(region));
    }
    if (!differences.empty())
        return Failed(ExitStatus::DifferencesFound);
    if (!verified.Done())
        verified.Message += "\n" + std::string(UnsteadyText);
    return verified;
}

}  // namespace Tamber::Cli
