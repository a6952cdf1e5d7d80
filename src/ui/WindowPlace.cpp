#include "ui/WindowPlace.hpp"

#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "platform/qt/UserMemory.hpp"

namespace Tamber {
namespace {

constexpr char PlaceKey[] = "main/place";

}  // namespace

void RestorePlace(QWidget& mainWindow, QSize room) {
    constexpr QSize frame(0, 40);
    mainWindow.resize(room.boundedTo(mainWindow.screen()->availableSize() - frame));
    if (!mainWindow.restoreGeometry(UserMemory().value(PlaceKey).toByteArray()) ||
        mainWindow.isMaximized())
        return;
    const QRect screen = mainWindow.screen()->availableGeometry();
    QRect place = mainWindow.geometry();
    place.setSize(place.size().boundedTo(screen.size()));
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    mainWindow.setGeometry(place);
}

void RememberPlace(const QWidget& mainWindow) {
    UserMemory().setValue(PlaceKey, mainWindow.saveGeometry());
}

}  // namespace Tamber
