#include "cli/ArgumentValues.hpp"

#include <sstream>

namespace Tamber::Cli {

std::string TakeRegions(const std::string& list, Regions& regions) {
    regions = {false, false, false, false};
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        if (name == "pm")
            regions.ProgramMemory = true;
        else if (name == "eeprom")
            regions.Eeprom = true;
        else if (name == "id")
            regions.IdLocations = true;
        else if (name == "config")
            regions.ConfigurationWord = true;
        else
            return "\"" + name + "\" is no region; the regions are pm, eeprom, id and config";
    }
    return {};
}

std::string TakeSetting(const std::string& text, std::optional<PortSetting>& setting) {
    const bool good = text.size() > 2 && text[0] >= '1' && text[0] <= '4' && text[1] == '=';
    if (!good)
        return "\"" + text + "\" will not do; it wants N=PATH with N from 1 to 4";
    setting = PortSetting{text[0] - '0', text.substr(2)};
    return {};
}

}  // namespace Tamber::Cli
