#pragma once

#include <filesystem>

#include "platform/Platform.hpp"
#include "platform/qt/QtEventDelivery.hpp"
#include "platform/qt/QtMessageBoxes.hpp"
#include "platform/qt/QtViewerStarter.hpp"

namespace Tamber {

/// The desktop as Qt gives it. Needs a QApplication that outlives it.
class QtPlatform final : public Platform {
  public:
    /// File dialogs begin in `directory`.
    explicit QtPlatform(std::filesystem::path directory);

    EventDelivery& Events() override { return events_; }
    MessageBoxes& Boxes() override { return boxes_; }
    ViewerStarter& Viewer() override { return viewer_; }
    std::unique_ptr<WindowTimer> NewTimer() override;
    std::unique_ptr<SerialControl> NewSerialControl() override;
    std::unique_ptr<FileDialog> NewFileDialog() override;

  private:
    std::filesystem::path directory_;
    QtEventDelivery events_;
    QtMessageBoxes boxes_;
    QtViewerStarter viewer_;
};

}  // namespace Tamber
