#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
#include "cli/HexInput.hpp"
#include "cli/InspectText.hpp"

namespace Tamber::Cli {

Outcome InspectFile(Context& context) {
    const auto text = ReadHexText(context);
    if (!text.Ok())
        return text.Failure();
    const HexInspection inspection = InspectHexText(text.Value(), context.Device());
    for (const std::string& line : InspectionLines(inspection, context.Device()))
        context.Screen.Asked(line);
    context.Facts["inspection"] = InspectionFacts(inspection, context.Device());
    if (inspection.Load.Outcome != HexOutcome::Loaded)
        return Failed(ExitStatus::FileUnusable, "The file cannot be loaded; line " +
                                                    std::to_string(inspection.Load.Line) +
                                                    " is the first to stand in the way.");
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable, "The file is not one to load.");
    return {};
}

}  // namespace Tamber::Cli
