#include "ui/WindowPlace.hpp"

#include <QScreen>
#include <QWidget>

#include "platform/qt/UserMemory.hpp"

namespace Tamber {
namespace {

constexpr char PlaceKey[] = "main/place";

}  // namespace

void RestorePlace(QWidget& mainWindow, QSize room) {
    constexpr QSize frame(0, 40);
    const QSize largest = mainWindow.screen()->availableSize() - frame;
    mainWindow.resize(room.boundedTo(largest));
    if (mainWindow.restoreGeometry(UserMemory().value(PlaceKey).toByteArray()))
        mainWindow.resize(mainWindow.size().boundedTo(mainWindow.screen()->availableSize()));
}

void RememberPlace(const QWidget& mainWindow) {
    UserMemory().setValue(PlaceKey, mainWindow.saveGeometry());
}

}  // namespace Tamber
