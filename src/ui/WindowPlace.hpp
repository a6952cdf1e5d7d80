#pragma once

class QSize;
class QWidget;

namespace Tamber {

/// Gives the main window, before it is shown, the size and place that it was left with, on a screen
/// that exists and not larger than it; else the size `room`, as far as the screen has it.
void RestorePlace(QWidget& mainWindow, QSize room);

/// Remembers size and place of the main window for the user's next start.
void RememberPlace(const QWidget& mainWindow);

}  // namespace Tamber
