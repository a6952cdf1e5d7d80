#pragma once

#include <string>

namespace Tamber {

enum class BoxIcon { None, Critical };

/// Boxes with a text, a title and an OK button.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    /// Shows a box over the active window and returns when the user has closed it. `text` is plain
    /// text in UTF-8; lines end in LF or CR LF.
    virtual void Show(const std::string& text, const std::string& title, BoxIcon icon) = 0;
};

/// The title of boxes that have none of their own.
constexpr char ProgramTitle[] = "Tamber";

}  // namespace Tamber
