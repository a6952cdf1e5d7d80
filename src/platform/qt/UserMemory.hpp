#pragma once

#include <QSettings>

namespace Tamber {

/// What the program remembers for the user from one start to the next, whatever the working folder:
/// `tamber/tamber.ini` in the user's configuration folder ($XDG_CONFIG_HOME, else ~/.config). What
/// cannot be read is missing; what cannot be written is forgotten without a word.
QSettings& UserMemory();

}  // namespace Tamber
