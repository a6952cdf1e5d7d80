#include "core/DeviceCatalogue.hpp"

#include <cstdlib>
#include <limits>

#include "core/FieldReader.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

template <typename Number>
bool Store(const Result<Number, FileFailure>& read, Number& field,
           std::optional<FileFailure>& failure) {
    if (read.Ok())
        field = read.Value();
    else
        failure = read.Failure();
    return read.Ok();
}

std::optional<FileFailure> ReadRecord(FieldReader& fields, DeviceRecord& record) {
    using Limits = std::numeric_limits<std::int32_t>;
    std::optional<FileFailure> failure;
    // Each read happens only when the one before it succeeded.
    (void)(Store(fields.ReadText("Name"), record.Name, failure) &&
           Store(fields.ReadShort("TypeCode"), record.TypeCode, failure) &&
           Store(fields.ReadNumber("ProgramWords", Limits::min(), Limits::max()),
                 record.ProgramWords, failure) &&
           Store(fields.ReadShort("EepromBytes"), record.EepromBytes, failure) &&
           Store(fields.ReadShort("EraseSupported"), record.EraseSupported, failure));
    return failure;
}

}  // namespace

const DeviceRecord& DeviceCatalogue::Record(int index) const {
    if (!HoldsSlot(index))
        std::abort();
    return records_[static_cast<std::size_t>(index)];
}

std::optional<FileFailure> DeviceCatalogue::Load(const std::filesystem::path& file,
                                                 std::int16_t deviceCount) {
    const auto text = ReadTextFile(file);
    if (!text.Ok())
        return FileFailure{file.string(),
                           0,
                           0,
                           text.Failure(),
                           "the device list",
                           "Put the device list there, or start Tamber in the folder that holds "
                           "it."};
    FieldReader fields(file, text.Value());
    for (int slot = 1; slot <= deviceCount; ++slot) {
        if (slot > LastSlot)
            return FileFailure{file.string(),
                               0,
                               0,
                               std::to_string(deviceCount) + " devices asked for by the settings",
                               "at most " + std::to_string(LastSlot) + " devices",
                               "Correct the device count, the second value of the settings file, "
                               "and start Tamber again."};
        if (auto failure = ReadRecord(fields, records_[static_cast<std::size_t>(slot)]))
            return failure;
    }
    return std::nullopt;
}

}  // namespace Tamber
