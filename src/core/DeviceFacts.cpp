#include "core/DeviceFacts.hpp"

#include <algorithm>
#include <system_error>

#include "core/FieldReader.hpp"
#include "core/HexText.hpp"
#include "core/Utf8.hpp"

namespace Tamber {
namespace {

constexpr std::uint32_t WordMax = 0x3FFF;
constexpr std::uint32_t AddressMax = 0xFFFE;

constexpr char Remedy[] = "Correct the file and start Tamber again; until then it is not used.";

template <typename Value>
void Read(FieldReader& fields, std::optional<Value>& value, std::string_view what,
          std::uint32_t most) {
    if (const auto number = fields.ReadOptionalHex(what, most))
        value = static_cast<Value>(*number);
}

void ReadAddress(FieldReader& fields, std::optional<int>& address, std::string_view what) {
    Read(fields, address, what, AddressMax);
    if (address && *address % 2 != 0)
        fields.Refuse(HexWord(static_cast<std::uint32_t>(*address)),
                      std::string(what) + ", a byte address and so an even one");
}

std::string ReadName(FieldReader& fields, const DeviceFacts& before) {
    std::string name = Utf8From(fields.ReadText("Name"));
    if (name.empty())
        fields.Refuse("\"\"", "Name, which must not be empty");
    else if (!before.Of(name).Name.empty())
        fields.Refuse('"' + name + "\" a second time", "Name, one line for each device");
    return name;
}

void ReadValues(FieldReader& fields, DeviceFact& fact) {
    Read(fields, fact.HasCalibrationWord, "the calibration word", 1);
    Read(fields, fact.ConfigurationMask, "the configuration mask", WordMax);
    Read(fields, fact.UnimplementedReads, "what unimplemented bits read as", 1);
    Read(fields, fact.IdMask, "the ID mask", WordMax);
    ReadAddress(fields, fact.FileConfiguration, "the address of the configuration word");
    ReadAddress(fields, fact.FileIds, "the address of the ID locations");
    Read(fields, fact.KeepMask, "the keep mask", WordMax);
}

}  // namespace

std::optional<std::uint16_t> CalibrationWordIn(const MemoryImage& image, const DeviceRecord& device,
                                               const DeviceFact& fact) {
    const int words = std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax);
    if (words == 0 || !fact.HasCalibrationWord.value_or(false))
        return std::nullopt;
    const std::uint16_t last = image.Word(2 * (words - 1));
    return IsCalibrationWord(last, device.TypeCode) ? std::optional(last) : std::nullopt;
}

const DeviceFact& DeviceFacts::Of(std::string_view name) const {
    static const DeviceFact nothing;
    const auto found = std::ranges::find(facts_, name, &DeviceFact::Name);
    return found == facts_.end() ? nothing : *found;
}

tl::expected<DeviceFacts, FileFailure> DeviceFacts::Load(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found)
        return DeviceFacts();
    return ReadFields(file, "the facts about devices", "",
                      [](FieldReader& fields) {
                          DeviceFacts facts;
                          while (!fields.Failure() && !fields.AtEnd()) {
                              DeviceFact& fact =
                                  facts.facts_.emplace_back(DeviceFact{ReadName(fields, facts)});
                              ReadValues(fields, fact);
                              fields.EndRecord();
                          }
                          return facts;
                      })
        .map_error([](FileFailure failure) {
            failure.Remedy = Remedy;
            return failure;
        });
}

}  // namespace Tamber
