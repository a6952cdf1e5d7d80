#pragma once

#include <nlohmann/json_fwd.hpp>

#include "cli/Arguments.hpp"
#include "cli/Machine.hpp"
#include "cli/Terminal.hpp"
#include "modFunc.hpp"

namespace Tamber::Cli {

/// What every command works with.
struct Context {
    const Arguments& Asked;
    Machine& Host;
    Terminal& Screen;
    modFunc& Program;
    nlohmann::ordered_json& Facts;  ///< the object that --json writes

    /// The selected device.
    const DeviceRecord& Device() const { return SelectedRecord(Program); }
    const DeviceFact& Fact() const { return SelectedFact(Program); }
};

}  // namespace Tamber::Cli
