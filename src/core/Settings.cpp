#include "core/Settings.hpp"

#include "core/DeviceCatalogue.hpp"
#include "core/FieldReader.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

std::optional<FileFailure> ReadInto(FieldReader& fields, const char* what, std::int16_t& value) {
    const auto read = fields.ReadShort(what);
    if (!read.Ok())
        return read.Failure();
    value = read.Value();
    return std::nullopt;
}

}  // namespace

std::optional<FileFailure> LoadSettings(const std::filesystem::path& file, Settings& settings) {
    const auto text = ReadTextFile(file);
    if (!text.Ok())
        return FileFailure{file.string(),
                           0,
                           0,
                           text.Failure(),
                           "the settings file",
                           "Put the settings file there, or start Tamber in the folder that holds "
                           "it."};
    FieldReader fields(file, text.Value());
    if (auto failure = ReadInto(fields, "the serial port", settings.CommPortNumber))
        return failure;
    if (auto failure = ReadInto(fields, "the device count", settings.DeviceCount))
        return failure;
    if (auto failure = ReadInto(fields, "the selected device", settings.SelectedDevice))
        return failure;
    if (!DeviceCatalogue::HoldsSlot(settings.SelectedDevice))
        return fields.Blame('"' + std::to_string(settings.SelectedDevice) + '"',
                            "the selected device, a whole number from 0 to 50");
    return std::nullopt;
}

std::optional<FileFailure> SaveSettings(const std::filesystem::path& file,
                                        const Settings& settings) {
    const std::string text = std::to_string(settings.CommPortNumber) + "\r\n" +
                             std::to_string(settings.DeviceCount) + "\r\n" +
                             std::to_string(settings.SelectedDevice) + "\r\n";
    if (const auto reason = ReplaceTextFile(file, text))
        return FileFailure{file.string(),
                           0,
                           0,
                           *reason,
                           "a file that can be written",
                           "The settings are lost; check the folder's permissions and space."};
    return std::nullopt;
}

}  // namespace Tamber
