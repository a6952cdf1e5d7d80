#pragma once

class QDialog;
class QWidget;

namespace Tamber {

/// The owner for a dialog opened now: the dialog in front, else the main window. Null while no
/// window is on the screen.
QWidget* OwnerForDialogs();

/// Shows `dialog` modally over its owner and returns its result; other windows, such as the
/// manual, stay usable. The dialog gets the keyboard and its owner gets it back afterwards, even on
/// a desktop without a window manager.
int ExecuteModal(QDialog& dialog);

}  // namespace Tamber
