#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"

namespace Tamber::Cli {
namespace {

constexpr std::size_t NameWidth = 16;

std::string Row(const std::string& name, const std::string& type, const std::string& words,
                const std::string& eeprom, const std::string& erase) {
    std::string row = name;
    row.resize(std::max(NameWidth, row.size() + 1), ' ');
    for (const std::string& value : {type, words, eeprom}) {
        row.insert(row.end(), value.size() < 7 ? 7 - value.size() : 0, ' ');
        row += value;
    }
    return row + "  " + erase;
}

}  // namespace

Outcome ListDevices(Context& context) {
    const modFunc& program = context.Program;
    auto& list = context.Facts["devices"] = nlohmann::ordered_json::array();
    context.Screen.Note("  " + Row("name", "type", "words", "EEPROM", "erase"));
    for (int slot = 1; slot <= program.settings.DeviceCount; ++slot) {
        const DeviceRecord& device = program.catalogue.Record(slot);
        const bool selected = slot == program.settings.SelectedDevice;
        const bool erase = device.EraseSupported != 0;
        context.Screen.Asked(std::string(selected ? "* " : "  ") +
                             Row(device.Name, std::to_string(device.TypeCode),
                                 std::to_string(device.ProgramWords),
                                 std::to_string(device.EepromBytes), erase ? "yes" : "no"));
        list.push_back({{"name", device.Name},
                        {"type", device.TypeCode},
                        {"words", device.ProgramWords},
                        {"eeprom", device.EepromBytes},
                        {"erase", erase},
                        {"selected", selected}});
    }
    return {};
}

}  // namespace Tamber::Cli
