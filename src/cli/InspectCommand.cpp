#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
#include "cli/HexInput.hpp"
#include "cli/InspectText.hpp"

namespace Tamber::Cli {

Outcome InspectFile(Context& context) {
    const auto text = ReadHexText(context);
    if (!text)
        return text.error();
    const HexInspection inspection = InspectHexText(*text, context.Device());
    for (const std::string& line : InspectionLines(inspection, context.Device()))
        context.Screen.Asked(line);
    context.Facts["inspection"] = InspectionFacts(inspection, context.Device());
    if (inspection.Refusal)
        return Failed(ExitStatus::FileUnusable, "The file cannot be loaded; line " +
                                                    std::to_string(inspection.Refusal->Line) +
                                                    " is the first to stand in the way.");
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable, "The file is not one to load.");
    return {};
}

}  // namespace Tamber::Cli
