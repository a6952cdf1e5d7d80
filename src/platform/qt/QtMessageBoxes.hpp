#pragma once

#include "platform/MessageBoxes.hpp"

namespace Tamber {

/// Qt's message boxes, over the window the user is in.
class QtMessageBoxes final : public MessageBoxes {
  public:
    void Show(const std::string& text, const std::string& title, BoxIcon icon) override;
};

}  // namespace Tamber
