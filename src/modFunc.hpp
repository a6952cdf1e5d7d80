#pragma once

#include <filesystem>
#include <optional>

#include "core/AutoSequence.hpp"
#include "core/DeviceCatalogue.hpp"
#include "core/DeviceFacts.hpp"
#include "core/MemoryImage.hpp"
#include "core/Settings.hpp"
#include "link/LinkState.hpp"

namespace Tamber {

/// The single instances of the program. One is made in main, lives until exit and is handed on by
/// reference: whole to the windows, in parts to everything else.
struct modFunc {
    std::filesystem::path AppPath;  ///< current directory at start-up; the data files lie there
    Settings settings;
    DeviceCatalogue catalogue;
    DeviceFacts facts;
    std::optional<FileFailure> factsFailure;  ///< why there are no facts though there is a file
    MemoryImage image;
    LinkState link;
    AutoSequence autoSequence;
    bool SelectionCancelled = false;  ///< the device selection was last left with Cancel
};

/// The record of the selected device; an empty one when none is selected.
inline const DeviceRecord& SelectedRecord(const modFunc& program) {
    return program.catalogue.Record(program.settings.SelectedDevice);
}

/// What is known about it beyond that; nothing about an empty record.
inline const DeviceFact& SelectedFact(const modFunc& program) {
    return program.facts.Of(SelectedRecord(program).Name);
}

}  // namespace Tamber
