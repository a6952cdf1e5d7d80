#pragma once

class QDialog;
class QWidget;

namespace Tamber {

/// The window that a dialog opened now belongs over: the dialog in front, else the main window.
/// Null while no window is on the screen.
QWidget* OwnerForDialogs();

/// Shows `dialog` modally over its owner and returns its result; a window that the owner does not
/// own, such as the manual, stays usable. The dialog gets the keyboard and its owner gets
/// it back afterwards, on a desktop without a window manager too.
int ExecuteModal(QDialog& dialog);

}  // namespace Tamber
