#include "core/DeviceCatalogue.hpp"

#include <cstdlib>

#include "core/FieldReader.hpp"
#include "core/Utf8.hpp"

namespace Tamber {
namespace {

DeviceRecord ReadRecord(FieldReader& fields) {
    DeviceRecord record;
    record.Name = Utf8From(fields.ReadText("Name"));
    record.TypeCode = fields.ReadShort("TypeCode");
    record.ProgramWords = fields.ReadNumber("ProgramWords", INT32_MIN, INT32_MAX);
    record.EepromBytes = fields.ReadShort("EepromBytes");
    record.EraseSupported = fields.ReadShort("EraseSupported");
    return record;
}

}  // namespace

const DeviceRecord& DeviceCatalogue::Record(int index) const {
    if (!HoldsSlot(index))
        std::abort();
    return records_[static_cast<std::size_t>(index)];
}

tl::expected<DeviceCatalogue, FileFailure> DeviceCatalogue::Load(const std::filesystem::path& file,
                                                                 std::int16_t deviceCount) {
    return ReadFields(
        file, "the device list",
        "Put the device list there, or start Tamber in the folder that holds it.",
        [&](FieldReader& fields) {
            DeviceCatalogue catalogue;
            for (int slot = 1; slot <= deviceCount && !fields.Failure(); ++slot) {
                if (slot > LastSlot)
                    fields.Fail({file.string(), 0, 0,
                                 std::to_string(deviceCount) + " devices asked for by the settings",
                                 "at most " + std::to_string(LastSlot) + " devices",
                                 "Correct the device count, the second value of the settings file, "
                                 "and start Tamber again."});
                else
                    catalogue.records_[static_cast<std::size_t>(slot)] = ReadRecord(fields);
            }
            return catalogue;
        });
}

}  // namespace Tamber
