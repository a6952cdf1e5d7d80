#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

class QMimeData;

namespace Tamber {

/// The one HEX file that is dragged over a window or dropped on it. The failure says what there is
/// instead.
[[nodiscard]] tl::expected<std::filesystem::path, std::string> DroppedHexFile(
    const QMimeData& dropped);

}  // namespace Tamber
