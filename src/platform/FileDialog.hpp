#pragma once

#include <filesystem>

namespace Tamber {

/// The common dialog for choosing a HEX file. It keeps the name last chosen.
class FileDialog {
  public:
    virtual ~FileDialog() = default;

    /// Lets the user choose a file to load. False when the user cancelled; FileName is then the one
    /// chosen before.
    [[nodiscard]] virtual bool ShowOpen() = 0;

    /// Lets the user choose a file to write; asks before one that exists is replaced, and adds
    /// ".hex" to a name without an ending.
    [[nodiscard]] virtual bool ShowSave() = 0;

    /// As if the user had chosen this one.
    virtual void SetFileName(const std::filesystem::path& file) = 0;

    /// The full path last chosen, empty before that.
    virtual std::filesystem::path FileName() const = 0;
};

}  // namespace Tamber
