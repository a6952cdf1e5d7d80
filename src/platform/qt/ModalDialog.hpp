#pragma once

class QDialog;
class QWidget;

namespace Tamber {

/// The window that a dialog opened now belongs over: the dialog in front, else the main window.
/// Null while no window is on the screen.
QWidget* OwnerForDialogs();

/// Shows `dialog` modally and returns its result. The dialog gets the keyboard and its owner gets
/// it back afterwards, on a desktop without a window manager too.
int ExecuteModal(QDialog& dialog);

}  // namespace Tamber
