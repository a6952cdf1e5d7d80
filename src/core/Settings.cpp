#include "core/Settings.hpp"

#include "core/DeviceCatalogue.hpp"
#include "core/FieldReader.hpp"

namespace Tamber {

tl::expected<Settings, FileFailure> LoadSettings(const std::filesystem::path& file) {
    return ReadFields(file, "the settings file",
                      "Put the settings file there, or start Tamber in the folder that holds it.",
                      [](FieldReader& fields) {
                          Settings settings;
                          settings.CommPortNumber = fields.ReadShort("the serial port");
                          settings.DeviceCount = fields.ReadShort("the device count");
                          settings.SelectedDevice =
                              fields.ReadShort("the selected device", 0, DeviceCatalogue::LastSlot);
                          return settings;
                      });
}

tl::expected<void, FileFailure> SaveSettings(const std::filesystem::path& file,
                                             const Settings& settings) {
    return WriteNumbers(file,
                        {settings.CommPortNumber, settings.DeviceCount, settings.SelectedDevice},
                        "The settings are lost; check the folder's permissions and space.");
}

}  // namespace Tamber
