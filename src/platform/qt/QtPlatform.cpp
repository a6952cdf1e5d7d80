#include "platform/qt/QtPlatform.hpp"

#include <utility>

#include "platform/qt/QtFileDialog.hpp"
#include "platform/qt/QtSerialControl.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber {

QtPlatform::QtPlatform(std::filesystem::path directory) : directory_(std::move(directory)) {}

std::unique_ptr<WindowTimer> QtPlatform::NewTimer() {
    return std::make_unique<QtWindowTimer>();
}

std::unique_ptr<SerialControl> QtPlatform::NewSerialControl() {
    return std::make_unique<QtSerialControl>(events_);
}

std::unique_ptr<FileDialog> QtPlatform::NewFileDialog() {
    return std::make_unique<QtFileDialog>(directory_);
}

}  // namespace Tamber
