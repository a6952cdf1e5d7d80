#pragma once

#include <QStringList>
#include <filesystem>

namespace Tamber {

/// The files that the user chose last, the latest first, and their folders; what is no longer there
/// is left out.
QStringList RecentFiles();
QStringList RecentFolders();

/// Puts `file` in front of them. A name that Qt does not know is not remembered.
void RememberFile(const std::filesystem::path& file);

}  // namespace Tamber
