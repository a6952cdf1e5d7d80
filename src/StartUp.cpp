#include "StartUp.hpp"

namespace Tamber {

std::filesystem::path SettingsFile(const modFunc& program) {
    return program.AppPath / "tamber.cfg";
}

std::filesystem::path DeviceListFile(const modFunc& program) {
    return program.AppPath / "tamber.dev";
}

std::filesystem::path AutoSequenceFile(const modFunc& program) {
    return program.AppPath / "auto.cfg";
}

std::optional<FileFailure> StartUp(const std::filesystem::path& directory, modFunc& program) {
    program.AppPath = directory;
    if (auto failure = LoadSettings(SettingsFile(program), program.settings))
        return failure;
    if (auto failure =
            program.catalogue.Load(DeviceListFile(program), program.settings.DeviceCount))
        return failure;
    return LoadAutoSequence(AutoSequenceFile(program), program.autoSequence);
}

}  // namespace Tamber
