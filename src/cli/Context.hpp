#pragma once

#include <nlohmann/json_fwd.hpp>

#include "cli/Arguments.hpp"
#include "cli/Machine.hpp"
#include "cli/Outcome.hpp"
#include "cli/Terminal.hpp"
#include "modFunc.hpp"

namespace Tamber::Cli {

/// What every command works with.
struct Context {
    const Arguments& Asked;
    Machine& Host;
    Terminal& Screen;
    modFunc& Program;
    nlohmann::ordered_json& Facts;  ///< what --json tells

    /// The device in question.
    const DeviceRecord& Device() const {
        return Program.catalogue.Record(Program.settings.SelectedDevice);
    }
};

}  // namespace Tamber::Cli
