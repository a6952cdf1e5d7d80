#include "StartUp.hpp"

#include <utility>

namespace Tamber {

std::filesystem::path SettingsFile(const modFunc& program) {
    return program.AppPath / "tamber.cfg";
}

std::filesystem::path DeviceListFile(const modFunc& program) {
    return program.AppPath / "tamber.dev";
}

std::filesystem::path DeviceFactsFile(const modFunc& program) {
    return program.AppPath / "tamber.inf";
}

std::filesystem::path AutoSequenceFile(const modFunc& program) {
    return program.AppPath / "auto.cfg";
}

namespace {

void LoadFacts(modFunc& program) {
    const auto facts = DeviceFacts::Load(DeviceFactsFile(program));
    program.facts = facts.value_or(DeviceFacts());
    program.factsFailure = facts ? std::nullopt : std::optional(facts.error());
}

}  // namespace

tl::expected<void, FileFailure> StartUp(const std::filesystem::path& directory, modFunc& program) {
    program.AppPath = directory;
    return LoadSettings(SettingsFile(program))
        .and_then([&](const Settings& settings) {
            program.settings = settings;
            return DeviceCatalogue::Load(DeviceListFile(program), settings.DeviceCount);
        })
        .and_then([&](DeviceCatalogue catalogue) {
            program.catalogue = std::move(catalogue);
            return LoadAutoSequence(AutoSequenceFile(program));
        })
        .map([&](const AutoSequence& series) {
            program.autoSequence = series;
            LoadFacts(program);
        });
}

}  // namespace Tamber
